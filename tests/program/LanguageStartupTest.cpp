// Start-up of the real program on a copy of the installation folder whose
// language modules and selection file the case changes.
#include <gtest/gtest.h>

#include "ProgramCopy.h"
#include "lang/ResourceIds.h"

using testing_support::kStillRunning;

namespace {

constexpr DWORD kExitRefused = static_cast<DWORD>(-1);

struct Outcome {
    bool minimised = false;
    std::wstring title;  // empty when no window appeared
    DWORD exitCode = kStillRunning;
};

std::wstring TitleIn(const std::wstring& module)
{
    HMODULE library = ::LoadLibraryExW(module.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    wchar_t title[128] = {};
    ::LoadStringW(library, IDS_WINDOW_TITLE, title, 128);
    ::FreeLibrary(library);
    return title;
}

TEST(LanguageStartup, TheSelectionFileOrItsAbsencePicksTheModuleNamedAfterTheProgram)
{
    ProgramCopy copy;
    const auto setLanguage = [&](const char* value) {
        ::CreateDirectoryW((copy / L"Config").c_str(), nullptr);
        const std::string text = std::string("[Language]\r\nCorvaneLanguage=") + value + "\r\n";
        testing_support::WriteFileBytes(copy / L"Config\\Language.ini",
                                        std::vector<unsigned char>(text.begin(), text.end()));
    };
    // Starts the program; when its window appears, notes its state and
    // closes it as a user would.
    const auto launch = [&](const std::wstring& exeName) {
        testing_support::RunningProcess program(copy.Command(exeName));
        Outcome outcome;
        if (HWND window = program.FindWindowOfClass(kMessWndClass, 20000)) {
            // The window exists a moment before start-up minimises it.
            outcome.minimised = testing_support::WaitUntil([&] { return ::IsIconic(window) != FALSE; }, 5000);
            wchar_t title[128] = {};
            ::GetWindowTextW(window, title, 128);
            outcome.title = title;
            ::PostMessageW(window, WM_CLOSE, 0, 0);
        }
        outcome.exitCode = program.Wait(20000);
        return outcome;
    };
    const std::wstring chineseTitle = TitleIn(copy / L"Lang\\CHS\\OrielCHS.dll");
    const std::wstring englishTitle = TitleIn(copy / L"Lang\\EN\\OrielEN.dll");
    ASSERT_NE(chineseTitle, englishTitle);

    // Without a selection file the program speaks Chinese.
    const Outcome first = launch(L"Oriel.exe");
    EXPECT_TRUE(first.minimised) << "the window starts minimised";
    EXPECT_EQ(chineseTitle, first.title);
    EXPECT_EQ(0u, first.exitCode);
    // The first start wrote the settings and made the default save directory.
    EXPECT_TRUE(testing_support::FileExists(copy / L"config\\ShowMess.ini"));
    EXPECT_TRUE(testing_support::FileExists(copy / L"log"));

    // Only the exact spelling selects Chinese.
    setLanguage("Chinese");
    EXPECT_EQ(englishTitle, launch(L"Oriel.exe").title);
    // A program of another name needs a module of its name, or it refuses to start.
    setLanguage("CHINESE");
    ASSERT_TRUE(::CopyFileW((copy / L"Oriel.exe").c_str(), (copy / L"Oriel2.exe").c_str(), FALSE));
    EXPECT_EQ(kExitRefused, launch(L"Oriel2.exe").exitCode) << "no Oriel2CHS.dll yet";
    ASSERT_TRUE(::CopyFileW((copy / L"Lang\\CHS\\OrielCHS.dll").c_str(),
                            (copy / L"Lang\\CHS\\Oriel2CHS.dll").c_str(), FALSE));
    EXPECT_EQ(chineseTitle, launch(L"Oriel2.exe").title);
}

} // namespace
