// The real program and its clients as separate processes: both intake roads
// into the log file, across the proxy/stub and the global atom table, and
// the single instance.
#include <gtest/gtest.h>

#include <iterator>
#include <random>

#include "ProgramCopy.h"
#include "msgwnd/MessAtom.h"

using testing_support::kStillRunning;
using testing_support::RunProcess;
using testing_support::TempDir;

namespace {

constexpr DWORD kExitRefused = static_cast<DWORD>(-1);

// Any units but zero, surrogate halves in any order included.
std::wstring RandomUnits(std::mt19937& random, size_t length)
{
    std::uniform_int_distribution<int> unit(1, 0xFFFF);
    std::wstring text;
    for (size_t i = 0; i < length; ++i)
        text += static_cast<wchar_t>(unit(random));
    return text;
}

// Each line is stored as it came, cut at its road's limit: 128 units through
// the component, 127 through an atom; nothing else is added.
TEST(Intake, BothRoadsStoreEveryLineVerbatimInTheirOrder)
{
    TempDir save;
    const std::wstring directory = save / L"\x65E5\x5FD7";
    RegisteredCopy().UseSaveDirectory(directory);
    RunningProgram program(RegisteredCopy());
    const HWND window = program.Window();
    ASSERT_NE(nullptr, window);

    ShowMessClient client;
    ASSERT_EQ(S_OK, client.created());

    std::vector<std::wstring> componentTexts = {
        L"Pump P-101 started", L"\x6CF5 P-102 \x505C\x6B62", L"", L"%s%n%x%p%d%%",
        L"line\r\nbreak\t\x01\x1b\x7f", L"\xD800 lone high", L"lone low \xDC00",
        std::wstring(128, L'a'), std::wstring(300, L'c')};
    std::mt19937 random(20261123);
    std::uniform_int_distribution<size_t> length(1, 300);
    for (int i = 0; i < 10; ++i)
        componentTexts.push_back(RandomUnits(random, length(random)));
    const std::wstring atomTexts[] = {std::wstring(127, L'q'), std::wstring(255, L'r'), L"%s%n\t\xD800"};

    std::vector<std::wstring> expected;
    for (size_t i = 0; i < componentTexts.size(); ++i) {
        EXPECT_EQ(S_OK, client.Show(componentTexts[i]));
        expected.push_back(componentTexts[i].substr(0, 128));
        if (i < std::size(atomTexts)) {
            EXPECT_EQ(0, SendAtomLine(window, atomTexts[i]));
            expected.push_back(atomTexts[i].substr(0, 127));
        }
    }
    ATOM gone = ::GlobalAddAtomW(L"deleted before it was sent");
    ::GlobalDeleteAtom(gone);
    EXPECT_EQ(-1, ::SendMessageW(window, WM_MESSATOM, gone, 0));
    client.Release();
    std::vector<ProcessBox> boxes;
    EXPECT_EQ(0u, program.Close(&boxes));
    EXPECT_TRUE(boxes.empty());

    const DecodedLog log = DecodeLog(testing_support::ReadFileBytes(NewestLogFile(directory)));
    EXPECT_EQ(expected, TextsOf(log));
    EXPECT_EQ(0u, log.trailingBytes);
}

// A second start, or registering, while the first runs, ends at once with
// -1; the tool feeds standard input and arguments through both roads; a
// process started by hand, which no client has used, stays past the 5 s.
TEST(Intake, OneInstanceRunsAndTheToolFeedsItThroughBothRoads)
{
    TempDir save;
    RegisteredCopy().UseSaveDirectory(save.Path());
    RunningProgram program(RegisteredCopy());
    const HWND window = program.Window();
    ASSERT_NE(nullptr, window);
    // Other programs of the suite look for it by this name.
    HANDLE mutex = ::OpenMutexW(SYNCHRONIZE, FALSE, L"Oriel60_CC9FC917-C9DF-4030-83B6-D22437DEE555");
    EXPECT_NE(nullptr, mutex);
    ::CloseHandle(mutex);
    EXPECT_EQ(kExitRefused, RegisteredCopy().Run(L""));
    EXPECT_EQ(kExitRefused, RegisteredCopy().Run(L"/RegServer"));
    EXPECT_EQ(0, SendAtomLine(window, L"still here"));
    ::Sleep(6000);
    EXPECT_EQ(kStillRunning, program.Process().Wait(0)) << "no client ever let go";

    const std::wstring tool = RegisteredCopy().Command(L"showmess.exe");
    const std::string input = "Pump P-3 \xE6\xB3\xB5 on\r\n\r\nFeeder F-1 stopped";
    testing_support::WriteFileBytes(save / L"lines.txt", std::vector<unsigned char>(input.begin(), input.end()));
    EXPECT_EQ(0u, RunProcess(L"cmd /c \"" + tool + L" < \"" + (save / L"lines.txt") + L"\"\"", 20000));
    EXPECT_EQ(0u, RunProcess(tool + L" --atom \"Valve V-9 closed\" \"Valve V-10 closed\"", 20000));
    EXPECT_EQ(0u, RunProcess(tool + L" --count 3 Load --close", 20000));
    EXPECT_EQ(0u, program.Process().Wait(10000));
    EXPECT_EQ(1u, RunProcess(tool + L" --atom \"no window\"", 20000));

    const std::vector<std::wstring> expected = {
        L"still here",       L"Pump P-3 \x6CF5 on", L"",       L"Feeder F-1 stopped", L"Valve V-9 closed",
        L"Valve V-10 closed", L"Load 1",            L"Load 2", L"Load 3"};
    EXPECT_EQ(expected, LogTexts(NewestLogFile(save.Path())));
}

} // namespace
