#pragma once
#include <windows.h>
#include <commdlg.h>

// The main window's font records, which the font command changes in place.
struct FontRecords {
    LOGFONTW& logFont;              // the view font's description
    CHOOSEFONTW& fontDialogState;   // kept between uses; points at logFont
    LOGFONTW& logFontCopy;          // the print font's description
    CHOOSEFONTW& fontDialogStateCopy;
    HFONT& viewFont;                // made from logFont
};

// Command 32770, up to the new font: runs the font dialog on the records
// (its answer is not looked at: after Cancel the records are as they were
// and everything below happens all the same), makes the print font equal to
// the view font again by copying both records byte for byte (the copy's font
// pointer then points at logFont), and replaces viewFont by a font made from
// logFont.  The window then re-lays out and repaints its view.
void RunFontCommand(const FontRecords& records);
