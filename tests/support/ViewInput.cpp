#include "support/ViewInput.h"

#include "lang/ResourceIds.h"
#include "view/MessageView.h"
#include "winlayer/Resources.h"

namespace testing_support {

SCROLLINFO ScrollBarOf(HWND window, int bar)
{
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_ALL;
    ::GetScrollInfo(window, bar, &info);
    return info;
}

LRESULT SendKey(HWND window, WPARAM key, bool control)
{
    BYTE keys[256];
    ::GetKeyboardState(keys);
    keys[VK_CONTROL] = control ? 0x80 : 0;
    ::SetKeyboardState(keys);
    LRESULT result = ::SendMessageW(window, WM_KEYDOWN, key, 0);
    keys[VK_CONTROL] = 0;
    ::SetKeyboardState(keys);
    return result;
}

LRESULT SendVScroll(HWND window, int request)
{
    return ::SendMessageW(window, WM_VSCROLL, MAKEWPARAM(request, 0), 0);
}

LRESULT SendHScroll(HWND window, int request, int thumb)
{
    return ::SendMessageW(window, WM_HSCROLL, MAKEWPARAM(request, thumb), 0);
}

LOGFONTW ViewLogFont()
{
    LOGFONTW font = {};
    font.lfHeight = -12;
    font.lfWeight = FW_NORMAL;
    font.lfCharSet = DEFAULT_CHARSET;
    winlayer::LoadText(IDS_FONT_FACE, font.lfFaceName, LF_FACESIZE);
    return font;
}

RECT WindowRectForLines(int lines, DWORD exStyle, bool menu)
{
    HDC dc = ::GetDC(nullptr);
    const LOGFONTW viewFont = ViewLogFont();
    HFONT font = ::CreateFontIndirectW(&viewFont);
    HGDIOBJ old = ::SelectObject(dc, font);
    TEXTMETRICW metrics;
    ::GetTextMetricsW(dc, &metrics);
    ::DeleteObject(::SelectObject(dc, old));
    ::ReleaseDC(nullptr, dc);
    const int lineHeight = metrics.tmHeight + metrics.tmExternalLeading;
    RECT r = {100, 100, 900, 100 + lines * lineHeight + lineHeight / 2};
    ::AdjustWindowRectEx(&r, WS_OVERLAPPEDWINDOW | WS_VSCROLL, menu, exStyle);
    r.right += ::GetSystemMetrics(SM_CXVSCROLL);
    return r;
}

std::vector<DWORD> ClientRows(HWND window, int top, int bottom)
{
    RECT client;
    ::GetClientRect(window, &client);
    HDC dc = ::GetDC(window);
    HDC memory = ::CreateCompatibleDC(dc);
    HBITMAP bitmap = ::CreateCompatibleBitmap(dc, client.right, bottom - top);
    HGDIOBJ old = ::SelectObject(memory, bitmap);
    ::BitBlt(memory, 0, 0, client.right, bottom - top, dc, 0, top, SRCCOPY);
    ::SelectObject(memory, old);
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), client.right, top - bottom, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    std::vector<DWORD> pixels(static_cast<size_t>(client.right) * (bottom - top));
    ::GetDIBits(memory, bitmap, 0, bottom - top, pixels.data(), &info, DIB_RGB_COLORS);
    ::DeleteObject(bitmap);
    ::DeleteDC(memory);
    ::ReleaseDC(window, dc);
    return pixels;
}

std::wstring PageLine(const MessageView& view, int i)
{
    if (i < 0 || i >= view.PageCount())
        return L"<none>";
    const MessageRecord& record = view.Page()[i];
    return std::wstring(record.text, wcsnlen(record.text, kMessageTextUnits));
}

} // namespace testing_support
