// The pure rules of printing: time order, range bounds against a scan, page
// arithmetic (the setup dialog's field checks and code insertion, the whole
// log's span, an empty log's and an unknown range kind's are the fuzz
// driver's).
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "print/PageLayout.h"
#include "print/RangeFields.h"
#include "print/RecordBounds.h"

namespace {

SYSTEMTIME Time(WORD y, WORD mo, WORD d, WORD h, WORD mi, WORD s, WORD ms = 0)
{
    return SYSTEMTIME{y, mo, 0, d, h, mi, s, ms};
}

// Slot i (from 1) of a log holds times[i - 1]; other slots cannot be read.
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

// A bound found by the search in sorted `times` is right when it holds a
// record of exactly `t`, or else, with no such record, is the first slot
// later (lower) or the last slot earlier (upper).
bool IsBound(RecordBound kind, const std::vector<SYSTEMTIME>& times, const SYSTEMTIME& t, int found)
{
    const int n = static_cast<int>(times.size());
    int notEarlier = 1;
    while (notEarlier <= n && CompareLocalTimes(times[notEarlier - 1], t) < 0)
        ++notEarlier;
    if (notEarlier <= n && CompareLocalTimes(times[notEarlier - 1], t) == 0)
        return found >= 1 && found <= n && CompareLocalTimes(times[found - 1], t) == 0;
    return found == (kind == RecordBound::Lower ? notEarlier : notEarlier - 1);
}

} // namespace

TEST(PrintRules, TimeOrderCountsMillisecondsAndPutsUnconvertibleTimesFirst)
{
    EXPECT_EQ(1, CompareLocalTimes(Time(2026, 3, 3, 10, 0, 0, 500), Time(2026, 3, 3, 10, 0, 0)));
    EXPECT_EQ(-1, CompareLocalTimes(Time(2025, 12, 31, 23, 59, 59, 999), Time(2026, 1, 1, 0, 0, 0)));
    SYSTEMTIME weekday = Time(2026, 3, 3, 10, 0, 0);
    weekday.wDayOfWeek = 5;
    EXPECT_EQ(0, CompareLocalTimes(weekday, Time(2026, 3, 3, 10, 0, 0)));
    // All zeros, month 0: equal to each other, before the platform's first moment.
    EXPECT_EQ(0, CompareLocalTimes(SYSTEMTIME{}, Time(2026, 0, 3, 10, 0, 0)));
    EXPECT_EQ(-1, CompareLocalTimes(SYSTEMTIME{}, Time(1601, 1, 1, 0, 0, 0)));
    // Entered times have no milliseconds: 10:00:00 is before a first record at 10:00:00.500.
    const SYSTEMTIME entered = TimeFromFields(TimeFieldValues{{2026, 3, 3, 10, 0, 0}});
    EXPECT_FALSE(IsWithinLog(entered, Time(2026, 3, 3, 10, 0, 0, 500), Time(2026, 3, 3, 11, 0, 0)));
}

TEST(PrintRules, RecordBoundsAgreeWithAScanOverRandomLogs)
{
    std::mt19937 random(20261123);
    for (int round = 0; round < 300; ++round) {
        // Stamps a few milliseconds apart, repeated now and then, so probes
        // land on, between and around records.
        std::vector<SYSTEMTIME> times;
        int ms = static_cast<int>(random() % 5);
        for (int i = 1 + static_cast<int>(random() % 60); i > 0; --i) {
            ms += static_cast<int>(random() % 3);
            times.push_back(Time(2026, 3, 3, 10, 0, ms / 1000, ms % 1000));
        }
        const int n = static_cast<int>(times.size());
        for (int probe = 0; probe < 20; ++probe) {
            const int at = static_cast<int>(random() % (ms + 6));
            const SYSTEMTIME t = Time(2026, 3, 3, 10, 0, at / 1000, at % 1000);
            ASSERT_TRUE(IsBound(RecordBound::Lower, times, t, LowerRecordBound(TimeList{times}, t, 1, n)));
            ASSERT_TRUE(IsBound(RecordBound::Upper, times, t, UpperRecordBound(TimeList{times}, t, n, 1)));
        }
    }
    const std::vector<SYSTEMTIME> two = {Time(2026, 1, 1, 0, 0, 0), Time(2026, 1, 2, 0, 0, 0)};
    EXPECT_EQ(-1, LowerRecordBound(TimeList{two}, two[0], 0, 2));
    EXPECT_EQ(-1, UpperRecordBound(TimeList{two}, two[0], 3, 9));  // unreadable slots
}

TEST(PrintRules, EachRangeKindSelectsItsSlots)
{
    std::vector<SYSTEMTIME> times;
    for (int i = 0; i < 10; ++i)
        times.push_back(Time(2026, 3, 3, 10, i, 0));
    const TimeList list{times};
    const SYSTEMTIME from = Time(2026, 3, 3, 10, 2, 30);
    const SYSTEMTIME to = Time(2026, 3, 3, 10, 6, 0);
    const struct {
        int range;
        SYSTEMTIME from;
        int first, last;
    } cases[] = {
        {RangeBetween, from, 4, 7},   // 10:03 to 10:06 exactly
        {RangeUpTo, from, 1, 3},
        {RangeFrom, from, 4, 11},     // to one past the last record
        {RangeFrom, Time(2027, 1, 1, 0, 0, 0), 11, 11},
        {RangeUpTo, Time(2020, 1, 1, 0, 0, 0), 1, 0},
    };
    for (const auto& c : cases) {
        RecordSpan span;
        ASSERT_TRUE(SelectRecordSpan(c.range, c.from, to, 11, list, span));
        EXPECT_EQ(c.first, span.first) << c.range;
        EXPECT_EQ(c.last, span.last) << c.range;
    }
}

TEST(PrintRules, PageGeometryInHundredthsOfAnInchAndCopies)
{
    const PrinterMetrics pdf{2400, 3000, 300, 300};
    const RECT text = PrintTextRect(pdf);
    EXPECT_EQ((std::vector<LONG>{50, -100, 750, -900}),
              (std::vector<LONG>{text.left, text.top, text.right, text.bottom}));
    // Margins are printer pixels; the division truncates toward zero.
    const RECT fine = PrintTextRect(PrinterMetrics{4961, 7016, 600, 600});
    EXPECT_EQ((std::vector<LONG>{25, -50, 801, -1119}),
              (std::vector<LONG>{fine.left, fine.top, fine.right, fine.bottom}));
    EXPECT_EQ(55, PrintLinesPerPage(pdf, 14));  // 2400 / 42 = 57.1, less 2
    EXPECT_EQ(45, PrintLinesPerPage(pdf, 17));
    EXPECT_EQ(48, PrintLinesPerPage(pdf, 16));  // 2400 / 48 = 50 exactly
    EXPECT_EQ(0, PrintLinesPerPage(pdf, 0));
    EXPECT_EQ(2, PrintPageCount(56, 55));
    EXPECT_EQ(1, PrintPageCount(55, 55));
    const CopyPlan collated = PlanCopies(true, 3);
    const CopyPlan uncollated = PlanCopies(false, 3);
    EXPECT_EQ((std::vector<int>{3, 1, 3}), (std::vector<int>{collated.outer, collated.inner, collated.total}));
    EXPECT_EQ((std::vector<int>{1, 3, 3}),
              (std::vector<int>{uncollated.outer, uncollated.inner, uncollated.total}));
}
