// The tool's pure log rules: the order of a file set, range selection by
// binary search and the checker's findings.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tools/qxltool/LogCheck.h"
#include "tools/qxltool/LogSet.h"
#include "tools/qxltool/RangeFiles.h"
#include "tools/qxltool/RangeSlots.h"

namespace {

SYSTEMTIME At(WORD hour, WORD minute, WORD second, WORD ms = 0)
{
    return SYSTEMTIME{2026, 11, 1, 23, hour, minute, second, ms};
}

// 10:00 and `tenths` tenths of a second: random logs in 100 ms steps, so
// that random ranges often fall on a stamp exactly.
SYSTEMTIME AtTenths(int tenths)
{
    return At(10, static_cast<WORD>(tenths / 600), static_cast<WORD>(tenths / 10 % 60),
              static_cast<WORD>(tenths % 10 * 100));
}

TimeRange RandomRange(std::mt19937& random, int lastTenths)
{
    TimeRange range;
    range.hasFrom = random() % 4 != 0;
    range.hasTo = random() % 4 != 0;
    const int from = static_cast<int>(random() % (lastTenths + 3));
    range.from = AtTenths(from);
    range.to = AtTenths(from + static_cast<int>(random() % 8));
    return range;
}

MessageRecord Record(const SYSTEMTIME& time, const std::wstring& text)
{
    MessageRecord record = {};
    record.time = time;
    std::copy(text.begin(), text.begin() + std::min<size_t>(text.size(), kMessageTextUnits), record.text);
    return record;
}

} // namespace

TEST(LogSet, OrdersByNameTimeWithUnplaceableNamesFirst)
{
    std::vector<LogFileEntry> files;
    for (const wchar_t* path : {L"D:\\log\\2611231405.qxl", L"D:\\log\\day00.qxl", L"D:\\log\\0001010000.qxl",
                                L"D:\\log\\9912311159.qxl", L"E:\\old\\2611231405.qxl", L"D:\\log\\2611231359.QXL",
                                L"D:\\log\\copy.qxl", L"d:\\LOG\\2611231405.qxl"})
        files.push_back(MakeLogFileEntry(path));
    std::vector<std::wstring> ordered;
    for (const LogFileEntry& file : OrderLogSet(files))
        ordered.push_back(file.path);
    // 99 reads as 1999, 00 as 2000; the same path in other letters is one file.
    EXPECT_EQ((std::vector<std::wstring>{L"D:\\log\\copy.qxl", L"D:\\log\\day00.qxl", L"D:\\log\\9912311159.qxl",
                                         L"D:\\log\\0001010000.qxl", L"D:\\log\\2611231359.QXL",
                                         L"D:\\log\\2611231405.qxl", L"E:\\old\\2611231405.qxl"}),
              ordered);
    EXPECT_EQ(L"name.qxl", MakeLogFileEntry(L"rel/dir\\name.qxl").name);
}

// Random logs in 100 ms steps with runs of equal stamps, in files in time
// order (some without a first record to read), and random ranges: the
// binary searches choose what reading every record would.
TEST(RangeSearch, SlotsAndFilesAgreeWithReadingEveryRecord)
{
    std::mt19937 random(1234);
    for (int round = 0; round < 400; ++round) {
        std::vector<std::vector<SYSTEMTIME>> files(random() % 12);
        std::vector<SYSTEMTIME> times;  // the files' records one after the other
        int tenths = 3;  // ranges may start before the first record
        for (auto& file : files) {
            for (int n = random() % 4 == 0 ? 0 : static_cast<int>(random() % 8); n > 0; --n) {
                tenths += random() % 3 == 0 ? 0 : static_cast<int>(random() % 4);
                times.push_back(AtTenths(tenths));
                file.push_back(times.back());
            }
        }
        const int count = static_cast<int>(times.size());
        const auto timeAt = [&](int slot, SYSTEMTIME& time) {
            EXPECT_TRUE(slot >= 1 && slot <= count);
            time = times[static_cast<size_t>(slot - 1)];
            return true;
        };
        const auto firstTime = [&](size_t i, SYSTEMTIME& time) {
            if (!files[i].empty())
                time = files[i].front();
            return !files[i].empty();
        };
        for (int query = 0; query < 10; ++query) {
            const TimeRange range = RandomRange(random, tenths);
            const auto inRange = [&](const SYSTEMTIME& t) { return range.Contains(t); };
            std::vector<int> expected, selected;
            for (int slot = 1; slot <= count; ++slot) {
                if (inRange(times[static_cast<size_t>(slot - 1)]))
                    expected.push_back(slot);
            }
            SlotSpan span;
            ASSERT_TRUE(SelectRangeSlots(timeAt, count, range, span));
            for (int slot = span.first; slot <= span.last; ++slot)
                selected.push_back(slot);
            ASSERT_EQ(expected, selected) << "round " << round << " query " << query;
            // Every file with records in the range is chosen, none that starts after it.
            const auto chosen = SelectRangeFiles(files.size(), firstTime, range);
            ASSERT_LE(chosen.second, files.size());
            for (size_t i = 0; i < files.size(); ++i) {
                const bool inside = i >= chosen.first && i < chosen.second;
                const bool startsAfter =
                    !files[i].empty() && range.hasTo && CompareLocalTimes(files[i].front(), range.to) > 0;
                EXPECT_TRUE(inside || !std::any_of(files[i].begin(), files[i].end(), inRange))
                    << "round " << round << " file " << i;
                EXPECT_FALSE(inside && startsAfter) << "round " << round << " file " << i;
            }
        }
    }
}

TEST(LogCheck, FindsDamageInRecordsTimeGoingBackwardsAndNamesThatAreNoTimes)
{
    LogChecker checker;
    checker.BeginFile(L"2611231405.qxl", 272 * 7 + 100, CheckFindings::Header::Accepted);
    checker.Record(1, Record(At(14, 5, 0), L"a"));
    checker.Record(2, MessageRecord{});
    checker.Record(3, Record(SYSTEMTIME{2026, 13, 0, 1, 0, 0, 0, 0}, L"bad month"));
    checker.Record(4, Record(At(14, 4, 0), L"back"));
    checker.Record(5, MessageRecord{});
    checker.Record(6, Record(At(14, 4, 0), L"same time: not backwards"));
    CheckFindings f = checker.EndFile();
    EXPECT_EQ(2, f.zeroSlots.count);
    EXPECT_EQ(3, f.badTimes.firstSlot);
    EXPECT_EQ(4, f.backwards.firstSlot);
    EXPECT_EQ(1, f.backwards.count);

    // Time going back is a warning only, also from one file to the next.
    checker.BeginFile(L"2611231406.qxl", 272 * 2, CheckFindings::Header::Accepted);
    checker.Record(1, Record(At(14, 3, 0), L"earlier"));
    f = checker.EndFile();
    EXPECT_TRUE(f.backwardsFromPrevious);
    EXPECT_EQ(0, f.backwards.count);
    EXPECT_TRUE(f.Warned());

    // Record counts, torn tails, refused headers and which findings damage a
    // file are the fuzz driver's; the findings' texts mostly qxltool_test.py's.
    checker.BeginFile(L"day00.qxl", 272, CheckFindings::Header::Accepted);
    EXPECT_EQ("day00.qxl: 0 records, warnings\n"
              "  name: not a time YYMMDDHHmm, so the file cannot be placed among the others\n",
              DescribeFindings(checker.EndFile()));
}
