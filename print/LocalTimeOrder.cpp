#include "print/LocalTimeOrder.h"

namespace {

// A moment to order by: records the platform cannot convert all share the
// first place, before every convertible one (1601-01-01 00:00:00.000, whose
// file time is 0, included).
struct Moment {
    bool valid;
    ULONGLONG fileTime;
};

Moment MomentOf(const SYSTEMTIME& time)
{
    // Taken as it is: no time-zone shift.
    FILETIME moment = {};
    if (!::SystemTimeToFileTime(&time, &moment))
        return Moment{false, 0};
    return Moment{true, (static_cast<ULONGLONG>(moment.dwHighDateTime) << 32) | moment.dwLowDateTime};
}

} // namespace

int CompareLocalTimes(const SYSTEMTIME& a, const SYSTEMTIME& b)
{
    const Moment left = MomentOf(a);
    const Moment right = MomentOf(b);
    if (left.valid != right.valid)
        return left.valid ? 1 : -1;
    return left.fileTime < right.fileTime ? -1 : (left.fileTime > right.fileTime ? 1 : 0);
}
