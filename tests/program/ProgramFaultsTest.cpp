// Faults met by the running program, made for real from outside: a full
// disk, and a current log file too short for its header.  The boxes are
// read and answered from this process, the log files read afterwards.
#include <gtest/gtest.h>

#include <algorithm>

#include "ProgramCopy.h"
#include "lang/ResourceIds.h"

using testing_support::ReadFileBytes;
using testing_support::TempDir;

namespace {

constexpr size_t kSlot = 272;

// The lines "com N" and "atom N" for N in [from, to], alternating roads.
std::vector<std::wstring> SendAlternating(ShowMessClient& client, HWND window, int from, int to)
{
    std::vector<std::wstring> sent;
    for (int i = from; i <= to; ++i) {
        const bool atom = i % 2 == 0;
        sent.push_back((atom ? L"atom " : L"com ") + std::to_wstring(i));
        EXPECT_EQ(atom ? 0 : S_OK, atom ? SendAtomLine(window, sent.back()) : client.Show(sent.back()));
    }
    return sent;
}

// A real disk of 108 KiB (with-tmpfs.sh): a 40 KiB filler leaves the log
// exactly 17 pages, the header and 255 records, so that the 256th write
// finds the disk full with nothing written.
TEST(ProgramFaults, FullDiskAnnouncesOnceClosesTheAtomRoadAndStopsWriting)
{
    const std::wstring root = testing_support::PathFromEnvironment("ORIEL_SMALL_DISK");
    if (root.empty())
        GTEST_SKIP() << "no small disk: run through with-tmpfs.sh as a user allowed to mount tmpfs";
    const std::wstring directory = root + L"\\log";
    ASSERT_TRUE(::CreateDirectoryW(directory.c_str(), nullptr));
    testing_support::WriteFileBytes(root + L"\\filler", std::vector<unsigned char>(40960, 0));

    RegisteredCopy().UseSaveDirectory(directory, 1);
    RunningProgram program(RegisteredCopy());
    ASSERT_NE(nullptr, program.Window());
    ShowMessClient client;
    ASSERT_EQ(S_OK, client.created());
    std::vector<std::wstring> sent = SendAlternating(client, program.Window(), 1, 200);
    const std::wstring log = NewestLogFile(directory);
    ASSERT_TRUE(testing_support::WaitUntil([&] { return ReadFileBytes(log).size() == kSlot * 201; }, 5000));
    const std::vector<std::wstring> more = SendAlternating(client, program.Window(), 201, 300);
    sent.insert(sent.end(), more.begin(), more.end());

    const ProcessBox system = WaitForNewBox(program.Id(), {}, 5000);
    ASSERT_NE(nullptr, system.window);
    EXPECT_EQ(SystemErrorText(ERROR_DISK_FULL), system.text);
    EXPECT_EQ(ChineseText(IDS_ERROR_CAPTION), system.caption);
    EXPECT_EQ(nullptr, system.owner);
    // Under the box: atom lines are ignored from now on, component lines taken.
    EXPECT_EQ(0, SendAtomLine(program.Window(), L"atom after the full disk"));
    EXPECT_EQ(S_OK, client.Show(L"com after the full disk"));
    sent.push_back(L"com after the full disk");
    PressOk(system);
    const ProcessBox timed = WaitForNewBox(program.Id(), {system.window}, 5000);
    EXPECT_EQ(ChineseText(IDS_TIMED_FLUSH_FAILED), timed.text);
    EXPECT_EQ(program.Window(), timed.owner);
    PressOk(timed);

    // Room again, but the flush and size timers stay stopped: nothing is
    // written and nothing is reported until the window closes.
    ASSERT_TRUE(::DeleteFileW((root + L"\\filler").c_str()));
    EXPECT_EQ(S_OK, client.Show(L"com last"));
    sent.push_back(L"com last");
    ::Sleep(2500);
    EXPECT_TRUE(OpenBoxes(program.Id()).empty());
    EXPECT_EQ(kSlot * 256, ReadFileBytes(log).size());
    client.Release();
    std::vector<ProcessBox> closingBoxes;
    EXPECT_EQ(0u, program.Close(&closingBoxes));
    EXPECT_TRUE(closingBoxes.empty());

    // Every line sent, in order, with the notice once after the 255 written
    // before the disk filled.
    std::vector<std::wstring> stored = LogTexts(log);
    const auto notice = std::find(stored.begin(), stored.end(), ChineseText(IDS_DISK_FULL_NOTICE));
    ASSERT_NE(stored.end(), notice);
    EXPECT_GE(notice - stored.begin(), 255);
    stored.erase(notice);
    EXPECT_EQ(sent, stored);
}

// 31 bytes hold no whole version text: window creation fails without a
// word, the component still takes lines, and the monitor ends the process
// 5 s after its client lets go.
TEST(ProgramFaults, HeaderShorterThan32BytesLeavesAWindowlessServer)
{
    TempDir save;
    const std::vector<unsigned char> header = LogImage({});
    const std::vector<unsigned char> image(header.begin(), header.begin() + 31);
    testing_support::WriteFileBytes(save / L"2601010000.qxl", image);
    RegisteredCopy().UseSaveDirectory(save.Path(), 1);
    RunningProgram program(RegisteredCopy());
    // The window exists for the moment of its failed creation; a slow
    // machine may catch sight of it.  None may stay.
    program.Window(3000);
    ::Sleep(500);
    EXPECT_EQ(nullptr, program.Process().FindWindowOfClass(L"OrielMessWnd", 0));
    EXPECT_EQ(testing_support::kStillRunning, program.Process().Wait(0));
    EXPECT_TRUE(OpenBoxes(program.Id()).empty());
    {
        ShowMessClient client;
        ASSERT_EQ(S_OK, client.created());
        EXPECT_EQ(S_OK, client.Show(L"to a server without a window"));
    }
    EXPECT_EQ(0u, program.Process().Wait(15000));
    EXPECT_EQ(image, ReadFileBytes(save / L"2601010000.qxl"));
}

} // namespace
