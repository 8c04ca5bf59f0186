// The print setup dialog on its real template, driven step by step while
// the test's thread runs it modally.
#include "PrintTestSupport.h"

#include "lang/ResourceIds.h"
#include "print/LocalTimeOrder.h"
#include "print/PrintSetupDlg.h"

using testing_support::Click;
using testing_support::ItemText;
using testing_support::Type;

namespace {

constexpr int kBetweenFrom[6] = {229, 230, 231, 232, 233, 235};
constexpr int kBetweenTo[6] = {241, 242, 243, 244, 245, 246};
constexpr int kUpTo0 = 247;

class PrintSetupTest : public PrintFixture {
protected:
    // Runs the dialog on `settings` (the whole log chosen) with the log's
    // first record at 10:00:00.500 and its last at 10:01:00, through the
    // script's steps.
    INT_PTR Run() { return RunPrintSetup(owner, settings, TestStamp(0, 500), TestStamp(60)); }
    PrintSettings settings;
};

} // namespace

TEST_F(PrintSetupTest, OkRefusesFieldByFieldWithTheFocusThereThenTakesTheRange)
{
    script.Then([](HWND dialog) {
        ::SendDlgItemMessageW(dialog, IDC_RANGE_BETWEEN, BM_CLICK, 0, 0);
        EXPECT_TRUE(::IsWindowEnabled(::GetDlgItem(dialog, kBetweenTo[5])));
        EXPECT_FALSE(::IsWindowEnabled(::GetDlgItem(dialog, kUpTo0)));
    });
    const std::wstring outside =
        L"The time must lie within the log, from 2026-03-03 10:00:00 to 2026-03-03 10:01:00.";
    // Each row fills a group (none: the fields stay empty) and presses OK.
    const struct {
        const int* group;
        std::vector<const wchar_t*> values;
        std::wstring refusal;
        int focus;
    } rows[] = {
        {nullptr, {}, L"This field must not be empty.", 229},
        {kBetweenFrom, {L"2026", L"3", L"3", L"10", L"0", L"40"}, L"This field must not be empty.", 241},
        {kBetweenTo, {L"2026", L"3", L"3", L"10", L"1", L"1"}, outside, 241},
        {kBetweenTo, {L"2026", L"3", L"3", L"10", L"0", L"30"},
         L"The start time must not be later than the end time.", 241},
    };
    std::vector<std::wstring> expected;
    for (const auto& row : rows) {
        script.Then([&row](HWND dialog) {
                  for (size_t i = 0; i < row.values.size(); ++i)
                      Type(dialog, row.group[i], row.values[i]);
                  Click(dialog, IDOK);
              })
            .Then([](HWND box) { Click(box, IDOK); })
            .Then([&row](HWND dialog) {
                EXPECT_EQ(::GetDlgItem(dialog, row.focus), ::GetFocus()) << row.refusal;
            });
        expected.push_back(row.refusal);
    }
    script.Then([](HWND dialog) {
        Type(dialog, kBetweenFrom[5], L"10");
        Click(dialog, IDOK);
    });
    EXPECT_EQ(IDOK, Run());
    EXPECT_TRUE(script.Finished());
    std::vector<std::wstring> shown;
    for (const auto& box : script.Boxes()) {
        shown.push_back(box.text);
        EXPECT_EQ(L"Print Setup", box.caption);
    }
    EXPECT_EQ(expected, shown);
    EXPECT_EQ(RangeBetween, settings.printRange);
    EXPECT_EQ(0, CompareLocalTimes(TestStamp(10), settings.rangeFrom));
    EXPECT_EQ(0, CompareLocalTimes(TestStamp(30), settings.rangeTo));
}

namespace {

// Opens the code menu of one box's area with a click at its middle.
void ClickCodeArea(HWND dialog, int area)
{
    RECT rect;
    ::GetWindowRect(::GetDlgItem(dialog, area), &rect);
    POINT click = {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
    ::ScreenToClient(dialog, &click);
    ::PostMessageW(dialog, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(click.x, click.y));
}

} // namespace

TEST_F(PrintSetupTest, TheCodeMenuInsertsAtTheCaretOfTheClickedBox)
{
    script.Then([](HWND dialog) {
        Type(dialog, IDC_HEADER_TEXT, L"abcdef");
        ::SendDlgItemMessageW(dialog, IDC_HEADER_TEXT, EM_SETSEL, 3, 3);
        ClickCodeArea(dialog, IDC_HEADER_CODES);
    });
    // Choose "&T" from the menu with the keyboard: down four times, enter.
    script.Then([](HWND menu) {
        for (int i = 0; i < 4; ++i)
            ::PostMessageW(menu, WM_KEYDOWN, VK_DOWN, 0);
        ::PostMessageW(menu, WM_KEYDOWN, VK_RETURN, 0);
    });
    script.Then([](HWND dialog) {
        EXPECT_EQ(L"abc&Tdef", ItemText(dialog, IDC_HEADER_TEXT));
        EXPECT_EQ(MAKELRESULT(3, 5), ::SendDlgItemMessageW(dialog, IDC_HEADER_TEXT, EM_GETSEL, 0, 0));
        // Without a click on a code area first, a code command does nothing.
        ::SendMessageW(dialog, WM_COMMAND, IDM_CODE_FILE, 0);
        EXPECT_EQ(L"abc&Tdef", ItemText(dialog, IDC_HEADER_TEXT));
        EXPECT_EQ(L"Page &P", ItemText(dialog, IDC_FOOTER_TEXT));
        ::SendDlgItemMessageW(dialog, IDC_FOOTER_TEXT, EM_SETSEL, 0, 0);
        ClickCodeArea(dialog, IDC_FOOTER_CODES);
    });
    // The footer's menu closed unused, then a click away from both areas:
    // the footer stays the target of the next code command.
    script.Then([](HWND menu) { ::PostMessageW(menu, WM_KEYDOWN, VK_ESCAPE, 0); });
    script.Then([](HWND dialog) {
        ::SendMessageW(dialog, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 1));
        ::SendMessageW(dialog, WM_COMMAND, IDM_CODE_FILE, 0);
        EXPECT_EQ(L"&FPage &P", ItemText(dialog, IDC_FOOTER_TEXT));
        Click(dialog, IDCANCEL);
    });
    EXPECT_EQ(IDCANCEL, Run());
    EXPECT_TRUE(script.Finished());
}
