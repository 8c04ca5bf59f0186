#pragma once
#include "winlayer/MessageTable.h"

namespace winlayer {

// What windows and dialogs of the layer share: the handle of the window the
// object stands for, and message routing through T's table, which T supplies
// as   static winlayer::MessageTable<T> Messages();
template <class T>
class RoutedWindow {
public:
    RoutedWindow() = default;
    RoutedWindow(const RoutedWindow&) = delete;
    RoutedWindow& operator=(const RoutedWindow&) = delete;
    virtual ~RoutedWindow() = default;

    HWND Handle() const { return hwnd_; }

    virtual bool ProcessWindowMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
    {
        return DispatchTable(static_cast<T&>(*this), T::Messages(), message, wParam, lParam, result);
    }

protected:
    HWND hwnd_ = nullptr;
};

} // namespace winlayer
