#include "winlayer/Resources.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <shlwapi.h>

namespace winlayer {

namespace {
HINSTANCE resourceModule = nullptr;
}

HINSTANCE ResourceModule()
{
    return resourceModule != nullptr ? resourceModule : ::GetModuleHandleW(nullptr);
}

void SetResourceModule(HINSTANCE module)
{
    resourceModule = module;
}

int LoadTextFrom(HINSTANCE module, UINT id, wchar_t* buffer, int size)
{
    std::memset(buffer, 0, sizeof(wchar_t) * static_cast<std::size_t>(size));
    return ::LoadStringW(module, id, buffer, size);
}

int LoadText(UINT id, wchar_t* buffer, int size)
{
    return LoadTextFrom(ResourceModule(), id, buffer, size);
}

int FormatTextV(wchar_t* out, std::size_t capacity, const wchar_t* format, va_list args)
{
    if (capacity == 0)
        return 0;
    // _vsnwprintf follows the platform convention even where the C++ runtime
    // would read %s as a narrow string.  It writes no zero when it truncates.
    int written = _vsnwprintf(out, capacity - 1, format, args);
    out[capacity - 1] = L'\0';
    if (written < 0 || static_cast<std::size_t>(written) >= capacity - 1) {
        written = static_cast<int>(capacity - 1);
    }
    out[written] = L'\0';
    return written;
}

int FormatText(wchar_t* out, std::size_t capacity, const wchar_t* format, ...)
{
    va_list args;
    va_start(args, format);
    int written = FormatTextV(out, capacity, format, args);
    va_end(args);
    return written;
}

int ShowResourceBox(HWND owner, UINT textId, UINT captionId, UINT type)
{
    wchar_t text[256];
    wchar_t caption[64];
    LoadText(textId, text, 256);
    LoadText(captionId, caption, 64);
    return ::MessageBoxW(owner, text, caption, type);
}

int ShowSystemErrorBox(DWORD code, UINT captionId)
{
    wchar_t caption[64];
    LoadText(captionId, caption, 64);
    wchar_t* text = nullptr;
    ::FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM |
                         FORMAT_MESSAGE_IGNORE_INSERTS,
                     nullptr, code, MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT),
                     reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    const int answer = ::MessageBoxW(nullptr, text, caption, MB_ICONERROR);
    ::LocalFree(text);
    return answer;
}

bool JoinPath(wchar_t* path, const wchar_t* more)
{
    return ::PathAppendW(path, more) != FALSE;
}

} // namespace winlayer
