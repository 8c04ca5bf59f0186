#include "tools/qxltool/OutputStream.h"

#include "tools/qxltool/TextEncoding.h"

#include <vector>

OutputStream::OutputStream(DWORD standardHandle) : handle_(::GetStdHandle(standardHandle))
{
    DWORD mode = 0;
    console_ = ::GetConsoleMode(handle_, &mode) != FALSE;
    buffer_.reserve(kBlockBytes + 4096);
}

OutputStream::~OutputStream()
{
    Flush();
}

bool OutputStream::Flush()
{
    if (broken_ || buffer_.empty()) {
        buffer_.clear();
        return !broken_;
    }
    if (console_) {
        // The buffer is valid UTF-8 (see TextEncoding.h), so the console
        // gets back the very characters the lines were made of.
        const int size = static_cast<int>(buffer_.size());
        std::vector<wchar_t> wide(buffer_.size());
        const int units = ::MultiByteToWideChar(CP_UTF8, 0, buffer_.data(), size, wide.data(), size);
        DWORD written = 0;
        broken_ = !::WriteConsoleW(handle_, wide.data(), static_cast<DWORD>(units), &written, nullptr);
    } else {
        const char* bytes = buffer_.data();
        std::size_t left = buffer_.size();
        while (left > 0 && !broken_) {
            DWORD written = 0;
            broken_ = !::WriteFile(handle_, bytes, static_cast<DWORD>(left), &written, nullptr) ||
                      written == 0;
            bytes += written;
            left -= written;
        }
    }
    buffer_.clear();
    return !broken_;
}

void ReportError(const std::wstring& message)
{
    OutputStream error(STD_ERROR_HANDLE);
    error.Buffer() = "qxltool: " + ToUtf8(message) + "\n";
}

std::wstring SystemErrorText(DWORD code)
{
    wchar_t* text = nullptr;
    ::FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM |
                         FORMAT_MESSAGE_IGNORE_INSERTS,
                     nullptr, code, MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT),
                     reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    std::wstring result = text != nullptr ? text : L"error " + std::to_wstring(code);
    ::LocalFree(text);
    while (!result.empty() && (result.back() == L'\n' || result.back() == L'\r' || result.back() == L' '))
        result.pop_back();
    return result;
}
