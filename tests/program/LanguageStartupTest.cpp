// Start-up of the real program on copies of the installation folder whose
// language modules and selection file each case changes.
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

class LanguageStartup : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_NE(chineseTitle, englishTitle); }

    void SetLanguage(const char* value)
    {
        ::CreateDirectoryW((copy / L"Config").c_str(), nullptr);
        const std::string text = std::string("[Language]\r\nCorvaneLanguage=") + value + "\r\n";
        testing_support::WriteFileBytes(copy / L"Config\\Language.ini",
                                        std::vector<unsigned char>(text.begin(), text.end()));
    }
    // Starts the program; when its window appears, notes its state and
    // closes it as a user would.
    Outcome Launch(const std::wstring& exeName = L"Oriel.exe")
    {
        RunningProgram program(copy, exeName);
        Outcome outcome;
        if (HWND window = program.Window(20000)) {
            // The window exists a moment before start-up minimises it.
            outcome.minimised = testing_support::WaitUntil([&] { return ::IsIconic(window) != FALSE; }, 5000);
            wchar_t title[128] = {};
            ::GetWindowTextW(window, title, 128);
            outcome.title = title;
            ::PostMessageW(window, WM_CLOSE, 0, 0);
        }
        outcome.exitCode = program.Process().Wait(20000);
        return outcome;
    }

    ProgramCopy copy;
    std::wstring chineseTitle = TitleIn(copy / L"Lang\\CHS\\OrielCHS.dll");
    std::wstring englishTitle = TitleIn(copy / L"Lang\\EN\\OrielEN.dll");
};

TEST_F(LanguageStartup, WithoutSelectionFileTheChineseModuleNamedAfterTheProgramIsUsed)
{
    ASSERT_TRUE(::DeleteFileW((copy / L"Lang\\EN\\OrielEN.dll").c_str()));
    Outcome outcome = Launch();
    EXPECT_TRUE(outcome.minimised) << "the window starts minimised";
    EXPECT_EQ(chineseTitle, outcome.title);
    EXPECT_EQ(0u, outcome.exitCode);
    // The first start wrote the settings and made the default save directory.
    EXPECT_TRUE(testing_support::FileExists(copy / L"config\\ShowMess.ini"));
    EXPECT_TRUE(testing_support::FileExists(copy / L"log"));

    ASSERT_TRUE(::CopyFileW((copy / L"Oriel.exe").c_str(), (copy / L"Oriel2.exe").c_str(), FALSE));
    EXPECT_EQ(kExitRefused, Launch(L"Oriel2.exe").exitCode) << "no Oriel2CHS.dll yet";
    ASSERT_TRUE(::CopyFileW((copy / L"Lang\\CHS\\OrielCHS.dll").c_str(),
                            (copy / L"Lang\\CHS\\Oriel2CHS.dll").c_str(), FALSE));
    EXPECT_EQ(0u, Launch(L"Oriel2.exe").exitCode);
}

TEST_F(LanguageStartup, OnlyTheExactSpellingSelectsChineseWhichMustThenBeInstalled)
{
    ASSERT_TRUE(::DeleteFileW((copy / L"Lang\\CHS\\OrielCHS.dll").c_str()));
    Outcome outcome = Launch();
    EXPECT_TRUE(outcome.title.empty()) << "no selection file means Chinese";
    EXPECT_EQ(kExitRefused, outcome.exitCode);
    SetLanguage("CHINESE");
    EXPECT_EQ(kExitRefused, Launch().exitCode);
    SetLanguage("Chinese");
    outcome = Launch();
    EXPECT_EQ(englishTitle, outcome.title);
    EXPECT_EQ(0u, outcome.exitCode);
}

} // namespace
