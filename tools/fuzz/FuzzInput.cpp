#include "tools/fuzz/FuzzDriver.h"

#include <windows.h>

std::uint32_t FuzzInput::Number(std::uint32_t limit)
{
    std::uint32_t value = 0;
    for (int i = 0; i < 4 && left_ > 0; ++i, ++data_, --left_)
        value = value << 8 | *data_;
    return limit == 0 ? 0 : value % limit;
}

std::wstring FuzzInput::Text(std::size_t maxUnits)
{
    std::wstring text;
    while (text.size() < maxUnits && left_ >= 2) {
        const wchar_t unit = static_cast<wchar_t>(data_[0] | data_[1] << 8);
        data_ += 2;
        left_ -= 2;
        if (unit == 0)
            break;
        text.push_back(unit);
    }
    return text;
}

bool WriteWholeFile(const std::wstring& path, const void* bytes, std::size_t size)
{
    HANDLE file = ::CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    DWORD written = 0;
    const bool ok = size == 0 || (::WriteFile(file, bytes, static_cast<DWORD>(size), &written, nullptr) &&
                                  written == size);
    ::CloseHandle(file);
    return ok;
}

std::string ReadWholeFile(const std::wstring& path)
{
    HANDLE file = ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return {};
    std::string bytes(::GetFileSize(file, nullptr), '\0');
    DWORD read = 0;
    if (!bytes.empty() && (!::ReadFile(file, &bytes[0], static_cast<DWORD>(bytes.size()), &read, nullptr) ||
                           read != bytes.size()))
        bytes.clear();
    ::CloseHandle(file);
    return bytes;
}
