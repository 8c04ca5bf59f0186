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

TEST(RangeSlots, BinarySearchAgreesWithReadingEveryRecord)
{
    std::mt19937 random(1234);
    for (int round = 0; round < 400; ++round) {
        // A sorted log with runs of equal stamps.
        std::vector<SYSTEMTIME> times;
        int tenths = 3;  // ranges may start before the first record
        for (int i = static_cast<int>(random() % 60); i > 0; --i) {
            tenths += random() % 3 == 0 ? 0 : static_cast<int>(random() % 4);
            times.push_back(AtTenths(tenths));
        }
        const int count = static_cast<int>(times.size());
        const auto timeAt = [&](int slot, SYSTEMTIME& time) {
            EXPECT_TRUE(slot >= 1 && slot <= count);
            time = times[static_cast<size_t>(slot - 1)];
            return true;
        };
        for (int query = 0; query < 10; ++query) {
            const TimeRange range = RandomRange(random, tenths);
            std::vector<int> expected, selected;
            for (int slot = 1; slot <= count; ++slot) {
                if (range.Contains(times[static_cast<size_t>(slot - 1)]))
                    expected.push_back(slot);
            }
            SlotSpan span;
            ASSERT_TRUE(SelectRangeSlots(timeAt, count, range, span));
            for (int slot = span.first; slot <= span.last; ++slot)
                selected.push_back(slot);
            ASSERT_EQ(expected, selected) << "round " << round << " query " << query;
        }
    }
}

TEST(RangeFiles, ChoosesEveryFileWithRecordsInTheRangeAndNoneStartingAfterIt)
{
    std::mt19937 random(42);
    for (int round = 0; round < 300; ++round) {
        // Files of one log in time order; some without a first record to read.
        std::vector<std::vector<SYSTEMTIME>> files(random() % 12);
        int tenths = 3;
        for (auto& file : files) {
            for (int n = random() % 4 == 0 ? 0 : static_cast<int>(random() % 5); n > 0; --n) {
                tenths += static_cast<int>(random() % 3);
                file.push_back(AtTenths(tenths));
            }
        }
        const auto firstTime = [&](size_t i, SYSTEMTIME& time) {
            if (!files[i].empty())
                time = files[i].front();
            return !files[i].empty();
        };
        const TimeRange range = RandomRange(random, tenths);
        const auto chosen = SelectRangeFiles(files.size(), firstTime, range);
        ASSERT_LE(chosen.second, files.size());
        for (size_t i = 0; i < files.size(); ++i) {
            const bool inside = i >= chosen.first && i < chosen.second;
            if (std::any_of(files[i].begin(), files[i].end(), [&](const SYSTEMTIME& t) { return range.Contains(t); })) {
                EXPECT_TRUE(inside) << "round " << round << " file " << i;
            }
            if (!files[i].empty() && range.hasTo && CompareLocalTimes(files[i].front(), range.to) > 0) {
                EXPECT_FALSE(inside) << "round " << round << " file " << i;
            }
        }
    }
}

TEST(LogCheck, FindsDamageInRecordsAndTimeGoingBackwards)
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
    EXPECT_EQ(6, f.records);
    EXPECT_EQ(100, f.tornBytes);
    EXPECT_EQ(2, f.zeroSlots.count);
    EXPECT_EQ(3, f.badTimes.firstSlot);
    EXPECT_EQ(4, f.backwards.firstSlot);
    EXPECT_EQ(1, f.backwards.count);
    EXPECT_TRUE(f.Damaged());

    // Time going back is a warning only, also from one file to the next.
    checker.BeginFile(L"2611231406.qxl", 272 * 2, CheckFindings::Header::Accepted);
    checker.Record(1, Record(At(14, 3, 0), L"earlier"));
    f = checker.EndFile();
    EXPECT_TRUE(f.backwardsFromPrevious);
    EXPECT_EQ(0, f.backwards.count);
    EXPECT_FALSE(f.Damaged());
    EXPECT_TRUE(f.Warned());
}

TEST(LogCheck, JudgesHeadersShapesAndNames)
{
    LogChecker checker;
    const auto check = [&](const wchar_t* name, long long size, CheckFindings::Header header) {
        checker.BeginFile(name, size, header);
        return checker.EndFile();
    };
    const CheckFindings newer = check(L"2611231405.qxl", 99999, CheckFindings::Header::Newer);
    EXPECT_TRUE(newer.Damaged());
    EXPECT_EQ(0, newer.records + newer.tornBytes);  // nothing behind a refused header is counted
    EXPECT_TRUE(check(L"2611231405.qxl", 200, CheckFindings::Header::Accepted).Damaged());
    EXPECT_EQ("day00.qxl: 0 records, warnings\n"
              "  name: not a time YYMMDDHHmm, so the file cannot be placed among the others\n",
              DescribeFindings(check(L"day00.qxl", 272, CheckFindings::Header::Accepted)));
}
