// dialogshot: shows one dialog template of a language module with sample
// texts in its controls, so that it can be looked at or photographed.
//   dialogshot <module.dll> <dialog id> [<control id>=<text> ...]
// Controls named on the command line get the text and are enabled.  The
// dialog closes with OK, Cancel or after 20 seconds.
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <string>
#include <vector>

namespace {

constexpr UINT_PTR kCloseTimer = 1;
constexpr UINT kCloseAfterMs = 20000;

struct Sample {
    int control;
    std::wstring text;
};

INT_PTR CALLBACK ShowProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_INITDIALOG:
        for (const Sample& sample : *reinterpret_cast<const std::vector<Sample>*>(lParam)) {
            ::SetDlgItemTextW(dialog, sample.control, sample.text.c_str());
            ::EnableWindow(::GetDlgItem(dialog, sample.control), TRUE);
        }
        ::SetTimer(dialog, kCloseTimer, kCloseAfterMs, nullptr);
        // The focus on the default button, so no edit box shows its text selected.
        ::SetFocus(::GetDlgItem(dialog, LOWORD(::SendMessageW(dialog, DM_GETDEFID, 0, 0))));
        return FALSE;
    case WM_TIMER:
        ::EndDialog(dialog, IDCANCEL);
        return TRUE;
    case WM_COMMAND:
        if (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL)
            ::EndDialog(dialog, LOWORD(wParam));
        return TRUE;
    default:
        return FALSE;
    }
}

} // namespace

int wmain(int argc, wchar_t** argv)
{
    if (argc < 3) {
        std::fputws(L"usage: dialogshot <module.dll> <dialog id> [<control id>=<text> ...]\n",
                    stderr);
        return 2;
    }
    HMODULE module = ::LoadLibraryExW(argv[1], nullptr, LOAD_LIBRARY_AS_DATAFILE);
    if (module == nullptr) {
        std::fwprintf(stderr, L"dialogshot: cannot load %ls\n", argv[1]);
        return 1;
    }
    std::vector<Sample> samples;
    for (int i = 3; i < argc; ++i) {
        const std::wstring argument = argv[i];
        const std::size_t equals = argument.find(L'=');
        if (equals != std::wstring::npos)
            samples.push_back({static_cast<int>(std::wcstol(argument.c_str(), nullptr, 10)),
                               argument.substr(equals + 1)});
    }
    const INT_PTR result =
        ::DialogBoxParamW(module, MAKEINTRESOURCEW(std::wcstol(argv[2], nullptr, 10)), nullptr,
                          ShowProc, reinterpret_cast<LPARAM>(&samples));
    ::FreeLibrary(module);
    return result == -1 ? 1 : 0;
}
