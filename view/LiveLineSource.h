#pragma once
#include "log/LogWriter.h"
#include "ring/MessageRing.h"
#include "view/LineSource.h"

// The main window's list: the records of the current log file as counted
// when the ring was last reset, followed by the lines added since.  Lines
// the ring holds come from the ring; the rest from the current log file,
// completed with the ring records not yet written to it.
class LiveLineSource : public LineSource {
public:
    LiveLineSource(MessageRing& ring, LogWriter& writer) : ring_(ring), writer_(writer) {}

    int LineCount() const override { return ring_.lineCount; }
    int FillPage(int topLine, MessageRecord* page, int linesPerPage) override;

private:
    int FillFromRing(int topLine, MessageRecord* page, int linesPerPage) const;
    int FillFromFile(int topLine, MessageRecord* page, int linesPerPage);
    int AppendUnwritten(MessageRecord* page, int pageCount, int linesPerPage) const;

    MessageRing& ring_;
    LogWriter& writer_;
};
