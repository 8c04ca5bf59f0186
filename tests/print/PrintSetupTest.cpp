// The print setup dialog on its real template, driven from a helper thread
// while the test's thread runs it modally.
#include "PrintTestSupport.h"

#include <functional>

#include "lang/ResourceIds.h"
#include "print/LocalTimeOrder.h"
#include "print/PrintSetupDlg.h"
#include "print/RecordTimes.h"
#include "support/LogFileDecoder.h"
#include "support/TestFiles.h"
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
constexpr int kFrom[6] = {253, 254, 255, 256, 257, 258};

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

TEST_F(PrintSetupTest, OpensOnTheKeptRangeAndRadioClicksEnableTheirFields)
{
    settings.printRange = RangeBetween;
    const INT_PTR result = Run([&](HWND dialog) {
        EXPECT_EQ(L"&F", ItemText(dialog, IDC_HEADER_TEXT));
        EXPECT_EQ(L"Page &P", ItemText(dialog, IDC_FOOTER_TEXT));
        EXPECT_EQ(BST_CHECKED, ::IsDlgButtonChecked(dialog, IDC_RANGE_BETWEEN));
        const std::wstring from[6] = {L"2026", L"3", L"3", L"10", L"0", L"5"};
        const std::wstring to[6] = {L"2026", L"3", L"3", L"10", L"0", L"50"};
        for (int i = 0; i < 6; ++i) {
            EXPECT_EQ(from[i], ItemText(dialog, kBetweenFrom[i]));
            EXPECT_EQ(to[i], ItemText(dialog, kBetweenTo[i]));
            EXPECT_TRUE(::IsWindowEnabled(::GetDlgItem(dialog, kBetweenTo[i])));
            EXPECT_FALSE(::IsWindowEnabled(::GetDlgItem(dialog, kUpTo[i])));
            EXPECT_EQ(L"", ItemText(dialog, kFrom[i]));
        }
        Click(dialog, IDC_RANGE_FROM);
        EXPECT_TRUE(::IsWindowEnabled(::GetDlgItem(dialog, kFrom[0])));
        EXPECT_FALSE(::IsWindowEnabled(::GetDlgItem(dialog, kBetweenFrom[0])));
        EXPECT_FALSE(::IsWindowEnabled(::GetDlgItem(dialog, kBetweenTo[5])));
        Click(dialog, IDC_RANGE_ALL);
        EXPECT_FALSE(::IsWindowEnabled(::GetDlgItem(dialog, kFrom[0])));
        PostClick(dialog, IDCANCEL);
    });
    EXPECT_EQ(IDCANCEL, result);
    EXPECT_EQ(RangeBetween, settings.printRange);  // Cancel keeps everything
}

TEST_F(PrintSetupTest, OkRefusesFieldByFieldThenTakesTheRange)
{
    const INT_PTR result = Run([&](HWND dialog) {
        // Fields of a range switched to stay empty: the year is reported.
        Click(dialog, IDC_RANGE_BETWEEN);
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

TEST_F(PrintSetupTest, UpToAndFromTakeOneTimeAndBothTextsComeFromTheHeaderBox)
{
    struct Case {
        int radio;
        const int (&group)[6];
        int range;
    };
    const Case cases[] = {{IDC_RANGE_UPTO, kUpTo, RangeUpTo}, {IDC_RANGE_FROM, kFrom, RangeFrom}};
    for (const Case& c : cases) {
        CPrintSetupDlg dialog;
        dialog.SetSettings(settings);
        dialog.SetRecordTimes(TestStamp(0, 500), TestStamp(60));
        INT_PTR result = 0;
        {
            DialogScript script([&] {
                HWND window = WaitForDialog(uiThread);
                ASSERT_NE(nullptr, window);
                Click(window, c.radio);
                // Month and day left empty read 0: their range messages, not "empty".
                SetGroup(window, c.group, {L"2026", L"", L"", L"10", L"0", L"20"});
                ExpectRefusal(window, L"The month must be between 1 and 12.", c.group[1]);
                SetText(window, c.group[1], L"3");
                ExpectRefusal(window, L"The day must be between 1 and 31.", c.group[2]);
                SetText(window, c.group[2], L"3");
                SetText(window, IDC_HEADER_TEXT, L"my header");
                SetText(window, IDC_FOOTER_TEXT, L"my footer");
                ::SendMessageW(window, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
            });
            result = dialog.DoModal(owner);
        }
        EXPECT_EQ(IDOK, result);
        const PrintSettings chosen = dialog.Settings();
        EXPECT_EQ(c.range, chosen.printRange);
        EXPECT_EQ(0, CompareLocalTimes(TestStamp(20), chosen.rangeFrom));
        EXPECT_STREQ(L"my header", dialog.HeaderText());
        EXPECT_STREQ(L"my header", dialog.FooterText());
    }
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

TEST_F(PrintSetupTest, PrinterAndFontChoicesComeBackAfterOk)
{
    const INT_PTR result = Run([&](HWND dialog) {
        PostClick(dialog, IDC_PRINTER_SETUP);
        HWND printer = WaitForDialog(uiThread, dialog);
        ASSERT_NE(nullptr, printer);
        PostClick(printer, IDOK);
        while (::IsWindow(printer))
            ::Sleep(20);
        PostClick(dialog, IDC_PRINT_FONT);
        HWND font = WaitForDialog(uiThread, dialog);
        ASSERT_NE(nullptr, font);
        ::SendMessageW(::GetDlgItem(font, 0x472), CB_SELECTSTRING, static_cast<WPARAM>(-1),
                       reinterpret_cast<LPARAM>(L"20"));
        ::SendMessageW(font, WM_COMMAND, MAKEWPARAM(0x472, CBN_SELCHANGE),
                       reinterpret_cast<LPARAM>(::GetDlgItem(font, 0x472)));
        PostClick(font, IDOK);
        while (::IsWindow(font))
            ::Sleep(20);
        PostClick(dialog, IDOK);
    });
    EXPECT_EQ(IDOK, result);
    EXPECT_NE(nullptr, settings.printerDevMode);
    EXPECT_NE(nullptr, settings.printerDevNames);
    EXPECT_NE(-12, settings.logFontCopy.lfHeight);
    EXPECT_EQ(&settings.logFontCopy, settings.fontDialogStateCopy.lpLogFont);
    ::GlobalFree(settings.printerDevMode);
    ::GlobalFree(settings.printerDevNames);
}

TEST_F(PrintSetupTest, ItsOpenersReadTheFirstAndLastRecordTimesOrSayWhyNot)
{
    struct Case {
        std::wstring version;
        size_t records;
        RecordTimesRead expected;
    };
    const Case cases[] = {
        {L"7.000000", 3, RecordTimesRead::Complete},
        {L"7.000000", 0, RecordTimesRead::NoRecord},
        {L"8.000000", 3, RecordTimesRead::NewerFormat},
        {L"6.5", 1, RecordTimesRead::Complete},
    };
    for (const Case& c : cases) {
        std::vector<unsigned char> image = MakeLogImage(c.version, c.records);
        for (size_t i = 0; i < c.records; ++i)
            PutLogRecord(image, i, L"r", TestStamp(static_cast<int>(i) * 7, 250));
        const std::wstring path = dir + L"\\times.qxl";
        testing_support::WriteFileBytes(path, image);
        HANDLE file = ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
        ASSERT_NE(INVALID_HANDLE_VALUE, file);
        SYSTEMTIME first = {};
        SYSTEMTIME last = {};
        EXPECT_EQ(c.expected, ReadRecordTimes(file, &first, &last)) << c.version << " " << c.records;
        if (c.expected == RecordTimesRead::Complete) {
            EXPECT_EQ(0, CompareLocalTimes(TestStamp(0, 250), first));
            EXPECT_EQ(0, CompareLocalTimes(TestStamp(static_cast<int>(c.records - 1) * 7, 250), last));
        }
        ::CloseHandle(file);
    }
    const std::wstring stub = dir + L"\\stub.qxl";
    testing_support::WriteFileBytes(stub, std::vector<unsigned char>(20, 0));
    HANDLE file = ::CreateFileW(stub.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    SYSTEMTIME first;
    SYSTEMTIME last;
    EXPECT_EQ(RecordTimesRead::HeaderTooShort, ReadRecordTimes(file, &first, &last));
    ::CloseHandle(file);
}
