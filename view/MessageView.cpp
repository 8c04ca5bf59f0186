#include "view/MessageView.h"

#include <cstring>
#include <cwchar>

#include "view/RecordLine.h"
#include "view/ScrollRules.h"
#include "view/ViewDC.h"

namespace {

constexpr int kLeftMargin = 5;
// The sample character for the widest possible line: a broad ideograph.
constexpr wchar_t kWidestCharacter = 0x5757;

bool ControlKeyDown()
{
    return (::GetKeyState(VK_CONTROL) & 0x8000) != 0;
}

} // namespace

winlayer::MessageTable<MessageView> MessageView::Messages()
{
    static const winlayer::MessageEntry<MessageView> table[] = {
        {WM_SIZE, 0, &MessageView::OnSize},
        {WM_PAINT, 0, &MessageView::OnPaint},
        {WM_VSCROLL, 0, &MessageView::OnVScroll},
        {WM_KEYDOWN, 0, &MessageView::OnKeyDown},
        {WM_HSCROLL, 0, &MessageView::OnHScroll},
    };
    return winlayer::MakeTable(table);
}

LRESULT MessageView::OnSize(WPARAM, LPARAM, bool&)
{
    return Relayout();
}

int MessageView::Relayout()
{
    linesPerPage = ViewDC(window_, font_).LinesThatFit();

    pageBuffer.reset();
    if (linesPerPage < 0)
        return -1;
    if (linesPerPage == 0)
        return 0;
    pageBuffer.reset(new MessageRecord[linesPerPage]());
    RefreshPage();
    SetVerticalBar(topLine);
    UpdateHorizontalExtent();
    InvalidateAll();
    return 0;
}

LRESULT MessageView::OnPaint(WPARAM, LPARAM, bool&)
{
    PAINTSTRUCT paint;
    ::BeginPaint(window_, &paint);
    // Drawing goes through a second context so that every line of the page
    // is drawn, not only the part that was invalid.
    {
        ViewDC view(window_, font_);
        HDC dc = view.Handle();
        COLORREF oldColor = ::SetTextColor(dc, textColor_);
        ::SetBkMode(dc, TRANSPARENT);
        // Only a paint measures the line height; scrolling uses what the
        // last paint found.
        lineHeight = view.LineHeight();
        const int rows = view.LinesThatFit();
        for (int i = 0; i < rows && i < linesPerPage && i < pageCount; ++i) {
            wchar_t line[kRecordLineBuffer] = {};
            int length = FormatRecordLine(line, &pageBuffer[i]);
            ::TextOutW(dc, kLeftMargin - hPos, lineHeight * i, line, length);
        }
        ::SetTextColor(dc, oldColor);
    }
    ::EndPaint(window_, &paint);
    return 0;
}

void MessageView::RefreshPage()
{
    if (linesPerPage < 1) {
        pageCount = 0;
        return;
    }
    std::memset(pageBuffer.get(), 0, sizeof(MessageRecord) * linesPerPage);
    if (policy_.clampTopLine)
        topLine = ClampedTopLine(topLine, source_.LineCount(), linesPerPage);
    pageCount = source_.FillPage(topLine, pageBuffer.get(), linesPerPage);
}

void MessageView::ShowAddedLine()
{
    if (FollowsNewLine(topLine, source_.LineCount(), linesPerPage))
        ++topLine;
    if (linesPerPage < 1)
        return;
    RefreshPage();
    SetVerticalBar(topLine);
    // Counted after the refill, which may have started a new, empty list.
    const int lineCount = source_.LineCount();
    RECT band;
    ::GetClientRect(window_, &band);
    if (lineCount <= linesPerPage) {
        // The list does not fill the page: only the newest line's band.
        band.top = (pageCount - 1) * lineHeight;
        band.bottom = pageCount * lineHeight;
        ::InvalidateRect(window_, &band, TRUE);
    }
    if (topLine == lineCount - linesPerPage) {
        band.top += (pageCount - 2) * lineHeight;
        ScrollAndInvalidate(0, -lineHeight, band);
    }
}

void MessageView::UpdateHorizontalExtent()
{
    if (pageCount <= 0)
        return;
    {
        ViewDC view(window_, font_);
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

LRESULT MessageView::OnVScroll(WPARAM wParam, LPARAM, bool&)
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
    const int position = ::GetScrollInfo(window_, SB_VERT, &info) ? info.nTrackPos : 0;
    topLine = position;
    RefreshPage();
    SetVerticalBar(position);
    InvalidateAll();
    return 0;
}

LRESULT MessageView::OnHScroll(WPARAM wParam, LPARAM, bool&)
{
    ApplyHorizontalRequest(LOWORD(wParam), HIWORD(wParam));
    return 0;
}

LRESULT MessageView::OnKeyDown(WPARAM wParam, LPARAM, bool&)
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
            topLine = source_.LineCount() - linesPerPage;
            RefreshPage();
            SetVerticalBar(topLine + policy_.ctrlEndBarOffset);
            InvalidateAll();
        } else if (hExtent > hPage) {
            hPos = hExtent - hPage;
            SetHorizontalBar(hPos);
            InvalidateAll();
        }
        break;
    case VK_HOME:
        if (ControlKeyDown()) {
            topLine = 0;
            RefreshPage();
            SetVerticalBar(topLine);
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

void MessageView::ApplyVerticalRequest(int request)
{
    std::optional<int> target = VerticalTarget(request, topLine, linesPerPage, source_.LineCount());
    if (!target)
        return;
    topLine = *target;
    RefreshPage();
    SetVerticalBar(topLine);
    RECT client;
    ::GetClientRect(window_, &client);
    if (request == SB_LINEUP) {
        ScrollAndInvalidate(0, lineHeight,
                            RECT{client.left, client.top, client.right, client.top + lineHeight});
    } else if (request == SB_LINEDOWN) {
        ScrollAndInvalidate(0, -lineHeight,
                            RECT{client.left, client.top + (linesPerPage - 1) * lineHeight,
                                 client.right, client.bottom});
    } else {
        InvalidateAll();
    }
}

void MessageView::ApplyHorizontalRequest(int request, int thumb)
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
    RECT strip;
    ::GetClientRect(window_, &strip);
    strip.left = strip.right - move->stripWidth;
    ScrollAndInvalidate(move->scrollBy, 0, strip);
}

void MessageView::ScrollAndInvalidate(int dx, int dy, const RECT& band)
{
    ::ScrollWindow(window_, dx, dy, nullptr, nullptr);
    ::InvalidateRect(window_, &band, TRUE);
}

void MessageView::SetVerticalBar(int position)
{
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMin = 0;
    info.nMax = source_.LineCount() - 1;
    info.nPage = static_cast<UINT>(linesPerPage);
    info.nPos = position;
    ::SetScrollInfo(window_, SB_VERT, &info, TRUE);
}

void MessageView::SetHorizontalBar(int position)
{
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMin = 0;
    info.nMax = hExtent;
    info.nPage = static_cast<UINT>(hPage);
    info.nPos = position;
    ::SetScrollInfo(window_, SB_HORZ, &info, TRUE);
}

void MessageView::InvalidateAll()
{
    ::InvalidateRect(window_, nullptr, TRUE);
}

void MessageView::ClearForNewFile()
{
    pageCount = 0;
    topLine = 0;
    hPos = 0;
    if (linesPerPage > 0)
        std::memset(pageBuffer.get(), 0, sizeof(MessageRecord) * linesPerPage);
}

void MessageView::RefreshAfterNewFile()
{
    if (linesPerPage > 0) {
        RefreshPage();
        InvalidateAll();
    }
}

void MessageView::DropPage()
{
    pageBuffer.reset();
    linesPerPage = 0;
    pageCount = 0;
    topLine = 0;
    hPos = 0;
}

void MessageView::PlaceAtEnd()
{
    // The count is not kept: the first size change sets linesPerPage.
    topLine = FirstTopLine(source_.LineCount(), ViewDC(window_, font_).LinesThatFit());
}
