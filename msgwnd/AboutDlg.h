#pragma once
#include "lang/ResourceIds.h"
#include "winlayer/DialogImpl.h"

// The About box: the suite's about text in control 236, OK and Cancel close it.
class CAboutDlg : public winlayer::DialogImpl<CAboutDlg> {
public:
    static constexpr int templateId = IDD_ABOUT;
    static winlayer::MessageTable<CAboutDlg> Messages();

    explicit CAboutDlg(const wchar_t* aboutText) : aboutText_(aboutText) {}

    LRESULT OnInitDialog(WPARAM, LPARAM, bool& handled);
    LRESULT OnClose(WPARAM, LPARAM, bool& handled);

private:
    const wchar_t* aboutText_;
};
