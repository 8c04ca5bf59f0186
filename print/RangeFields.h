#pragma once
#include <windows.h>

// The checks of the print setup dialog's time fields, on the values as the
// dialog read them.  A group is six fields in this order: year, month, day,
// hour, minute, second.
enum TimeField { FieldYear, FieldMonth, FieldDay, FieldHour, FieldMinute, FieldSecond, kTimeFields };

struct TimeFieldValues {
    int value[kTimeFields] = {};  // as read, signed; text that is no number reads 0
    bool empty[kTimeFields] = {}; // the control held no text at all
};

// The first refusal of a group, or none (textId 0).  `field` is the field to
// put the focus on; `days` is the argument of the day message.
struct FieldRefusal {
    UINT textId = 0;
    int field = FieldYear;
    int days = 0;
};

// Year, hour, minute and second must not be empty; month and day may be, and
// then read 0 and fail their range check.  Checked in field order.
FieldRefusal CheckTimeFields(const TimeFieldValues& fields);

// The time a checked group stands for (day of week 0, milliseconds 0).
SYSTEMTIME TimeFromFields(const TimeFieldValues& fields);

bool IsLeapYear(int year);
// Days in `month` (1 to 12) of `year`.
int DaysInMonth(int year, int month);

// Whether `time` lies from the first record's time to the last's, both
// included, milliseconds counting.
bool IsWithinLog(const SYSTEMTIME& time, const SYSTEMTIME& first, const SYSTEMTIME& last);
