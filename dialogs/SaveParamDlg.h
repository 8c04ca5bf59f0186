#pragma once
#include <cstdint>

#include "lang/ResourceIds.h"
#include "winlayer/DialogImpl.h"

// The save-parameters dialog: the flush interval, the days log files are
// kept and the log size limit, each in its own edit box.  OK accepts the
// fields in order and stops at the first one out of range with a message
// of its own that is the same in every language.
class CSaveParamDlg : public winlayer::DialogImpl<CSaveParamDlg> {
public:
    static constexpr int templateId = IDD_SAVE_PARAMS;
    static winlayer::MessageTable<CSaveParamDlg> Messages();

    // The opener puts the window's values here before the dialog runs.
    std::uint32_t saveTime = 600;
    std::uint32_t saveDays = 10;
    std::uint32_t logSize = 10;

    LRESULT OnInitDialog(WPARAM, LPARAM, bool& handled);
    LRESULT OnOK(WPARAM, LPARAM, bool& handled);
    LRESULT OnCancel(WPARAM, LPARAM, bool& handled);

private:
    // Reads control `id` into `field`, which keeps the value even when the
    // text is refused.  False, after the range message, when it is refused.
    bool ReadField(int id, std::uint32_t& field);
};

// The range message: a fixed text of the program, shown untranslated.
extern const wchar_t kSettingRangeMessage[];
