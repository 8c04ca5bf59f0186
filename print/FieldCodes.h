#pragma once

// The header and footer boxes of the print setup dialog hold free text; the
// code menu inserts two-character field codes into them.  Nothing expands
// the codes: the printed header and page label are the job's own.

constexpr int kFieldTextUnits = 1024;

// The code a command of the code menu inserts, or null for any other command.
const wchar_t* FieldCodeForCommand(int command);

// Puts `code` in place of the selection [start, end) of `text` (at most
// kFieldTextUnits - 1 units), into `out`.  Of the text after the selection
// at most kFieldTextUnits - end - 2 * (length of the code) units are kept,
// and the result is cut after kFieldTextUnits - 1 units, so a code typed
// into a full box is lost or cut.  False, with `out` untouched, for a
// selection that is not one (negative, or start after end).
bool InsertFieldCode(const wchar_t* text, int start, int end, const wchar_t* code,
                     wchar_t (&out)[kFieldTextUnits]);
