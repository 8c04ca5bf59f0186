#include "msgwnd/MessWnd.h"

LRESULT CMessWnd::OnFont(WPARAM, LPARAM, bool&)
{
    // The answer is not looked at: after Cancel the records are as they
    // were, and the view is laid out again all the same.
    ::ChooseFontW(&fontDialogState);
    // The print font follows the view font again.  The copy's font pointer
    // is left aimed at logFont; the print setup dialog re-aims its own copy.
    printSettings.logFontCopy = logFont;
    printSettings.fontDialogStateCopy = fontDialogState;
    // Browsers draw with this very handle: they lose it with the old font.
    ::DeleteObject(viewFont);
    viewFont = ::CreateFontIndirectW(&logFont);
    view.SetFont(viewFont);
    view.SetTextColor(fontDialogState.rgbColors);
    view.ResetHorizontalPosition();
    view.Relayout();
    view.UpdateHorizontalExtent();
    view.InvalidateAll();
    return 0;
}
