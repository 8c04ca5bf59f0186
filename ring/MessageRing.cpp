#include "ring/MessageRing.h"

#include <cstring>

void FillRecord(const wchar_t* text, MessageRecord& record)
{
    ::GetLocalTime(&record.time);
    int copied = 0;
    if (text != nullptr) {
        for (; copied < kMessageTextUnits && text[copied] != L'\0'; ++copied)
            record.text[copied] = text[copied];
    }
    for (int i = copied; i < kMessageTextUnits; ++i)
        record.text[i] = L'\0';
}

int MessageRing::AddMessage(const wchar_t* text)
{
    // Unreachable while the counters keep their bounds; it stops a corrupted
    // writePos from writing past the slots.
    if (writePos >= kRingSlots)
        return 1;
    FillRecord(text, ring[writePos]);
    ++writePos;
    // The ring counts as full one add early, and from then on every add also
    // moves one more line into the file-only part.  Together with the base
    // LocateLine uses, the live view shows the ring one record behind; the
    // view's behaviour depends on exactly this counting.
    if (writePos == ringStart + kRingSlots - 1)
        ringFull = 1;
    if (ringFull)
        ++fileOnlyLines;
    writePos %= kRingSlots;
    ++lineCount;
    if (view_ != nullptr)
        view_->ShowAddedLine();
    return 1;
}

int MessageRing::PendingCount() const
{
    return (writePos - unwrittenPos + kRingSlots) % kRingSlots;
}

void MessageRing::ClearSlots()
{
    std::memset(ring, 0, sizeof(ring));
}

void MessageRing::ResetForOpenedFile(int recordCount)
{
    unwrittenPos = 0;
    writePos = 0;
    ringStart = 0;
    ringFull = 0;
    ClearSlots();
    lineCount = recordCount;
    fileOnlyLines = recordCount;
}

void MessageRing::ResetForNewFile()
{
    ResetForOpenedFile(0);
}

RingSpan MessageRing::LocateLine(int line) const
{
    // Once full, the lines start one slot past writePos: that slot holds the
    // line just before the first ring line (see AddMessage).
    const int base = ringFull ? writePos + 1 : ringStart;
    RingSpan span;
    span.slot = (base + line - fileOnlyLines) % kRingSlots;
    span.remaining = (writePos - span.slot + kRingSlots) % kRingSlots;
    return span;
}
