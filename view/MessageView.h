#pragma once
#include <windows.h>

#include <memory>

#include "ring/MessageRing.h"
#include "view/LineSource.h"
#include "winlayer/MessageMap.h"

// The scrolling list of record lines in a window's client area: one page of
// records in memory, refilled from its line source whenever the top line
// moves, drawn in a font the window owns, scrolled by the bars and the
// keys.  The window hands it the messages its own table leaves.
class MessageView : public winlayer::MessageMap<MessageView>, public AddedLineView {
public:
    MessageView(LineSource& source, ViewPolicy policy) : source_(source), policy_(policy) {}
    MessageView(const MessageView&) = delete;
    MessageView& operator=(const MessageView&) = delete;

    static winlayer::MessageTable<MessageView> Messages();

    // The window whose client area this is; before anything else.
    void Attach(HWND window) { window_ = window; }
    // The font lines are drawn and measured in; the window keeps owning it.
    void SetFont(HFONT font) { font_ = font; }
    HFONT Font() const { return font_; }
    void SetTextColor(COLORREF color) { textColor_ = color; }

    // Refills the page for the top line (pulled back first where the
    // policy says so).
    void RefreshPage();
    // The view's part of adding a line to the live list: follow the tail
    // when the page showed it, refill, and repaint only what moved.
    void ShowAddedLine() override;
    // Measures the widest possible line and sets the horizontal bar.
    void UpdateHorizontalExtent();
    // Vertical bar: range the whole list, page linesPerPage, at `position`.
    void SetVerticalBar(int position);
    void InvalidateAll();

    // The list has been emptied for a new log file: page, top line and
    // horizontal offset start again.
    void ClearForNewFile();
    // Once the new file is current: refill and repaint when there is a page.
    void RefreshAfterNewFile();
    // Window creation: no page until the first size change.
    void DropPage();
    // Window creation: the last page of the list at the top.
    void PlaceAtEnd();
    // After a font change: back to the left edge.
    void ResetHorizontalPosition() { hPos = 0; }

    int TopLine() const { return topLine; }
    int LinesPerPage() const { return linesPerPage; }
    int PageCount() const { return pageCount; }
    const MessageRecord* Page() const { return pageBuffer.get(); }
    int LineHeight() const { return lineHeight; }
    int HorizontalPosition() const { return hPos; }

    // Lays the page out again for the client area and the font, as a size
    // change does: 0, or -1 for a negative line count.
    int Relayout();

private:
    LRESULT OnSize(WPARAM, LPARAM, bool& handled);
    LRESULT OnPaint(WPARAM, LPARAM, bool& handled);
    LRESULT OnVScroll(WPARAM, LPARAM, bool& handled);
    LRESULT OnHScroll(WPARAM, LPARAM, bool& handled);
    LRESULT OnKeyDown(WPARAM, LPARAM, bool& handled);

    void ApplyVerticalRequest(int request);
    void ApplyHorizontalRequest(int request, int thumb);
    void SetHorizontalBar(int position);
    void ScrollAndInvalidate(int dx, int dy, const RECT& band);

    LineSource& source_;
    const ViewPolicy policy_;
    HWND window_ = nullptr;
    HFONT font_ = nullptr;
    COLORREF textColor_ = 0;

    int lineHeight = 0;
    int linesPerPage = 0;
    std::unique_ptr<MessageRecord[]> pageBuffer;
    int pageCount = 0;
    int topLine = 0;
    int hExtent = 0;
    int hPage = 0;
    int hPos = 0;
    int hStep = 0;
};
