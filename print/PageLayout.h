#pragma once
#include <windows.h>

// The arithmetic of a printed page.  The job draws in the low-English
// mapping mode: one logical unit is 0.01 inch and y grows upwards, so every
// point below the top of the page has a negative y.

// Margins in printer pixels (their size in inches follows the printer's
// resolution).
constexpr int kPrintMarginX = 150;
constexpr int kPrintMarginY = 300;

struct PrinterMetrics {
    int horzRes = 0;        // HORZRES
    int vertRes = 0;        // VERTRES
    int pixelsPerInchX = 0; // LOGPIXELSX
    int pixelsPerInchY = 0; // LOGPIXELSY
};

// The printable area less the margins, in logical units.
RECT PrintTextRect(const PrinterMetrics& printer);

// Record lines on one page for a line height of `lineHeight` hundredths of
// an inch: whatever fits between the vertical margins, less the header line
// and the page label.  A line height below 1 gives 0.
int PrintLinesPerPage(const PrinterMetrics& printer, int lineHeight);

// Pages needed for `records` records at `linesPerPage` a page (at least 1 a page).
int PrintPageCount(int records, int linesPerPage);

// Bands of the text rectangle: the header line at the top, record line i
// (0-based) below it, the page label at the bottom.
RECT HeaderBand(const RECT& text, int lineHeight);
RECT RecordBand(const RECT& text, int lineHeight, int index);
RECT PageLabelBand(const RECT& text, int lineHeight);

// The job makes its copies itself.  Collated, each copy is a pass over all
// pages (outer loop); otherwise each page is drawn `copies` times in a row
// (inner loop).  `total` is what the progress dialog counts copies to.
struct CopyPlan {
    int outer = 1;
    int inner = 1;
    int total = 1;
};

CopyPlan PlanCopies(bool collate, int copies);
