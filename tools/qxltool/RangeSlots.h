#pragma once
#include <windows.h>

#include "print/LocalTimeOrder.h"
#include "print/RecordBounds.h"

// A time range of the command line: either end may be open.  Both ends are
// inclusive.
struct TimeRange {
    bool hasFrom = false;
    SYSTEMTIME from = {};
    bool hasTo = false;
    SYSTEMTIME to = {};

    bool Limited() const { return hasFrom || hasTo; }
    bool Contains(const SYSTEMTIME& time) const
    {
        return (!hasFrom || CompareLocalTimes(time, from) >= 0) &&
               (!hasTo || CompareLocalTimes(time, to) <= 0);
    }
};

// Inclusive record slots of one file (slot 1 is its first record); empty
// when first > last.
struct SlotSpan {
    int first = 1;
    int last = 0;
    bool Empty() const { return first > last; }
};

// The slots of `range` among slots 1 to `lastSlot` of a file whose records
// are in time order, by the binary searches printing uses, with printing's
// order of times.  Those stop at the first record stamped exactly with the
// searched time, which may lie inside a group of equal stamps; the span is
// widened over the rest of such a group, so that it holds every record of
// the range.  `timeAt(slot, time)` reads one time stamp; false when a read
// failed.
template <class TimeAt>
bool SelectRangeSlots(const TimeAt& timeAt, int lastSlot, const TimeRange& range, SlotSpan& span)
{
    span = SlotSpan{1, lastSlot};
    if (lastSlot < 1)
        return true;
    SYSTEMTIME stamp;
    const auto stampedAt = [&](int slot, const SYSTEMTIME& time, bool& same) {
        if (!timeAt(slot, stamp))
            return false;
        same = CompareLocalTimes(stamp, time) == 0;
        return true;
    };
    if (range.hasFrom) {
        int first = LowerRecordBound(timeAt, range.from, 1, lastSlot);
        if (first < 0)
            return false;
        for (bool same = true; first > 1 && same; ) {
            if (!stampedAt(first - 1, range.from, same))
                return false;
            if (same)
                --first;
        }
        span.first = first;
    }
    if (range.hasTo) {
        int last = UpperRecordBound(timeAt, range.to, 1, lastSlot);
        if (last < 0)
            return false;
        for (bool same = true; last < lastSlot && same; ) {
            if (!stampedAt(last + 1, range.to, same))
                return false;
            if (same)
                ++last;
        }
        span.last = last;
    }
    return true;
}
