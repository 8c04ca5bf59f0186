#include "settings/SaveSettings.h"

#include <shlwapi.h>

namespace {

constexpr wchar_t kSection[] = L"save";

void ProgramDirectory(wchar_t (&path)[MAX_PATH])
{
    ::GetModuleFileNameW(nullptr, path, MAX_PATH);
    ::PathRemoveFileSpecW(path);
}

} // namespace

SettingsFile::SettingsFile(const wchar_t* path)
{
    ::lstrcpynW(path_, path, MAX_PATH);
}

void SettingsFile::Locate(const wchar_t* fileName)
{
    ProgramDirectory(path_);
    ::PathAppendW(path_, L"config");
    ::PathAppendW(path_, fileName);
}

bool SettingsFile::Read(SaveSettings& settings) const
{
    const SaveSettings defaults;
    settings.saveDays = ::GetPrivateProfileIntW(kSection, L"savedays", defaults.saveDays, path_);
    settings.saveTime = ::GetPrivateProfileIntW(kSection, L"savetime", defaults.saveTime, path_);
    settings.logSize = ::GetPrivateProfileIntW(kSection, L"logsize", defaults.logSize, path_);
    ::GetPrivateProfileStringW(kSection, L"savedirectory", L"", settings.saveDirectory, MAX_PATH,
                               path_);
    if (settings.saveDirectory[0] != L'\0')
        return true;
    // No save directory yet: the default one, and the defaults written back.
    // The numbers written are the constant defaults, not the values just
    // read: a file with only "savedays" = 30 runs with 30 this time and says
    // 10 from now on.  Kept that way on purpose.
    ProgramDirectory(settings.saveDirectory);
    ::PathAppendW(settings.saveDirectory, L"log");
    Write(L"savedays", L"10");
    Write(L"savetime", L"600");
    Write(L"logsize", L"10");
    Write(L"savedirectory", settings.saveDirectory);
    return false;
}

bool SettingsFile::Write(const wchar_t* key, const wchar_t* value) const
{
    // A new file starts as a UTF-16 byte-order mark alone: the profile
    // functions then keep writing UTF-16, and a save directory named in any
    // script survives the next start instead of turning into question marks.
    HANDLE file = ::CreateFileW(path_, GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
        static const unsigned char kByteOrderMark[] = {0xFF, 0xFE};
        DWORD written = 0;
        ::WriteFile(file, kByteOrderMark, sizeof kByteOrderMark, &written, nullptr);
        ::CloseHandle(file);
    }
    return ::WritePrivateProfileStringW(kSection, key, value, path_) != FALSE;
}
