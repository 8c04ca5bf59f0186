#include "print/RangeFields.h"

#include "lang/ResourceIds.h"
#include "print/LocalTimeOrder.h"

namespace {

// Days in months 1 to m of a common year.
constexpr int kDaysBefore[13] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};

bool InRange(int value, int low, int high)
{
    return value >= low && value <= high;
}

} // namespace

bool IsLeapYear(int year)
{
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int DaysInMonth(int year, int month)
{
    const int days = kDaysBefore[month] - kDaysBefore[month - 1];
    return month == 2 && IsLeapYear(year) ? days + 1 : days;
}

FieldRefusal CheckTimeFields(const TimeFieldValues& fields)
{
    const int* v = fields.value;
    if (fields.empty[FieldYear])
        return {IDS_FIELD_EMPTY, FieldYear, 0};
    if (!InRange(v[FieldYear], 0, 9999))
        return {IDS_BAD_YEAR, FieldYear, 0};
    if (!InRange(v[FieldMonth], 1, 12))
        return {IDS_BAD_MONTH, FieldMonth, 0};
    const int days = DaysInMonth(v[FieldYear], v[FieldMonth]);
    if (!InRange(v[FieldDay], 1, days))
        return {IDS_BAD_DAY, FieldDay, days};
    struct Clock {
        TimeField field;
        int high;
        UINT textId;
    };
    static constexpr Clock kClock[] = {
        {FieldHour, 23, IDS_BAD_HOUR},
        {FieldMinute, 59, IDS_BAD_MINUTE},
        {FieldSecond, 59, IDS_BAD_SECOND},
    };
    for (const Clock& clock : kClock) {
        if (fields.empty[clock.field])
            return {IDS_FIELD_EMPTY, clock.field, 0};
        if (!InRange(v[clock.field], 0, clock.high))
            return {clock.textId, clock.field, 0};
    }
    return {};
}

SYSTEMTIME TimeFromFields(const TimeFieldValues& fields)
{
    SYSTEMTIME time = {};
    time.wYear = static_cast<WORD>(fields.value[FieldYear]);
    time.wMonth = static_cast<WORD>(fields.value[FieldMonth]);
    time.wDay = static_cast<WORD>(fields.value[FieldDay]);
    time.wHour = static_cast<WORD>(fields.value[FieldHour]);
    time.wMinute = static_cast<WORD>(fields.value[FieldMinute]);
    time.wSecond = static_cast<WORD>(fields.value[FieldSecond]);
    return time;
}

bool IsWithinLog(const SYSTEMTIME& time, const SYSTEMTIME& first, const SYSTEMTIME& last)
{
    return CompareLocalTimes(time, first) >= 0 && CompareLocalTimes(time, last) <= 0;
}
