#include "msgwnd/MessWnd.h"

// Commands of the menu whose dialogs are not part of this build yet: they are
// routed already, so the menu stays complete, and do nothing for now.

LRESULT CMessWnd::OnPrint(WPARAM, LPARAM, bool&) { return 0; }
LRESULT CMessWnd::OnPrintSetup(WPARAM, LPARAM, bool&) { return 0; }
LRESULT CMessWnd::OnExportText(WPARAM, LPARAM, bool&) { return 0; }
