#pragma once
#include "lang/ResourceIds.h"
#include "winlayer/DialogImpl.h"

// The save-directory dialog: an edit box for the path and a browse button.
// OK accepts only a usable path, offers to create a missing directory and
// refuses a read-only one; every refusal leaves the dialog open with the
// focus back in the edit box.
class CSavePathDlg : public winlayer::DialogImpl<CSavePathDlg> {
public:
    static constexpr int templateId = IDD_SAVE_PATH;
    static winlayer::MessageTable<CSavePathDlg> Messages();

    // Filled by the opener before the dialog runs; after OK, the accepted
    // path in canonical form.
    wchar_t savePath[MAX_PATH] = {};

    LRESULT OnInitDialog(WPARAM, LPARAM, bool& handled);
    LRESULT OnBrowse(WPARAM, LPARAM, bool& handled);
    LRESULT OnOK(WPARAM, LPARAM, bool& handled);
    LRESULT OnCancel(WPARAM, LPARAM, bool& handled);

private:
    // Whether the accepted path exists, after offering to create it.
    bool EnsureDirectoryExists();
    // Shows string `textId` with `captionId` and puts the focus on the path.
    void Refuse(UINT textId, UINT captionId);
    // A box owned by the dialog whose text is string `formatId` with the path.
    int ShowPathBox(UINT formatId, UINT captionId, UINT type);
};
