#include "print/PrintSetupDlg.h"

#include <windowsx.h>

#include <cwchar>

#include "print/LocalTimeOrder.h"
#include "winlayer/Resources.h"

namespace {

using Dlg = CPrintSetupDlg;

constexpr int kBetweenFrom[kTimeFields] = {IDC_BETWEEN_FROM_YEAR, IDC_BETWEEN_FROM_MONTH,
                                           IDC_BETWEEN_FROM_DAY,  IDC_BETWEEN_FROM_HOUR,
                                           IDC_BETWEEN_FROM_MINUTE, IDC_BETWEEN_FROM_SECOND};
constexpr int kBetweenTo[kTimeFields] = {IDC_BETWEEN_TO_YEAR, IDC_BETWEEN_TO_MONTH,
                                         IDC_BETWEEN_TO_DAY,  IDC_BETWEEN_TO_HOUR,
                                         IDC_BETWEEN_TO_MINUTE, IDC_BETWEEN_TO_SECOND};
constexpr int kUpTo[kTimeFields] = {IDC_UPTO_YEAR, IDC_UPTO_MONTH,  IDC_UPTO_DAY,
                                    IDC_UPTO_HOUR, IDC_UPTO_MINUTE, IDC_UPTO_SECOND};
constexpr int kFrom[kTimeFields] = {IDC_FROM_YEAR, IDC_FROM_MONTH,  IDC_FROM_DAY,
                                    IDC_FROM_HOUR, IDC_FROM_MINUTE, IDC_FROM_SECOND};

constexpr int kDefaultTextUnits = 260;
constexpr int kTimeTextUnits = 64;

constexpr winlayer::MessageEntry<Dlg> kEntries[] = {
    {WM_INITDIALOG, 0, &Dlg::OnInitDialog},
    {WM_COMMAND, IDC_PRINT_FONT, &Dlg::OnChooseFont},
    {WM_COMMAND, IDC_PRINTER_SETUP, &Dlg::OnPrinterSetup},
    {WM_COMMAND, IDM_CODE_FILE, &Dlg::OnInsertCode},
    {WM_COMMAND, IDM_CODE_PAGE, &Dlg::OnInsertCode},
    {WM_COMMAND, IDM_CODE_DATE, &Dlg::OnInsertCode},
    {WM_COMMAND, IDM_CODE_TIME, &Dlg::OnInsertCode},
    {WM_COMMAND, IDM_CODE_LEFT, &Dlg::OnInsertCode},
    {WM_COMMAND, IDM_CODE_CENTER, &Dlg::OnInsertCode},
    {WM_COMMAND, IDM_CODE_RIGHT, &Dlg::OnInsertCode},
    {WM_COMMAND, IDOK, &Dlg::OnOK},
    {WM_COMMAND, IDCANCEL, &Dlg::OnCancel},
    {WM_PAINT, 0, &Dlg::OnPaint},
    {WM_COMMAND, IDC_RANGE_ALL, &Dlg::EnableRangeControls},
    {WM_COMMAND, IDC_RANGE_BETWEEN, &Dlg::EnableRangeControls},
    {WM_COMMAND, IDC_RANGE_UPTO, &Dlg::EnableRangeControls},
    {WM_COMMAND, IDC_RANGE_FROM, &Dlg::EnableRangeControls},
    {WM_LBUTTONDOWN, 0, &Dlg::OnLButtonDown},
};

// The text of string 128 for one time, for the message of string 127.
void FormatRangeTime(const SYSTEMTIME& time, wchar_t (&text)[kTimeTextUnits])
{
    wchar_t format[kTimeTextUnits];
    winlayer::LoadText(IDS_RANGE_TIME_FORMAT, format, kTimeTextUnits);
    winlayer::FormatText(text, kTimeTextUnits, format, time.wYear, time.wMonth, time.wDay,
                         time.wHour, time.wMinute, time.wSecond);
}

} // namespace

winlayer::MessageTable<Dlg> CPrintSetupDlg::Messages()
{
    return winlayer::MakeTable(kEntries);
}

CPrintSetupDlg::CPrintSetupDlg()
{
    ::GetLocalTime(&firstRecordTime);
    lastRecordTime = firstRecordTime;
    rangeFrom = firstRecordTime;
    rangeTo = firstRecordTime;
    std::wmemset(headerText, 0, kFieldTextUnits);
    std::wmemset(footerText, 0, kFieldTextUnits);
}

void CPrintSetupDlg::SetSettings(const PrintSettings& settings)
{
    logFontCopy = settings.logFontCopy;
    fontDialogStateCopy = settings.fontDialogStateCopy;
    fontDialogStateCopy.lpLogFont = &logFontCopy;
    printerDevMode = settings.printerDevMode;
    printerDevNames = settings.printerDevNames;
    printRange = settings.printRange;
    rangeFrom = settings.rangeFrom;
    rangeTo = settings.rangeTo;
}

void CPrintSetupDlg::SetRecordTimes(const SYSTEMTIME& first, const SYSTEMTIME& last)
{
    firstRecordTime = first;
    lastRecordTime = last;
}

PrintSettings CPrintSetupDlg::Settings() const
{
    PrintSettings settings;
    settings.printRange = printRange;
    settings.rangeFrom = rangeFrom;
    settings.rangeTo = rangeTo;
    settings.printerDevMode = printerDevMode;
    settings.printerDevNames = printerDevNames;
    settings.logFontCopy = logFontCopy;
    settings.fontDialogStateCopy = fontDialogStateCopy;
    return settings;
}

bool CPrintSetupDlg::IsChecked(int id) const
{
    return ::SendMessageW(Item(id), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

void CPrintSetupDlg::FillGroup(const FieldIds& ids, const SYSTEMTIME& time)
{
    const int values[kTimeFields] = {time.wYear, time.wMonth,  time.wDay,
                                     time.wHour, time.wMinute, time.wSecond};
    for (int i = 0; i < kTimeFields; ++i)
        SetItemInt(ids[i], values[i], true);
    EnableGroup(ids, true);
}

void CPrintSetupDlg::EnableGroup(const FieldIds& ids, bool enable)
{
    for (int id : ids)
        ::EnableWindow(Item(id), enable ? TRUE : FALSE);
}

TimeFieldValues CPrintSetupDlg::ReadGroup(const FieldIds& ids) const
{
    TimeFieldValues fields;
    for (int i = 0; i < kTimeFields; ++i) {
        wchar_t text[128];
        fields.empty[i] = GetItemText(ids[i], text, 128) == 0;
        fields.value[i] = GetItemInt(ids[i], true);
    }
    return fields;
}

void CPrintSetupDlg::Refuse(const wchar_t* text, int focusId)
{
    wchar_t caption[128];
    winlayer::LoadText(IDS_PRINT_SETUP_CAPTION, caption, 128);
    ::MessageBoxW(hwnd_, text, caption, MB_ICONERROR | MB_OK);
    ::SetFocus(Item(focusId));
}

void CPrintSetupDlg::RefuseWith(UINT textId, int focusId)
{
    wchar_t text[256];
    winlayer::LoadText(textId, text, 256);
    Refuse(text, focusId);
}

bool CPrintSetupDlg::TakeGroup(const FieldIds& ids, SYSTEMTIME& time)
{
    const TimeFieldValues fields = ReadGroup(ids);
    const FieldRefusal refusal = CheckTimeFields(fields);
    if (refusal.textId == IDS_BAD_DAY) {
        wchar_t format[256];
        wchar_t text[256];
        winlayer::LoadText(IDS_BAD_DAY, format, 256);
        winlayer::FormatText(text, 256, format, refusal.days);
        Refuse(text, ids[refusal.field]);
        return false;
    }
    if (refusal.textId != 0) {
        RefuseWith(refusal.textId, ids[refusal.field]);
        return false;
    }
    time = TimeFromFields(fields);
    return true;
}

bool CPrintSetupDlg::CheckWithinLog(const SYSTEMTIME& time, int focusId)
{
    if (IsWithinLog(time, firstRecordTime, lastRecordTime))
        return true;
    wchar_t first[kTimeTextUnits];
    wchar_t last[kTimeTextUnits];
    FormatRangeTime(firstRecordTime, first);
    FormatRangeTime(lastRecordTime, last);
    wchar_t format[256];
    wchar_t text[512];
    winlayer::LoadText(IDS_OUTSIDE_LOG, format, 256);
    winlayer::FormatText(text, 512, format, first, last);
    Refuse(text, focusId);
    return false;
}

RECT CPrintSetupDlg::ChildRect(int id) const
{
    RECT rect = {};
    ::GetWindowRect(Item(id), &rect);
    ::MapWindowPoints(nullptr, hwnd_, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

LRESULT CPrintSetupDlg::OnInitDialog(WPARAM, LPARAM, bool&)
{
    fontDialogStateCopy.lpLogFont = &logFontCopy;
    fontDialogStateCopy.hwndOwner = hwnd_;
    wchar_t text[kDefaultTextUnits];
    winlayer::LoadText(IDS_PRINT_HEADER_DEFAULT, text, kDefaultTextUnits);
    SetItemText(IDC_HEADER_TEXT, text);
    winlayer::LoadText(IDS_PRINT_FOOTER_DEFAULT, text, kDefaultTextUnits);
    SetItemText(IDC_FOOTER_TEXT, text);

    static constexpr int kRadio[] = {IDC_RANGE_ALL, IDC_RANGE_BETWEEN, IDC_RANGE_UPTO, IDC_RANGE_FROM};
    if (printRange < RangeAll || printRange > RangeFrom)
        return TRUE;
    ::SendMessageW(Item(kRadio[printRange]), BM_SETCHECK, BST_CHECKED, 0);
    switch (printRange) {
    case RangeBetween:
        FillGroup(kBetweenFrom, rangeFrom);
        FillGroup(kBetweenTo, rangeTo);
        break;
    case RangeUpTo:
        FillGroup(kUpTo, rangeFrom);
        break;
    case RangeFrom:
        FillGroup(kFrom, rangeFrom);
        break;
    default:
        break;
    }
    return TRUE;
}

LRESULT CPrintSetupDlg::EnableRangeControls(WPARAM wParam, LPARAM, bool& handled)
{
    if (HIWORD(wParam) != BN_CLICKED) {
        handled = false;
        return 0;
    }
    const bool between = IsChecked(IDC_RANGE_BETWEEN);
    EnableGroup(kBetweenFrom, between);
    EnableGroup(kBetweenTo, between);
    EnableGroup(kUpTo, IsChecked(IDC_RANGE_UPTO));
    EnableGroup(kFrom, IsChecked(IDC_RANGE_FROM));
    return 0;
}

LRESULT CPrintSetupDlg::OnOK(WPARAM, LPARAM, bool&)
{
    if (IsChecked(IDC_RANGE_ALL)) {
        printRange = RangeAll;
    } else if (IsChecked(IDC_RANGE_BETWEEN)) {
        if (!TakeGroup(kBetweenFrom, rangeFrom) || !CheckWithinLog(rangeFrom, IDC_BETWEEN_FROM_YEAR))
            return 0;
        if (!TakeGroup(kBetweenTo, rangeTo) || !CheckWithinLog(rangeTo, IDC_BETWEEN_TO_YEAR))
            return 0;
        if (CompareLocalTimes(rangeFrom, rangeTo) > 0) {
            RefuseWith(IDS_FROM_AFTER_TO, IDC_BETWEEN_TO_YEAR);
            return 0;
        }
        printRange = RangeBetween;
    } else if (IsChecked(IDC_RANGE_UPTO)) {
        if (!TakeGroup(kUpTo, rangeFrom) || !CheckWithinLog(rangeFrom, IDC_UPTO_YEAR))
            return 0;
        printRange = RangeUpTo;
    } else if (IsChecked(IDC_RANGE_FROM)) {
        if (!TakeGroup(kFrom, rangeFrom) || !CheckWithinLog(rangeFrom, IDC_FROM_YEAR))
            return 0;
        printRange = RangeFrom;
    }
    // Both texts come from the header box: the footer box has never been
    // read, and neither text reaches the print job.
    GetItemText(IDC_HEADER_TEXT, headerText, kFieldTextUnits);
    GetItemText(IDC_HEADER_TEXT, footerText, kFieldTextUnits);
    headerText[kFieldTextUnits - 1] = L'\0';
    footerText[kFieldTextUnits - 1] = L'\0';
    EndDialog(IDOK);
    return 0;
}

LRESULT CPrintSetupDlg::OnCancel(WPARAM, LPARAM, bool&)
{
    EndDialog(IDCANCEL);
    return 0;
}

LRESULT CPrintSetupDlg::OnChooseFont(WPARAM, LPARAM, bool&)
{
    // On Cancel the record is left as it was; either way the sample is
    // painted again.
    ::ChooseFontW(&fontDialogStateCopy);
    const RECT sample = ChildRect(IDC_FONT_SAMPLE);
    ::InvalidateRect(hwnd_, &sample, TRUE);
    return 0;
}

LRESULT CPrintSetupDlg::OnPaint(WPARAM, LPARAM, bool&)
{
    HFONT font = ::CreateFontIndirectW(&logFontCopy);
    wchar_t sample[128];
    winlayer::LoadText(IDS_PRINT_FONT_SAMPLE, sample, 128);
    PAINTSTRUCT paint;
    ::BeginPaint(hwnd_, &paint);
    HDC dc = ::GetDC(hwnd_);
    HGDIOBJ oldFont = ::SelectObject(dc, font);
    const COLORREF oldColour = ::SetTextColor(dc, fontDialogStateCopy.rgbColors);
    RECT rect = ChildRect(IDC_FONT_SAMPLE);
    ::DrawEdge(dc, &rect, EDGE_SUNKEN, BF_RECT);
    ::SetBkMode(dc, TRANSPARENT);
    ::DrawTextW(dc, sample, -1, &rect, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    ::SetTextColor(dc, oldColour);
    ::SelectObject(dc, oldFont);
    ::ReleaseDC(hwnd_, dc);
    ::EndPaint(hwnd_, &paint);
    // The sample's font is left undeleted, as this dialog has always done.
    return 0;
}

LRESULT CPrintSetupDlg::OnPrinterSetup(WPARAM, LPARAM, bool&)
{
    PRINTDLGW setup = {};
    setup.lStructSize = sizeof(setup);
    setup.hDevMode = printerDevMode;
    setup.hDevNames = printerDevNames;
    setup.Flags = PD_PRINTSETUP;
    if (::PrintDlgW(&setup)) {
        printerDevMode = setup.hDevMode;
        printerDevNames = setup.hDevNames;
    }
    return 0;
}

LRESULT CPrintSetupDlg::OnLButtonDown(WPARAM, LPARAM lParam, bool&)
{
    POINT point = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    const RECT header = ChildRect(IDC_HEADER_CODES);
    const RECT footer = ChildRect(IDC_FOOTER_CODES);
    const bool inHeader = ::PtInRect(&header, point) != FALSE;
    const bool inFooter = ::PtInRect(&footer, point) != FALSE;
    // A click elsewhere leaves the box chosen before as the codes' target.
    if (!inHeader && !inFooter)
        return 0;
    insertIntoHeader = inHeader;
    insertIntoFooter = inFooter;
    HMENU menu = ::LoadMenuW(winlayer::ResourceModule(), MAKEINTRESOURCEW(IDR_CODE_MENU));
    ::ClientToScreen(hwnd_, &point);
    ::TrackPopupMenu(::GetSubMenu(menu, 0), TPM_LEFTALIGN | TPM_TOPALIGN, point.x, point.y, 0,
                     hwnd_, nullptr);
    ::DestroyMenu(menu);
    return 0;
}

LRESULT CPrintSetupDlg::OnInsertCode(WPARAM wParam, LPARAM, bool&)
{
    const int target = insertIntoHeader ? IDC_HEADER_TEXT
                                        : (insertIntoFooter ? IDC_FOOTER_TEXT : 0);
    if (target == 0)
        return 0;
    HWND edit = Item(target);
    DWORD start = 0;
    DWORD end = 0;
    ::SendMessageW(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    wchar_t text[kFieldTextUnits];
    ::GetWindowTextW(edit, text, kFieldTextUnits);
    text[kFieldTextUnits - 1] = L'\0';
    const wchar_t* code = FieldCodeForCommand(LOWORD(wParam));
    wchar_t changed[kFieldTextUnits];
    if (!InsertFieldCode(text, static_cast<int>(start), static_cast<int>(end), code, changed))
        return 0;
    ::SetWindowTextW(edit, changed);
    const int codeLength = static_cast<int>(std::wcslen(code));
    ::SendMessageW(edit, EM_SETSEL, start, start + codeLength);
    ::SendMessageW(edit, EM_SCROLLCARET, 0, 0);
    insertIntoHeader = false;
    insertIntoFooter = false;
    return 0;
}

INT_PTR RunPrintSetup(HWND owner, PrintSettings& settings, const SYSTEMTIME& firstRecordTime,
                      const SYSTEMTIME& lastRecordTime)
{
    CPrintSetupDlg dialog;
    dialog.SetSettings(settings);
    dialog.SetRecordTimes(firstRecordTime, lastRecordTime);
    const INT_PTR result = dialog.DoModal(owner);
    if (result == IDOK) {
        settings = dialog.Settings();
        settings.fontDialogStateCopy.lpLogFont = &settings.logFontCopy;
    }
    return result;
}
