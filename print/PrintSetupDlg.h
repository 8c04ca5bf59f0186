#pragma once
#include <windows.h>
#include <commdlg.h>

#include "lang/ResourceIds.h"
#include "print/FieldCodes.h"
#include "print/PrintSettings.h"
#include "print/RangeFields.h"
#include "winlayer/DialogImpl.h"

// The print setup dialog (template 116): what the next print job prints
// (all records, between two times, up to a time, from a time on), the print
// font and colour, the printer, and two free texts with a code menu.  It
// works on copies; the opener takes them back after OK.
class CPrintSetupDlg : public winlayer::DialogImpl<CPrintSetupDlg> {
public:
    static constexpr int templateId = IDD_PRINT_SETUP;
    static winlayer::MessageTable<CPrintSetupDlg> Messages();

    CPrintSetupDlg();

    // Before DoModal: the window's settings and the times of the log's first
    // and last record, outside which no time is accepted.
    void SetSettings(const PrintSettings& settings);
    void SetRecordTimes(const SYSTEMTIME& first, const SYSTEMTIME& last);
    // After OK: the choices.  The font dialog record still points at this
    // dialog's font; RunPrintSetup aims it at the caller's.
    PrintSettings Settings() const;
    const wchar_t* HeaderText() const { return headerText; }
    const wchar_t* FooterText() const { return footerText; }

    LRESULT OnInitDialog(WPARAM, LPARAM, bool& handled);
    LRESULT OnChooseFont(WPARAM, LPARAM, bool& handled);
    LRESULT OnPrinterSetup(WPARAM, LPARAM, bool& handled);
    LRESULT OnInsertCode(WPARAM, LPARAM, bool& handled);
    LRESULT OnOK(WPARAM, LPARAM, bool& handled);
    LRESULT OnCancel(WPARAM, LPARAM, bool& handled);
    LRESULT OnPaint(WPARAM, LPARAM, bool& handled);
    LRESULT EnableRangeControls(WPARAM, LPARAM, bool& handled);
    LRESULT OnLButtonDown(WPARAM, LPARAM, bool& handled);

private:
    // The six controls of one time group, year to second.
    using FieldIds = int[kTimeFields];

    bool IsChecked(int id) const;
    void FillGroup(const FieldIds& ids, const SYSTEMTIME& time);
    void EnableGroup(const FieldIds& ids, bool enable);
    TimeFieldValues ReadGroup(const FieldIds& ids) const;
    // Checks one group and stores it into `time`; false after showing the
    // first refusal and moving the focus.
    bool TakeGroup(const FieldIds& ids, SYSTEMTIME& time);
    bool CheckWithinLog(const SYSTEMTIME& time, int focusId);
    void Refuse(const wchar_t* text, int focusId);
    void RefuseWith(UINT textId, int focusId);
    RECT ChildRect(int id) const;

    LOGFONTW logFontCopy = {};
    CHOOSEFONTW fontDialogStateCopy = {};
    HGLOBAL printerDevMode = nullptr;
    HGLOBAL printerDevNames = nullptr;
    SYSTEMTIME firstRecordTime = {};
    SYSTEMTIME lastRecordTime = {};
    int printRange = RangeAll;
    SYSTEMTIME rangeFrom = {};
    SYSTEMTIME rangeTo = {};
    wchar_t headerText[kFieldTextUnits];
    wchar_t footerText[kFieldTextUnits];
    bool insertIntoHeader = false;
    bool insertIntoFooter = false;
};

// The print setup command's dialog for one window: runs it modally, owned by
// `owner`, on `settings`; after OK `settings` holds the choices (printer
// handles, font, colour, range) and the font dialog record points at
// settings.logFontCopy; after Cancel nothing changes.  Returns the dialog's
// result: 1 OK, 2 Cancel, 0 or -1 when it could not be shown.
INT_PTR RunPrintSetup(HWND owner, PrintSettings& settings, const SYSTEMTIME& firstRecordTime,
                      const SYSTEMTIME& lastRecordTime);
