#include "log/LogRetention.h"

#include "WriterFixture.h"

#include <string>
#include <vector>

namespace {

using testing_support::FileExists;
using testing_support::WriteFileBytes;

using RetentionTest = WriterTest;

// Exactly ten days after 14:05 on 3 March 2026.
const SYSTEMTIME kNow = LocalTime(2026, 3, 13, 14, 5, 0);

void Touch(const std::wstring& path)
{
    WriteFileBytes(path, {1, 2, 3});
}

TEST_F(RetentionTest, DeletesOnlyLogFilesOlderThanTheLimit)
{
    // Kept: at the limit, recent, in the future, not a log file, no (valid) time in the name.
    const std::vector<std::wstring> kept = {L"2603031405.qxl", L"2603131000.qxl", L"2701010000.qxl",
                                            L"2501010000.txt", L"garbage.qxl",    L"2600001405.qxl"};
    // Older, whatever the case of the extension; the last is from 1999.
    const std::vector<std::wstring> deleted = {L"2603031404.qxl", L"2602011200.QXL", L"9901010000.qxl"};
    for (const auto* names : {&kept, &deleted})
        for (const auto& name : *names)
            Touch(PathOf(name.c_str()));
    ASSERT_TRUE(::CreateDirectoryW(PathOf(L"2501010000.qxl").c_str(), nullptr));

    EXPECT_EQ(DeleteOldLogFiles(dir.Path().c_str(), PathOf(L"current.qxl").c_str(), 10, kNow), 1);
    for (const auto& name : kept)
        EXPECT_TRUE(FileExists(PathOf(name.c_str()))) << name.c_str();
    for (const auto& name : deleted)
        EXPECT_FALSE(FileExists(PathOf(name.c_str()))) << name.c_str();
    EXPECT_TRUE(FileExists(PathOf(L"2501010000.qxl")));
    // A missing directory is passed over.
    EXPECT_EQ(DeleteOldLogFiles(PathOf(L"missing").c_str(), L"", 1, kNow), 1);
}

TEST_F(RetentionTest, CurrentFileIsKeptWhateverTheCaseOfItsPath)
{
    Touch(PathOf(L"2501010000.qxl"));
    std::wstring current = PathOf(L"2501010000.QXL");
    for (wchar_t& c : current)
        c = static_cast<wchar_t>(::towupper(c));
    EXPECT_EQ(DeleteOldLogFiles(dir.Path().c_str(), current.c_str(), 1, kNow), 1);
    EXPECT_TRUE(FileExists(PathOf(L"2501010000.qxl")));
}

TEST_F(RetentionTest, TimerSweepsOnlyWhenDaysAreSet)
{
    Open(L"2603131400.qxl");
    Touch(PathOf(L"2603121300.qxl"));
    testNow = kNow;
    writer.SetSettings(0, 600, 10);
    EXPECT_EQ(writer.OnTimer(LogTimer::Retention), 0);
    EXPECT_TRUE(FileExists(PathOf(L"2603121300.qxl")));

    writer.SetSettings(1, 600, 10);
    EXPECT_EQ(writer.OnTimer(LogTimer::Retention), 0);
    EXPECT_FALSE(FileExists(PathOf(L"2603121300.qxl")));
    EXPECT_TRUE(FileExists(PathOf(L"2603131400.qxl")));
    EXPECT_TRUE(host.events.empty());
}

} // namespace
