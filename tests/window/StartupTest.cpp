#include <gtest/gtest.h>

#include "lang/ResourceIds.h"
#include "support/TestFiles.h"

using testing_support::CopyTree;
using testing_support::InstallDir;
using testing_support::kStillRunning;
using testing_support::RunningProcess;
using testing_support::TempDir;

namespace {

constexpr DWORD kExitRefused = static_cast<DWORD>(-1);
constexpr wchar_t kClassName[] = L"OrielMessWnd";

struct Outcome {
    bool windowShown = false;
    bool minimised = false;
    std::wstring title;
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

// A private copy of the installation folder, so each case can add or remove
// language modules and the selection file, and run the real program.
class Installation : public ::testing::Test {
protected:
    void SetUp() override
    {
        CopyTree(InstallDir(), dir.Path());
        chineseTitle = TitleIn(dir / L"Lang\\CHS\\OrielCHS.dll");
        englishTitle = TitleIn(dir / L"Lang\\EN\\OrielEN.dll");
        ASSERT_NE(chineseTitle, englishTitle);
    }

    void RemoveModule(const std::wstring& relative)
    {
        ASSERT_TRUE(::DeleteFileW((dir / relative).c_str()));
    }
    void CopyModule(const std::wstring& from, const std::wstring& to)
    {
        ASSERT_TRUE(::CopyFileW((dir / from).c_str(), (dir / to).c_str(), FALSE));
    }
    void SetLanguage(const char* value)
    {
        ::CreateDirectoryW((dir / L"Config").c_str(), nullptr);
        std::string text = std::string("[Language]\r\nCorvaneLanguage=") + value + "\r\n";
        testing_support::WriteFileBytes(dir / L"Config\\Language.ini",
                                        std::vector<unsigned char>(text.begin(), text.end()));
    }
    // Starts the program; when its window appears, notes its state and
    // closes it as a user would.
    Outcome Launch(const std::wstring& exeName = L"Oriel.exe")
    {
        RunningProcess process(L"\"" + (dir / exeName) + L"\"");
        Outcome outcome;
        HWND window = process.FindWindowOfClass(kClassName, 20000);
        if (window != nullptr) {
            outcome.windowShown = true;
            // The window exists a moment before start-up minimises it.
            for (int i = 0; i < 100 && !::IsIconic(window); ++i)
                ::Sleep(50);
            outcome.minimised = ::IsIconic(window) != FALSE;
            wchar_t title[128] = {};
            ::GetWindowTextW(window, title, 128);
            outcome.title = title;
            ::PostMessageW(window, WM_CLOSE, 0, 0);
        }
        outcome.exitCode = process.Wait(20000);
        return outcome;
    }

    TempDir dir;
    std::wstring chineseTitle;
    std::wstring englishTitle;
};

TEST_F(Installation, WithoutSelectionFileTheChineseModuleNamedAfterTheProgramIsUsed)
{
    RemoveModule(L"Lang\\EN\\OrielEN.dll");
    Outcome outcome = Launch();
    EXPECT_TRUE(outcome.windowShown);
    EXPECT_TRUE(outcome.minimised) << "the window starts minimised";
    EXPECT_EQ(chineseTitle, outcome.title);
    EXPECT_EQ(0u, outcome.exitCode);
    // The first start wrote the settings and made the default save directory.
    EXPECT_TRUE(testing_support::FileExists(dir / L"config\\ShowMess.ini"));
    EXPECT_TRUE(testing_support::FileExists(dir / L"log"));

    // The module is named after the program (the first-dot rule is tested on its own).
    CopyModule(L"Oriel.exe", L"Oriel2.exe");
    EXPECT_EQ(kExitRefused, Launch(L"Oriel2.exe").exitCode) << "no Oriel2CHS.dll yet";
    CopyModule(L"Lang\\CHS\\OrielCHS.dll", L"Lang\\CHS\\Oriel2CHS.dll");
    EXPECT_EQ(0u, Launch(L"Oriel2.exe").exitCode);
}

TEST_F(Installation, OnlyTheExactSpellingSelectsChineseWhichMustThenBeInstalled)
{
    RemoveModule(L"Lang\\CHS\\OrielCHS.dll");
    Outcome outcome = Launch();
    EXPECT_FALSE(outcome.windowShown) << "no selection file means Chinese";
    EXPECT_EQ(kExitRefused, outcome.exitCode);
    SetLanguage("CHINESE");
    EXPECT_EQ(kExitRefused, Launch().exitCode);
    SetLanguage("Chinese");
    outcome = Launch();
    EXPECT_EQ(englishTitle, outcome.title);
    EXPECT_EQ(0u, outcome.exitCode);
}

} // namespace
