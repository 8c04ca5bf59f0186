// Start-up on current log files that are not what the writer leaves: newer,
// torn, empty, too short for a header.  Nothing written before is damaged.
#include <gtest/gtest.h>

#include "../intake/ServerInstallation.h"
#include "FaultServer.h"
#include "ProcessBoxes.h"

using testing_support::ReadFileBytes;
using testing_support::TempDir;
using testing_support::WriteFileBytes;
using Bytes = std::vector<unsigned char>;

namespace {

const auto* const environment =
    ::testing::AddGlobalTestEnvironment(new ServerInstallationEnvironment);

// A file of an earlier minute, so that a file the program starts has another name.
constexpr wchar_t kOldName[] = L"2601010000.qxl";

Bytes OldLog(const std::wstring& version, size_t tail)
{
    Bytes image = MakeLogImage(version, 2, tail);
    SYSTEMTIME stamp = {2026, 1, 4, 1, 0, 0, 0, 0};
    PutLogRecord(image, 0, L"old 1", stamp);
    PutLogRecord(image, 1, L"old 2", stamp);
    return image;
}

// Starts the program on `image` as the only log, feeds one line, closes it.
struct StartupRun {
    explicit StartupRun(const Bytes& image) : server(directory.Path(), 600, 10)
    {
        WriteFileBytes(directory / kOldName, image);
        started = server.Start();
        if (!started)
            return;
        boxesAtStart = OpenBoxes(server.Id()).size();
        EXPECT_EQ(0, SendAtomLine(server.Window(), L"new line"));
        exitCode = server.Close(&closingBoxes);
    }
    TempDir directory;
    FaultServer server;
    bool started = false;
    size_t boxesAtStart = 0;
    DWORD exitCode = 1;
    std::vector<std::wstring> closingBoxes;
};

TEST(StartupFiles, NewerFormatIsLeftAloneAndANewFileStarted)
{
    const Bytes image = OldLog(L"8.000000", 0);
    StartupRun run(image);
    ASSERT_TRUE(run.started);
    EXPECT_EQ(0u, run.boxesAtStart);
    EXPECT_EQ(0u, run.exitCode);
    EXPECT_TRUE(run.closingBoxes.empty());
    EXPECT_EQ(image, ReadFileBytes(run.directory / kOldName));
    const std::wstring started = run.server.LogFile(kOldName);
    ASSERT_FALSE(started.empty());
    const DecodedLog log = DecodeLog(ReadFileBytes(started));
    EXPECT_EQ(L"7.000000", log.version);
    EXPECT_EQ((std::vector<std::wstring>{L"new line"}), TextsOf(log));
}

TEST(StartupFiles, TornTailIsPaddedToAWholeRecordThenAppended)
{
    const Bytes image = OldLog(L"7.000000", 100);
    StartupRun run(image);
    ASSERT_TRUE(run.started);
    EXPECT_EQ(0u, run.exitCode);
    const Bytes bytes = ReadFileBytes(run.directory / kOldName);
    ASSERT_EQ(272u * 5, bytes.size());
    EXPECT_TRUE(std::equal(image.begin(), image.end(), bytes.begin())) << "the old bytes unchanged";
    EXPECT_EQ(Bytes(172, 0), Bytes(bytes.begin() + image.size(), bytes.begin() + 272 * 4));
    const DecodedLog log = DecodeLog(bytes);
    ASSERT_EQ(4u, log.records.size());
    EXPECT_EQ(L"old 1", log.records[0].text);
    EXPECT_EQ(L"old 2", log.records[1].text);
    EXPECT_EQ(L"new line", log.records[3].text);
}

TEST(StartupFiles, TornHeaderSlotIsCompletedThenAppended)
{
    const Bytes full = OldLog(L"7.000000", 0);
    const Bytes image(full.begin(), full.begin() + 100);
    StartupRun run(image);
    ASSERT_TRUE(run.started);
    EXPECT_EQ(0u, run.exitCode);
    const Bytes bytes = ReadFileBytes(run.directory / kOldName);
    ASSERT_EQ(272u * 2, bytes.size());
    EXPECT_TRUE(std::equal(image.begin(), image.end(), bytes.begin()));
    EXPECT_EQ((std::vector<std::wstring>{L"new line"}), TextsOf(DecodeLog(bytes)));
}

TEST(StartupFiles, EmptyFileGetsItsHeader)
{
    StartupRun run(Bytes{});
    ASSERT_TRUE(run.started);
    EXPECT_EQ(0u, run.exitCode);
    const DecodedLog log = DecodeLog(ReadFileBytes(run.directory / kOldName));
    EXPECT_EQ(L"7.000000", log.version);
    EXPECT_TRUE(log.headerRestZero);
    EXPECT_EQ((std::vector<std::wstring>{L"new line"}), TextsOf(log));
}

// 31 bytes hold no whole version text: window creation fails without a
// word, the component still takes lines, and the monitor ends the process
// 5 s after its client lets go.
TEST(StartupFiles, HeaderShorterThan32BytesLeavesAWindowlessServer)
{
    TempDir directory;
    const Bytes full = OldLog(L"7.000000", 0);
    const Bytes image(full.begin(), full.begin() + 31);
    WriteFileBytes(directory / kOldName, image);
    FaultServer server(directory.Path(), 1, 10);
    // The window exists for the moment of its failed creation; a slow
    // machine may catch sight of it.  None may stay.
    server.Start(3000);
    ::Sleep(500);
    EXPECT_EQ(nullptr, server.Process().FindWindowOfClass(L"OrielMessWnd", 0));
    EXPECT_EQ(testing_support::kStillRunning, server.Process().Wait(0));
    EXPECT_TRUE(OpenBoxes(server.Id()).empty());
    {
        ShowMessClient client;
        ASSERT_EQ(S_OK, client.created());
        EXPECT_EQ(S_OK, client.Show(L"to a server without a window"));
    }
    const DWORD released = ::GetTickCount();
    EXPECT_EQ(0u, server.Process().Wait(15000));
    EXPECT_GE(::GetTickCount() - released, 4500u);
    EXPECT_EQ(image, ReadFileBytes(directory / kOldName));
}

} // namespace
