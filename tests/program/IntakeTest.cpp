// The real program and its clients as separate processes: both intake roads
// into the log file, across the proxy/stub and the global atom table, and
// the single instance.
#include <gtest/gtest.h>

#include <iterator>
#include <random>

#include "ProgramCopy.h"

using testing_support::kStillRunning;
using testing_support::RunProcess;
using testing_support::TempDir;

namespace {

constexpr DWORD kExitRefused = static_cast<DWORD>(-1);

// Each line is stored as it came, cut at its road's limit: 128 units through
// the component, 127 through an atom; nothing else is added.
TEST(Intake, BothRoadsStoreEveryLineVerbatimInTheirOrder)
{
    TempDir save;
    const std::wstring directory = save / L"\x65E5\x5FD7";
    RegisteredCopy().UseSaveDirectory(directory);
    testing_support::RunningProcess program(RegisteredCopy().Command());
    const HWND window = program.FindWindowOfClass(kMessWndClass, 10000);
    ASSERT_NE(nullptr, window);

    auto client = std::make_unique<ShowMessClient>();
    ASSERT_EQ(S_OK, client->created());

    std::vector<std::wstring> componentTexts = {
        L"Pump P-101 started", L"\x6CF5 P-102 \x505C\x6B62", L"", L"%s%n%x%p%d%%",
        L"line\r\nbreak\t\x01\x1b\x7f", L"\xD800 lone high", L"lone low \xDC00",
        std::wstring(128, L'a'), std::wstring(300, L'c')};
    // And random ones: any units but zero, surrogate halves in any order included.
    std::mt19937 random(20261123);
    std::uniform_int_distribution<size_t> length(1, 300);
    std::uniform_int_distribution<int> unit(1, 0xFFFF);
    for (int i = 0; i < 10; ++i) {
        componentTexts.emplace_back(length(random), L' ');
        for (wchar_t& c : componentTexts.back())
            c = static_cast<wchar_t>(unit(random));
    }
    const std::wstring atomTexts[] = {std::wstring(127, L'q'), std::wstring(255, L'r'), L"%s%n\t\xD800"};

    std::vector<std::wstring> expected;
    for (size_t i = 0; i < componentTexts.size(); ++i) {
        EXPECT_EQ(S_OK, client->Show(componentTexts[i]));
        expected.push_back(componentTexts[i].substr(0, 128));
        if (i < std::size(atomTexts)) {
            EXPECT_EQ(0, SendAtomLine(window, atomTexts[i]));
            expected.push_back(atomTexts[i].substr(0, 127));
        }
    }
    client.reset();
    ::PostMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_TRUE(AnswerBoxes(program.Id(), 1500).empty());
    EXPECT_EQ(0u, program.Wait(10000));
    EXPECT_EQ(expected, LogTexts(NewestLogFile(directory)));
}

// A second start, or registering, while the first runs, ends at once with
// -1; the tool feeds standard input and arguments through both roads; a
// process started by hand, which no client has used, stays past the 5 s.
TEST(Intake, OneInstanceRunsAndTheToolFeedsItThroughBothRoads)
{
    TempDir save;
    RegisteredCopy().UseSaveDirectory(save.Path());
    testing_support::RunningProcess program(RegisteredCopy().Command());
    ASSERT_NE(nullptr, program.FindWindowOfClass(kMessWndClass, 10000));
    // Other programs of the suite look for it by this name.
    HANDLE mutex = ::OpenMutexW(SYNCHRONIZE, FALSE, L"Oriel60_CC9FC917-C9DF-4030-83B6-D22437DEE555");
    EXPECT_NE(nullptr, mutex);
    ::CloseHandle(mutex);
    EXPECT_EQ(kExitRefused, RegisteredCopy().Run(L""));
    EXPECT_EQ(kExitRefused, RegisteredCopy().Run(L"/RegServer"));
    const std::wstring tool = RegisteredCopy().Command(L"showmess.exe");
    EXPECT_EQ(0u, RunProcess(tool + L" --atom \"still here\"", 20000));
    ::Sleep(6000);
    EXPECT_EQ(kStillRunning, program.Wait(0)) << "no client ever let go";

    const std::string input = "Pump P-3 \xE6\xB3\xB5 on\r\n\r\nFeeder F-1 stopped";
    testing_support::WriteFileBytes(save / L"lines.txt", std::vector<unsigned char>(input.begin(), input.end()));
    EXPECT_EQ(0u, RunProcess(L"cmd /c \"" + tool + L" < \"" + (save / L"lines.txt") + L"\"\"", 20000));
    EXPECT_EQ(0u, RunProcess(tool + L" --atom \"Valve V-9 closed\" \"Valve V-10 closed\"", 20000));
    EXPECT_EQ(0u, RunProcess(tool + L" --count 3 Load --close", 20000));
    EXPECT_EQ(0u, program.Wait(10000));
    EXPECT_EQ(1u, RunProcess(tool + L" --atom \"no window\"", 20000));

    const std::vector<std::wstring> expected = {
        L"still here",       L"Pump P-3 \x6CF5 on", L"",       L"Feeder F-1 stopped", L"Valve V-9 closed",
        L"Valve V-10 closed", L"Load 1",            L"Load 2", L"Load 3"};
    EXPECT_EQ(expected, LogTexts(NewestLogFile(save.Path())));
}

} // namespace
