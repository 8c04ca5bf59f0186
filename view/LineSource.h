#pragma once

struct MessageRecord;

// Where a scrolling view reads its lines: the live list of the main window
// (current log file plus ring) or one saved log file.
class LineSource {
public:
    virtual int LineCount() const = 0;
    // Fills `page` (`linesPerPage` zeroed records) with the lines from
    // `topLine` on and returns how many it filled; 0 after a failure, which
    // the source has reported.
    virtual int FillPage(int topLine, MessageRecord* page, int linesPerPage) = 0;

protected:
    ~LineSource() = default;
};

// How a view treats its source.
struct ViewPolicy {
    // Before a refill the live view pulls a page that reaches past the end
    // back onto the list; a browser reads wherever the top line is.
    bool clampTopLine;
    // Ctrl+End gives the vertical bar the top line plus this: the live view
    // has always put it one past, a browser at the top line itself.
    int ctrlEndBarOffset;
};

constexpr ViewPolicy kLiveViewPolicy{true, 1};
constexpr ViewPolicy kBrowserViewPolicy{false, 0};
