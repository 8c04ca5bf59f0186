#pragma once
#include <cstddef>

#include "msgwnd/MessageRecord.h"
#include "msgwnd/RecordLine.h"

// The pieces of a text export that need no file: the line of one record and
// the output name.

// The export's line buffer: a formatted line (at most kRecordLineChars) and
// its line end fit with room to spare.
constexpr std::size_t kExportLineUnits = 192;

// The line of one record as the export writes it: its last text unit is set
// to zero first (so a text filling all 128 units loses its last one), then
// the record line follows, then CR LF.  `record` is changed.  Returns the
// length in units, without a terminating zero.
int MakeExportLine(MessageRecord& record, const RecordLineFormatter& formatter,
                   wchar_t (&line)[kExportLineUnits]);

// Appends ".txt" to the name the save dialog gave, whether or not it ends
// with it already: "day.txt" becomes "day.txt.txt".  The name stays within
// its MAX_PATH units (cut when it would not fit).
void AppendTextExtension(wchar_t (&name)[260]);
