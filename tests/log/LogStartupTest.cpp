// The log writer's start-up.  Counting an existing file's records, and
// refusing one too short for its version text, are the log-window fuzz
// driver's; that the refusal shows no box is the installed program's test.
#include "LogFixture.h"

#include "log/LogFormat.h"

#include <algorithm>

namespace {

using testing_support::FileExists;
using testing_support::ReadFileBytes;
using testing_support::WriteFileBytes;

// The events of opening the current file, which starts the three timers.
const Events kOpened = {L"drop page", L"start 0 1000", L"start 1 55", L"start 2 900000"};

using StartupTest = WriterTest;

std::wstring Newest(const LogWriter& writer, const std::wstring& directory)
{
    wchar_t name[MAX_PATH];
    writer.FindNewestLogFile(directory.c_str(), name);
    return name;
}

// Which of `names` the platform lists first in `directory`.
std::wstring FirstListed(const std::wstring& directory, const std::vector<std::wstring>& names)
{
    WIN32_FIND_DATAW found;
    HANDLE search = ::FindFirstFileW((directory + L"\\*").c_str(), &found);
    std::wstring first;
    do {
        if (std::find(names.begin(), names.end(), found.cFileName) != names.end())
            first = found.cFileName;
    } while (first.empty() && ::FindNextFileW(search, &found));
    ::FindClose(search);
    return first;
}

TEST_F(StartupTest, NewestByTheTimeInTheNameElseTheCurrentMinute)
{
    // Not log files at start-up: no time in the name, the extension's case differs.
    WriteFileBytes(PathOf(L"abcdefghij.qxl"), {});
    WriteFileBytes(PathOf(L"2612312359.QXL"), {});
    testNow = LocalTime(2027, 1, 2, 3, 4, 5);
    EXPECT_EQ(Newest(writer, dir.Path()), L"2701020304.qxl");
    EXPECT_EQ(Newest(writer, PathOf(L"missing")), L"2701020304.qxl");

    for (const wchar_t* name : {L"2603031405.qxl", L"2603031359.qxl", L"2701010000.txt", L"2613011200.qxl"})
        WriteFileBytes(PathOf(name), {});
    ASSERT_TRUE(::CreateDirectoryW(PathOf(L"2612302359.qxl").c_str(), nullptr));
    EXPECT_EQ(Newest(writer, dir.Path()), L"2603031405.qxl");

    // Of equal times the first listed is kept.
    WriteFileBytes(PathOf(L"2603031405-b.qxl"), {});
    EXPECT_EQ(Newest(writer, dir.Path()), FirstListed(dir.Path(), {L"2603031405.qxl", L"2603031405-b.qxl"}));
}

TEST_F(StartupTest, CreatesDirectoriesAndAFileWithItsHeader)
{
    const std::wstring directory = PathOf(L"a\\b\\c");
    EXPECT_EQ(writer.OpenCurrentLogFile(directory.c_str(), kCurrentName), 0);
    EXPECT_EQ(host.events, kOpened);
    EXPECT_EQ(std::wstring(writer.SaveDirectory()), directory);
    EXPECT_EQ(std::wstring(writer.LogFilePath()), directory + L"\\" + kCurrentName);
    EXPECT_EQ(writer.CurrentFile(), INVALID_HANDLE_VALUE);

    EXPECT_EQ(ReadFileBytes(directory + L"\\" + kCurrentName), MakeLogImage(L"7.000000", 0));
    EXPECT_EQ(ring->lineCount, 0);
}

TEST_F(StartupTest, NewerFormatOrUnopenableFileIsLeftAloneForANewFile)
{
    const std::vector<unsigned char> newer = MakeLogImage(L"7.500000", 3);
    WriteFileBytes(PathOf(L"2603031300.qxl"), newer);
    testNow = LocalTime(2026, 3, 3, 14, 9);
    EXPECT_EQ(writer.OpenCurrentLogFile(dir.Path().c_str(), L"2603031300.qxl"), 0);
    Events expected = NewFileEvents();
    expected.insert(expected.end(), kOpened.begin(), kOpened.end());
    EXPECT_EQ(host.events, expected);
    EXPECT_EQ(std::wstring(writer.LogFilePath()), PathOf(L"2603031409.qxl"));
    EXPECT_EQ(ReadFileBytes(PathOf(L"2603031300.qxl")), newer);
    EXPECT_EQ(ReadFileBytes(PathOf(L"2603031409.qxl")).size(), 272u);
    EXPECT_EQ(writer.CurrentFile(), INVALID_HANDLE_VALUE);

    WriteFileBytes(PathOf(L"2603031200.qxl"), MakeLogImage(L"7.000000", 3));
    const auto lock = OpenExclusively(PathOf(L"2603031200.qxl"));
    testNow = LocalTime(2026, 3, 3, 14, 10);
    EXPECT_EQ(writer.OpenCurrentLogFile(dir.Path().c_str(), L"2603031200.qxl"), 0);
    EXPECT_EQ(std::wstring(writer.LogFilePath()), PathOf(L"2603031410.qxl"));
}

TEST(CreateSaveDirectoryTest, CreatesEveryMissingLevel)
{
    testing_support::TempDir dir;
    EXPECT_EQ(LogWriter::CreateSaveDirectory((dir / L"x\\y\\z").c_str()), 1);
    EXPECT_TRUE(FileExists(dir / L"x\\y\\z"));
    EXPECT_EQ(LogWriter::CreateSaveDirectory((dir / L"p\\q\\").c_str()), 1);
    EXPECT_TRUE(FileExists(dir / L"p\\q"));
    // The last level is created without looking first: an existing one fails.
    EXPECT_EQ(LogWriter::CreateSaveDirectory((dir / L"x\\y\\z").c_str()), 0);
    EXPECT_EQ(LogWriter::CreateSaveDirectory(L"relative"), 0);
}

} // namespace
