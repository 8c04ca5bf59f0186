#pragma once
#include <cstddef>
#include <string>

// Record text is UTF-16 as the writer received it, which need not be valid:
// a client may hand over half of a surrogate pair, and a 128-unit cut can
// split a pair.

// Every output is valid UTF-8 all the same, so that the tools a station's
// log is fed into (JSON parsers, grep, CSV readers) take every record: an
// unpaired surrogate is written as U+FFFD.  Where that changed a text, JSON
// (and CSV on request) carry the exact units beside it, in hex.

// Appends `units` as UTF-8, an unpaired surrogate as U+FFFD.
void AppendUtf8(std::string& out, const wchar_t* units, std::size_t count);
std::string ToUtf8(const std::wstring& text);

// Appends `units` as UTF-8 for a text line that people and grep read: as
// AppendUtf8, and each control character (U+0000 to U+001F, U+007F) as its
// picture from the Control Pictures block (a line feed as U+240A, DEL as
// U+2421), so that one record stays one line.
void AppendLineText(std::string& out, const wchar_t* units, std::size_t count);

// Whether `units` hold an unpaired surrogate: the texts UTF-8 cannot carry
// exactly.
bool HasLoneSurrogate(const wchar_t* units, std::size_t count);

// Appends the UTF-16LE bytes of `units` in lowercase hex, four digits a unit.
void AppendUtf16LeHex(std::string& out, const wchar_t* units, std::size_t count);

// Appends `units` as a JSON string, quotes included: the quote, backslash
// and control characters are escaped, everything else is UTF-8 as
// AppendUtf8 writes it.
void AppendJsonString(std::string& out, const wchar_t* units, std::size_t count);

// Appends `units` as one CSV field (RFC 4180), as AppendUtf8 writes them:
// quoted, with quotes doubled, when it holds a comma, a quote, a carriage
// return or a line feed, or starts or ends with a space; as it stands
// otherwise.
void AppendCsvField(std::string& out, const wchar_t* units, std::size_t count);
