#include "browse/BrowseWnd.h"

#include "lang/ResourceIds.h"
#include "log/LogFileIo.h"
#include "log/LogFormat.h"
#include "print/ExportText.h"
#include "print/PrintSetupDlg.h"
#include "print/RecordTimes.h"
#include "winlayer/Resources.h"

LRESULT CBrowseWnd::OnExportText(WPARAM, LPARAM, bool&)
{
    ExportLogText(hwnd_, lines.Path(), ExportSource::Browser);
    return 0;
}

LRESULT CBrowseWnd::OnPrintSetup(WPARAM, LPARAM, bool&)
{
    if (!lines.CloseFile()) {
        ReportBrowseError();
        return -1;
    }
    if (!lines.OpenFile()) {
        ReportBrowseError();
        return -1;
    }
    SYSTEMTIME first = {};
    SYSTEMTIME last = {};
    switch (ReadRecordTimes(lines.File(), &first, &last)) {
    case RecordTimesRead::Complete:
        if (!lines.CloseFile()) {
            ReportBrowseError();
            return -1;
        }
        break;
    case RecordTimesRead::HeaderSeekFailed:
        // Reported with the handle left open for the next operation.
        ReportBrowseError();
        return -1;
    case RecordTimesRead::HeaderReadFailed:
    case RecordTimesRead::RecordReadFailed:
        ReportBrowseError();
        lines.CloseFile();
        return -1;
    case RecordTimesRead::NewerFormat:
        lines.CloseFile();
        lines.RefuseNewerFormat();
        return -1;
    case RecordTimesRead::HeaderTooShort:
    case RecordTimesRead::NoRecord:
        lines.CloseFile();
        return -1;
    }
    RunPrintSetup(hwnd_, printSettings, first, last);
    return 0;
}

LRESULT CBrowseWnd::OnPrint(WPARAM, LPARAM, bool&)
{
    PRINTDLGW dialog = {};
    if (!RunPrintDialog(hwnd_, printSettings.printerDevMode, printSettings.printerDevNames,
                        kBrowserPrintDialogFlags, dialog))
        return 0;
    // What the dialog hands back is freed at once and not kept.  When it
    // hands back the very handles it was given, this window's own fields
    // then name freed memory, which closing frees again: kept so.
    if (dialog.hDevMode != nullptr)
        ::GlobalFree(dialog.hDevMode);
    if (dialog.hDevNames != nullptr)
        ::GlobalFree(dialog.hDevNames);

    HANDLE file = OpenSavedLog(lines.Path());
    if (file == INVALID_HANDLE_VALUE) {
        ReportBrowseError();
        return -1;
    }
    unsigned char header[kLogHeaderTextBytes];
    switch (ReadLogHeader(file, header)) {
    case HeaderRead::Complete:
        break;
    case HeaderRead::TooShort:
        // The browser's held handle is closed here, not this one: kept so.
        lines.CloseFile();
        return -1;
    default:
        ReportBrowseError();
        ::CloseHandle(file);
        return -1;
    }
    // A browser checks the version before printing; the main window after.
    if (IsNewerLogFormat(header, false)) {
        if (!::CloseHandle(file)) {
            ReportBrowseError();
            return -1;
        }
        lines.RefuseNewerFormat();
        return -1;
    }
    const PrintJobWindows windows = appWindows_ ? appWindows_() : PrintJobWindows{hwnd_, {hwnd_}};
    const int printed = PrintLog(dialog, printSettings.logFontCopy,
                                 printSettings.fontDialogStateCopy, printSettings.printRange,
                                 printSettings.rangeFrom, printSettings.rangeTo, file,
                                 lines.Path(), windows);
    if (!::CloseHandle(file) && printed) {
        ReportBrowseError();
        return -1;
    }
    return printed ? 0 : -1;
}
