#include "view/ScrollRules.h"

#include <windows.h>

int ClampedTopLine(int topLine, int lineCount, int linesPerPage)
{
    if (lineCount <= linesPerPage)
        return 0;
    if (lineCount - topLine < linesPerPage)
        return lineCount - linesPerPage;
    return topLine;
}

int FirstTopLine(int lineCount, int linesThatFit)
{
    return lineCount >= linesThatFit ? lineCount - linesThatFit : 0;
}

bool FollowsNewLine(int topLine, int lineCount, int linesPerPage)
{
    return topLine == lineCount - linesPerPage - 1;
}

std::optional<int> VerticalTarget(int request, int topLine, int linesPerPage, int lineCount)
{
    switch (request) {
    case SB_LINEUP:
        if (topLine > 0)
            return topLine - 1;
        return std::nullopt;
    case SB_LINEDOWN:
        if (topLine + linesPerPage < lineCount)
            return topLine + 1;
        return std::nullopt;
    case SB_PAGEUP:
        return topLine > linesPerPage ? topLine - linesPerPage : 0;
    case SB_PAGEDOWN:
        if (topLine + 2 * linesPerPage >= lineCount)
            return lineCount - linesPerPage;
        return topLine + linesPerPage;
    default:
        return std::nullopt;
    }
}

std::optional<HorizontalMove> HorizontalStep(int request, int hPos, int hPage, int hExtent,
                                             int hStep, int thumb)
{
    HorizontalMove move{hPos, hPos, 0, 0, false};
    switch (request) {
    case SB_LINELEFT: {
        int distance = hStep;
        if (hPos <= hStep) {
            distance = hPos;
            move.hPos = 0;
        } else {
            move.hPos = hPos - hStep;
        }
        move.barPos = move.hPos;
        move.scrollBy = distance;
        // The platform marks the uncovered strip on the left itself; the
        // strip repainted here is the right-hand one, as it always was.
        move.stripWidth = distance;
        return move;
    }
    case SB_LINERIGHT: {
        int distance = hStep;
        if (hPos + hPage + hStep >= hExtent) {
            distance = hExtent - hPage - hPos;
            move.hPos = hExtent - hPage;
        } else {
            move.hPos = hPos + hStep;
        }
        move.barPos = move.hPos;
        move.scrollBy = -distance;
        move.stripWidth = distance;
        return move;
    }
    case SB_PAGELEFT:
        move.hPos = hPos > hPage ? hPos - hPage : 0;
        move.barPos = move.hPos;
        move.invalidateAll = true;
        return move;
    case SB_PAGERIGHT:
        move.hPos = hPos + 2 * hPage < hExtent ? hPos + hPage : hExtent - hPage;
        move.barPos = move.hPos + 1;
        move.invalidateAll = true;
        return move;
    case SB_THUMBPOSITION:
        move.hPos = static_cast<short>(thumb);
        move.barPos = move.hPos;
        move.invalidateAll = true;
        return move;
    default:
        return std::nullopt;
    }
}
