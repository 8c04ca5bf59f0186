#include "dialogs/PathRules.h"

#include <cwchar>
#include <cwctype>

namespace {

constexpr wchar_t kForbiddenInComponent[] = L":*?\"<>|\\/";

bool IsSeparator(wchar_t c)
{
    return c == L'\\' || c == L'/';
}

bool IsDriveLetter(wchar_t c)
{
    return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z');
}

const wchar_t* NextSeparatorOrEnd(const wchar_t* p)
{
    while (*p != L'\0' && !IsSeparator(*p))
        ++p;
    return p;
}

} // namespace

void TrimSpaces(wchar_t* text)
{
    std::size_t length = std::wcslen(text);
    while (length > 0 && std::iswspace(text[length - 1]))
        --length;
    text[length] = L'\0';
    std::size_t start = 0;
    while (start < length && std::iswspace(text[start]))
        ++start;
    if (start > 0)
        std::wmemmove(text, text + start, length - start + 1);
}

bool IsValidPathComponent(const wchar_t* text)
{
    return text[0] != L'\0' && std::wcspbrk(text, kForbiddenInComponent) == nullptr;
}

bool CanonicalSavePath(const wchar_t* fullPath, wchar_t (&result)[MAX_PATH])
{
    std::size_t used = 0;
    const wchar_t* p = fullPath;
    if (IsSeparator(p[0]) && IsSeparator(p[1])) {
        // A network path: each component below brings its own backslash, so
        // starting with one gives the two leading ones back.
        p += 2;
        if (*p == L'\0')
            return false;
        result[used++] = L'\\';
    } else {
        p = NextSeparatorOrEnd(p);
        if (p - fullPath != 2 || !IsDriveLetter(fullPath[0]) || fullPath[1] != L':')
            return false;
        result[used++] = fullPath[0];
        result[used++] = L':';
        if (*p != L'\0')
            ++p;
    }
    while (*p != L'\0') {
        const wchar_t* end = NextSeparatorOrEnd(p);
        const std::size_t length = static_cast<std::size_t>(end - p);
        // An empty component ends the path; whatever follows it is dropped.
        if (length == 0)
            break;
        wchar_t component[MAX_PATH];
        if (length >= MAX_PATH)
            return false;
        std::wmemcpy(component, p, length);
        component[length] = L'\0';
        TrimSpaces(component);
        if (!IsValidPathComponent(component))
            return false;
        const std::size_t componentLength = std::wcslen(component);
        if (used + 1 + componentLength >= MAX_PATH)
            return false;
        result[used++] = L'\\';
        std::wmemcpy(result + used, component, componentLength);
        used += componentLength;
        if (*end == L'\0')
            break;
        p = end + 1;
    }
    result[used] = L'\0';
    return true;
}

int NormalizeSavePath(wchar_t* path)
{
    wchar_t work[MAX_PATH];
    ::lstrcpynW(work, path, MAX_PATH);
    TrimSpaces(work);
    if (work[0] == L'\0')
        return 0;
    wchar_t fullPath[MAX_PATH];
    const DWORD length = ::GetFullPathNameW(work, MAX_PATH, fullPath, nullptr);
    if (length == 0 || length >= MAX_PATH)
        return 0;
    wchar_t result[MAX_PATH];
    if (!CanonicalSavePath(fullPath, result))
        return 0;
    ::lstrcpynW(path, result, MAX_PATH);
    return 1;
}

bool SameSaveDirectory(const wchar_t* a, const wchar_t* b)
{
    return ::CompareStringOrdinal(a, -1, b, -1, TRUE) == CSTR_EQUAL;
}
