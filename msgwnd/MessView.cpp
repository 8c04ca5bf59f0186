#include "msgwnd/MessWnd.h"

#include <cstring>
#include <cwchar>

#include "lang/ResourceIds.h"
#include "log/LogFileIo.h"
#include "log/LogFormat.h"
#include "msgwnd/RecordLine.h"
#include "msgwnd/ScrollRules.h"
#include "msgwnd/ViewDC.h"

namespace {

constexpr int kLeftMargin = 5;
// The sample character for the widest possible line: a broad ideograph.
constexpr wchar_t kWidestCharacter = 0x5757;

// A page line takes the record's time stamp and its text up to the first
// zero; whatever follows a zero in the slot is not carried over.
void CopyRecordToPage(MessageRecord& line, const MessageRecord& record)
{
    line.time = record.time;
    std::memset(line.text, 0, sizeof(line.text));
    for (int i = 0; i < kMessageTextUnits && record.text[i] != L'\0'; ++i)
        line.text[i] = record.text[i];
}

bool ControlKeyDown()
{
    return (::GetKeyState(VK_CONTROL) & 0x8000) != 0;
}

} // namespace

LRESULT CMessWnd::OnSize(WPARAM, LPARAM, bool&)
{
    linesPerPage = ViewDC(hwnd_, viewFont).LinesThatFit();

    pageBuffer.reset();
    if (linesPerPage < 0)
        return -1;
    if (linesPerPage == 0)
        return 0;
    pageBuffer.reset(new MessageRecord[linesPerPage]());
    RefreshPage();
    SetVerticalBar(ring.topLine);
    UpdateHorizontalExtent();
    InvalidateAll();
    return 0;
}

LRESULT CMessWnd::OnPaint(WPARAM, LPARAM, bool&)
{
    PAINTSTRUCT paint;
    ::BeginPaint(hwnd_, &paint);
    // Drawing goes through a second context so that every line of the page
    // is drawn, not only the part that was invalid.
    {
        ViewDC view(hwnd_, viewFont);
        HDC dc = view.Handle();
        COLORREF oldColor = ::SetTextColor(dc, fontDialogState.rgbColors);
        ::SetBkMode(dc, TRANSPARENT);
        lineHeight = view.LineHeight();
        const int rows = view.LinesThatFit();
        for (int i = 0; i < rows && i < linesPerPage && i < pageCount; ++i) {
            wchar_t line[kRecordLineBuffer] = {};
            int length = FormatRecordLine(line, &pageBuffer[i]);
            ::TextOutW(dc, kLeftMargin - hPos, lineHeight * i, line, length);
        }
        ::SetTextColor(dc, oldColor);
    }
    ::EndPaint(hwnd_, &paint);
    return 0;
}

void CMessWnd::RefreshPage()
{
    if (linesPerPage < 1) {
        pageCount = 0;
        return;
    }
    std::memset(pageBuffer.get(), 0, sizeof(MessageRecord) * linesPerPage);
    ring.topLine = ClampedTopLine(ring.topLine, ring.lineCount, linesPerPage);
    if (ring.topLine >= ring.fileOnlyLines) {
        FillPageFromRing();
        return;
    }
    if (ring.topLine < 0) {
        pageCount = 0;
        return;
    }
    FillPageFromFile();
}

void CMessWnd::FillPageFromRing()
{
    // Once the ring is full this shows, at each line, the record one older
    // than the line number says: the newest line appears only when the next
    // one arrives.  The view has always lagged so, and keeps doing it.
    const RingSpan span = ring.LocateLine(ring.topLine);
    pageCount = 0;
    while (pageCount < linesPerPage && pageCount < span.remaining) {
        CopyRecordToPage(pageBuffer[pageCount], ring.ring[(span.slot + pageCount) % kRingSlots]);
        ++pageCount;
    }
}

void CMessWnd::FillPageFromFile()
{
    HANDLE& logFile = writer.LogFile();
    if (logFile != INVALID_HANDLE_VALUE) {
        if (!::CloseHandle(logFile))
            writer.ReportFileError(true);
        logFile = INVALID_HANDLE_VALUE;
    }
    logFile = OpenLogFile(writer.LogFilePath(), GENERIC_READ, OPEN_EXISTING);
    // A vanished file is replaced by a new one, which empties the list and
    // leaves its handle here for the rest of this refill.
    if (logFile == INVALID_HANDLE_VALUE && !writer.StartNewLogFile()) {
        pageCount = 0;
        return;
    }
    unsigned char header[kLogHeaderTextBytes];
    switch (ReadLogHeader(logFile, header)) {
    case HeaderRead::Complete:
        break;
    case HeaderRead::TooShort:
        pageCount = 0;
        return;
    default:
        writer.ReportFileError(true);
        pageCount = 0;
        return;
    }
    if (IsNewerLogFormat(header, false)) {
        if (!::CloseHandle(logFile)) {
            writer.ReportFileError(true);
            pageCount = 0;
            return;
        }
        logFile = INVALID_HANDLE_VALUE;
        ShowErrorBox(IDS_NEWER_FORMAT);
        pageCount = 0;
        return;
    }
    DWORD bytesRead = 0;
    if (!SeekLogFile(logFile, (ring.topLine + 1) * static_cast<LONG>(kRecordBytes), FILE_BEGIN) ||
        !::ReadFile(logFile, pageBuffer.get(), linesPerPage * kRecordBytes, &bytesRead, nullptr)) {
        // The read-only handle stays in logFile; the next operation closes it.
        writer.ReportFileError(true);
        pageCount = 0;
        return;
    }
    pageCount = static_cast<int>(bytesRead / kRecordBytes);
    AppendUnwrittenRecords();
    if (!::CloseHandle(logFile))
        writer.ReportFileError(true);
    logFile = INVALID_HANDLE_VALUE;
}

void CMessWnd::AppendUnwrittenRecords()
{
    if (pageCount >= linesPerPage || ring.unwrittenPos == ring.writePos)
        return;
    // Stops on reaching writePos numerically: unwritten records that run
    // over the end of the ring stay off the page until they are written.
    for (int k = 0; pageCount < linesPerPage; ++k) {
        const int slot = (ring.unwrittenPos + k) % kRingSlots;
        if (slot >= ring.writePos)
            break;
        CopyRecordToPage(pageBuffer[pageCount], ring.ring[slot]);
        ++pageCount;
    }
}

void CMessWnd::ShowAddedLine()
{
    if (FollowsNewLine(ring.topLine, ring.lineCount, linesPerPage))
        ++ring.topLine;
    if (linesPerPage < 1)
        return;
    RefreshPage();
    SetVerticalBar(ring.topLine);
    RECT band;
    ::GetClientRect(hwnd_, &band);
    if (ring.lineCount <= linesPerPage) {
        // The list does not fill the page: only the newest line's band.
        band.top = (pageCount - 1) * lineHeight;
        band.bottom = pageCount * lineHeight;
        ::InvalidateRect(hwnd_, &band, TRUE);
    }
    if (ring.topLine == ring.lineCount - linesPerPage) {
        ::ScrollWindow(hwnd_, 0, -lineHeight, nullptr, nullptr);
        band.top += (pageCount - 2) * lineHeight;
        ::InvalidateRect(hwnd_, &band, TRUE);
    }
}

void CMessWnd::UpdateHorizontalExtent()
{
    if (pageCount <= 0)
        return;
    {
        ViewDC view(hwnd_, viewFont);
        MessageRecord sample;
        ::GetLocalTime(&sample.time);
        std::wmemset(sample.text, kWidestCharacter, kMessageTextUnits);
        wchar_t line[kRecordLineBuffer];
        int length = FormatRecordLine(line, &sample);
        SIZE extent = {};
        ::GetTextExtentPoint32W(view.Handle(), line, length, &extent);
        hExtent = extent.cx + ::GetSystemMetrics(SM_CXVSCROLL);
        hPage = view.Client().right - view.Client().left;
        hStep = view.Metrics().tmMaxCharWidth;
    }
    // One more than the offset, as the bar has always been set here.
    SetHorizontalBar(hPos + 1);
}

LRESULT CMessWnd::OnVScroll(WPARAM wParam, LPARAM, bool&)
{
    const int request = LOWORD(wParam);
    if (request != SB_THUMBPOSITION) {
        // Thumb tracking and the rest are ignored: dragging scrolls nothing
        // until the thumb is let go.
        ApplyVerticalRequest(request);
        return 0;
    }
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_TRACKPOS;
    const int position = ::GetScrollInfo(hwnd_, SB_VERT, &info) ? info.nTrackPos : 0;
    ring.topLine = position;
    RefreshPage();
    SetVerticalBar(position);
    InvalidateAll();
    return 0;
}

LRESULT CMessWnd::OnHScroll(WPARAM wParam, LPARAM, bool&)
{
    ApplyHorizontalRequest(LOWORD(wParam), HIWORD(wParam));
    return 0;
}

LRESULT CMessWnd::OnKeyDown(WPARAM wParam, LPARAM, bool&)
{
    switch (wParam) {
    case VK_PRIOR:
        ApplyVerticalRequest(SB_PAGEUP);
        break;
    case VK_NEXT:
        ApplyVerticalRequest(SB_PAGEDOWN);
        break;
    case VK_END:
        if (ControlKeyDown()) {
            ring.topLine = ring.lineCount - linesPerPage;
            RefreshPage();
            // One past the top line; the bar has always been set so here.
            SetVerticalBar(ring.topLine + 1);
            InvalidateAll();
        } else if (hExtent > hPage) {
            hPos = hExtent - hPage;
            SetHorizontalBar(hPos);
            InvalidateAll();
        }
        break;
    case VK_HOME:
        if (ControlKeyDown()) {
            ring.topLine = 0;
            RefreshPage();
            SetVerticalBar(ring.topLine);
        } else {
            hPos = 0;
            SetHorizontalBar(0);
        }
        InvalidateAll();
        break;
    case VK_LEFT:
        ApplyHorizontalRequest(SB_LINELEFT, 0);
        break;
    case VK_UP:
        ApplyVerticalRequest(SB_LINEUP);
        break;
    case VK_RIGHT:
        if (hExtent > hPage)
            ApplyHorizontalRequest(SB_LINERIGHT, 0);
        break;
    case VK_DOWN:
        ApplyVerticalRequest(SB_LINEDOWN);
        break;
    default:
        break;
    }
    return 0;
}

void CMessWnd::ApplyVerticalRequest(int request)
{
    std::optional<int> target = VerticalTarget(request, ring.topLine, linesPerPage, ring.lineCount);
    if (!target)
        return;
    ring.topLine = *target;
    RefreshPage();
    SetVerticalBar(ring.topLine);
    RECT client;
    ::GetClientRect(hwnd_, &client);
    if (request == SB_LINEUP) {
        ::ScrollWindow(hwnd_, 0, lineHeight, nullptr, nullptr);
        RECT band = {client.left, client.top, client.right, client.top + lineHeight};
        ::InvalidateRect(hwnd_, &band, TRUE);
    } else if (request == SB_LINEDOWN) {
        ::ScrollWindow(hwnd_, 0, -lineHeight, nullptr, nullptr);
        RECT band = {client.left, client.top + (linesPerPage - 1) * lineHeight, client.right,
                     client.bottom};
        ::InvalidateRect(hwnd_, &band, TRUE);
    } else {
        InvalidateAll();
    }
}

void CMessWnd::ApplyHorizontalRequest(int request, int thumb)
{
    std::optional<HorizontalMove> move = HorizontalStep(request, hPos, hPage, hExtent, hStep, thumb);
    if (!move)
        return;
    hPos = move->hPos;
    SetHorizontalBar(move->barPos);
    if (move->invalidateAll) {
        InvalidateAll();
        return;
    }
    ::ScrollWindow(hwnd_, move->scrollBy, 0, nullptr, nullptr);
    RECT strip;
    ::GetClientRect(hwnd_, &strip);
    strip.left = strip.right - move->stripWidth;
    ::InvalidateRect(hwnd_, &strip, TRUE);
}

void CMessWnd::SetVerticalBar(int position)
{
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMin = 0;
    info.nMax = ring.lineCount - 1;
    info.nPage = static_cast<UINT>(linesPerPage);
    info.nPos = position;
    ::SetScrollInfo(hwnd_, SB_VERT, &info, TRUE);
}

void CMessWnd::SetHorizontalBar(int position)
{
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMin = 0;
    info.nMax = hExtent;
    info.nPage = static_cast<UINT>(hPage);
    info.nPos = position;
    ::SetScrollInfo(hwnd_, SB_HORZ, &info, TRUE);
}

void CMessWnd::InvalidateAll()
{
    ::InvalidateRect(hwnd_, nullptr, TRUE);
}
