#pragma once
#include <windows.h>

#include <string>
#include <vector>

class MessageView;

namespace testing_support {

// What a user does to a scrolling view, sent straight to its window, and
// what the test reads back.
SCROLLINFO ScrollBarOf(HWND window, int bar);
// WM_KEYDOWN with the Ctrl key held (as GetKeyState sees it) or not.
LRESULT SendKey(HWND window, WPARAM key, bool control = false);
LRESULT SendVScroll(HWND window, int request);
LRESULT SendHScroll(HWND window, int request, int thumb = 0);
// The font a view starts with, which printing starts from too: 12 pixels
// high in the language module's face.
LOGFONTW ViewLogFont();
// Bounds of an overlapped window with a vertical bar whose client area is
// 800 pixels wide beside the bar and `lines` lines of the view font high,
// plus half a line, so that exactly `lines` whole lines fit.
RECT WindowRectForLines(int lines, DWORD exStyle, bool menu);
// Rows [top, bottom) of the client area as they are on screen: 32-bit
// pixels 0x00RRGGBB, row by row, each row as wide as the client area.
std::vector<DWORD> ClientRows(HWND window, int top, int bottom);
// The text of page line `i`, or "<none>" outside the page.
std::wstring PageLine(const MessageView& view, int i);

} // namespace testing_support
