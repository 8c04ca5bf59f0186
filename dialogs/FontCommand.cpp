#include "dialogs/FontCommand.h"

void RunFontCommand(const FontRecords& records)
{
    ::ChooseFontW(&records.fontDialogState);
    records.logFontCopy = records.logFont;
    records.fontDialogStateCopy = records.fontDialogState;
    // Browser windows opened earlier share this handle and are left with the
    // deleted one; browsers opened from now on get the new font.
    ::DeleteObject(records.viewFont);
    records.viewFont = ::CreateFontIndirectW(&records.logFont);
}
