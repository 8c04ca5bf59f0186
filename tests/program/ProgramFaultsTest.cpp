// Faults met by the running program, made for real from outside: a full
// disk, and a current log file too short for its header.  The boxes are
// read and answered from this process, the log files read afterwards.
#include <gtest/gtest.h>

#include <algorithm>

#include "ProgramCopy.h"
#include "lang/ResourceIds.h"

using testing_support::ReadFileBytes;

namespace {

constexpr size_t kSlot = 272;

// Text `id` of the Chinese module, the one a copy without a language file uses.
std::wstring ChineseText(UINT id)
{
    static const HMODULE module = ::LoadLibraryExW((RegisteredCopy() / L"Lang\\CHS\\OrielCHS.dll").c_str(),
                                                   nullptr, LOAD_LIBRARY_AS_DATAFILE);
    wchar_t text[512] = {};
    ::LoadStringW(module, id, text, 512);
    return text;
}

// A real disk of 108 KiB (with-tmpfs.sh): a 40 KiB filler leaves the log
// exactly 17 pages, the header and 255 records, so that the 256th write finds
// the disk full with nothing written.  The system's box comes first, without
// an owner; under it atom lines are ignored and component lines taken.  The
// timers stay stopped: with room again nothing is written until the window
// closes, and then every line in order, the notice once after the 255.
TEST(ProgramFaults, FullDiskAnnouncesOnceClosesTheAtomRoadAndStopsWriting)
{
    const std::wstring root = testing_support::PathFromEnvironment("ORIEL_SMALL_DISK");
    if (root.empty())
        GTEST_SKIP() << "no small disk: run through with-tmpfs.sh as a user allowed to mount tmpfs";
    const std::wstring directory = root + L"\\log";
    ASSERT_TRUE(::CreateDirectoryW(directory.c_str(), nullptr));
    testing_support::WriteFileBytes(root + L"\\filler", std::vector<unsigned char>(40960, 0));
    RegisteredCopy().UseSaveDirectory(directory, 1);
    testing_support::RunningProcess program(RegisteredCopy().Command());
    const HWND window = program.FindWindowOfClass(kMessWndClass, 10000);
    ASSERT_NE(nullptr, window);
    ShowMessClient client;
    ASSERT_EQ(S_OK, client.created());
    // "com N" and "atom N", the roads alternating; the first 200 written at
    // the first flush, before the rest.
    std::vector<std::wstring> sent;
    std::wstring log;
    for (int i = 1; i <= 300; ++i) {
        const bool atom = i % 2 == 0;
        sent.push_back((atom ? L"atom " : L"com ") + std::to_wstring(i));
        EXPECT_EQ(atom ? 0 : S_OK, atom ? SendAtomLine(window, sent.back()) : client.Show(sent.back()));
        if (i == 200) {
            log = NewestLogFile(directory);
            const auto flushed = [&] { return ReadFileBytes(log).size() == kSlot * 201; };
            ASSERT_TRUE(testing_support::WaitUntil(flushed, 5000));
        }
    }

    const ProcessBox system = WaitForNewBox(program.Id(), {}, 5000);
    EXPECT_EQ(SystemErrorText(ERROR_DISK_FULL), system.text);
    EXPECT_EQ(ChineseText(IDS_ERROR_CAPTION), system.caption);
    EXPECT_EQ(nullptr, system.owner);
    EXPECT_EQ(0, SendAtomLine(window, L"atom after the full disk"));
    sent.push_back(L"com after the full disk");
    EXPECT_EQ(S_OK, client.Show(sent.back()));
    PressOk(system);
    const ProcessBox timed = WaitForNewBox(program.Id(), {system.window}, 5000);
    EXPECT_EQ(ChineseText(IDS_TIMED_FLUSH_FAILED), timed.text);
    EXPECT_EQ(window, timed.owner);
    PressOk(timed);

    ASSERT_TRUE(::DeleteFileW((root + L"\\filler").c_str()));
    ::Sleep(2500);
    EXPECT_TRUE(OpenBoxes(program.Id()).empty());
    EXPECT_EQ(kSlot * 256, ReadFileBytes(log).size());
    ::PostMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_TRUE(AnswerBoxes(program.Id(), 1500).empty());
    EXPECT_EQ(0u, program.Wait(10000));
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
    testing_support::TempDir save;
    const std::vector<unsigned char> header = LogImage({});
    const std::vector<unsigned char> image(header.begin(), header.begin() + 31);
    testing_support::WriteFileBytes(save / L"2601010000.qxl", image);
    RegisteredCopy().UseSaveDirectory(save.Path(), 1);
    testing_support::RunningProcess program(RegisteredCopy().Command());
    // The window exists for the moment of its failed creation; a slow
    // machine may catch sight of it.  None may stay.
    program.FindWindowOfClass(kMessWndClass, 3000);
    ::Sleep(500);
    EXPECT_EQ(nullptr, program.FindWindowOfClass(kMessWndClass, 0));
    EXPECT_EQ(testing_support::kStillRunning, program.Wait(0));
    EXPECT_TRUE(OpenBoxes(program.Id()).empty());
    {
        ShowMessClient client;
        ASSERT_EQ(S_OK, client.created());
        EXPECT_EQ(S_OK, client.Show(L"to a server without a window"));
    }
    EXPECT_EQ(0u, program.Wait(15000));
    EXPECT_EQ(image, ReadFileBytes(save / L"2601010000.qxl"));
}

} // namespace
