#include "tools/qxltool/ToolLanguage.h"

#include "app/LanguageModule.h"
#include "winlayer/Resources.h"

namespace {
// The window's program file, whose name the module names are made from.
constexpr wchar_t kWindowProgram[] = L"\\Oriel.exe";
} // namespace

std::wstring ToolLanguageModulePath(LanguageChoice choice)
{
    const int code = choice == LanguageChoice::Chinese   ? LanguageChinese
                     : choice == LanguageChoice::English ? LanguageEnglish
                                                         : ReadLanguageCode(0);
    return LanguageModulePathFor(GetModuleDirectory(0) + kWindowProgram, code, 0);
}

HMODULE LoadToolLanguage(LanguageChoice choice, std::wstring& path)
{
    path = ToolLanguageModulePath(choice);
    HMODULE module = ::LoadLibraryW(path.c_str());
    if (module != nullptr)
        winlayer::SetResourceModule(module);
    return module;
}
