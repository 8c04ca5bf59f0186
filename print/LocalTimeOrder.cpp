#include "print/LocalTimeOrder.h"

namespace {

// The file time of `time` taken as it is (no time-zone shift), or 0 for a
// record that has none: the earliest moment.
ULONGLONG MomentOf(const SYSTEMTIME& time)
{
    FILETIME moment = {};
    if (!::SystemTimeToFileTime(&time, &moment))
        return 0;
    return (static_cast<ULONGLONG>(moment.dwHighDateTime) << 32) | moment.dwLowDateTime;
}

} // namespace

int CompareLocalTimes(const SYSTEMTIME& a, const SYSTEMTIME& b)
{
    const ULONGLONG left = MomentOf(a);
    const ULONGLONG right = MomentOf(b);
    return left < right ? -1 : (left > right ? 1 : 0);
}
