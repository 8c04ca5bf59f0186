// The tool's pure log rules: the order of a file set, range selection by
// binary search, the checker's findings and the record formats.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tools/qxltool/LogCheck.h"
#include "tools/qxltool/LogSet.h"
#include "tools/qxltool/RangeFiles.h"
#include "tools/qxltool/RangeSlots.h"
#include "tools/qxltool/RecordFormats.h"

namespace {

SYSTEMTIME At(WORD hour, WORD minute, WORD second, WORD ms = 0)
{
    return SYSTEMTIME{2026, 11, 1, 23, hour, minute, second, ms};
}

std::vector<std::wstring> Names(const std::vector<LogFileEntry>& files)
{
    std::vector<std::wstring> names;
    for (const LogFileEntry& file : files)
        names.push_back(file.name);
    return names;
}

} // namespace

TEST(LogSet, OrdersByNameTimeWithUnplaceableNamesFirst)
{
    std::vector<LogFileEntry> files;
    for (const wchar_t* path : {L"D:\\log\\2611231405.qxl", L"D:\\log\\day00.qxl",
                                L"D:\\log\\0001010000.qxl", L"D:\\log\\9912311159.qxl",
                                L"E:\\old\\2611231405.qxl", L"D:\\log\\2611231359.QXL",
                                L"D:\\log\\copy.qxl", L"d:\\LOG\\2611231405.qxl"})
        files.push_back(MakeLogFileEntry(path));
    EXPECT_FALSE(files[1].named);
    EXPECT_TRUE(files[3].named);

    const std::vector<LogFileEntry> ordered = OrderLogSet(files);
    // 99 reads as 1999, 00 as 2000; the same path in other letters is one file.
    EXPECT_EQ((std::vector<std::wstring>{L"copy.qxl", L"day00.qxl", L"9912311159.qxl",
                                         L"0001010000.qxl", L"2611231359.QXL", L"2611231405.qxl",
                                         L"2611231405.qxl"}),
              Names(ordered));
    EXPECT_EQ(L"D:\\log\\2611231405.qxl", ordered[5].path);
    EXPECT_EQ(L"E:\\old\\2611231405.qxl", ordered[6].path);
    EXPECT_EQ(L"name.qxl", MakeLogFileEntry(L"rel/dir\\name.qxl").name);
}

namespace {

// 10:00 and `tenths` tenths of a second.
SYSTEMTIME AtTenths(int tenths)
{
    return At(10, static_cast<WORD>(tenths / 600), static_cast<WORD>(tenths / 10 % 60),
              static_cast<WORD>(tenths % 10 * 100));
}

// The brute-force answer: every slot whose time lies in the range.
std::vector<int> SlotsInRange(const std::vector<SYSTEMTIME>& times, const TimeRange& range)
{
    std::vector<int> slots;
    for (size_t i = 0; i < times.size(); ++i) {
        if (range.Contains(times[i]))
            slots.push_back(static_cast<int>(i) + 1);
    }
    return slots;
}

} // namespace

TEST(RangeSlots, BinarySearchAgreesWithReadingEveryRecord)
{
    std::mt19937 random(1234);
    int probes = 0;
    for (int round = 0; round < 400; ++round) {
        // A sorted log with runs of equal stamps; times in 100 ms steps, so
        // that ranges often fall on a stamp exactly.
        const int count = static_cast<int>(random() % 60);
        std::vector<SYSTEMTIME> times;
        int tenths = 3;  // ranges may start before the first record
        for (int i = 0; i < count; ++i) {
            tenths += random() % 3 == 0 ? 0 : static_cast<int>(random() % 4);
            times.push_back(AtTenths(tenths));
        }
        const auto timeAt = [&](int slot, SYSTEMTIME& time) {
            ++probes;
            EXPECT_GE(slot, 1);
            EXPECT_LE(slot, count);
            time = times[static_cast<size_t>(slot - 1)];
            return true;
        };
        for (int query = 0; query < 10; ++query) {
            TimeRange range;
            const int from = static_cast<int>(random() % (tenths + 3));
            const int to = from + static_cast<int>(random() % 8);
            range.hasFrom = random() % 4 != 0;
            range.hasTo = random() % 4 != 0;
            range.from = AtTenths(from);
            range.to = AtTenths(to);
            SlotSpan span;
            ASSERT_TRUE(SelectRangeSlots(timeAt, count, range, span));
            std::vector<int> selected;
            for (int slot = span.first; slot <= span.last; ++slot)
                selected.push_back(slot);
            ASSERT_EQ(SlotsInRange(times, range), selected) << "round " << round << " query " << query;
        }
    }
    EXPECT_GT(probes, 0);
}

TEST(RangeSlots, FindsAMinuteInAMillionRecordsWithFewReads)
{
    const int count = 1000000;
    int reads = 0;
    // One record every 10 ms from 00:00.
    const auto timeAt = [&](int slot, SYSTEMTIME& time) {
        ++reads;
        const int ms = (slot - 1) * 10;
        time = At(static_cast<WORD>(ms / 3600000), static_cast<WORD>(ms / 60000 % 60),
                  static_cast<WORD>(ms / 1000 % 60), static_cast<WORD>(ms % 1000));
        return true;
    };
    TimeRange range;
    range.hasFrom = range.hasTo = true;
    range.from = At(1, 30, 0);
    range.to = At(1, 30, 59, 999);
    SlotSpan span;
    ASSERT_TRUE(SelectRangeSlots(timeAt, count, range, span));
    EXPECT_EQ(540001, span.first);
    EXPECT_EQ(546000, span.last);
    EXPECT_LE(reads, 2 * 21 + 2);
}

TEST(RangeSlots, AFailedReadFailsTheSelection)
{
    const auto failing = [](int, SYSTEMTIME&) { return false; };
    TimeRange range;
    range.hasTo = true;
    range.to = At(1, 0, 0);
    SlotSpan span;
    EXPECT_FALSE(SelectRangeSlots(failing, 10, range, span));
    // Without a range, or without records, nothing is read.
    EXPECT_TRUE(SelectRangeSlots(failing, 10, TimeRange(), span));
    EXPECT_EQ(1, span.first);
    EXPECT_EQ(10, span.last);
    EXPECT_TRUE(SelectRangeSlots(failing, 0, range, span));
    EXPECT_TRUE(span.Empty());
}

TEST(RangeFiles, ChoosesEveryFileWithRecordsInTheRangeAndFewOthers)
{
    std::mt19937 random(42);
    for (int round = 0; round < 300; ++round) {
        // Files of a log in time order; some without a first record to read.
        const size_t count = random() % 12;
        std::vector<std::vector<SYSTEMTIME>> files(count);
        int tenths = 3;
        for (auto& file : files) {
            for (int n = random() % 4 == 0 ? 0 : static_cast<int>(random() % 5); n > 0; --n) {
                tenths += static_cast<int>(random() % 3);
                file.push_back(AtTenths(tenths));
            }
        }
        const auto firstTime = [&](size_t i, SYSTEMTIME& time) {
            if (files[i].empty())
                return false;
            time = files[i].front();
            return true;
        };
        TimeRange range;
        range.hasFrom = random() % 4 != 0;
        range.hasTo = random() % 4 != 0;
        const int from = static_cast<int>(random() % (tenths + 3));
        range.from = AtTenths(from);
        range.to = AtTenths(from + static_cast<int>(random() % 6));
        const auto chosen = SelectRangeFiles(count, firstTime, range);
        ASSERT_LE(chosen.first, chosen.second);
        ASSERT_LE(chosen.second, count);
        for (size_t i = 0; i < count; ++i) {
            const bool holds = std::any_of(files[i].begin(), files[i].end(),
                                           [&](const SYSTEMTIME& t) { return range.Contains(t); });
            if (holds) {
                EXPECT_TRUE(i >= chosen.first && i < chosen.second) << "round " << round << " file " << i;
            }
            // A file starting after the range is never read.
            if (!files[i].empty() && range.hasTo && CompareLocalTimes(files[i].front(), range.to) > 0) {
                EXPECT_GE(i, chosen.second) << "round " << round << " file " << i;
            }
        }
    }
}

TEST(RangeFiles, OpensFewFilesOfALargeSet)
{
    // 1000 files of one minute each from 00:00.
    int probes = 0;
    const auto firstTime = [&](size_t i, SYSTEMTIME& time) {
        ++probes;
        time = At(static_cast<WORD>(i / 60), static_cast<WORD>(i % 60), 0);
        return true;
    };
    TimeRange range;
    range.hasFrom = range.hasTo = true;
    range.from = At(5, 30, 10);
    range.to = At(5, 31, 10);
    const auto chosen = SelectRangeFiles(1000, firstTime, range);
    EXPECT_EQ(330u, chosen.first);
    EXPECT_EQ(332u, chosen.second);
    EXPECT_LE(probes, 20);
}

namespace {

MessageRecord Record(const SYSTEMTIME& time, const std::wstring& text)
{
    MessageRecord record = {};
    record.time = time;
    std::copy(text.begin(), text.begin() + std::min<size_t>(text.size(), kMessageTextUnits), record.text);
    return record;
}

} // namespace

TEST(LogCheck, FindsDamageInRecordsAndTheFilesShape)
{
    LogChecker checker;
    checker.BeginFile(L"2611231405.qxl", 272 * 6 + 100, CheckFindings::Header::Accepted);
    checker.Record(1, Record(At(14, 5, 0), L"a"));
    checker.Record(2, MessageRecord{});
    checker.Record(3, Record(SYSTEMTIME{2026, 13, 0, 1, 0, 0, 0, 0}, L"bad month"));
    checker.Record(4, Record(At(14, 4, 0), L"back"));
    checker.Record(5, MessageRecord{});
    CheckFindings f = checker.EndFile();
    EXPECT_EQ(5, f.records);
    EXPECT_EQ(100, f.tornBytes);
    EXPECT_EQ(2, f.zeroSlots.count);
    EXPECT_EQ(2, f.zeroSlots.firstSlot);
    EXPECT_EQ(1, f.badTimes.count);
    EXPECT_EQ(1, f.backwards.count);
    EXPECT_EQ(4, f.backwards.firstSlot);
    EXPECT_TRUE(f.Damaged());
    EXPECT_EQ("2611231405.qxl: 5 records, 2026-11-23T14:05:00.000 .. 2026-11-23T14:04:00.000, damaged\n"
              "  torn tail: 100 bytes after slot 5, the last whole record\n"
              "  zero slots: 2, the first at slot 2\n"
              "  bad time stamps: 1, the first at slot 3\n"
              "  time goes backwards: 1, the first at slot 4\n",
              DescribeFindings(f));

    // Across files: the next file starting before this one's last record.
    checker.BeginFile(L"2611231406.qxl", 272 * 2, CheckFindings::Header::Accepted);
    checker.Record(1, Record(At(14, 3, 0), L"earlier"));
    f = checker.EndFile();
    EXPECT_TRUE(f.backwardsFromPrevious);
    EXPECT_EQ(0, f.backwards.count);
    EXPECT_FALSE(f.Damaged());
    EXPECT_TRUE(f.Warned());
}

TEST(LogCheck, JudgesHeadersAndNamesWithoutReadingRecords)
{
    LogChecker checker;
    checker.BeginFile(L"2611231405.qxl", 31, CheckFindings::Header::TooShort);
    CheckFindings f = checker.EndFile();
    EXPECT_TRUE(f.Damaged());
    EXPECT_EQ("2611231405.qxl: damaged\n"
              "  header: the file has 31 bytes, fewer than the 32 of the version text\n",
              DescribeFindings(f));

    checker.BeginFile(L"2611231405.qxl", 99999, CheckFindings::Header::Newer);
    f = checker.EndFile();
    EXPECT_TRUE(f.Damaged());
    EXPECT_EQ(0, f.records);
    EXPECT_EQ(0, f.tornBytes);

    checker.BeginFile(L"2611231405.qxl", 200, CheckFindings::Header::Accepted);
    f = checker.EndFile();
    EXPECT_EQ(-1, f.records);
    EXPECT_TRUE(f.Damaged());

    checker.BeginFile(L"day00.qxl", 272, CheckFindings::Header::Accepted);
    f = checker.EndFile();
    EXPECT_FALSE(f.Damaged());
    EXPECT_TRUE(f.Warned());
    EXPECT_EQ("day00.qxl: 0 records, warnings\n"
              "  name: not a time YYMMDDHHmm, so the file cannot be placed among the others\n",
              DescribeFindings(f));

    checker.BeginFile(L"2611231405.qxl", 272 * 2, CheckFindings::Header::Accepted);
    checker.Record(1, Record(At(14, 5, 0), L"fine"));
    f = checker.EndFile();
    EXPECT_FALSE(f.Damaged() || f.Warned());
    EXPECT_EQ("2611231405.qxl: 1 record, 2026-11-23T14:05:00.000 .. 2026-11-23T14:05:00.000, ok\n",
              DescribeFindings(f));
}

TEST(LogCheck, TakesRandomBytesAsTheyCome)
{
    std::mt19937 random(99);
    for (int round = 0; round < 300; ++round) {
        LogChecker checker;
        const long long records = random() % 20;
        const long long size = 272 * (records + 1) + random() % 272;
        checker.BeginFile(L"2611231405.qxl", size, CheckFindings::Header::Accepted);
        long long valid = 0;
        for (long long slot = 1; slot <= records; ++slot) {
            MessageRecord record;
            auto* bytes = reinterpret_cast<unsigned char*>(&record);
            // Mostly noise; now and then a plausible stamp or a zero slot.
            for (size_t i = 0; i < sizeof(record); ++i)
                bytes[i] = static_cast<unsigned char>(random());
            const unsigned kind = random() % 3;
            if (kind == 0)
                record = MessageRecord{};
            if (kind == 1) {
                record.time = At(static_cast<WORD>(random() % 24), static_cast<WORD>(random() % 60), 0);
                ++valid;
            }
            checker.Record(slot, record);
        }
        const CheckFindings f = checker.EndFile();
        EXPECT_EQ(records, f.records);
        EXPECT_EQ(size % 272, f.tornBytes);
        EXPECT_EQ(records, f.zeroSlots.count + f.badTimes.count + valid);
        EXPECT_EQ(f.zeroSlots.count + f.badTimes.count + (f.tornBytes > 0 ? 1 : 0) > 0, f.Damaged());
        EXPECT_EQ(0u, DescribeFindings(f).find("2611231405.qxl: "));
    }
}

TEST(RecordFormats, EachFormatWritesTheSameRecord)
{
    const MessageRecord record = Record(At(14, 5, 7, 89), L"Pump \"P-1\", \x6CF5\xD800");
    const std::string text = "Pump \"P-1\", \xE6\xB3\xB5\xED\xA0\x80";
    const auto format = [&](OutputFormat kind) {
        RecordFormatter formatter(kind, L"%04d/%02d/%02d %02d:%02d:%02d,%03d | %s");
        formatter.SetFile(L"26112314,05.qxl");
        std::string out;
        formatter.AppendHeading(out);
        formatter.Append(out, 42, record);
        return out;
    };
    EXPECT_EQ("2026/11/23 14:05:07,089 | " + text + "\n", format(OutputFormat::Line));
    EXPECT_EQ("2026-11-23T14:05:07.089 " + text + "\n", format(OutputFormat::Iso));
    EXPECT_EQ("time,file,slot,text\n2026-11-23T14:05:07.089,\"26112314,05.qxl\",42,"
              "\"Pump \"\"P-1\"\", \xE6\xB3\xB5\xED\xA0\x80\"\n",
              format(OutputFormat::Csv));
    EXPECT_EQ("{\"time\":\"2026-11-23T14:05:07.089\",\"file\":\"26112314,05.qxl\",\"slot\":42,"
              "\"text\":\"Pump \\\"P-1\\\", \xE6\xB3\xB5\\ud800\"}\n",
              format(OutputFormat::Json));

    // A text that fills the field has no terminating zero: 128 units, no more.
    MessageRecord full = Record(At(0, 0, 0), std::wstring(kMessageTextUnits, L'x'));
    EXPECT_EQ(128u, RecordTextLength(full));
}
