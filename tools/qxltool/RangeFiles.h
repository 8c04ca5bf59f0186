#pragma once
#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "print/LocalTimeOrder.h"
#include "tools/qxltool/RangeSlots.h"

// The files of a set that a time range has to look into, found by binary
// search over the files' first records, so that a short range in a large
// set opens a handful of files instead of all of them.  The set is taken
// to be one log in time order, as it is for the search inside a file:
// every record of a file lies between its own first record and the next
// file's first record.
//
// `firstTime(i, time)` reads the first record's time of file i; false for
// a file without one (empty, unreadable, refused).  Such files hold nothing
// to order by and are stepped over; inside the span found they are still
// read, so that their trouble is reported.
//
// Returns [first, end): from the last file starting before `from` (an
// earlier one ends before that file starts) to the last file starting at
// or before `to`.
template <class FirstTime>
std::pair<std::size_t, std::size_t> SelectRangeFiles(std::size_t count, const FirstTime& firstTime,
                                                     const TimeRange& range)
{
    std::vector<std::optional<std::optional<SYSTEMTIME>>> known(count);
    const auto timeOf = [&](std::size_t i) -> const std::optional<SYSTEMTIME>& {
        if (!known[i]) {
            SYSTEMTIME time;
            known[i] = firstTime(i, time) ? std::optional<SYSTEMTIME>(time) : std::nullopt;
        }
        return *known[i];
    };
    // The last file with a first record for which `before` holds, or -1;
    // `before` is true for every file up to some point and false after.
    const auto lastWhere = [&](auto before) {
        long long lo = 0, hi = static_cast<long long>(count) - 1, found = -1;
        while (lo <= hi) {
            const long long mid = lo + (hi - lo) / 2;
            long long probe = mid;
            while (probe <= hi && !timeOf(static_cast<std::size_t>(probe)))
                ++probe;
            if (probe > hi) {
                hi = mid - 1;
            } else if (before(*timeOf(static_cast<std::size_t>(probe)))) {
                found = probe;
                lo = probe + 1;
            } else {
                hi = mid - 1;
            }
        }
        return found;
    };
    std::size_t first = 0;
    std::size_t end = count;
    if (range.hasFrom) {
        const long long start = lastWhere([&](const SYSTEMTIME& t) { return CompareLocalTimes(t, range.from) < 0; });
        first = start < 0 ? 0 : static_cast<std::size_t>(start);
    }
    if (range.hasTo) {
        const long long last = lastWhere([&](const SYSTEMTIME& t) { return CompareLocalTimes(t, range.to) <= 0; });
        end = last < 0 ? 0 : static_cast<std::size_t>(last) + 1;
    }
    return {first, std::max(first, end)};
}
