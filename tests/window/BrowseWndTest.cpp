#include "MessWndFixture.h"

#include <random>

#include "lang/ResourceIds.h"
#include "support/ResourceText.h"
#include "support/LogFileDecoder.h"
#include "support/ViewInput.h"
#include "winlayer/Resources.h"

namespace {

using testing_support::ResourceText;

using testing_support::ChooseFile;
using testing_support::PageLine;
using testing_support::SendKey;

// Runs the thread's messages, timers included, for `ms` milliseconds.
void Pump(DWORD ms)
{
    const DWORD end = ::GetTickCount() + ms;
    while (static_cast<LONG>(end - ::GetTickCount()) > 0) {
        MSG message;
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            ::DispatchMessageW(&message);
        ::Sleep(5);
    }
}

class BrowseWndTest : public MessWndFixture {
protected:
    void SetUp() override
    {
        current = WriteLog(500);
        WriteSettings("");
        CreateWindowWithRoom(20);
    }

    // Opens a browser through the menu command, answering the file dialog.
    CBrowseWnd* OpenLog(const std::wstring& path)
    {
        const size_t before = window->Browsers().size();
        dialogs.Then(ChooseFile(path));
        ::SendMessageW(Hwnd(), WM_COMMAND, IDM_OPEN_LOG, 0);
        EXPECT_TRUE(dialogs.Finished());
        return window->Browsers().size() > before ? window->Browsers().back().get() : nullptr;
    }

    std::wstring WriteFile(const std::wstring& name, const std::vector<unsigned char>& bytes)
    {
        const std::wstring path = otherDir / name;
        testing_support::WriteFileBytes(path, bytes);
        return path;
    }

    std::wstring current;
    testing_support::TempDir otherDir;
};

TEST_F(BrowseWndTest, EachBrowserKeepsItsOwnFileAndScrollState)
{
    std::vector<unsigned char> image = MakeLogImage(L"7.000000", 40);
    for (size_t i = 0; i < 40; ++i)
        PutLogRecord(image, i, L"other " + std::to_wstring(i), SYSTEMTIME{2026, 1, 4, 1, 0, 0, 0, 0});
    const std::wstring other = WriteFile(L"2601010000.qxl", image);

    const int mainTop = TopLine();
    CBrowseWnd* first = OpenLog(current);
    CBrowseWnd* second = OpenLog(current);
    CBrowseWnd* third = OpenLog(other);
    ASSERT_TRUE(first && second && third);
    ASSERT_NE(nullptr, third->Handle());
    EXPECT_EQ(500, first->Lines().LineCount());
    EXPECT_EQ(40, third->Lines().LineCount());
    EXPECT_EQ(L"other 0", PageLine(third->View(), 0));

    wchar_t caption[128];
    ::GetWindowTextW(first->Handle(), caption, 128);
    EXPECT_EQ(ResourceText(IDS_BROWSER_TITLE), caption);
    EXPECT_EQ(nullptr, ::GetWindow(first->Handle(), GW_OWNER)) << "independent of the main window";
    EXPECT_NE(static_cast<UINT>(-1),
              ::GetMenuState(::GetMenu(first->Handle()), IDM_EXPORT_TEXT, MF_BYCOMMAND));

    SendKey(first->Handle(), VK_NEXT);
    const int page = first->View().LinesPerPage();
    EXPECT_EQ(page, first->View().TopLine());
    EXPECT_EQ(L"record " + std::to_wstring(page), PageLine(first->View(), 0));
    EXPECT_EQ(0, second->View().TopLine());
    EXPECT_EQ(mainTop, TopLine());
    SendKey(third->Handle(), VK_END, true);
    EXPECT_EQ(40 - third->View().LinesPerPage(), third->View().TopLine());
}

TEST_F(BrowseWndTest, FollowsTheCurrentLogWhileTheMainWindowWrites)
{
    CBrowseWnd* browser = OpenLog(current);
    ASSERT_TRUE(browser && browser->Handle());
    SendKey(browser->Handle(), VK_END, true);
    const int top = browser->View().TopLine();
    const std::wstring lastShown = PageLine(browser->View(), browser->View().PageCount() - 1);

    for (int i = 0; i < 30; ++i)
        window->AddMessage((L"live " + std::to_wstring(i)).c_str());
    window->Writer().FlushPending(window->Ring().PendingCount());
    Pump(250);

    EXPECT_EQ(530, browser->Lines().LineCount()) << "counted by the 100 ms timer";
    EXPECT_EQ(529, testing_support::ScrollBarOf(browser->Handle(), SB_VERT).nMax);
    EXPECT_EQ(top, browser->View().TopLine());
    EXPECT_EQ(lastShown, PageLine(browser->View(), browser->View().PageCount() - 1))
        << "the page waits for a scroll";
    SendKey(browser->Handle(), VK_END, true);
    EXPECT_EQ(L"live 29", PageLine(browser->View(), browser->View().PageCount() - 1));
    EXPECT_TRUE(dialogs.Boxes().empty());
}

TEST_F(BrowseWndTest, BadFilesAreRefusedWithoutACrash)
{
    CBrowseWnd* newer = OpenLog(WriteFile(L"newer.qxl", MakeLogImage(L"8.000000", 3)));
    ASSERT_NE(nullptr, newer) << "kept although its window failed";
    EXPECT_EQ(nullptr, newer->Handle());
    ASSERT_EQ(1u, dialogs.Boxes().size());
    EXPECT_EQ(ResourceText(IDS_NEWER_FORMAT), dialogs.Boxes()[0].text);

    std::vector<unsigned char> torn = MakeLogImage(L"7.000000", 3);
    torn.resize(31);
    CBrowseWnd* shortHeader = OpenLog(WriteFile(L"short.qxl", torn));
    EXPECT_EQ(nullptr, shortHeader->Handle()) << "fails silently";
    EXPECT_EQ(1u, dialogs.Boxes().size());

    CBrowseWnd* ragged = OpenLog(WriteFile(L"ragged.qxl", MakeLogImage(L"7.000000", 5, 100)));
    EXPECT_EQ(5, ragged->Lines().LineCount()) << "a torn last record is not counted";

    std::mt19937 random(7);
    std::vector<unsigned char> noise(5000);
    for (unsigned char& byte : noise)
        byte = static_cast<unsigned char>(random());
    OpenLog(WriteFile(L"noise.qxl", noise));

    // Only the header slot: Page Down goes above the file, and the next
    // refill cannot seek there.
    CBrowseWnd* empty = OpenLog(WriteFile(L"empty.qxl", MakeLogImage(L"7.000000", 0)));
    ASSERT_NE(nullptr, empty->Handle());
    dialogs.Clear();
    SendKey(empty->Handle(), VK_NEXT);
    EXPECT_EQ(-empty->View().LinesPerPage(), empty->View().TopLine());
    EXPECT_EQ(0, empty->View().PageCount());
    ASSERT_EQ(1u, dialogs.Boxes().size());
    EXPECT_EQ(ResourceText(IDS_ERROR_CAPTION), dialogs.Boxes()[0].caption);
    EXPECT_EQ(nullptr, dialogs.Boxes()[0].owner) << "the system's text, no owner";
}

TEST_F(BrowseWndTest, TextLogsAreShownConverted)
{
    const std::string line = "2026-03-03 14:05:07 Pump P-101 started\n";
    const std::wstring log = WriteFile(L"day.LOG", std::vector<unsigned char>(line.begin(), line.end()));
    CBrowseWnd* browser = OpenLog(log);
    ASSERT_TRUE(browser && browser->Handle());
    EXPECT_EQ(otherDir / L"day00.qxl", browser->Lines().Path());
    ASSERT_EQ(1, browser->Lines().LineCount());
    EXPECT_EQ(L"Pump P-101 started", PageLine(browser->View(), 0));
}

TEST_F(BrowseWndTest, CancellingOpensNothingAndTheEndClosesEveryBrowser)
{
    dialogs.Then([](HWND dialog) { testing_support::Click(dialog, IDCANCEL); });
    ::SendMessageW(Hwnd(), WM_COMMAND, IDM_OPEN_LOG, 0);
    EXPECT_TRUE(dialogs.Finished());
    EXPECT_TRUE(window->Browsers().empty());

    CBrowseWnd* open = OpenLog(current);
    CBrowseWnd* closed = OpenLog(current);
    ::SendMessageW(closed->Handle(), WM_CLOSE, 0, 0);
    EXPECT_EQ(nullptr, closed->Handle());
    EXPECT_EQ(2u, window->Browsers().size()) << "closing keeps the object";
    const HWND openWindow = open->Handle();
    ::DestroyWindow(Hwnd());
    DrainQuit();
    window.reset();
    EXPECT_FALSE(::IsWindow(openWindow));
}

} // namespace

namespace {

// Export from a window's File menu, answering the save dialog with `name`.
void ExportThroughMenu(HWND window, const std::wstring& name)
{
    testing_support::DialogScript script;
    script.Then(ChooseFile(name));
    ::SendMessageW(window, WM_COMMAND, IDM_EXPORT_TEXT, 0);
    EXPECT_TRUE(script.Finished());
}

std::wstring ExportedText(const std::wstring& path)
{
    const std::vector<unsigned char> bytes = testing_support::ReadFileBytes(path);
    return std::wstring(reinterpret_cast<const wchar_t*>(bytes.data()), bytes.size() / 2);
}

} // namespace

TEST_F(BrowseWndTest, BothWindowsExportThroughTheSharedProcedure)
{
    window->AddMessage(L"pending line");
    ExportThroughMenu(Hwnd(), otherDir / L"main");
    const std::wstring fromMain = ExportedText(otherDir / L"main.txt");
    EXPECT_EQ(L'\xFEFF', fromMain[0]);
    EXPECT_NE(std::wstring::npos, fromMain.find(L"record 499\r\n"));
    EXPECT_NE(std::wstring::npos, fromMain.find(L"pending line\r\n")) << "flushed first";

    CBrowseWnd* browser = OpenLog(WriteFile(L"saved.qxl", MakeLogImage(L"7.000000", 3)));
    ASSERT_TRUE(browser && browser->Handle());
    ExportThroughMenu(browser->Handle(), otherDir / L"saved.txt");
    const std::wstring fromBrowser = ExportedText(otherDir / L"saved.txt.txt");
    size_t lines = 0;
    for (size_t at = fromBrowser.find(L"\r\n"); at != std::wstring::npos; at = fromBrowser.find(L"\r\n", at + 2))
        ++lines;
    EXPECT_EQ(3u, lines) << "one line per record, and the name gets .txt once more";
}
