#pragma once
#include <windows.h>
#include <commdlg.h>

// The range kinds of the print setup dialog, as stored in `printRange`.
enum PrintRangeKind : int { RangeAll = 0, RangeBetween = 1, RangeUpTo = 2, RangeFrom = 3 };

// What a window (the main window or a log browser) keeps for its print jobs
// for as long as it lives; none of it is saved.  The printer handles belong
// to the window holding this record, which frees them when it goes away.
struct PrintSettings {
    int printRange = RangeAll;
    SYSTEMTIME rangeFrom = {};  // lower bound of RangeBetween; the one time of RangeUpTo and RangeFrom
    SYSTEMTIME rangeTo = {};    // upper bound of RangeBetween
    HGLOBAL printerDevMode = nullptr;
    HGLOBAL printerDevNames = nullptr;
    LOGFONTW logFontCopy = {};            // the print font
    CHOOSEFONTW fontDialogStateCopy = {};  // its font dialog; rgbColors is the print colour
};
