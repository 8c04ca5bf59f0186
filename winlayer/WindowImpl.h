#pragma once
#include "winlayer/RoutedWindow.h"

namespace winlayer {

// Base of every window class of the program: the window procedure routes
// every message through T's table; anything the table does not handle goes
// to DefWindowProcW.
template <class T>
class WindowImpl : public RoutedWindow<T> {
public:
    // Registers a window class whose procedure is this layer's.
    static ATOM RegisterWindowClass(WNDCLASSEXW wc)
    {
        wc.cbSize = sizeof(wc);
        wc.lpfnWndProc = &WindowImpl::WindowProc;
        return ::RegisterClassExW(&wc);
    }

    HWND Create(const wchar_t* className, HWND parent, const wchar_t* title, DWORD style,
                DWORD exStyle, HMENU menu, int x, int y, int width, int height,
                HINSTANCE instance = ::GetModuleHandleW(nullptr))
    {
        return ::CreateWindowExW(exStyle, className, title, style, x, y, width, height, parent,
                                 menu, instance, this);
    }

private:
    static LRESULT CALLBACK WindowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message == WM_NCCREATE) {
            auto* created = reinterpret_cast<CREATESTRUCTW*>(lParam);
            auto* self = static_cast<WindowImpl*>(created->lpCreateParams);
            self->hwnd_ = hwnd;
            ::SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
        }
        auto* self = reinterpret_cast<WindowImpl*>(::GetWindowLongPtrW(hwnd, GWLP_USERDATA));
        LRESULT result = 0;
        if (self != nullptr && self->ProcessWindowMessage(message, wParam, lParam, result))
            return result;
        result = ::DefWindowProcW(hwnd, message, wParam, lParam);
        if (message == WM_NCDESTROY && self != nullptr) {
            // The object outlives its window; it only forgets the handle.
            ::SetWindowLongPtrW(hwnd, GWLP_USERDATA, 0);
            self->hwnd_ = nullptr;
        }
        return result;
    }
};

} // namespace winlayer
