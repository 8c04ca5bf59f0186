#include "WriterFixture.h"

#include "log/LogFormat.h"

#include <algorithm>
#include <vector>

namespace {

using testing_support::FileExists;
using testing_support::ReadFileBytes;
using testing_support::WriteFileBytes;
using Events = std::vector<std::wstring>;

// The events of opening the current file, which starts the three timers.
const Events kOpened = {L"drop page", L"start 0 1000", L"start 1 55", L"start 2 900000"};

using StartupTest = WriterTest;

std::wstring Newest(const LogWriter& writer, const std::wstring& directory)
{
    wchar_t name[MAX_PATH];
    writer.FindNewestLogFile(directory.c_str(), name);
    return name;
}

void Touch(const std::wstring& path)
{
    WriteFileBytes(path, MakeLogImage(L"7.000000", 0));
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
    Touch(PathOf(L"abcdefghij.qxl"));
    Touch(PathOf(L"2612312359.QXL"));
    testNow = LocalTime(2027, 1, 2, 3, 4, 5);
    EXPECT_EQ(Newest(writer, dir.Path()), L"2701020304.qxl");
    EXPECT_EQ(Newest(writer, PathOf(L"missing")), L"2701020304.qxl");

    Touch(PathOf(L"2603031405.qxl"));
    Touch(PathOf(L"2603031359.qxl"));
    Touch(PathOf(L"2701010000.txt"));
    Touch(PathOf(L"2613011200.qxl"));
    ASSERT_TRUE(::CreateDirectoryW(PathOf(L"2612302359.qxl").c_str(), nullptr));
    EXPECT_EQ(Newest(writer, dir.Path()), L"2603031405.qxl");
}

TEST_F(StartupTest, EqualTimesKeepTheFirstListed)
{
    const std::vector<std::wstring> names = {L"2603031405.qxl", L"2603031405-b.qxl"};
    for (const std::wstring& name : names)
        Touch(PathOf(name.c_str()));
    EXPECT_EQ(Newest(writer, dir.Path()), FirstListed(dir.Path(), names));
}

TEST_F(StartupTest, CreatesDirectoriesAndAFileWithItsHeader)
{
    const std::wstring directory = PathOf(L"a\\b\\c");
    EXPECT_EQ(writer.OpenCurrentLogFile(directory.c_str(), kCurrentName), 0);
    EXPECT_EQ(host.events, kOpened);
    EXPECT_EQ(std::wstring(writer.SaveDirectory()), directory);
    EXPECT_EQ(std::wstring(writer.LogFilePath()), directory + L"\\" + kCurrentName);
    EXPECT_EQ(writer.CurrentFile(), INVALID_HANDLE_VALUE);

    const std::vector<unsigned char> bytes = ReadFileBytes(directory + L"\\" + kCurrentName);
    ASSERT_EQ(bytes.size(), 272u);
    const DecodedLog log = DecodeLog(bytes);
    EXPECT_EQ(log.version, L"7.000000");
    EXPECT_TRUE(log.headerRestZero);
    EXPECT_EQ(ring->lineCount, 0);
    EXPECT_EQ(ring->fileOnlyLines, 0);
}

TEST_F(StartupTest, ExistingFileIsCountedByWholeSlotsAndTheRingEmptied)
{
    WriteFileBytes(PathOf(kCurrentName), MakeLogImage(L"7.000000", 25, 30));
    AddLines(0, 10);
    Open();
    EXPECT_EQ(ring->lineCount, 25);
    EXPECT_EQ(ring->fileOnlyLines, 25);
    EXPECT_EQ(ring->writePos + ring->unwrittenPos + ring->ringFull, 0);
    EXPECT_EQ(ring->ring[0].text[0], L'\0');
    EXPECT_EQ(ReadFileBytes(PathOf(kCurrentName)).size(), 272u * 26 + 30);

    // A torn header slot counts minus one.
    std::vector<unsigned char> torn = MakeLogImage(L"7.000000", 0);
    torn.resize(100);
    WriteFileBytes(PathOf(kCurrentName), torn);
    Open();
    EXPECT_EQ(ring->lineCount, -1);
    EXPECT_EQ(ring->fileOnlyLines, -1);
}

TEST_F(StartupTest, ThirtyOneByteFileFailsCreationSilently)
{
    WriteFileBytes(PathOf(kCurrentName), std::vector<unsigned char>(31, '7'));
    EXPECT_EQ(writer.OpenCurrentLogFile(dir.Path().c_str(), kCurrentName), -1);
    EXPECT_TRUE(host.events.empty());
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
    EXPECT_EQ(ring->lineCount, 0);
    EXPECT_EQ(ReadFileBytes(PathOf(L"2603031300.qxl")), newer);
    EXPECT_EQ(ReadFileBytes(PathOf(L"2603031409.qxl")).size(), 272u);
    EXPECT_EQ(writer.CurrentFile(), INVALID_HANDLE_VALUE);

    WriteFileBytes(PathOf(L"2603031200.qxl"), MakeLogImage(L"7.000000", 3));
    ExclusiveOpen lock(PathOf(L"2603031200.qxl"));
    testNow = LocalTime(2026, 3, 3, 14, 10);
    EXPECT_EQ(writer.OpenCurrentLogFile(dir.Path().c_str(), L"2603031200.qxl"), 0);
    EXPECT_EQ(std::wstring(writer.LogFilePath()), PathOf(L"2603031410.qxl"));
    EXPECT_EQ(ring->lineCount, 0);
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
