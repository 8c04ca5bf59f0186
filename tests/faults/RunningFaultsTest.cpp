// Faults met by the running program, each made for real from outside: a full
// disk, the current log file deleted, the save directory removed.  The boxes
// are read and answered from this process, the log files read afterwards.
#include <memory>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "../intake/ServerInstallation.h"
#include "FaultServer.h"
#include "ProcessBoxes.h"
#include "lang/ResourceIds.h"

using testing_support::ReadFileBytes;
using testing_support::TempDir;

namespace {

constexpr size_t kSlot = 272;

// The program opens its file for a moment at every 55 ms size check, sharing
// reading only: deleting has to come between two checks.
bool DeleteBetweenChecks(const std::wstring& path)
{
    for (int attempt = 0; attempt < 100; ++attempt) {
        if (::DeleteFileW(path.c_str()))
            return true;
        ::Sleep(7);
    }
    return false;
}

size_t CountOf(const std::vector<std::wstring>& texts, const std::wstring& text)
{
    return static_cast<size_t>(std::count(texts.begin(), texts.end(), text));
}

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
TEST(RunningFaults, FullDiskAnnouncesOnceClosesTheAtomRoadAndStopsWriting)
{
    const char* disk = std::getenv("ORIEL_SMALL_DISK");
    if (disk == nullptr || *disk == '\0')
        GTEST_SKIP() << "no small disk: run through with-tmpfs.sh as a user allowed to mount tmpfs";
    std::wstring root = L"Z:";
    for (const char* p = disk; *p != '\0'; ++p)
        root += *p == '/' ? L'\\' : static_cast<wchar_t>(*p);
    const std::wstring directory = root + L"\\log";
    ASSERT_TRUE(::CreateDirectoryW(directory.c_str(), nullptr));
    testing_support::WriteFileBytes(root + L"\\filler", std::vector<unsigned char>(40960, 0));

    FaultServer server(directory, 1, 10);
    ASSERT_TRUE(server.Start());
    ShowMessClient client;
    ASSERT_EQ(S_OK, client.created());
    std::vector<std::wstring> sent = SendAlternating(client, server.Window(), 1, 200);
    const std::wstring log = server.LogFile();
    ASSERT_TRUE(WaitForFileSize(log, kSlot * 201, 5000));
    const std::vector<std::wstring> more = SendAlternating(client, server.Window(), 201, 300);
    sent.insert(sent.end(), more.begin(), more.end());

    const ProcessBox system = WaitForNewBox(server.Id(), {}, 5000);
    ASSERT_NE(nullptr, system.window);
    EXPECT_EQ(SystemText(ERROR_DISK_FULL), Trimmed(system.text));
    EXPECT_EQ(LanguageText(IDS_ERROR_CAPTION), system.caption);
    EXPECT_EQ(nullptr, system.owner);
    // Under the box: atom lines are ignored from now on, component lines taken.
    EXPECT_EQ(0, SendAtomLine(server.Window(), L"atom after the full disk"));
    EXPECT_EQ(S_OK, client.Show(L"com after the full disk"));
    sent.push_back(L"com after the full disk");
    PressOk(system);
    const ProcessBox timed = WaitForNewBox(server.Id(), {system.window}, 5000);
    EXPECT_EQ(LanguageText(IDS_TIMED_FLUSH_FAILED), Trimmed(timed.text));
    EXPECT_EQ(server.Window(), timed.owner);
    PressOk(timed);

    // Room again, but the flush and size timers stay stopped: nothing is
    // written and nothing is reported until the window closes.
    ASSERT_TRUE(::DeleteFileW((root + L"\\filler").c_str()));
    EXPECT_EQ(S_OK, client.Show(L"com last"));
    sent.push_back(L"com last");
    ::Sleep(2500);
    EXPECT_TRUE(OpenBoxes(server.Id()).empty());
    EXPECT_EQ(kSlot * 256, ReadFileBytes(log).size());
    client.Release();
    std::vector<std::wstring> closingBoxes;
    EXPECT_EQ(0u, server.Close(&closingBoxes));
    EXPECT_TRUE(closingBoxes.empty());

    // Every line sent, in order, with the notice once after the 255 written
    // before the disk filled.
    std::vector<std::wstring> stored = TextsOf(DecodeLog(ReadFileBytes(log)));
    const std::wstring notice = LanguageText(IDS_DISK_FULL_NOTICE);
    ASSERT_EQ(1u, CountOf(stored, notice));
    const auto at = std::find(stored.begin(), stored.end(), notice);
    EXPECT_GE(at - stored.begin(), 255);
    stored.erase(at);
    EXPECT_EQ(sent, stored);
}

// Starts the program, has one line flushed and one more pending, then
// deletes the current log file between two size checks.
// The client is made once the program runs, or it would start one itself.
void FlushOneLineAndDeleteTheLog(FaultServer& server, std::unique_ptr<ShowMessClient>& client,
                                 std::wstring& log)
{
    ASSERT_TRUE(server.Start());
    client = std::make_unique<ShowMessClient>();
    ASSERT_EQ(S_OK, client->created());
    ASSERT_EQ(S_OK, client->Show(L"before"));
    log = server.LogFile();
    ASSERT_TRUE(WaitForFileSize(log, 2 * kSlot, 5000));
    EXPECT_EQ(S_OK, client->Show(L"pending"));
    ASSERT_TRUE(DeleteBetweenChecks(log));
}

// Timer 1 shows its box at every tick until the first box is closed; the
// timed flush then recreates the file empty, finds no header and fails.
// The fault comes just after a timed flush (every 2 s), so that the size
// check meets it first; each box is answered at once, as a user would.
TEST(RunningFaults, DeletedCurrentFileStopsSizeChecksAndTimedFlushes)
{
    TempDir directory;
    FaultServer server(directory.Path(), 2, 10);
    std::unique_ptr<ShowMessClient> client;
    std::wstring log;
    ASSERT_NO_FATAL_FAILURE(FlushOneLineAndDeleteTheLog(server, client, log));

    const std::vector<std::wstring> texts = TextsOf(AnswerBoxes(server.Id(), 3000));
    const std::wstring sizeCheck = LanguageText(IDS_SIZE_CHECK_FAILED);
    ASSERT_FALSE(texts.empty());
    EXPECT_EQ(sizeCheck, Trimmed(texts[0]));
    EXPECT_EQ(1u, CountOf(texts, LanguageText(IDS_TIMED_FLUSH_FAILED)));
    EXPECT_EQ(texts.size(), CountOf(texts, texts[0]) + 1) << "no other box";
    EXPECT_EQ(0u, ReadFileBytes(log).size());
    EXPECT_TRUE(testing_support::FileExists(log));

    std::vector<std::wstring> closingBoxes;
    EXPECT_EQ(0u, server.Close(&closingBoxes));
    EXPECT_TRUE(closingBoxes.empty()) << "the closing flush fails without a message";
    EXPECT_EQ(0u, ReadFileBytes(log).size());
}

// The directory is made only at window creation: a new file cannot be
// started in a removed one, and the system's text says why.
TEST(RunningFaults, RemovedSaveDirectoryIsNotMadeAgain)
{
    TempDir parent;
    const std::wstring directory = parent / L"save";
    ASSERT_TRUE(::CreateDirectoryW(directory.c_str(), nullptr));
    FaultServer server(directory, 2, 10);
    std::unique_ptr<ShowMessClient> client;
    std::wstring log;
    ASSERT_NO_FATAL_FAILURE(FlushOneLineAndDeleteTheLog(server, client, log));
    ASSERT_TRUE(::RemoveDirectoryW(directory.c_str()));

    std::vector<std::wstring> texts;
    for (const std::wstring& text : TextsOf(AnswerBoxes(server.Id(), 3000)))
        texts.push_back(Trimmed(text));
    const std::wstring noPath = SystemText(ERROR_PATH_NOT_FOUND);
    const std::wstring timed = LanguageText(IDS_TIMED_FLUSH_FAILED);
    ASSERT_FALSE(texts.empty());
    EXPECT_EQ(LanguageText(IDS_SIZE_CHECK_FAILED), texts[0]);
    EXPECT_EQ(1u, CountOf(texts, noPath));
    EXPECT_EQ(1u, CountOf(texts, timed));
    EXPECT_LT(std::find(texts.begin(), texts.end(), noPath) - texts.begin(),
              std::find(texts.begin(), texts.end(), timed) - texts.begin());
    EXPECT_EQ(texts.size(), CountOf(texts, texts[0]) + 2) << "no other box";

    // The closing flush tries a new file once more and reports it.
    std::vector<std::wstring> closingBoxes;
    EXPECT_EQ(0u, server.Close(&closingBoxes));
    ASSERT_EQ(1u, closingBoxes.size());
    EXPECT_EQ(noPath, Trimmed(closingBoxes[0]));
    EXPECT_FALSE(testing_support::FileExists(directory));
}

} // namespace
