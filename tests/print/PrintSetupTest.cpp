// The print setup dialog on its real template, driven from a helper thread
// while the test's thread runs it modally.
#include "PrintTestSupport.h"

#include <functional>

#include "lang/ResourceIds.h"
#include "print/LocalTimeOrder.h"
#include "print/PrintSetupDlg.h"
#include "support/MessageBoxRecorder.h"
#include "winlayer/Resources.h"

namespace {

std::wstring ItemText(HWND dialog, int id)
{
    wchar_t text[1024] = {};
    ::GetDlgItemTextW(dialog, id, text, 1024);
    return text;
}

void SetText(HWND dialog, int id, const std::wstring& text)
{
    ::SetDlgItemTextW(dialog, id, text.c_str());
}

// Fills the six fields starting at control `ids` (year to second).
void SetGroup(HWND dialog, const int (&ids)[6], const std::vector<std::wstring>& values)
{
    for (int i = 0; i < 6; ++i)
        SetText(dialog, ids[i], values[i]);
}

void Click(HWND dialog, int id)
{
    ::SendMessageW(::GetDlgItem(dialog, id), BM_CLICK, 0, 0);
}

HWND FocusOf(DWORD thread)
{
    GUITHREADINFO info = {};
    info.cbSize = sizeof(info);
    ::GetGUIThreadInfo(thread, &info);
    return info.hwndFocus;
}

constexpr int kBetweenFrom[6] = {229, 230, 231, 232, 233, 235};
constexpr int kBetweenTo[6] = {241, 242, 243, 244, 245, 246};
constexpr int kUpTo[6] = {247, 248, 249, 250, 251, 252};

class PrintSetupTest : public PrintFixture {
protected:
    void SetUp() override
    {
        PrintFixture::SetUp();
        settings.logFontCopy.lfHeight = -12;
        settings.logFontCopy.lfWeight = FW_NORMAL;
        winlayer::LoadText(IDS_FONT_FACE, settings.logFontCopy.lfFaceName, LF_FACESIZE);
        settings.fontDialogStateCopy.lStructSize = sizeof(CHOOSEFONTW);
        settings.fontDialogStateCopy.Flags = CF_SCREENFONTS | CF_INITTOLOGFONTSTRUCT | CF_EFFECTS;
        settings.fontDialogStateCopy.lpLogFont = &settings.logFontCopy;
        settings.rangeFrom = TestStamp(5);
        settings.rangeTo = TestStamp(50);
    }

    // Runs the dialog on `settings` with the log's first record at
    // 10:00:00.500 and its last at 10:01:00; `script` drives it.
    INT_PTR Run(const std::function<void(HWND)>& script)
    {
        DialogScript thread([&] {
            HWND dialog = WaitForDialog(uiThread);
            ASSERT_NE(nullptr, dialog);
            script(dialog);
        });
        return RunPrintSetup(owner, settings, TestStamp(0, 500), TestStamp(60));
    }

    // Presses OK and expects the refusal `text` with the focus on `focusId`.
    void ExpectRefusal(HWND dialog, const std::wstring& text, int focusId)
    {
        const size_t before = boxes.Boxes().size();
        ::SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
        ASSERT_EQ(before + 1, boxes.Boxes().size()) << "no refusal for " << focusId;
        EXPECT_EQ(text, boxes.Boxes().back().text);
        EXPECT_EQ(L"Print Setup", boxes.Boxes().back().caption);
        EXPECT_EQ(::GetDlgItem(dialog, focusId), FocusOf(uiThread)) << focusId;
        EXPECT_TRUE(::IsWindow(dialog));
    }

    PrintSettings settings;
    testing_support::MessageBoxRecorder boxes;
};

} // namespace

TEST_F(PrintSetupTest, OkRefusesFieldByFieldThenTakesTheRange)
{
    const INT_PTR result = Run([&](HWND dialog) {
        // Fields of a range switched to stay empty: the year is reported.
        Click(dialog, IDC_RANGE_BETWEEN);
        EXPECT_TRUE(::IsWindowEnabled(::GetDlgItem(dialog, kBetweenTo[5])));
        EXPECT_FALSE(::IsWindowEnabled(::GetDlgItem(dialog, kUpTo[0])));
        ExpectRefusal(dialog, L"This field must not be empty.", 229);
        SetGroup(dialog, kBetweenFrom, {L"2023", L"2", L"29", L"10", L"0", L"0"});
        ExpectRefusal(dialog, L"The day must be between 1 and 28.", 231);
        SetGroup(dialog, kBetweenFrom, {L"2026", L"3", L"3", L"10", L"0", L"60"});
        ExpectRefusal(dialog, L"The second must be between 0 and 59.", 235);
        // The first record came at 10:00:00.500: a whole second before it is out.
        SetGroup(dialog, kBetweenFrom, {L"2026", L"3", L"3", L"10", L"0", L"0"});
        ExpectRefusal(dialog,
                      L"The time must lie within the log, from 2026-03-03 10:00:00 to 2026-03-03 10:01:00.",
                      229);
        SetGroup(dialog, kBetweenFrom, {L"2026", L"3", L"3", L"10", L"0", L"40"});
        ExpectRefusal(dialog, L"This field must not be empty.", 241);
        SetGroup(dialog, kBetweenTo, {L"2026", L"3", L"3", L"10", L"1", L"1"});
        ExpectRefusal(dialog,
                      L"The time must lie within the log, from 2026-03-03 10:00:00 to 2026-03-03 10:01:00.",
                      241);
        SetGroup(dialog, kBetweenTo, {L"2026", L"3", L"3", L"10", L"0", L"30"});
        ExpectRefusal(dialog, L"The start time must not be later than the end time.", 241);
        SetText(dialog, kBetweenFrom[5], L"10");
        ::SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
    });
    EXPECT_EQ(IDOK, result);
    EXPECT_EQ(7u, boxes.Boxes().size());
    EXPECT_EQ(RangeBetween, settings.printRange);
    EXPECT_EQ(0, CompareLocalTimes(TestStamp(10), settings.rangeFrom));
    EXPECT_EQ(0, CompareLocalTimes(TestStamp(30), settings.rangeTo));
}

TEST_F(PrintSetupTest, TheCodeMenuInsertsAtTheCaretOfTheClickedBox)
{
    std::wstring header;
    DWORD selStart = 0;
    DWORD selEnd = 0;
    bool menuShown = false;
    Run([&](HWND dialog) {
        HWND edit = ::GetDlgItem(dialog, IDC_HEADER_TEXT);
        SetText(dialog, IDC_HEADER_TEXT, L"abcdef");
        ::SendMessageW(edit, EM_SETSEL, 3, 3);
        RECT area;
        ::GetWindowRect(::GetDlgItem(dialog, IDC_HEADER_CODES), &area);
        POINT click = {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
        ::ScreenToClient(dialog, &click);
        ::PostMessageW(dialog, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(click.x, click.y));
        for (int i = 0; i < 200 && !menuShown; ++i) {
            HWND menu = ::FindWindowW(L"#32768", nullptr);
            menuShown = menu != nullptr && ::IsWindowVisible(menu);
            if (!menuShown)
                ::Sleep(20);
        }
        // Choose "&T" from the menu with the keyboard: down three times, enter.
        HWND menu = ::FindWindowW(L"#32768", nullptr);
        for (int i = 0; i < 4; ++i)
            ::PostMessageW(menu, WM_KEYDOWN, VK_DOWN, 0);
        ::PostMessageW(menu, WM_KEYDOWN, VK_RETURN, 0);
        for (int i = 0; i < 200 && ItemText(dialog, IDC_HEADER_TEXT) == L"abcdef"; ++i)
            ::Sleep(20);
        header = ItemText(dialog, IDC_HEADER_TEXT);
        ::SendMessageW(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&selStart), reinterpret_cast<LPARAM>(&selEnd));
        // Without a click on a code area first, a code command does nothing.
        ::SendMessageW(dialog, WM_COMMAND, IDM_CODE_FILE, 0);
        EXPECT_EQ(header, ItemText(dialog, IDC_HEADER_TEXT));
        EXPECT_EQ(L"Page &P", ItemText(dialog, IDC_FOOTER_TEXT));
        PostClick(dialog, IDCANCEL);
    });
    EXPECT_TRUE(menuShown);
    EXPECT_EQ(L"abc&Tdef", header);
    EXPECT_EQ(3u, selStart);
    EXPECT_EQ(5u, selEnd);
}
