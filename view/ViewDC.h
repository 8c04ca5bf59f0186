#pragma once
#include <windows.h>

// A device context of a view window with the view font selected, the font's
// text metrics and the client rectangle.  Restores the old font and releases
// the context when it goes.
class ViewDC {
public:
    ViewDC(HWND window, HFONT font)
        : window_(window), dc_(::GetDC(window)), oldFont_(::SelectObject(dc_, font))
    {
        ::GetTextMetricsW(dc_, &metrics_);
        ::GetClientRect(window_, &client_);
    }
    ~ViewDC()
    {
        ::SelectObject(dc_, oldFont_);
        ::ReleaseDC(window_, dc_);
    }
    ViewDC(const ViewDC&) = delete;
    ViewDC& operator=(const ViewDC&) = delete;

    HDC Handle() const { return dc_; }
    const TEXTMETRICW& Metrics() const { return metrics_; }
    const RECT& Client() const { return client_; }
    int LineHeight() const { return metrics_.tmHeight + metrics_.tmExternalLeading; }
    // Whole lines the client area holds.  A font always has a height; should
    // one not, the view holds no line.
    int LinesThatFit() const
    {
        const int height = LineHeight();
        return height > 0 ? (client_.bottom - client_.top) / height : 0;
    }

private:
    HWND window_;
    HDC dc_;
    HGDIOBJ oldFont_;
    TEXTMETRICW metrics_ = {};
    RECT client_ = {};
};
