#include "view/LiveLineSource.h"

#include <cstring>

#include "log/LogFileIo.h"

namespace {

// A page line takes the record's time stamp and its text up to the first
// zero; whatever follows a zero in the slot is not carried over.
void CopyRecordToPage(MessageRecord& line, const MessageRecord& record)
{
    line.time = record.time;
    std::memset(line.text, 0, sizeof(line.text));
    for (int i = 0; i < kMessageTextUnits && record.text[i] != L'\0'; ++i)
        line.text[i] = record.text[i];
}

} // namespace

int LiveLineSource::FillPage(int topLine, MessageRecord* page, int linesPerPage)
{
    if (topLine >= ring_.fileOnlyLines)
        return FillFromRing(topLine, page, linesPerPage);
    if (topLine < 0)
        return 0;
    return FillFromFile(topLine, page, linesPerPage);
}

int LiveLineSource::FillFromRing(int topLine, MessageRecord* page, int linesPerPage) const
{
    // Once the ring is full this shows, at each line, the record one older
    // than the line number says: the newest line appears only when the next
    // one arrives.  The view has always lagged so, and keeps doing it.
    const RingSpan span = ring_.LocateLine(topLine);
    int count = 0;
    while (count < linesPerPage && count < span.remaining) {
        CopyRecordToPage(page[count], ring_.ring[(span.slot + count) % kRingSlots]);
        ++count;
    }
    return count;
}

int LiveLineSource::FillFromFile(int topLine, MessageRecord* page, int linesPerPage)
{
    HANDLE file = writer_.OpenCurrentFile(GENERIC_READ, OPEN_EXISTING);
    if (file == INVALID_HANDLE_VALUE) {
        // A vanished file is replaced by a new one, which empties the list
        // and leaves its handle with the writer for the rest of this refill.
        if (!writer_.StartNewLogFile())
            return 0;
        file = writer_.CurrentFile();
        topLine = 0;
    }
    if (!writer_.CurrentHeaderAccepted())
        return 0;
    DWORD bytesRead = 0;
    if (!SeekLogFile(file, (topLine + 1) * static_cast<LONG>(kRecordBytes), FILE_BEGIN) ||
        !::ReadFile(file, page, linesPerPage * kRecordBytes, &bytesRead, nullptr)) {
        // The read-only handle stays with the writer; its next operation closes it.
        writer_.ReportFileError(true);
        return 0;
    }
    const int count = AppendUnwritten(page, static_cast<int>(bytesRead / kRecordBytes), linesPerPage);
    writer_.CloseCurrentFile();
    return count;
}

int LiveLineSource::AppendUnwritten(MessageRecord* page, int pageCount, int linesPerPage) const
{
    if (pageCount >= linesPerPage || ring_.unwrittenPos == ring_.writePos)
        return pageCount;
    // Stops on reaching writePos numerically: unwritten records that run
    // over the end of the ring stay off the page until they are written.
    for (int k = 0; pageCount < linesPerPage; ++k) {
        const int slot = (ring_.unwrittenPos + k) % kRingSlots;
        if (slot >= ring_.writePos)
            break;
        CopyRecordToPage(page[pageCount], ring_.ring[slot]);
        ++pageCount;
    }
    return pageCount;
}
