#pragma once
#include <cstddef>

struct MessageRecord;

// Longest line a record formats to; callers' buffers hold one more unit.
constexpr std::size_t kRecordLineChars = 158;
constexpr std::size_t kRecordLineBuffer = kRecordLineChars + 1;
// Room for the line format of the language module.
constexpr int kRecordLineFormatUnits = 256;

// Writes the display line of `record` (the empty string for none) into
// `buffer` (at least kRecordLineBuffer units), with the record line format of
// the language module, which is loaded anew for every line: the view has
// always done so.  Returns its length.
int FormatRecordLine(wchar_t* buffer, const MessageRecord* record);

// The same line for many records with one load of the format: export, print
// and the command-line tool format whole files.  A format made of text, %%,
// %d (with a zero flag and a width) and one %s last, as both language
// modules' are, is taken apart once and written without the C runtime's
// formatter, which costs most of an export; any other format goes through
// that formatter.  The line is the same either way.
class RecordLineFormatter {
public:
    RecordLineFormatter();
    // A formatter with a format of the caller's (the tool's --lang choice).
    explicit RecordLineFormatter(const wchar_t* format);

    int Format(wchar_t* buffer, const MessageRecord& record) const;

private:
    struct Piece {
        enum Kind : unsigned char { Text, Number, Message } kind;
        unsigned char width;     // Number: at least this many units
        bool zeroPadded;         // Number: padded with zeros, not spaces
        unsigned char argument;  // Number: 0 to 6, year to milliseconds
        unsigned short start;    // Text: its units in format_
        unsigned short length;
    };
    static constexpr int kMaxPieces = 32;

    void TakeApart();

    wchar_t format_[kRecordLineFormatUnits] = {};
    Piece pieces_[kMaxPieces] = {};
    int pieceCount_ = -1;  // -1: the format goes through the C runtime
};
