#pragma once
#include "winlayer/MessageMap.h"

namespace winlayer {

// What windows and dialogs of the layer share: the handle of the window the
// object stands for, and message routing through T's table.
template <class T>
class RoutedWindow : public MessageMap<T> {
public:
    RoutedWindow() = default;
    RoutedWindow(const RoutedWindow&) = delete;
    RoutedWindow& operator=(const RoutedWindow&) = delete;
    virtual ~RoutedWindow() = default;

    HWND Handle() const { return hwnd_; }

protected:
    HWND hwnd_ = nullptr;
};

} // namespace winlayer
