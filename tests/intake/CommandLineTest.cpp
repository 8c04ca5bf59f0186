#include <gtest/gtest.h>

#include "server/CommandLine.h"
#include "server/ProgramFiles.h"

namespace {

TEST(FindSwitch, ReturnsThePositionAfterTheFirstSwitchCharacter)
{
    const wchar_t* line = L"C:\\Oriel\\Oriel.exe /RegServer";
    EXPECT_EQ(line + 20, FindSwitch(line, L"-/"));
    EXPECT_EQ(nullptr, FindSwitch(L"C:\\Oriel\\Oriel.exe", L"-/"));
    EXPECT_EQ(nullptr, FindSwitch(L"", L"-/"));
    const wchar_t* dashed = L"a-b/c";
    EXPECT_EQ(dashed + 2, FindSwitch(dashed, L"-/"));
    EXPECT_EQ(dashed + 4, FindSwitch(dashed, L"/"));
}

TEST(ScanCommandLine, RecognisesEitherSwitchInAnyCaseAfterEitherCharacter)
{
    EXPECT_EQ(SwitchAction::Register, ScanCommandLine(L"\"C:\\Oriel\\Oriel.exe\" /RegServer"));
    EXPECT_EQ(SwitchAction::Register, ScanCommandLine(L"Oriel.exe -regserver"));
    EXPECT_EQ(SwitchAction::Unregister, ScanCommandLine(L"Oriel.exe /UNREGSERVER"));
    EXPECT_EQ(SwitchAction::Unregister, ScanCommandLine(L"Oriel.exe -UnregServer"));
}

TEST(ScanCommandLine, ASwitchCountsOnlyAsTheWholeRestOfTheLine)
{
    EXPECT_EQ(SwitchAction::Run, ScanCommandLine(L"Oriel.exe /RegServer /foo"));
    EXPECT_EQ(SwitchAction::Run, ScanCommandLine(L"Oriel.exe /RegServer now"));
    EXPECT_EQ(SwitchAction::Run, ScanCommandLine(L"Oriel.exe /RegServer "));
    EXPECT_EQ(SwitchAction::Run, ScanCommandLine(L"Oriel.exe RegServer"));
    // A later switch is found after an earlier one that matched nothing.
    EXPECT_EQ(SwitchAction::Register, ScanCommandLine(L"Oriel.exe /foo /RegServer"));
    EXPECT_EQ(SwitchAction::Unregister, ScanCommandLine(L"Oriel.exe -x -UnregServer"));
}

TEST(ScanCommandLine, SwitchCharactersInTheProgramPathMatchNothing)
{
    EXPECT_EQ(SwitchAction::Run, ScanCommandLine(L"Z:/opt/oriel-6/Oriel.exe"));
    EXPECT_EQ(SwitchAction::Register, ScanCommandLine(L"Z:/opt/oriel-6/Oriel.exe -RegServer"));
    EXPECT_EQ(SwitchAction::Run, ScanCommandLine(L"C:\\Oriel\\Oriel.exe -Embedding"));
    EXPECT_EQ(SwitchAction::Run, ScanCommandLine(L"C:\\Oriel\\Oriel.exe /Automation"));
}

// Settings, icon and language paths are the directory and a name appended.
TEST(ProgramDirectoryOf, KeepsTheBackslashThatNamesAreAppendedTo)
{
    EXPECT_EQ(L"C:\\Suite\\Bin\\", ProgramDirectoryOf(L"C:\\Suite\\Bin\\Oriel.exe"));
}

} // namespace
