#include "app/LanguageModule.h"

#include <cstring>

namespace {

std::wstring CutAtLastBackslash(const std::wstring& text)
{
    std::size_t slash = text.rfind(L'\\');
    return slash == std::wstring::npos ? std::wstring() : text.substr(0, slash);
}

} // namespace

std::wstring ModuleDirectoryFromPath(const std::wstring& programPath, int levels)
{
    std::wstring directory = CutAtLastBackslash(programPath);
    for (int i = 0; i < levels; ++i)
        directory = CutAtLastBackslash(directory);
    return directory;
}

int LanguageCodeFromValue(const std::wstring& value)
{
    // Deliberately case-sensitive: only the suite's own spelling selects Chinese.
    return value == L"CHINESE" ? LanguageChinese : LanguageEnglish;
}

std::wstring LanguageModulePathFor(const std::wstring& programPath, int languageCode, int levels)
{
    std::wstring directory = ModuleDirectoryFromPath(programPath, levels);
    std::size_t slash = programPath.rfind(L'\\');
    std::wstring name = slash == std::wstring::npos ? programPath : programPath.substr(slash + 1);
    std::size_t dot = name.find(L'.');
    // A name without a dot leaves only the suffix.
    name = dot == std::wstring::npos ? std::wstring() : name.substr(0, dot);
    if (languageCode == LanguageChinese) {
        name += L"CHS.dll";
        directory += L"\\Lang\\CHS\\";
    } else {
        name += L"EN.dll";
        directory += L"\\Lang\\EN\\";
    }
    return directory + name;
}

std::wstring ProgramLongPath()
{
    wchar_t shortPath[MAX_PATH] = {};
    wchar_t longPath[MAX_PATH];
    std::memset(longPath, 0, sizeof(longPath));
    ::GetModuleFileNameW(nullptr, shortPath, MAX_PATH);
    ::GetLongPathNameW(shortPath, longPath, MAX_PATH);
    return longPath;
}

std::wstring GetModuleDirectory(int levels)
{
    return ModuleDirectoryFromPath(ProgramLongPath(), levels);
}

int ReadLanguageCode(int levels)
{
    std::wstring iniPath = GetModuleDirectory(levels) + L"\\Config\\Language.ini";
    wchar_t value[256];
    std::memset(value, 0, sizeof(value));
    ::GetPrivateProfileStringW(L"Language", L"CorvaneLanguage", L"CHINESE", value, 256,
                               iniPath.c_str());
    return LanguageCodeFromValue(value);
}

std::wstring BuildLanguageModulePath(int languageCode, int levels)
{
    return LanguageModulePathFor(ProgramLongPath(), languageCode, levels);
}
