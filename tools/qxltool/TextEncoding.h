#pragma once
#include <cstddef>
#include <string>

// Record text is UTF-16 as the writer received it, which need not be valid:
// a client may hand over half of a surrogate pair, and a 128-unit cut can
// split a pair.  The tool keeps every code unit.

// Appends `units` as UTF-8.  An unpaired surrogate is written in the
// three-byte form UTF-8 would give it if it were a character (the form known
// as WTF-8): nothing is lost and the rest of the line is unchanged, but a
// strict UTF-8 reader sees an invalid sequence there.  Text and CSV output
// use this; JSON escapes such units instead.
void AppendUtf8(std::string& out, const wchar_t* units, std::size_t count);
std::string ToUtf8(const std::wstring& text);

// Appends `units` as a JSON string, quotes included: the quote, backslash
// and control characters are escaped, an unpaired surrogate becomes a
// \udXXX escape (valid JSON, and a JSON reader gets the very code unit
// back), everything else is UTF-8.
void AppendJsonString(std::string& out, const wchar_t* units, std::size_t count);

// Appends `units` as one CSV field (RFC 4180): quoted, with quotes doubled,
// when it holds a comma, a quote, a carriage return or a line feed, or
// starts or ends with a space; as it stands otherwise.
void AppendCsvField(std::string& out, const wchar_t* units, std::size_t count);
