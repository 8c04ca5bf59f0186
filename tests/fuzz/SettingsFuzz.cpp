// The settings file and the language selection, read from whatever a file may hold.  Input: how many folders
// up the language module lies, the program path it is found from, then the file's bytes (none: no file).  One
// file carries both sections, as the seeds show.
#include <algorithm>
#include <cwchar>

#include "app/LanguageModule.h"
#include "settings/SaveSettings.h"
#include "tools/fuzz/FuzzDriver.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput in(data, size);
    const int levels = static_cast<int>(in.Number(6));
    const std::wstring program = in.Text(300);
    const std::string bytes(reinterpret_cast<const char*>(in.Rest()), in.RestSize());
    static unsigned files = 0;  // a new name each time: the platform reuses a profile whose time stamp is unchanged
    const std::wstring path = FuzzScratchPath((L"settings" + std::to_wstring(++files) + L".ini").c_str());
    FUZZ_CHECK(bytes.empty() || WriteWholeFile(path, bytes.data(), bytes.size()));
    SaveSettings settings, again;
    const SettingsFile file(path.c_str());
    const bool named = file.Read(settings);
    FUZZ_CHECK(std::wmemchr(settings.saveDirectory, L'\0', MAX_PATH) && settings.saveDirectory[0]);
    // A file that names its directory stays as it is; otherwise "log" beside the program and the four
    // defaults are written back, to be read so next time.
    wchar_t exe[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, exe, MAX_PATH);
    const std::wstring log = std::wstring(exe, std::wcsrchr(exe, L'\\')) + L"\\log";
    // The platform's profile writer cannot rewrite a line cut by a zero byte
    // in a file of bytes (UTF-16 files are full of them): what it writes
    // back there is not read again, by no fault of ours.
    const bool rewritable = bytes.compare(0, 2, "\xFF\xFE") == 0 || bytes.find('\0') == std::string::npos;
    FUZZ_CHECK(named ? ReadWholeFile(path) == bytes
                     : settings.saveDirectory == log && (!rewritable || (file.Read(again) && again.saveDirectory == log &&
                                                          again.saveDays == 10 && again.saveTime == 600 && again.logSize == 10)));

    // Only the exact word selects Chinese.  The module path is the program's folder `levels` further up,
    // the language's folder, the program's name before its first dot and the language's suffix.
    wchar_t value[256];
    ::GetPrivateProfileStringW(L"Language", L"CorvaneLanguage", L"CHINESE", value, 256, path.c_str());
    ::DeleteFileW(path.c_str());
    const bool chinese = std::wcscmp(value, L"CHINESE") == 0;
    FUZZ_CHECK(LanguageCodeFromValue(value) == (chinese ? LanguageChinese : LanguageEnglish));
    const std::wstring module = LanguageModulePathFor(program, chinese ? LanguageChinese : LanguageEnglish, levels);
    const std::wstring folder = chinese ? L"\\Lang\\CHS\\" : L"\\Lang\\EN\\", suffix = chinese ? L"CHS.dll" : L"EN.dll";
    const std::size_t baseEnd = module.size() - std::min(module.size(), suffix.size());
    const std::size_t baseStart = module.rfind(L'\\', baseEnd) + 1, cut = baseStart - std::min(baseStart, folder.size());
    const std::wstring base = module.substr(baseStart, baseEnd - baseStart), name = program.substr(program.rfind(L'\\') + 1);
    FUZZ_CHECK(module.compare(baseEnd, suffix.size(), suffix) == 0 && module.compare(cut, folder.size(), folder) == 0 &&
               base.find(L'.') == std::wstring::npos && (name.compare(0, base.size() + 1, base + L".") == 0 ||
                                                        (base.empty() && name.find(L'.') == std::wstring::npos)) &&
               program.compare(0, cut, module, 0, cut) == 0 && (cut == 0 || program[cut] == L'\\') &&
               std::count(module.begin(), module.begin() + cut, L'\\') ==
                   std::max(0LL, std::count(program.begin(), program.end(), L'\\') - levels - 1LL));
    return 0;
}
