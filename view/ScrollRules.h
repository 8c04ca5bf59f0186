#pragma once
#include <optional>

// The arithmetic of the scrolling line views (the message view and the log
// browsers), apart from the windows that apply it.

// Where the page starts before it is filled: a list that does not fill the
// page starts at 0; otherwise a page reaching past the end is pulled back.  A
// negative top line of a long list is left as it is.
int ClampedTopLine(int topLine, int lineCount, int linesPerPage);

// The top line at window creation: the last page of the list.
int FirstTopLine(int lineCount, int linesThatFit);

// The view follows a newly added line only when it showed the last lines
// before that line arrived (lineCount already counts the new one).
bool FollowsNewLine(int topLine, int lineCount, int linesPerPage);

// The new top line for a vertical request SB_LINEUP, SB_LINEDOWN, SB_PAGEUP
// or SB_PAGEDOWN (the Up, Down, Page Up and Page Down keys do the same);
// nothing for a line step that would leave the list, and for every other request.
std::optional<int> VerticalTarget(int request, int topLine, int linesPerPage, int lineCount);

// A horizontal step: the new offset, the position the scroll bar is given
// (deliberately one more than the offset after a page right), and how the
// client area is to be repainted.
struct HorizontalMove {
    int hPos;
    int barPos;
    int scrollBy;    // pixels to scroll the client area: > 0 right, < 0 left, 0 none
    int stripWidth;  // width of the strip at the right edge to repaint after a scroll
    bool invalidateAll;
};
// For SB_LINELEFT .. SB_THUMBPOSITION (thumb: the high word of the request,
// taken as a signed 16-bit number); nothing for every other request.
std::optional<HorizontalMove> HorizontalStep(int request, int hPos, int hPage, int hExtent,
                                             int hStep, int thumb);
