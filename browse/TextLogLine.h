#pragma once
#include "ring/MessageRecord.h"

// An older text log holds one message a line, its time stamp in fixed
// columns: "YYYY-MM-DD hh:mm:ss text" (the separators may be any character).
// It is read in pieces of at most kTextLogPieceChars characters into one
// line buffer that is zeroed only once, so a piece shorter than the one
// before leaves that one's tail behind its terminating zero; a longer line
// is cut into pieces, each taken as a line of its own.
constexpr int kTextLogLineUnits = 128;
constexpr int kTextLogPieceChars = kTextLogLineUnits - 1;
// Where the message text starts.
constexpr int kTextLogTextColumn = 20;

using TextLogLine = wchar_t[kTextLogLineUnits];

// Removes the line feed that ends a piece read up to its line's end.
void TrimLineFeed(TextLogLine& line);

// Fills the time stamp and the text of `record` from the columns of `line`.
// Each column is read where it stands, also behind the line's terminating
// zero: a line shorter than 20 characters takes as its text whatever an
// earlier, longer line left in the buffer there.  The day of week is left
// alone, milliseconds become 0, and the text field keeps, behind the new
// text's terminating zero, what an earlier longer text left in it.
void FillRecordFromLine(const TextLogLine& line, MessageRecord& record);
