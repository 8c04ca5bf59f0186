#include <windows.h>

#include "QxDumpHandler/QxDumpHandler.h"
#include "app/LanguageModule.h"
#include "winlayer/Resources.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int)
{
    InitHandler();

    int languageCode = ReadLanguageCode(0);
    HMODULE language = ::LoadLibraryW(BuildLanguageModulePath(languageCode, 0).c_str());
    if (language == nullptr)
        return -1;
    winlayer::SetResourceModule(language);

    ::FreeLibrary(language);
    return 0;
}
