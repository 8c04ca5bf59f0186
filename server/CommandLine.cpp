#include "server/CommandLine.h"

#include <windows.h>

const wchar_t* FindSwitch(const wchar_t* text, const wchar_t* switchChars)
{
    for (const wchar_t* p = text; *p != L'\0'; p = ::CharNextW(p)) {
        for (const wchar_t* s = switchChars; *s != L'\0'; ++s) {
            if (*p == *s)
                return ::CharNextW(p);
        }
    }
    return nullptr;
}

SwitchAction ScanCommandLine(const wchar_t* commandLine)
{
    static const wchar_t kSwitchChars[] = L"-/";
    for (const wchar_t* rest = FindSwitch(commandLine, kSwitchChars); rest != nullptr;
         rest = FindSwitch(rest, kSwitchChars)) {
        if (::lstrcmpiW(rest, L"UnregServer") == 0)
            return SwitchAction::Unregister;
        if (::lstrcmpiW(rest, L"RegServer") == 0)
            return SwitchAction::Register;
    }
    return SwitchAction::Run;
}
