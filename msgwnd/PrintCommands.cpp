#include "msgwnd/MessWnd.h"

#include "lang/ResourceIds.h"
#include "log/LogFileIo.h"
#include "log/LogFormat.h"
#include "print/ExportText.h"
#include "print/PrintSetupDlg.h"
#include "print/RecordTimes.h"

// Every command that reads the current log file first writes the pending
// records into it, so that it sees every line shown.

LRESULT CMessWnd::OnExportText(WPARAM, LPARAM, bool&)
{
    writer.FlushPending(ring.PendingCount());
    ExportLogText(hwnd_, writer.LogFilePath(), ExportSource::MainWindow);
    return 0;
}

LRESULT CMessWnd::OnPrintSetup(WPARAM, LPARAM, bool&)
{
    writer.FlushPending(ring.PendingCount());
    if (writer.OpenCurrentFile(GENERIC_READ, OPEN_EXISTING) == INVALID_HANDLE_VALUE)
        return -1;
    SYSTEMTIME first = {};
    SYSTEMTIME last = {};
    switch (ReadRecordTimes(writer.CurrentFile(), &first, &last)) {
    case RecordTimesRead::Complete:
        writer.CloseCurrentFile();
        break;
    case RecordTimesRead::HeaderSeekFailed:
    case RecordTimesRead::HeaderReadFailed:
        writer.ReportFileError(true);
        return -1;
    case RecordTimesRead::HeaderTooShort:
        return -1;
    case RecordTimesRead::NewerFormat:
        if (writer.CloseCurrentFile())
            ShowErrorBox(IDS_NEWER_FORMAT);
        return -1;
    case RecordTimesRead::RecordReadFailed:
        writer.ReportFileError(true);
        writer.CloseCurrentFile();
        return -1;
    case RecordTimesRead::NoRecord:
        writer.CloseCurrentFile();
        return -1;
    }
    RunPrintSetup(hwnd_, printSettings, first, last);
    return 0;
}

LRESULT CMessWnd::OnPrint(WPARAM, LPARAM, bool&)
{
    writer.FlushPending(ring.PendingCount());
    // The printer handles and the device context the dialog hands back are
    // not kept.
    PRINTDLGW dialog = {};
    if (!RunPrintDialog(hwnd_, printSettings.printerDevMode, printSettings.printerDevNames,
                        kMainPrintDialogFlags, dialog))
        return 0;
    HANDLE file = OpenLogFile(writer.LogFilePath(), GENERIC_READ, OPEN_EXISTING);
    if (file == INVALID_HANDLE_VALUE)
        return 0;
    if (!PrintLog(dialog, printSettings.logFontCopy, printSettings.fontDialogStateCopy,
                  printSettings.printRange, printSettings.rangeFrom, printSettings.rangeTo, file,
                  writer.LogFilePath(), AppWindows()))
        return 0;  // the read handle is left open, as it always was
    // The version is checked after the pages are printed: the main window
    // has always printed first and refused afterwards.
    unsigned char header[kLogHeaderTextBytes];
    switch (ReadLogHeader(file, header)) {
    case HeaderRead::Complete:
        break;
    case HeaderRead::TooShort:
        return 0;
    default:
        writer.ReportFileError(true);
        return 0;
    }
    const bool closed = ::CloseHandle(file) != FALSE;
    if (!IsNewerLogFormat(header, false)) {
        if (!closed)
            writer.ReportFileError(true);
        return 0;
    }
    ShowErrorBox(IDS_NEWER_FORMAT);
    return 0;
}

PrintJobWindows CMessWnd::AppWindows() const
{
    PrintJobWindows windows;
    windows.mainWindow = hwnd_;
    windows.appWindows.push_back(hwnd_);
    for (const std::unique_ptr<CBrowseWnd>& browser : browserWindows) {
        if (browser != nullptr && browser->Handle() != nullptr)
            windows.appWindows.push_back(browser->Handle());
    }
    return windows;
}
