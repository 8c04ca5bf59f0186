#include <windows.h>
#include <objbase.h>

#include <cwchar>

#include "QxDumpHandler/QxDumpHandler.h"
#include "server/CommandLine.h"
#include "server/ExeModule.h"
#include "app/LanguageModule.h"
#include "app/MessWndInstance.h"
#include "server/ProgramFiles.h"
#include "intake/ClassObjects.h"
#include "intake/Registration.h"
#include "lang/ResourceIds.h"
#include "loginfoCfg/LogInfoConfig.h"
#include "winlayer/Resources.h"

namespace {

// Fixed for good: other instances, and other programs of the suite, find
// it by this name, the GUID in registry text form (upper case, no braces).
constexpr wchar_t kInstanceMutexName[] = L"Oriel60_CC9FC917-C9DF-4030-83B6-D22437DEE555";

LogInfoConfig logInfoConfig;

// The about and auxiliary texts when the suite's configuration cannot be
// read: strings of the program file itself, which has no string table, so
// in practice both stay empty.
void UseFallbackTexts(HINSTANCE instance)
{
    wchar_t text[256];
    winlayer::LoadTextFrom(instance, IDS_ABOUT_FALLBACK, text, 256);
    std::wcsncpy(logInfoConfig.aboutText, text, 256);
    winlayer::LoadTextFrom(instance, IDS_AUX_FALLBACK, text, 256);
    std::wcsncpy(logInfoConfig.auxText, text, 256);
}

void CreateAndShowMainWindow(HINSTANCE instance, HMODULE language)
{
    wchar_t title[128];
    wchar_t className[128];
    winlayer::LoadText(IDS_WINDOW_TITLE, title, 128);
    winlayer::LoadText(IDS_WINDOW_CLASS, className, 128);
    HMENU menu = ::LoadMenuW(language, MAKEINTRESOURCEW(IDR_MAIN_MENU));
    HICON icon = LoadWindowIcon(logInfoConfig.iconFileName);
    if (icon == nullptr)
        icon = ::LoadIconW(language, MAKEINTRESOURCEW(IDI_ORIEL));

    messWnd.SetAboutText(logInfoConfig.aboutText);
    messWnd.SetIconFileName(logInfoConfig.iconFileName);
    exeModule.lineSink = &messWnd;
    CMessWnd::RegisterClass(instance, className, icon);
    // When creation fails the process goes on without a window.
    messWnd.CreateMainWindow(instance, className, title, menu);
    ::ShowWindow(messWnd.Handle(), SW_SHOWMINNOACTIVE);
}

void RunMessageLoop()
{
    // No translation step: the window takes keys as WM_KEYDOWN only.
    MSG message;
    while (::GetMessageW(&message, nullptr, 0, 0) != 0)
        ::DispatchMessageW(&message);
}

} // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int)
{
    InitHandler();

    HANDLE mutex = ::CreateMutexW(nullptr, FALSE, kInstanceMutexName);
    if (mutex == nullptr || ::GetLastError() == ERROR_ALREADY_EXISTS)
        return -1;

    const wchar_t* commandLine = ::GetCommandLineW();
    ::CoInitialize(nullptr);
    exeModule.Init(instance, ::GetCurrentThreadId());

    HMODULE language = ::LoadLibraryW(BuildLanguageModulePath(ReadLanguageCode(0), 0).c_str());
    if (language == nullptr)
        return -1;
    winlayer::SetResourceModule(language);

    wchar_t configPath[MAX_PATH];
    GetProgramDirectory(configPath);
    std::wcsncat(configPath, L"config\\loginfo.ocfg", MAX_PATH - std::wcslen(configPath) - 1);
    if (LoadLogCfg(configPath, &logInfoConfig) == 0)
        UseFallbackTexts(instance);

    int exitCode = 0;
    const SwitchAction action = ScanCommandLine(commandLine);
    if (action != SwitchAction::Run) {
        exitCode = UpdateRegistration(instance, action == SwitchAction::Register);
    } else {
        exeModule.StartMonitor();
        RegisterClassObjects();
        CreateAndShowMainWindow(instance, language);
        RunMessageLoop();
        RevokeClassObjects();
        // Calls in progress get a moment to finish before the process goes.
        ::Sleep(1000);
    }

    // Terminating the module: nothing is left to undo.  The class objects
    // were revoked above, the monitor closes its own event, and the lock
    // count is a plain counter.
    ::CoUninitialize();
    ::CloseHandle(mutex);
    ::FreeLibrary(language);
    return exitCode;
}
