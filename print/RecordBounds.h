#pragma once
#include <windows.h>

#include <algorithm>

#include "print/LocalTimeOrder.h"
#include "print/PrintSettings.h"

// Range selection over the records of a log, which are taken to be in time
// order.  Records are addressed by slot: slot 0 is the header, slots 1 to
// s - 1 the records.  `timeAt(slot, time)` fills in the time stamp of one
// record and returns false when it cannot be read; the searches then give -1.

enum class RecordBound { Lower, Upper };

// Binary search between slots a and b (either order; both at least 1).  A
// record stamped exactly `time` ends the search at once, so with several
// such records the bound can fall inside the group.  Otherwise the lower
// bound is the first slot later than `time` and the upper bound the last
// slot earlier than it (a - 1 or b + 1 when there is none).
template <class TimeAt>
int FindRecordBound(RecordBound kind, const TimeAt& timeAt, const SYSTEMTIME& time, int a, int b)
{
    if (a < 1 || b < 1)
        return -1;
    int lo = std::min(a, b);
    int hi = std::max(a, b);
    while (lo <= hi) {
        const int mid = (lo + hi) / 2;
        SYSTEMTIME stamp;
        if (!timeAt(mid, stamp))
            return -1;
        const int order = CompareLocalTimes(stamp, time);
        if (order == 0)
            return mid;
        if (order > 0)
            hi = mid - 1;
        else
            lo = mid + 1;
    }
    return kind == RecordBound::Lower ? lo : hi;
}

template <class TimeAt>
int LowerRecordBound(const TimeAt& timeAt, const SYSTEMTIME& time, int a, int b)
{
    return FindRecordBound(RecordBound::Lower, timeAt, time, a, b);
}

template <class TimeAt>
int UpperRecordBound(const TimeAt& timeAt, const SYSTEMTIME& time, int a, int b)
{
    return FindRecordBound(RecordBound::Upper, timeAt, time, a, b);
}

// The inclusive slots to print; first > last (or a negative one) means
// nothing to print.
struct RecordSpan {
    int first = -1;
    int last = -1;
};

// The span of `printRange` in a log of `slots` slots (header included).
// RangeFrom runs to `slots`, one past the last record: the page count and
// the last page's read include that slot, and the job lives with it.
// False for an unknown range kind.
template <class TimeAt>
bool SelectRecordSpan(int printRange, const SYSTEMTIME& rangeFrom, const SYSTEMTIME& rangeTo,
                      int slots, const TimeAt& timeAt, RecordSpan& span)
{
    if (slots <= 1) {
        span = RecordSpan{};
        return true;
    }
    const int lastSlot = slots - 1;
    switch (printRange) {
    case RangeAll:
        span = {1, lastSlot};
        return true;
    case RangeBetween:
        span.first = LowerRecordBound(timeAt, rangeFrom, 1, lastSlot);
        span.last = UpperRecordBound(timeAt, rangeTo, 1, lastSlot);
        return true;
    case RangeUpTo:
        span = {1, UpperRecordBound(timeAt, rangeFrom, 1, lastSlot)};
        return true;
    case RangeFrom:
        span = {LowerRecordBound(timeAt, rangeFrom, 1, lastSlot), slots};
        return true;
    default:
        return false;
    }
}
