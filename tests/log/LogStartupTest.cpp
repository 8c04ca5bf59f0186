#include "WriterFixture.h"

#include "log/LogFormat.h"

#include <vector>

namespace {

using testing_support::FileExists;
using testing_support::ReadFileBytes;
using testing_support::WriteFileBytes;
using Events = std::vector<std::wstring>;

const Events kTimerStarts = {L"start 0 1000", L"start 1 55", L"start 2 900000"};

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

// The order in which the platform lists `names` in `directory`.
std::vector<std::wstring> EnumerationOrder(const std::wstring& directory,
                                           const std::vector<std::wstring>& names)
{
    std::vector<std::wstring> order;
    WIN32_FIND_DATAW found;
    HANDLE search = ::FindFirstFileW((directory + L"\\*").c_str(), &found);
    do {
        for (const std::wstring& name : names) {
            if (name == found.cFileName)
                order.push_back(name);
        }
    } while (::FindNextFileW(search, &found));
    ::FindClose(search);
    return order;
}

TEST_F(StartupTest, NewestByTheTimeInTheName)
{
    Touch(PathOf(L"2603031405.qxl"));
    Touch(PathOf(L"2603031359.qxl"));
    Touch(PathOf(L"2603031406.QXL"));
    Touch(PathOf(L"2701010000.txt"));
    Touch(PathOf(L"zzzzzzzzzz.qxl"));
    Touch(PathOf(L"2613011200.qxl"));
    ASSERT_TRUE(::CreateDirectoryW(PathOf(L"2612312359.qxl").c_str(), nullptr));
    EXPECT_EQ(Newest(writer, dir.Path()), L"2603031405.qxl");
}

TEST_F(StartupTest, EqualTimesKeepTheFirstListed)
{
    const std::vector<std::wstring> names = {L"2603031405.qxl", L"2603031405-b.qxl"};
    for (const std::wstring& name : names)
        Touch(PathOf(name.c_str()));
    const std::vector<std::wstring> order = EnumerationOrder(dir.Path(), names);
    ASSERT_EQ(order.size(), 2u);
    EXPECT_EQ(Newest(writer, dir.Path()), order.front());
}

TEST_F(StartupTest, WithoutLogFilesTheNameIsTheCurrentMinute)
{
    EXPECT_EQ(Newest(writer, dir.Path()), L"2603031405.qxl");
    Touch(PathOf(L"abcdefghij.qxl"));
    Touch(PathOf(L"2612312359.QXL"));
    testNow = LocalTime(2027, 1, 2, 3, 4, 5);
    EXPECT_EQ(Newest(writer, dir.Path()), L"2701020304.qxl");
    EXPECT_EQ(Newest(writer, PathOf(L"missing")), L"2701020304.qxl");
}

TEST_F(StartupTest, CreatesDirectoriesAndAFileWithItsHeader)
{
    const std::wstring directory = PathOf(L"a\\b\\c");
    EXPECT_EQ(writer.OpenCurrentLogFile(directory.c_str(), kCurrentName), 0);
    Events expected = {L"drop page"};
    expected.insert(expected.end(), kTimerStarts.begin(), kTimerStarts.end());
    EXPECT_EQ(host.events, expected);
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

TEST_F(StartupTest, ExistingFileIsCountedAndTheRingEmptied)
{
    WriteFileBytes(PathOf(kCurrentName), MakeLogImage(L"7.000000", 25, 30));
    AddLines(0, 10);
    Open();
    EXPECT_EQ(ring->lineCount, 25);
    EXPECT_EQ(ring->fileOnlyLines, 25);
    EXPECT_EQ(ring->writePos + ring->unwrittenPos + ring->ringFull, 0);
    EXPECT_EQ(ring->ring[0].text[0], L'\0');
    EXPECT_EQ(ReadFileBytes(PathOf(kCurrentName)).size(), 272u * 26 + 30);
}

TEST_F(StartupTest, TornHeaderSlotCountsMinusOne)
{
    std::vector<unsigned char> bytes = MakeLogImage(L"7.000000", 0);
    bytes.resize(100);
    WriteFileBytes(PathOf(kCurrentName), bytes);
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

TEST_F(StartupTest, NewerFormatIsLeftAloneForANewFile)
{
    const std::vector<unsigned char> newer = MakeLogImage(L"7.500000", 3);
    WriteFileBytes(PathOf(L"2603031300.qxl"), newer);
    testNow = LocalTime(2026, 3, 3, 14, 9);
    EXPECT_EQ(writer.OpenCurrentLogFile(dir.Path().c_str(), L"2603031300.qxl"), 0);

    Events expected = NewFileEvents();
    expected.push_back(L"drop page");
    expected.insert(expected.end(), kTimerStarts.begin(), kTimerStarts.end());
    EXPECT_EQ(host.events, expected);
    EXPECT_EQ(std::wstring(writer.LogFilePath()), PathOf(L"2603031409.qxl"));
    EXPECT_EQ(ring->lineCount, 0);
    EXPECT_EQ(ReadFileBytes(PathOf(L"2603031300.qxl")), newer);
    EXPECT_EQ(ReadFileBytes(PathOf(L"2603031409.qxl")).size(), 272u);
    EXPECT_EQ(writer.CurrentFile(), INVALID_HANDLE_VALUE);
}

TEST_F(StartupTest, UnopenableFileIsReplacedByANewOne)
{
    WriteFileBytes(PathOf(L"2603031300.qxl"), MakeLogImage(L"7.000000", 3));
    ExclusiveOpen lock(PathOf(L"2603031300.qxl"));
    EXPECT_EQ(writer.OpenCurrentLogFile(dir.Path().c_str(), L"2603031300.qxl"), 0);
    EXPECT_EQ(std::wstring(writer.LogFilePath()), PathOf(kCurrentName));
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
