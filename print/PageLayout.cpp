#include "print/PageLayout.h"

RECT PrintTextRect(const PrinterMetrics& printer)
{
    RECT device = {0, 0, printer.horzRes, printer.vertRes};
    ::InflateRect(&device, -kPrintMarginX, -kPrintMarginY);
    // Integer division truncates toward zero, also for the negative y.
    return RECT{device.left * 100 / printer.pixelsPerInchX,
                device.top * -100 / printer.pixelsPerInchY,
                device.right * 100 / printer.pixelsPerInchX,
                device.bottom * -100 / printer.pixelsPerInchY};
}

int PrintLinesPerPage(const PrinterMetrics& printer, int lineHeight)
{
    if (lineHeight < 1)
        return 0;
    const double linePixels = lineHeight * 0.01 * printer.pixelsPerInchY;
    return static_cast<int>((printer.vertRes - 2 * kPrintMarginY) / linePixels) - 2;
}

int PrintPageCount(int records, int linesPerPage)
{
    return (records + linesPerPage - 1) / linesPerPage;
}

RECT HeaderBand(const RECT& text, int lineHeight)
{
    return RECT{text.left, text.top, text.right, text.top - lineHeight};
}

RECT RecordBand(const RECT& text, int lineHeight, int index)
{
    return RECT{text.left, text.top - (index + 1) * lineHeight, text.right,
                text.top - (index + 2) * lineHeight};
}

RECT PageLabelBand(const RECT& text, int lineHeight)
{
    return RECT{text.left, text.bottom + lineHeight, text.right, text.bottom};
}

CopyPlan PlanCopies(bool collate, int copies)
{
    if (collate)
        return CopyPlan{copies, 1, copies};
    return CopyPlan{1, copies, copies};
}
