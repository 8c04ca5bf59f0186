// Print jobs on the private PDF printer, checked on the printed file: pages
// (pdfinfo) and the position of every word (pdftotext -bbox).
#include "PrintTestSupport.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "lang/ResourceIds.h"
#include "print/PrintJob.h"
#include "print/PrintSettings.h"
#include "winlayer/Resources.h"

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

// Records the enable changes a window receives.
std::vector<bool> enableChanges;
WNDPROC staticProc = nullptr;

LRESULT CALLBACK RecordEnable(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_ENABLE)
        enableChanges.push_back(wParam != 0);
    return ::CallWindowProcW(staticProc, window, message, wParam, lParam);
}

class PrintJobTest : public PrintFixture {
protected:
    void SetUp() override
    {
        if (!HavePrinter())
            GTEST_SKIP() << "no private print server (see with-printer.sh)";
        dc = ::CreateDCW(nullptr, L"PDFFILE", nullptr, nullptr);
        ASSERT_NE(nullptr, dc);
        font.lfHeight = -12;
        font.lfWeight = FW_NORMAL;
        font.lfCharSet = DEFAULT_CHARSET;
        winlayer::LoadText(IDS_FONT_FACE, font.lfFaceName, LF_FACESIZE);
        fontDialog.lStructSize = sizeof(fontDialog);
        fontDialog.lpLogFont = &font;
        browser = ::CreateWindowExW(0, L"STATIC", L"browser", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100,
                                    nullptr, nullptr, ::GetModuleHandleW(nullptr), nullptr);
        staticProc = reinterpret_cast<WNDPROC>(
            ::SetWindowLongPtrW(browser, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&RecordEnable)));
        enableChanges.clear();
        windows.mainWindow = owner;
        windows.appWindows = {owner, browser};
    }

    void TearDown() override
    {
        if (browser != nullptr)
            ::DestroyWindow(browser);
        if (dc != nullptr)
            ::DeleteDC(dc);
    }

    // The job's layout with the test's font, as the job measures it.
    PrintLayout Layout()
    {
        ::SetMapMode(dc, MM_LOENGLISH);
        return MeasurePrintLayout(dc, font);
    }

    int Print(const std::wstring& log, int range, const SYSTEMTIME& from, const SYSTEMTIME& to,
              DWORD flags = PD_SELECTION | PD_COLLATE, int copies = 1)
    {
        PRINTDLGW dialog = {};
        dialog.lStructSize = sizeof(dialog);
        dialog.hDC = dc;
        dialog.Flags = flags;
        dialog.nCopies = static_cast<WORD>(copies);
        return Print(log, range, from, to, dialog);
    }

    int Print(const std::wstring& log, int range, const SYSTEMTIME& from, const SYSTEMTIME& to,
              const PRINTDLGW& dialog)
    {
        HANDLE file = ::CreateFileW(log.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        EXPECT_NE(INVALID_HANDLE_VALUE, file);
        const int result = PrintLog(dialog, font, fontDialog, range, from, to, file, log.c_str(), windows);
        ::CloseHandle(file);
        return result;
    }

    // The record lines ("record N") of a printed page, in order.
    static std::vector<int> RecordNumbers(const std::vector<PrintedWord>& page)
    {
        std::vector<int> numbers;
        for (const PrintedLine& line : Lines(page))
            if (line.words.size() == 4 && line.words[2].text == L"record")
                numbers.push_back(std::stoi(line.words[3].text));
        return numbers;
    }

    static std::vector<int> Range(int from, int to)
    {
        std::vector<int> numbers;
        for (int i = from; i <= to; ++i)
            numbers.push_back(i);
        return numbers;
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
    // (3000 - 600) printer pixels of lines at 300 dpi, less header and label.
    ASSERT_EQ(2400 / (layout.lineHeight * 3) - 2, layout.linesPerPage);
    const int lpp = layout.linesPerPage;
    const std::wstring log = WriteLog(L"whole.qxl", lpp + 5);
    ASSERT_EQ(1, Print(log, RangeAll, TestStamp(0), TestStamp(0)));
    EXPECT_TRUE(script.Boxes().empty());
    // Disabled for the job, enabled after it.
    EXPECT_EQ((std::vector<bool>{false, true}), enableChanges);
    EXPECT_TRUE(::IsWindowEnabled(owner));

    const Printout printout = CollectPrintout(true);
    ASSERT_TRUE(printout.exists);
    EXPECT_EQ(2, printout.pages);
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
        const PrintedLine& label = lines.back();
        EXPECT_EQ(L"Page " + std::to_wstring(p + 1), label.Text());
        EXPECT_NEAR(right, label.words.back().xMax, 2.0);
        // The label's band is the last line above the bottom margin.
        const double bottom = offsetY + 2700 * 72.0 / 300;
        EXPECT_NEAR(bottom - line, label.top, line * 0.5);
    }
}

TEST_F(PrintJobTest, TimeRangesPrintTheirRecordsOnly)
{
    const std::wstring log = WriteLog(L"range.qxl", 60);
    const struct {
        int range;
        SYSTEMTIME from, to;
        DWORD flags;
        std::vector<int> printed;
    } cases[] = {
        {RangeBetween, TestStamp(10), TestStamp(19, 500), PD_SELECTION, Range(10, 19)},
        // From a time between two records to the end of the log.
        {RangeFrom, TestStamp(54, 1), TestStamp(0), PD_SELECTION, Range(55, 59)},
        // "All" chosen in the print dialog: the whole log, whatever the range.
        {RangeUpTo, TestStamp(3), TestStamp(0), 0, Range(0, Layout().linesPerPage - 1)},
    };
    for (const auto& c : cases) {
        ASSERT_EQ(1, Print(log, c.range, c.from, c.to, c.flags | PD_COLLATE));
        const Printout printout = CollectPrintout(true);
        ASSERT_FALSE(printout.words.empty());
        EXPECT_EQ(c.printed, RecordNumbers(printout.words[0])) << c.range;
    }
    EXPECT_TRUE(script.Boxes().empty());
}

TEST_F(PrintJobTest, UncollatedCopiesFromThePrintDialogPrintEachPageTwice)
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
    ASSERT_NE(nullptr, dialog.hDC);
    EXPECT_EQ(0u, dialog.Flags & PD_COLLATE);
    EXPECT_EQ(2, dialog.nCopies);
    ::DeleteDC(dc);
    dc = dialog.hDC;
    ASSERT_EQ(1, Print(log, RangeAll, TestStamp(0), TestStamp(0), dialog));
    const Printout printout = CollectPrintout(true);
    ASSERT_EQ(4, printout.pages);
    std::vector<std::wstring> labels;
    for (const auto& page : printout.words)
        labels.push_back(Lines(page).back().Text());
    EXPECT_EQ((std::vector<std::wstring>{L"Page 1", L"Page 1", L"Page 2", L"Page 2"}), labels);
    EXPECT_EQ(RecordNumbers(printout.words[0]), RecordNumbers(printout.words[1]));
    EXPECT_EQ(Range(lpp, lpp + 2), RecordNumbers(printout.words[3]));
    ::GlobalFree(dialog.hDevMode);
    ::GlobalFree(dialog.hDevNames);
}

TEST_F(PrintJobTest, RefusalsAndDeliberateAbortsPrintNothing)
{
    // A font whose lines fit 45 to a page.
    for (font.lfHeight = -8; font.lfHeight > -30 && Layout().linesPerPage != 45; --font.lfHeight) {
    }
    ASSERT_EQ(45, Layout().linesPerPage);
    const std::wstring nothing = L"There are no records in the selected range.";
    const std::wstring unread = L"The records for the next page could not be read from the log file.";
    struct Case {
        size_t records;
        int range;
        SYSTEMTIME from;
        int copies;
        std::wstring box;
    };
    const Case cases[] = {
        {0, RangeAll, TestStamp(0), 1, nothing},
        {10, RangeUpTo, TestStamp(-3600), 1, nothing},  // before every record
        // After every record: one page of no records cannot be drawn.
        {10, RangeFrom, TestStamp(3600), 1, L"Page 1 could not be printed."},
        // Exactly one page: the read of a second one fails.
        {45, RangeAll, TestStamp(0), 1, unread},
        // Collated copies: the second copy reads past the range.
        {10, RangeAll, TestStamp(0), 2, unread},
    };
    for (const Case& c : cases) {
        const std::wstring log = WriteLog(L"log" + std::to_wstring(c.records) + L".qxl", c.records);
        // Each job on a fresh device context, as each print dialog gives one.
        ::DeleteDC(dc);
        dc = ::CreateDCW(nullptr, L"PDFFILE", nullptr, nullptr);
        script.Clear();
        EXPECT_EQ(0, Print(log, c.range, c.from, c.from, PD_SELECTION | PD_COLLATE, c.copies));
        ASSERT_EQ(1u, script.Boxes().size()) << c.records << " " << c.range;
        EXPECT_EQ(c.box, script.Boxes().back().text) << c.records << " " << c.range;
        EXPECT_EQ(L"Print", script.Boxes().back().caption);
        EXPECT_TRUE(::IsWindowEnabled(browser));
    }
    EXPECT_FALSE(CollectPrintout(false).exists);
}
