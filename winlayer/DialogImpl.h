#pragma once
#include "winlayer/RoutedWindow.h"
#include "winlayer/Resources.h"

namespace winlayer {

// Base of every modal dialog.  T supplies `static constexpr int templateId`
// (a dialog template of the language module) and its message table.  A
// handled WM_INITDIALOG returns the handler's result (non-zero: default
// focus); any other handled message stores its result as the dialog result.
template <class T>
class DialogImpl : public RoutedWindow<T> {
public:
    INT_PTR DoModal(HWND owner)
    {
        return ::DialogBoxParamW(ResourceModule(), MAKEINTRESOURCEW(T::templateId), owner,
                                 &DialogImpl::DialogProc, reinterpret_cast<LPARAM>(this));
    }

    void EndDialog(INT_PTR result) { ::EndDialog(this->hwnd_, result); }
    HWND Item(int id) const { return ::GetDlgItem(this->hwnd_, id); }
    void SetItemText(int id, const wchar_t* text) { ::SetDlgItemTextW(this->hwnd_, id, text); }
    UINT GetItemText(int id, wchar_t* buffer, int size) const
    {
        return ::GetDlgItemTextW(this->hwnd_, id, buffer, size);
    }
    void SetItemInt(int id, int value, bool isSigned) { ::SetDlgItemInt(this->hwnd_, id, value, isSigned); }
    int GetItemInt(int id, bool isSigned, BOOL* translated = nullptr) const
    {
        return static_cast<int>(::GetDlgItemInt(this->hwnd_, id, translated, isSigned));
    }

private:
    static INT_PTR CALLBACK DialogProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message == WM_INITDIALOG) {
            auto* self = reinterpret_cast<DialogImpl*>(lParam);
            self->hwnd_ = hwnd;
            ::SetWindowLongPtrW(hwnd, DWLP_USER, lParam);
        }
        auto* self = reinterpret_cast<DialogImpl*>(::GetWindowLongPtrW(hwnd, DWLP_USER));
        if (self == nullptr)
            return FALSE;
        LRESULT result = 0;
        if (!self->ProcessWindowMessage(message, wParam, lParam, result))
            return FALSE;
        if (message == WM_INITDIALOG)
            return static_cast<INT_PTR>(result);
        ::SetWindowLongPtrW(hwnd, DWLP_MSGRESULT, result);
        return TRUE;
    }
};

} // namespace winlayer
