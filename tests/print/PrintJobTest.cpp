// Print jobs on the private PDF printer, checked on the printed file: its
// pages and the position of every word (pdftotext -bbox).
#include "PrintTestSupport.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "lang/ResourceIds.h"
#include "print/PrintJob.h"
#include "print/PrintSettings.h"
#include "support/ViewInput.h"

namespace {

// A line of a printed page: its words left to right.
struct PrintedLine {
    double top;
    std::vector<PrintedWord> words;
    std::wstring Text() const
    {
        std::wstring text;
        for (const PrintedWord& word : words)
            text += (text.empty() ? L"" : L" ") + word.text;
        return text;
    }
};

// The words of a page grouped into lines, top to bottom, each left to right
// (the extraction does not keep that order).
std::vector<PrintedLine> Lines(std::vector<PrintedWord> words)
{
    std::sort(words.begin(), words.end(), [](const PrintedWord& a, const PrintedWord& b) {
        return std::fabs(a.yMin - b.yMin) > 1.0 ? a.yMin < b.yMin : a.xMin < b.xMin;
    });
    std::vector<PrintedLine> lines;
    for (const PrintedWord& word : words) {
        if (lines.empty() || std::fabs(lines.back().top - word.yMin) > 1.0)
            lines.push_back({word.yMin, {}});
        lines.back().words.push_back(word);
    }
    return lines;
}

// The record lines ("record N") of a printed page, in order.
std::vector<int> RecordNumbers(const std::vector<PrintedWord>& page)
{
    std::vector<int> numbers;
    for (const PrintedLine& line : Lines(page))
        if (line.words.size() == 4 && line.words[2].text == L"record")
            numbers.push_back(std::stoi(line.words[3].text));
    return numbers;
}

std::vector<int> Range(int from, int to)
{
    std::vector<int> numbers(to - from + 1);
    std::iota(numbers.begin(), numbers.end(), from);
    return numbers;
}

// What a job does as it goes, seen in the messages it sends: the progress
// window's page and copy lines, each change once, and the enable changes
// of the other application window.
std::vector<std::wstring> pageLine, copyLine;
std::vector<bool> enableChanges;
HWND watched = nullptr;

LRESULT CALLBACK RecordJob(int code, WPARAM wParam, LPARAM lParam)
{
    const auto* call = reinterpret_cast<const CWPSTRUCT*>(lParam);
    if (code == HC_ACTION && call->message == WM_ENABLE && call->hwnd == watched)
        enableChanges.push_back(call->wParam != 0);
    const int id = code == HC_ACTION && call->message == WM_SETTEXT ? ::GetDlgCtrlID(call->hwnd) : 0;
    if (id == IDC_PRINT_PAGE_LINE || id == IDC_PRINT_COPY_LINE) {
        auto& shown = id == IDC_PRINT_PAGE_LINE ? pageLine : copyLine;
        const std::wstring text = reinterpret_cast<const wchar_t*>(call->lParam);
        if (shown.empty() || shown.back() != text)
            shown.push_back(text);
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

class PrintJobTest : public PrintFixture {
protected:
    void SetUp() override
    {
        if (!HavePrinter())
            GTEST_SKIP() << "no private print server (see with-printer.sh)";
        dc = ::CreateDCW(nullptr, L"PDFFILE", nullptr, nullptr);
        ASSERT_NE(nullptr, dc);
        font = testing_support::ViewLogFont();
        fontDialog.lStructSize = sizeof(fontDialog);
        fontDialog.lpLogFont = &font;
        watched = browser = ::CreateWindowExW(0, L"STATIC", L"browser", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100,
                                              nullptr, nullptr, ::GetModuleHandleW(nullptr), nullptr);
        windows.mainWindow = owner;
        windows.appWindows = {owner, browser};
    }

    // Either may be null when the case was skipped.
    void TearDown() override
    {
        ::DestroyWindow(browser);
        ::DeleteDC(dc);
    }

    // The job's layout with the test's font, as the job measures it.
    PrintLayout Layout()
    {
        ::SetMapMode(dc, MM_LOENGLISH);
        return MeasurePrintLayout(dc, font);
    }

    // A job on a fresh device context, as each print dialog gives one.
    int Print(const std::wstring& log, int range, const SYSTEMTIME& from, const SYSTEMTIME& to,
              DWORD flags = PD_SELECTION | PD_COLLATE, int copies = 1)
    {
        PRINTDLGW dialog = {};
        dialog.lStructSize = sizeof(dialog);
        ::DeleteDC(dc);
        dialog.hDC = dc = ::CreateDCW(nullptr, L"PDFFILE", nullptr, nullptr);
        dialog.Flags = flags;
        dialog.nCopies = static_cast<WORD>(copies);
        HANDLE file = ::CreateFileW(log.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        EXPECT_NE(INVALID_HANDLE_VALUE, file);
        pageLine.clear();
        copyLine.clear();
        enableChanges.clear();
        HHOOK hook = ::SetWindowsHookExW(WH_CALLWNDPROC, &RecordJob, nullptr, ::GetCurrentThreadId());
        const int result = PrintLog(dialog, font, fontDialog, range, from, to, file, log.c_str(), windows);
        ::UnhookWindowsHookEx(hook);
        ::CloseHandle(file);
        return result;
    }

    HDC dc = nullptr;
    HWND browser = nullptr;
    LOGFONTW font = {};
    CHOOSEFONTW fontDialog = {};
    PrintJobWindows windows;
};

} // namespace

TEST_F(PrintJobTest, WholeLogHeaderRecordLinesAndPageLabelsWhereTheLayoutPutsThem)
{
    const PrintLayout layout = Layout();
    const int lpp = layout.linesPerPage;
    const std::wstring log = WriteLog(L"whole.qxl", lpp + 5);
    ASSERT_EQ(1, Print(log, RangeAll, TestStamp(0), TestStamp(0)));
    EXPECT_TRUE(script.Boxes().empty());
    // Disabled for the job, enabled after it.
    EXPECT_EQ((std::vector<bool>{false, true}), enableChanges);
    EXPECT_TRUE(::IsWindowEnabled(owner));

    const Printout printout = CollectPrintout(true);
    ASSERT_EQ(2u, printout.words.size());
    EXPECT_EQ(Range(0, lpp - 1), RecordNumbers(printout.words[0]));
    EXPECT_EQ(Range(lpp, lpp + 4), RecordNumbers(printout.words[1]));

    // Positions in points (1/72 inch) from the page's top left; the printer's
    // printable area starts at its physical offsets.
    const double offsetX = ::GetDeviceCaps(dc, PHYSICALOFFSETX) * 72.0 / 300;
    const double offsetY = ::GetDeviceCaps(dc, PHYSICALOFFSETY) * 72.0 / 300;
    const double left = offsetX + 150 * 72.0 / 300;
    const double right = offsetX + (::GetDeviceCaps(dc, HORZRES) - 150) * 72.0 / 300;
    const double top = offsetY + 300 * 72.0 / 300;
    const double bottom = offsetY + 2700 * 72.0 / 300;
    const double line = layout.lineHeight * 0.72;
    for (int p = 0; p < 2; ++p) {
        const std::vector<PrintedLine> lines = Lines(printout.words[p]);
        ASSERT_GE(lines.size(), 3u);
        const PrintedLine& header = lines.front();
        EXPECT_EQ(log, header.words[0].text);
        EXPECT_EQ(L"Printed", header.words[1].text);
        EXPECT_NEAR(left, header.words[0].xMin, 2.0);
        EXPECT_NEAR(top, header.top, line);
        // Record line i lies i + 1 lines below the header, at the left margin.
        for (size_t i = 1; i + 1 < lines.size(); ++i) {
            EXPECT_NEAR(header.top + i * line, lines[i].top, 0.5) << p << " " << i;
            EXPECT_NEAR(left, lines[i].words[0].xMin, 2.0);
        }
        // The label: right-aligned in the last line above the bottom margin.
        const PrintedLine& label = lines.back();
        EXPECT_EQ(L"Page " + std::to_wstring(p + 1), label.Text());
        EXPECT_NEAR(right, label.words.back().xMax, 2.0);
        EXPECT_NEAR(bottom - line, label.top, line * 0.5);
    }
}

TEST_F(PrintJobTest, TheSelectionPrintsTheRangeAndAllTheWholeLog)
{
    const std::wstring log = WriteLog(L"range.qxl", 60);
    ASSERT_EQ(1, Print(log, RangeBetween, TestStamp(10), TestStamp(19, 500), PD_SELECTION));
    EXPECT_EQ(Range(10, 19), RecordNumbers(CollectPrintout(true).words.at(0)));
    ASSERT_EQ(1, Print(log, RangeBetween, TestStamp(10), TestStamp(19, 500), 0));
    EXPECT_EQ(Range(0, Layout().linesPerPage - 1), RecordNumbers(CollectPrintout(true).words.at(0)));
}

TEST_F(PrintJobTest, UncollatedCopiesFromThePrintDialogPrintEachPageTwiceAndAreCounted)
{
    const int lpp = Layout().linesPerPage;
    const std::wstring log = WriteLog(L"copies.qxl", lpp + 3);
    PRINTDLGW dialog;
    script.Then([](HWND print) {
        ::SetDlgItemInt(print, 0x482, 2, FALSE);
        ::CheckDlgButton(print, 0x411, BST_UNCHECKED);
        testing_support::Click(print, IDOK);
    });
    ASSERT_TRUE(RunPrintDialog(owner, nullptr, nullptr, kMainPrintDialogFlags, dialog));
    EXPECT_EQ(0u, dialog.Flags & PD_COLLATE);
    ASSERT_EQ(1, Print(log, RangeAll, TestStamp(0), TestStamp(0), dialog.Flags, dialog.nCopies));
    ::DeleteDC(dialog.hDC);
    ::GlobalFree(dialog.hDevMode);
    ::GlobalFree(dialog.hDevNames);
    EXPECT_EQ((std::vector<std::wstring>{L"Printing page 1 of 2", L"Printing page 2 of 2"}), pageLine);
    EXPECT_EQ((std::vector<std::wstring>{L"Copy 1 of 2", L"Copy 2 of 2", L"Copy 1 of 2", L"Copy 2 of 2"}),
              copyLine);
    const Printout printout = CollectPrintout(true);
    ASSERT_EQ(4u, printout.words.size());
    std::vector<std::wstring> labels;
    for (const auto& page : printout.words)
        labels.push_back(Lines(page).back().Text());
    EXPECT_EQ((std::vector<std::wstring>{L"Page 1", L"Page 1", L"Page 2", L"Page 2"}), labels);
    EXPECT_EQ(RecordNumbers(printout.words[0]), RecordNumbers(printout.words[1]));
    EXPECT_EQ(Range(lpp, lpp + 2), RecordNumbers(printout.words[3]));
}

TEST_F(PrintJobTest, RefusalsAndDeliberateAbortsPrintNothing)
{
    const int lpp = Layout().linesPerPage;
    const std::wstring unread = L"The records for the next page could not be read from the log file.";
    const struct {
        int records;
        int range;
        SYSTEMTIME from;
        int copies;
        std::wstring box;
    } cases[] = {
        {0, RangeAll, TestStamp(0), 1, L"There are no records in the selected range."},
        // After every record: one page of no records cannot be drawn.
        {10, RangeFrom, TestStamp(3600), 1, L"Page 1 could not be printed."},
        // Exactly one page: the read of a second one fails.
        {lpp, RangeAll, TestStamp(0), 1, unread},
        // Collated copies: the second copy reads past the range.
        {10, RangeAll, TestStamp(0), 2, unread},
    };
    for (const auto& c : cases) {
        const std::wstring log = WriteLog(L"log" + std::to_wstring(c.records) + L".qxl", c.records);
        script.Clear();
        EXPECT_EQ(0, Print(log, c.range, c.from, c.from, PD_SELECTION | PD_COLLATE, c.copies));
        ASSERT_EQ(1u, script.Boxes().size()) << c.records << " " << c.range;
        EXPECT_EQ(c.box, script.Boxes().back().text) << c.records << " " << c.range;
        EXPECT_EQ(L"Print", script.Boxes().back().caption);
        EXPECT_TRUE(::IsWindowEnabled(browser));
    }
    EXPECT_EQ((std::vector<std::wstring>{L"Copy 1 of 2", L"Copy 2 of 2"}), copyLine) << "collated";
    EXPECT_FALSE(CollectPrintout(false).exists);
}
