// The print and print setup commands of the main window and of a browser:
// what each reads of its log before and after the dialogs.
#include "PrintTestSupport.h"
#include "window/MessWndFixture.h"

#include <cwchar>

#include "lang/ResourceIds.h"
#include "support/LogFileDecoder.h"
#include "support/ResourceText.h"

using testing_support::Click;
using testing_support::ResourceText;

namespace {

class PrintCommands : public MessWndFixture {
protected:
    // Runs the print command of `target`, confirming its print dialog.
    void Print(HWND target)
    {
        dialogs.Then([](HWND print) { Click(print, IDOK); });
        ::SendMessageW(target, WM_COMMAND, IDM_PRINT, 0);
    }
    std::wstring SavedLog() const { return saveDir / L"saved.qxl"; }
};

// The refusal of a time outside a log whose records run from `first` to `last`.
std::wstring OutsideText(const DecodedRecord& first, const DecodedRecord& last)
{
    wchar_t text[128];
    std::swprintf(text, 128,
                  L"The time must lie within the log, from %04d-%02d-%02d %02d:%02d:%02d to "
                  L"%04d-%02d-%02d %02d:%02d:%02d.",
                  first.year, first.month, first.day, first.hour, first.minute, first.second, last.year,
                  last.month, last.day, last.hour, last.minute, last.second);
    return text;
}

TEST_F(PrintCommands, PrintSetupTakesItsBoundsFromTheFirstAndLastRecord)
{
    Open(3);
    const SYSTEMTIME saved = {2025, 1, 3, 2, 8, 30, 0, 0};
    testing_support::WriteFileBytes(SavedLog(), LogImage(NumberedLines(5, L"saved ", saved)));
    CBrowseWnd* browser = OpenLog(SavedLog());
    ASSERT_TRUE(browser && browser->Handle());
    window->AddMessage(L"pending line");
    for (HWND target : {Hwnd(), browser->Handle()}) {
        dialogs.Clear();
        dialogs.Then([](HWND setup) {
                   ::SendDlgItemMessageW(setup, IDC_RANGE_BETWEEN, BM_CLICK, 0, 0);
                   for (int id : {IDC_BETWEEN_FROM_YEAR, IDC_BETWEEN_FROM_MONTH, IDC_BETWEEN_FROM_DAY,
                                  IDC_BETWEEN_FROM_HOUR, IDC_BETWEEN_FROM_MINUTE, IDC_BETWEEN_FROM_SECOND})
                       testing_support::Type(setup, id, id == IDC_BETWEEN_FROM_YEAR ? L"2000" : L"1");
                   Click(setup, IDOK);
               })
            .Then([](HWND box) { Click(box, IDOK); })
            .Then([](HWND setup) { Click(setup, IDCANCEL); });
        ::SendMessageW(target, WM_COMMAND, IDM_PRINT_SETUP, 0);
        EXPECT_TRUE(dialogs.Finished());
        // The main window writes its pending line first: it is the last record.
        const std::wstring path = target == Hwnd() ? currentLog : SavedLog();
        const DecodedLog log = DecodeLog(testing_support::ReadFileBytes(path));
        ASSERT_EQ(target == Hwnd() ? 4u : 5u, log.records.size());
        ASSERT_EQ(1u, dialogs.Boxes().size());
        EXPECT_EQ(OutsideText(log.records.front(), log.records.back()), dialogs.Boxes()[0].text);
    }
}

TEST_F(PrintCommands, PrintSetupOnALogWithoutRecordsShowsNothing)
{
    Open(0);
    CBrowseWnd* browser = OpenLog(currentLog);
    ASSERT_TRUE(browser && browser->Handle());
    for (HWND target : {Hwnd(), browser->Handle()})
        ::SendMessageW(target, WM_COMMAND, IDM_PRINT_SETUP, 0);
    EXPECT_TRUE(dialogs.Finished()) << "no dialog opened";
    EXPECT_TRUE(dialogs.Boxes().empty());
}

TEST_F(PrintCommands, TheMainWindowPrintsPendingLinesAndRefusesANewerFormatAfterwardsABrowserBefore)
{
    if (!HavePrinter())
        GTEST_SKIP() << "no private print server (see with-printer.sh)";
    Open(3);
    testing_support::WriteFileBytes(SavedLog(), LogImage(NumberedLines(5, L"saved ")));
    CBrowseWnd* browser = OpenLog(SavedLog());
    ASSERT_TRUE(browser && browser->Handle());
    window->AddMessage(L"pending line");
    Print(Hwnd());
    const Printout printout = CollectPrintout(true);
    ASSERT_EQ(1u, printout.words.size());
    EXPECT_TRUE(std::any_of(printout.words[0].begin(), printout.words[0].end(),
                            [](const PrintedWord& word) { return word.text == L"pending"; }));
    EXPECT_TRUE(dialogs.Boxes().empty());

    // The size check and the browser's follow timer would refuse the files
    // as well; these cases are about the print commands alone.
    ::KillTimer(Hwnd(), 1);
    ::KillTimer(browser->Handle(), 0);
    MakeNewer(currentLog);
    MakeNewer(SavedLog());
    Print(Hwnd());
    EXPECT_TRUE(CollectPrintout(true).exists) << "the main window prints first";
    ASSERT_EQ(1u, dialogs.Boxes().size());
    EXPECT_EQ(ResourceText(IDS_NEWER_FORMAT), dialogs.Boxes()[0].text);
    dialogs.Clear();
    Print(browser->Handle());
    EXPECT_FALSE(CollectPrintout(false).exists) << "a browser refuses first";
    ASSERT_EQ(1u, dialogs.Boxes().size());
    EXPECT_EQ(ResourceText(IDS_NEWER_FORMAT), dialogs.Boxes()[0].text);
}

} // namespace
