// The pure rules of export and printing: time order, range bounds, page
// arithmetic, the setup dialog's field checks, code insertion, export lines.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "lang/ResourceIds.h"
#include "print/ExportLines.h"
#include "print/FieldCodes.h"
#include "print/LocalTimeOrder.h"
#include "print/PageLayout.h"
#include "print/RangeFields.h"
#include "print/RecordBounds.h"

namespace {

SYSTEMTIME Time(int y, int mo, int d, int h, int mi, int s, int ms = 0)
{
    SYSTEMTIME t = {};
    t.wYear = static_cast<WORD>(y);
    t.wMonth = static_cast<WORD>(mo);
    t.wDay = static_cast<WORD>(d);
    t.wHour = static_cast<WORD>(h);
    t.wMinute = static_cast<WORD>(mi);
    t.wSecond = static_cast<WORD>(s);
    t.wMilliseconds = static_cast<WORD>(ms);
    return t;
}

} // namespace

TEST(CompareLocalTimes, OrdersByMomentWithMillisecondsAndIgnoresDayOfWeek)
{
    const SYSTEMTIME base = Time(2026, 3, 3, 10, 0, 0, 500);
    EXPECT_EQ(0, CompareLocalTimes(base, base));
    EXPECT_EQ(1, CompareLocalTimes(base, Time(2026, 3, 3, 10, 0, 0)));
    EXPECT_EQ(-1, CompareLocalTimes(Time(2026, 3, 3, 10, 0, 0, 499), base));
    EXPECT_EQ(-1, CompareLocalTimes(Time(2025, 12, 31, 23, 59, 59, 999), Time(2026, 1, 1, 0, 0, 0)));
    EXPECT_EQ(1, CompareLocalTimes(Time(2026, 3, 4, 0, 0, 0), Time(2026, 3, 3, 23, 59, 59, 999)));
    SYSTEMTIME otherWeekday = base;
    otherWeekday.wDayOfWeek = 5;
    EXPECT_EQ(0, CompareLocalTimes(base, otherWeekday));
}

TEST(CompareLocalTimes, UnconvertibleTimesAreEqualAndEarliest)
{
    const SYSTEMTIME zero = {};
    const SYSTEMTIME monthZero = Time(2026, 0, 3, 10, 0, 0);
    const SYSTEMTIME before1601 = Time(1600, 12, 31, 0, 0, 0);
    EXPECT_EQ(0, CompareLocalTimes(zero, monthZero));
    EXPECT_EQ(0, CompareLocalTimes(before1601, zero));
    EXPECT_EQ(-1, CompareLocalTimes(zero, Time(1601, 1, 1, 0, 0, 0)));
    EXPECT_EQ(1, CompareLocalTimes(Time(1601, 1, 1, 0, 0, 0, 1), monthZero));
}

namespace {

// A log's record times as the searches see them: slot i (1-based) is
// times[i - 1]; slots outside fail to read.
struct TimeList {
    const std::vector<SYSTEMTIME>& times;
    bool operator()(int slot, SYSTEMTIME& time) const
    {
        if (slot < 1 || slot > static_cast<int>(times.size()))
            return false;
        time = times[slot - 1];
        return true;
    }
};

// The bound by a scan of every record, as the search defines it.
bool IsValidBound(RecordBound kind, const std::vector<SYSTEMTIME>& times, const SYSTEMTIME& t, int found)
{
    const int n = static_cast<int>(times.size());
    bool anyEqual = false;
    for (const SYSTEMTIME& time : times)
        anyEqual = anyEqual || CompareLocalTimes(time, t) == 0;
    if (anyEqual)
        return found >= 1 && found <= n && CompareLocalTimes(times[found - 1], t) == 0;
    int expected = kind == RecordBound::Lower ? n + 1 : 0;
    for (int slot = 1; slot <= n; ++slot) {
        const int order = CompareLocalTimes(times[slot - 1], t);
        if (kind == RecordBound::Lower && order > 0) {
            expected = slot;
            break;
        }
        if (kind == RecordBound::Upper && order < 0)
            expected = slot;
    }
    return found == expected;
}

} // namespace

TEST(RecordBounds, AgreeWithAScanOverRandomLogsAndTimes)
{
    std::mt19937 random(20261123);
    for (int round = 0; round < 300; ++round) {
        // Times a few milliseconds apart inside one second, repeated now and
        // then, so that probes land on, between and around records.
        const int count = 1 + static_cast<int>(random() % 60);
        std::vector<SYSTEMTIME> times;
        int ms = static_cast<int>(random() % 5);
        for (int i = 0; i < count; ++i) {
            ms += static_cast<int>(random() % 3);
            times.push_back(Time(2026, 3, 3, 10, 0, ms / 1000, ms % 1000));
        }
        const TimeList list{times};
        for (int probe = 0; probe < 20; ++probe) {
            const int at = static_cast<int>(random() % (ms + 6));
            const SYSTEMTIME t = Time(2026, 3, 3, 10, 0, at / 1000, at % 1000);
            const int lower = LowerRecordBound(list, t, 1, count);
            const int upper = UpperRecordBound(list, t, count, 1);
            ASSERT_TRUE(IsValidBound(RecordBound::Lower, times, t, lower)) << round << " " << at;
            ASSERT_TRUE(IsValidBound(RecordBound::Upper, times, t, upper)) << round << " " << at;
        }
    }
}

TEST(RecordBounds, RefuseSlotsBelowOneAndUnreadableRecords)
{
    const std::vector<SYSTEMTIME> times = {Time(2026, 1, 1, 0, 0, 0), Time(2026, 1, 2, 0, 0, 0)};
    const TimeList list{times};
    const SYSTEMTIME t = Time(2026, 1, 1, 12, 0, 0);
    EXPECT_EQ(-1, LowerRecordBound(list, t, 0, 2));
    EXPECT_EQ(-1, UpperRecordBound(list, t, 2, -1));
    EXPECT_EQ(-1, LowerRecordBound(list, t, 3, 9));  // slot 6 cannot be read
    EXPECT_EQ(2, LowerRecordBound(list, t, 1, 2));
    EXPECT_EQ(1, UpperRecordBound(list, t, 1, 2));
}

TEST(RecordSpan, EachRangeKindOverALog)
{
    std::vector<SYSTEMTIME> times;
    for (int i = 0; i < 10; ++i)
        times.push_back(Time(2026, 3, 3, 10, i, 0));
    const TimeList list{times};
    const int slots = 11;  // header and ten records
    const SYSTEMTIME from = Time(2026, 3, 3, 10, 2, 30);
    const SYSTEMTIME to = Time(2026, 3, 3, 10, 6, 0);
    RecordSpan span;
    ASSERT_TRUE(SelectRecordSpan(RangeAll, from, to, slots, list, span));
    EXPECT_EQ(1, span.first);
    EXPECT_EQ(10, span.last);
    ASSERT_TRUE(SelectRecordSpan(RangeBetween, from, to, slots, list, span));
    EXPECT_EQ(4, span.first);  // 10:03
    EXPECT_EQ(7, span.last);   // 10:06 exactly
    ASSERT_TRUE(SelectRecordSpan(RangeUpTo, from, to, slots, list, span));
    EXPECT_EQ(1, span.first);
    EXPECT_EQ(3, span.last);
    ASSERT_TRUE(SelectRecordSpan(RangeFrom, from, to, slots, list, span));
    EXPECT_EQ(4, span.first);
    EXPECT_EQ(11, span.last);  // one past the last record
    // A from-time after every record, a to-time before every record.
    ASSERT_TRUE(SelectRecordSpan(RangeFrom, Time(2027, 1, 1, 0, 0, 0), to, slots, list, span));
    EXPECT_EQ(11, span.first);
    EXPECT_EQ(11, span.last);
    ASSERT_TRUE(SelectRecordSpan(RangeUpTo, Time(2020, 1, 1, 0, 0, 0), to, slots, list, span));
    EXPECT_GT(span.first, span.last);
    // No records at all; an unknown kind.
    ASSERT_TRUE(SelectRecordSpan(RangeAll, from, to, 1, list, span));
    EXPECT_EQ(-1, span.first);
    EXPECT_EQ(-1, span.last);
    EXPECT_FALSE(SelectRecordSpan(4, from, to, slots, list, span));
}

TEST(PageLayout, TextRectangleLinesAndBandsInHundredthsOfAnInch)
{
    const PrinterMetrics pdf{2400, 3000, 300, 300};
    const RECT text = PrintTextRect(pdf);
    EXPECT_EQ(50, text.left);
    EXPECT_EQ(-100, text.top);
    EXPECT_EQ(750, text.right);
    EXPECT_EQ(-900, text.bottom);
    // Margins are printer pixels: half as wide in inches at 600 dpi, and
    // the division truncates toward zero on both signs.
    const RECT fine = PrintTextRect(PrinterMetrics{4961, 7016, 600, 600});
    EXPECT_EQ(25, fine.left);
    EXPECT_EQ(-50, fine.top);
    EXPECT_EQ(801, fine.right);    // 4811 * 100 / 600 = 801.8
    EXPECT_EQ(-1119, fine.bottom); // 6716 * -100 / 600 = -1119.3

    EXPECT_EQ(55, PrintLinesPerPage(pdf, 14));  // 2400 / 42 = 57.1, less 2
    EXPECT_EQ(45, PrintLinesPerPage(pdf, 17));  // 2400 / 51 = 47.06
    EXPECT_EQ(48, PrintLinesPerPage(pdf, 16));  // 2400 / 48 = 50 exactly
    EXPECT_EQ(0, PrintLinesPerPage(pdf, 0));

    const RECT header = HeaderBand(text, 14);
    EXPECT_EQ(-100, header.top);
    EXPECT_EQ(-114, header.bottom);
    const RECT third = RecordBand(text, 14, 2);
    EXPECT_EQ(-142, third.top);
    EXPECT_EQ(-156, third.bottom);
    const RECT label = PageLabelBand(text, 14);
    EXPECT_EQ(-886, label.top);
    EXPECT_EQ(-900, label.bottom);
    EXPECT_EQ(50, label.left);
    EXPECT_EQ(750, label.right);
}

TEST(PageLayout, PageCountsAndCopies)
{
    EXPECT_EQ(1, PrintPageCount(1, 55));
    EXPECT_EQ(1, PrintPageCount(55, 55));
    EXPECT_EQ(2, PrintPageCount(56, 55));
    EXPECT_EQ(0, PrintPageCount(0, 55));

    const CopyPlan collated = PlanCopies(true, 3);
    EXPECT_EQ(3, collated.outer);
    EXPECT_EQ(1, collated.inner);
    EXPECT_EQ(3, collated.total);
    const CopyPlan uncollated = PlanCopies(false, 3);
    EXPECT_EQ(1, uncollated.outer);
    EXPECT_EQ(3, uncollated.inner);
    EXPECT_EQ(3, uncollated.total);
}

namespace {

TimeFieldValues Fields(int y, int mo, int d, int h, int mi, int s)
{
    TimeFieldValues fields;
    const int values[kTimeFields] = {y, mo, d, h, mi, s};
    for (int i = 0; i < kTimeFields; ++i)
        fields.value[i] = values[i];
    return fields;
}

// A field left empty reads 0.
TimeFieldValues WithEmpty(TimeFieldValues fields, TimeField field)
{
    fields.empty[field] = true;
    fields.value[field] = 0;
    return fields;
}

} // namespace

TEST(RangeFields, EveryRefusalWithItsStringAndField)
{
    const TimeFieldValues good = Fields(2026, 3, 3, 10, 20, 30);
    EXPECT_EQ(0u, CheckTimeFields(good).textId);
    struct Case {
        TimeFieldValues fields;
        UINT textId;
        int field;
    };
    const Case cases[] = {
        {WithEmpty(good, FieldYear), IDS_FIELD_EMPTY, FieldYear},
        {Fields(10000, 3, 3, 10, 20, 30), IDS_BAD_YEAR, FieldYear},
        {Fields(-1, 3, 3, 10, 20, 30), IDS_BAD_YEAR, FieldYear},
        // An empty month or day is not "empty": it reads 0 and fails its range.
        {WithEmpty(good, FieldMonth), IDS_BAD_MONTH, FieldMonth},
        {Fields(2026, 13, 3, 10, 20, 30), IDS_BAD_MONTH, FieldMonth},
        {WithEmpty(good, FieldDay), IDS_BAD_DAY, FieldDay},
        {Fields(2026, 4, 31, 10, 20, 30), IDS_BAD_DAY, FieldDay},
        {WithEmpty(good, FieldHour), IDS_FIELD_EMPTY, FieldHour},
        {Fields(2026, 3, 3, 24, 20, 30), IDS_BAD_HOUR, FieldHour},
        {Fields(2026, 3, 3, -1, 20, 30), IDS_BAD_HOUR, FieldHour},
        {WithEmpty(good, FieldMinute), IDS_FIELD_EMPTY, FieldMinute},
        {Fields(2026, 3, 3, 10, 60, 30), IDS_BAD_MINUTE, FieldMinute},
        {WithEmpty(good, FieldSecond), IDS_FIELD_EMPTY, FieldSecond},
        {Fields(2026, 3, 3, 10, 20, 60), IDS_BAD_SECOND, FieldSecond},
        // The first failing field wins.
        {Fields(2026, 0, 40, 99, 99, 99), IDS_BAD_MONTH, FieldMonth},
    };
    for (const Case& c : cases) {
        const FieldRefusal refusal = CheckTimeFields(c.fields);
        EXPECT_EQ(c.textId, refusal.textId) << c.fields.value[0] << "-" << c.fields.value[1];
        EXPECT_EQ(c.field, refusal.field) << c.textId;
    }
    EXPECT_EQ(30, CheckTimeFields(Fields(2026, 4, 31, 0, 0, 0)).days);
}

TEST(RangeFields, FebruaryOfLeapAndCommonYears)
{
    for (int year : {2000, 2024}) {
        EXPECT_EQ(0u, CheckTimeFields(Fields(year, 2, 29, 0, 0, 0)).textId) << year;
        EXPECT_EQ(IDS_BAD_DAY, CheckTimeFields(Fields(year, 2, 30, 0, 0, 0)).textId) << year;
    }
    for (int year : {1900, 2023}) {
        const FieldRefusal refusal = CheckTimeFields(Fields(year, 2, 29, 0, 0, 0));
        EXPECT_EQ(IDS_BAD_DAY, refusal.textId) << year;
        EXPECT_EQ(28, refusal.days) << year;
    }
    EXPECT_EQ(31, DaysInMonth(2023, 12));
    EXPECT_EQ(30, DaysInMonth(2023, 11));
    EXPECT_EQ(31, DaysInMonth(0, 1));
}

TEST(RangeFields, WithinLogCountsMilliseconds)
{
    const SYSTEMTIME first = Time(2026, 3, 3, 10, 0, 0, 500);
    const SYSTEMTIME last = Time(2026, 3, 3, 11, 0, 0, 0);
    const SYSTEMTIME entered = TimeFromFields(Fields(2026, 3, 3, 10, 0, 0));
    EXPECT_EQ(0, entered.wMilliseconds);
    EXPECT_EQ(0, entered.wDayOfWeek);
    EXPECT_FALSE(IsWithinLog(entered, first, last));
    EXPECT_TRUE(IsWithinLog(TimeFromFields(Fields(2026, 3, 3, 10, 0, 1)), first, last));
    EXPECT_TRUE(IsWithinLog(TimeFromFields(Fields(2026, 3, 3, 11, 0, 0)), first, last));
    EXPECT_FALSE(IsWithinLog(TimeFromFields(Fields(2026, 3, 3, 11, 0, 1)), first, last));
}

TEST(FieldCodes, InsertAtTheCaretOrOverTheSelection)
{
    const wchar_t* codes[] = {L"&F", L"&P", L"&D", L"&T", L"&L", L"&C", L"&R"};
    for (int i = 0; i < 7; ++i)
        EXPECT_STREQ(codes[i], FieldCodeForCommand(IDM_CODE_FILE + i));
    EXPECT_EQ(nullptr, FieldCodeForCommand(IDOK));

    wchar_t out[kFieldTextUnits];
    ASSERT_TRUE(InsertFieldCode(L"Page 12", 3, 3, L"&T", out));
    EXPECT_STREQ(L"Pag&Te 12", out);
    ASSERT_TRUE(InsertFieldCode(L"Page 12", 5, 7, L"&P", out));
    EXPECT_STREQ(L"Page &P", out);
    ASSERT_TRUE(InsertFieldCode(L"", 0, 0, L"&F", out));
    EXPECT_STREQ(L"&F", out);
    EXPECT_FALSE(InsertFieldCode(L"abc", 2, 1, L"&F", out));
    EXPECT_FALSE(InsertFieldCode(L"abc", -1, 1, L"&F", out));
}

TEST(FieldCodes, AFullBoxKeepsOnlyWhatTheBoundAllows)
{
    // 1023 units, caret at 1000: of the 23 after it, 1024 - 1000 - 4 = 20 stay.
    const std::wstring full(1023, L'x');
    wchar_t out[kFieldTextUnits];
    ASSERT_TRUE(InsertFieldCode(full.c_str(), 1000, 1000, L"&D", out));
    EXPECT_EQ(std::wstring(1000, L'x') + L"&D" + std::wstring(20, L'x'), out);
    ASSERT_TRUE(InsertFieldCode(full.c_str(), 1022, 1022, L"&D", out));
    EXPECT_EQ(std::wstring(1022, L'x') + L"&", out);  // cut at unit 1023
    ASSERT_TRUE(InsertFieldCode(full.c_str(), 1023, 1023, L"&D", out));
    EXPECT_EQ(full, out);
}

TEST(ExportLines, OneLinePerRecordWithTheLastTextUnitDropped)
{
    const RecordLineFormatter formatter(L"%04d-%02d-%02d %02d:%02d:%02d.%03d  %s");
    wchar_t line[kExportLineUnits];

    MessageRecord record = {};
    record.time = Time(2026, 3, 3, 14, 5, 7, 9);
    const std::wstring full(128, L'a');
    std::copy(full.begin(), full.end(), record.text);
    int length = MakeExportLine(record, formatter, line);
    EXPECT_EQ(L"2026-03-03 14:05:07.009  " + std::wstring(127, L'a') + L"\r\n",
              std::wstring(line, length));
    EXPECT_EQ(L'\0', record.text[127]);

    MessageRecord zero = {};
    length = MakeExportLine(zero, formatter, line);
    EXPECT_EQ(L"0000-00-00 00:00:00.000  \r\n", std::wstring(line, length));
}

TEST(ExportLines, TheTextEndingIsAlwaysAppended)
{
    wchar_t name[260] = L"C:\\out\\day.txt";
    AppendTextExtension(name);
    EXPECT_STREQ(L"C:\\out\\day.txt.txt", name);
    wchar_t plain[260] = L"day";
    AppendTextExtension(plain);
    EXPECT_STREQ(L"day.txt", plain);
    wchar_t longName[260];
    const std::wstring base(257, L'n');
    std::copy(base.c_str(), base.c_str() + 258, longName);
    AppendTextExtension(longName);
    EXPECT_EQ(base + L".t", longName);
}
