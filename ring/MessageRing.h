#pragma once
#include "ring/MessageRecord.h"

// The view's part of adding a line: called once the record is stored and
// every counter has moved.
class AddedLineView {
public:
    virtual void ShowAddedLine() = 0;

protected:
    ~AddedLineView() = default;
};

constexpr int kRingSlots = 5000;

// Where a logical line sits in the ring, and how many ring lines there are
// from it onwards.
struct RingSpan {
    int slot;
    int remaining;
};

// Stamps `text` (null is an empty line) with the local time into `record`.
// At most kMessageTextUnits units are kept; the rest of the field is zero.
void FillRecord(const wchar_t* text, MessageRecord& record);

// The most recent lines and the queue of lines the log writer has not yet
// appended to the current log file.  It is large (about 1.3 MB): keep it
// inside a static object or on the heap, never on a thread's stack.
//
// Logical lines are numbered from the first record of the current log file.
// The first `fileOnlyLines` of them are only in the file; the rest are ring
// slots, located by LocateLine.
class MessageRing {
public:
    MessageRecord ring[kRingSlots] = {};
    int unwrittenPos = 0;   // first slot not yet in the log file
    int writePos = 0;       // next slot to fill
    int ringStart = 0;      // origin of the ring since the last reset
    int ringFull = 0;       // 1 once writePos has reached ringStart + 4999
    int fileOnlyLines = 0;  // leading lines read from the file, not the ring
    int lineCount = 0;      // lines in the file at the last reset + lines added since

    // `view` may be null: lines are then stored and counted only.
    void SetView(AddedLineView* view) { view_ = view; }

    // Stores one line and lets the view show it.  Never touches the log
    // file and never allocates.  Always returns 1.
    int AddMessage(const wchar_t* text);

    // Records not yet appended to the log file.  It wraps: after exactly
    // kRingSlots unflushed lines it reads 0.
    int PendingCount() const;

    // After the current log file has been opened at start-up: the file's
    // `recordCount` lines come first, the ring is empty.
    void ResetForOpenedFile(int recordCount);
    // When a new log file is started: nothing is counted any more.
    void ResetForNewFile();

    // The slot of logical line `line`, which must be >= fileOnlyLines.
    RingSpan LocateLine(int line) const;

private:
    void ClearSlots();

    AddedLineView* view_ = nullptr;
};
