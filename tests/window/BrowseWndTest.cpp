#include "MessWndFixture.h"

#include "lang/ResourceIds.h"
#include "support/LogFileDecoder.h"
#include "support/ResourceText.h"

using testing_support::PageLine;
using testing_support::ResourceText;
using testing_support::SendKey;

namespace {

class BrowseWndTest : public MessWndFixture {
protected:
    void SetUp() override { Open(500); }

    std::wstring WriteFile(const std::wstring& name, const std::vector<unsigned char>& bytes)
    {
        testing_support::WriteFileBytes(otherDir / name, bytes);
        return otherDir / name;
    }

    testing_support::TempDir otherDir;
};

TEST_F(BrowseWndTest, EachBrowserKeepsItsOwnFileAndScrollStateAndTheEndClosesThemAll)
{
    dialogs.Then([](HWND dialog) { testing_support::Click(dialog, IDCANCEL); });
    ::SendMessageW(Hwnd(), WM_COMMAND, IDM_OPEN_LOG, 0);
    EXPECT_TRUE(window->Browsers().empty()) << "cancelled";

    const std::wstring other = WriteFile(L"2601010000.qxl", LogImage(NumberedLines(40, L"other ")));
    const int mainTop = TopLine();
    window->AddMessage(L"pending");
    CBrowseWnd* first = OpenLog(currentLog);
    CBrowseWnd* second = OpenLog(currentLog);
    CBrowseWnd* third = OpenLog(other);
    ASSERT_TRUE(first && second && third && third->Handle());
    EXPECT_EQ(501, first->Lines().LineCount()) << "the pending line is written first";
    EXPECT_EQ(L"other 0", PageLine(third->View(), 0));
    wchar_t caption[128];
    ::GetWindowTextW(first->Handle(), caption, 128);
    EXPECT_EQ(ResourceText(IDS_BROWSER_TITLE), caption);
    EXPECT_EQ(nullptr, ::GetWindow(first->Handle(), GW_OWNER)) << "independent of the main window";

    SendKey(first->Handle(), VK_NEXT);
    const int page = first->View().LinesPerPage();
    EXPECT_EQ(L"record " + std::to_wstring(page), PageLine(first->View(), 0));
    EXPECT_EQ(0, second->View().TopLine());
    EXPECT_EQ(mainTop, TopLine());
    SendKey(third->Handle(), VK_END, true);
    EXPECT_EQ(40 - third->View().LinesPerPage(), third->View().TopLine());

    ::SendMessageW(second->Handle(), WM_CLOSE, 0, 0);
    EXPECT_EQ(nullptr, second->Handle());
    EXPECT_EQ(3u, window->Browsers().size()) << "closing keeps the object";
    const HWND firstWindow = first->Handle();
    TearDown();
    EXPECT_FALSE(::IsWindow(firstWindow));
}

TEST_F(BrowseWndTest, FollowsTheCurrentLogWhileTheMainWindowWrites)
{
    CBrowseWnd* browser = OpenLog(currentLog);
    ASSERT_TRUE(browser && browser->Handle());
    SendKey(browser->Handle(), VK_END, true);
    const int top = browser->View().TopLine();
    const std::wstring lastShown = PageLine(browser->View(), browser->View().PageCount() - 1);
    for (int i = 0; i < 30; ++i)
        window->AddMessage((L"live " + std::to_wstring(i)).c_str());
    window->Writer().FlushPending(window->Ring().PendingCount());
    EXPECT_TRUE(testing_support::WaitUntil([&] { return browser->Lines().LineCount() == 530; }, 1000))
        << "counted by the 100 ms timer";
    EXPECT_EQ(529, testing_support::ScrollBarOf(browser->Handle(), SB_VERT).nMax);
    EXPECT_EQ(top, browser->View().TopLine());
    EXPECT_EQ(lastShown, PageLine(browser->View(), browser->View().PageCount() - 1))
        << "the page waits for a scroll";
    SendKey(browser->Handle(), VK_END, true);
    EXPECT_EQ(L"live 29", PageLine(browser->View(), browser->View().PageCount() - 1));
    EXPECT_TRUE(dialogs.Boxes().empty());
}

TEST_F(BrowseWndTest, BadFilesAreRefusedAndTornRecordsNotCounted)
{
    std::vector<unsigned char> shortHeader = MakeLogImage(L"7.000000", 3);
    shortHeader.resize(31);
    const struct {
        std::vector<unsigned char> bytes;
        size_t refusals;  // boxes refusing a newer format
        int lines;        // -1: no window
    } cases[] = {
        {MakeLogImage(L"8.000000", 3), 1, -1},
        {shortHeader, 0, -1},
        {MakeLogImage(L"7.000000", 5, 100), 0, 5},
    };
    int file = 0;
    for (const auto& c : cases) {
        dialogs.Clear();
        // Each its own file: a short header keeps its handle open.
        CBrowseWnd* browser = OpenLog(WriteFile(std::to_wstring(++file) + L".qxl", c.bytes));
        ASSERT_NE(nullptr, browser) << "kept although its window failed";
        EXPECT_EQ(c.lines >= 0, browser->Handle() != nullptr);
        ASSERT_EQ(c.refusals, dialogs.Boxes().size());
        for (const auto& box : dialogs.Boxes())
            EXPECT_EQ(ResourceText(IDS_NEWER_FORMAT), box.text);
        if (c.lines >= 0) {
            EXPECT_EQ(c.lines, browser->Lines().LineCount());
        }
    }
}

TEST_F(BrowseWndTest, TextLogsAreShownConverted)
{
    const std::string line = "2026-03-03 14:05:07 Pump P-101 started\n";
    CBrowseWnd* browser = OpenLog(WriteFile(L"day.LOG", std::vector<unsigned char>(line.begin(), line.end())));
    ASSERT_TRUE(browser && browser->Handle());
    EXPECT_EQ(otherDir / L"day00.qxl", browser->Lines().Path());
    EXPECT_EQ(L"Pump P-101 started", PageLine(browser->View(), 0));
}

// Export from a window's File menu, answering the save dialog with `name`;
// the exported text.
std::wstring ExportThroughMenu(testing_support::DialogScript& dialogs, HWND window, const std::wstring& name)
{
    dialogs.Then(testing_support::ChooseFile(name));
    ::SendMessageW(window, WM_COMMAND, IDM_EXPORT_TEXT, 0);
    const std::vector<unsigned char> bytes = testing_support::ReadFileBytes(name + L".txt");
    return std::wstring(reinterpret_cast<const wchar_t*>(bytes.data()), bytes.size() / 2);
}

TEST_F(BrowseWndTest, TheMainWindowExportsItsPendingLinesABrowserItsFile)
{
    window->AddMessage(L"pending line");
    const std::wstring fromMain = ExportThroughMenu(dialogs, Hwnd(), otherDir / L"main");
    EXPECT_NE(std::wstring::npos, fromMain.find(L"record 499\r\n"));
    EXPECT_NE(std::wstring::npos, fromMain.find(L"pending line\r\n")) << "flushed first";

    CBrowseWnd* browser = OpenLog(WriteFile(L"saved.qxl", LogImage(NumberedLines(3, L"saved "))));
    ASSERT_TRUE(browser && browser->Handle());
    const std::wstring fromBrowser = ExportThroughMenu(dialogs, browser->Handle(), otherDir / L"saved");
    EXPECT_NE(std::wstring::npos, fromBrowser.find(L"saved 2\r\n"));
    EXPECT_EQ(std::wstring::npos, fromBrowser.find(L"record"));
}

} // namespace
