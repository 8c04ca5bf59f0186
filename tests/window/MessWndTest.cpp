#include "MessWndFixture.h"

#include <shlwapi.h>

#include "lang/ResourceIds.h"
#include "support/LogFileDecoder.h"
#include "support/ResourceText.h"
#include "winlayer/Resources.h"

using testing_support::Click;
using testing_support::ItemText;
using testing_support::ResourceText;
using testing_support::SendKey;

namespace {

// The client area as shown on screen, row by row in 32-bit pixels
// (0x00RRGGBB): the window is put on top of other windows and painted first.
std::vector<DWORD> ShotOnTop(HWND window)
{
    ::SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW);
    MessWndFixture::DrainQuit();
    RECT client;
    ::GetClientRect(window, &client);
    return testing_support::ClientRows(window, 0, client.bottom);
}

// First column with ink (anything far from the white background) in rows
// [top, bottom) of a shot `width` pixels wide; -1 when none.
int FirstInkColumn(const std::vector<DWORD>& shot, int width, int top, int bottom)
{
    const size_t end = std::min(shot.size(), static_cast<size_t>(bottom) * width);
    for (int x = 0; x < width; ++x)
        for (size_t i = static_cast<size_t>(top) * width + x; i < end; i += width)
            if (((shot[i] >> 16) & 0xFF) + ((shot[i] >> 8) & 0xFF) + (shot[i] & 0xFF) < 3 * 160)
                return x;
    return -1;
}

// The font dialog's size box and colour list.
constexpr int kFontSize = 0x472;
constexpr int kFontColour = 0x473;

} // namespace

// The window opens on the last page; where a log shorter than a page starts is
// FirstTopLine's, in ScrollRulesTest.
TEST_F(MessWndFixture, StartsAtTheLastPageOfTheNewestLog)
{
    Open(500, 20);
    EXPECT_EQ(480, TopLine());
    EXPECT_EQ(L"record 480", PageText(0));
}

TEST_F(MessWndFixture, LiveViewFollowsOnlyAtTheBottomAndLagsOnceTheRingIsFull)
{
    Open(500);
    const int lines = window->View().LinesPerPage();
    SendKey(Hwnd(), VK_END, true);
    ASSERT_EQ(500 - lines, TopLine());
    window->AddMessage(L"line 1");
    EXPECT_EQ(501 - lines, TopLine());
    EXPECT_EQ(L"line 1", LastPageText()) << "unwritten records complete the file page";

    testing_support::SendVScroll(Hwnd(), SB_LINEUP);
    window->AddMessage(L"line 2");
    EXPECT_EQ(500 - lines, TopLine());
    EXPECT_EQ(L"record " + std::to_wstring(500 - lines), PageText(0));

    // Hidden, the window skips the costly scroll bar redraws of the bulk.
    ::ShowWindow(Hwnd(), SW_HIDE);
    for (int i = 3; i <= 4998; ++i)
        window->AddMessage((L"line " + std::to_wstring(i)).c_str());
    ::ShowWindow(Hwnd(), SW_SHOW);
    SendKey(Hwnd(), VK_END, true);
    EXPECT_EQ(L"line 4998", LastPageText());
    window->AddMessage(L"line 4999");
    ASSERT_EQ(1, window->Ring().ringFull);
    EXPECT_EQ(L"line 4998", LastPageText()) << "the newest line shows only with the next one";
    window->AddMessage(L"line 5000");
    EXPECT_EQ(L"line 4999", LastPageText());
}

// Unwritten lines complete a page the file leaves short, and nothing follows
// them; once the file turns out newer, the page is empty.
TEST_F(MessWndFixture, PendingLinesCompleteAShortPageOfAFileOfOurFormat)
{
    Open(3);
    window->AddMessage(L"pending 1");
    window->AddMessage(L"pending 2");
    EXPECT_EQ(5, window->View().PageCount());
    EXPECT_EQ(L"pending 2", LastPageText());
    MakeNewer(currentLog);
    SendKey(Hwnd(), VK_HOME, true);
    ASSERT_EQ(1u, dialogs.Boxes().size());
    EXPECT_EQ(ResourceText(IDS_NEWER_FORMAT), dialogs.Boxes()[0].text);
    EXPECT_EQ(0, window->View().PageCount());
}

TEST_F(MessWndFixture, MissingSaveDirectoryWritesTheConstantDefaultsBack)
{
    testing_support::WriteSaveSettings(SettingsFilePath(), L"savedays=30\r\nlogsize=2\r\n");
    CreateWindowWithRoom(20);
    EXPECT_EQ(30u, window->Writer().SaveDays()) << "this run keeps the value it read";
    EXPECT_EQ(2u, window->Writer().LogSize());
    wchar_t expected[MAX_PATH];
    ::GetModuleFileNameW(nullptr, expected, MAX_PATH);
    ::PathRemoveFileSpecW(expected);
    ::PathAppendW(expected, L"log");
    const std::pair<const wchar_t*, std::wstring> written[] = {
        {L"savedays", L"10"}, {L"savetime", L"600"}, {L"logsize", L"10"}, {L"savedirectory", expected}};
    for (const auto& [key, value] : written) {
        wchar_t text[MAX_PATH] = {};
        ::GetPrivateProfileStringW(L"save", key, L"<missing>", text, MAX_PATH, SettingsFilePath().c_str());
        EXPECT_EQ(value, text) << key;
    }
    EXPECT_EQ(std::wstring(expected), window->Writer().SaveDirectory());
    EXPECT_TRUE(::PathIsDirectoryW(expected));
    TearDown();
    testing_support::RemoveTree(expected);
}

TEST_F(MessWndFixture, ClosingWritesExactlyThePendingRecords)
{
    Open(500);
    window->AddMessage(L"pending one");
    window->AddMessage(L"pending two");
    ::SendMessageW(Hwnd(), WM_CLOSE, 0, 0);
    EXPECT_EQ(nullptr, window->Handle());
    MSG quit;
    EXPECT_TRUE(::PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    const DecodedLog decoded = DecodeLog(testing_support::ReadFileBytes(currentLog));
    ASSERT_EQ(502u, decoded.records.size());
    EXPECT_EQ(L"pending two", decoded.records[501].text);
}

TEST_F(MessWndFixture, SystemMenuTogglesStayOnTop)
{
    Open(5, 10);
    HMENU systemMenu = ::GetSystemMenu(Hwnd(), FALSE);
    auto topmost = [&] { return (::GetWindowLongW(Hwnd(), GWL_EXSTYLE) & WS_EX_TOPMOST) != 0; };
    auto hasItem = [&](UINT id) { return ::GetMenuState(systemMenu, id, MF_BYCOMMAND) != UINT(-1); };
    ASSERT_TRUE(hasItem(IDM_TOPMOST));
    ASSERT_FALSE(topmost());
    // The menu offers the other state each time.  A synthetic second "stay
    // on top" still makes the window topmost; the menu, which no longer holds
    // that item, stays as it is.
    for (UINT command : {IDM_TOPMOST, IDM_NOTOPMOST, IDM_TOPMOST, IDM_TOPMOST}) {
        ::SendMessageW(Hwnd(), WM_SYSCOMMAND, command, 0);
        EXPECT_EQ(command == IDM_TOPMOST, topmost()) << command;
        EXPECT_EQ(command == IDM_TOPMOST, hasItem(IDM_NOTOPMOST)) << command;
        EXPECT_NE(command == IDM_TOPMOST, hasItem(IDM_TOPMOST)) << command;
    }
    // Standard system commands still reach the default handling.
    ::SendMessageW(Hwnd(), WM_SYSCOMMAND, SC_MINIMIZE, 0);
    EXPECT_TRUE(::IsIconic(Hwnd()));
}

TEST_F(MessWndFixture, AtomMessagesAddLinesUntilADiskFullNotice)
{
    Open(0);
    ATOM atom = ::GlobalAddAtomW(std::wstring(200, L'x').c_str());
    EXPECT_EQ(0, ::SendMessageW(Hwnd(), WM_MESSATOM, atom, 0));
    ::GlobalDeleteAtom(atom);
    EXPECT_EQ(std::wstring(127, L'x'), LastPageText());
    EXPECT_EQ(-1, ::SendMessageW(Hwnd(), WM_MESSATOM, atom, 0)) << "deleted atom";
    EXPECT_EQ(1, window->Ring().lineCount);

    // The log writer has just met a full disk: the next atom message adds the
    // notice instead of its own line, once; later ones are ignored.
    window->Writer().SetDiskFullState(1);
    atom = ::GlobalAddAtomW(L"line from a driver");
    EXPECT_EQ(0, ::SendMessageW(Hwnd(), WM_MESSATOM, atom, 0));
    EXPECT_EQ(ResourceText(IDS_DISK_FULL_NOTICE), LastPageText());
    EXPECT_EQ(2, window->Writer().DiskFullState());
    EXPECT_EQ(0, ::SendMessageW(Hwnd(), WM_MESSATOM, atom, 0));
    ::GlobalDeleteAtom(atom);
    EXPECT_EQ(2, window->Ring().lineCount);
}

TEST_F(MessWndFixture, DrawsEveryPageLineFivePixelsInFromTheOffset)
{
    Open(6, 12);
    const std::vector<DWORD> shot = ShotOnTop(Hwnd());
    const int lineHeight = window->View().LineHeight();
    RECT client;
    ::GetClientRect(Hwnd(), &client);
    const int width = client.right;
    for (int line = 0; line < 6; ++line)
        EXPECT_NE(-1, FirstInkColumn(shot, width, line * lineHeight, (line + 1) * lineHeight)) << line;
    EXPECT_EQ(-1, FirstInkColumn(shot, width, 6 * lineHeight + 2, client.bottom)) << "nothing below the list";
    const int margin = FirstInkColumn(shot, width, 0, lineHeight);
    EXPECT_GE(margin, 5);
    EXPECT_LE(margin, 7);
    // Scrolled right by three pixels, the text starts three pixels further left.
    testing_support::SendHScroll(Hwnd(), SB_THUMBPOSITION, 3);
    EXPECT_EQ(margin - 3, FirstInkColumn(ShotOnTop(Hwnd()), width, 0, lineHeight));
}

// Each command of the menu opens its own dialog on this window's state.
TEST_F(MessWndFixture, EachCommandOpensItsDialog)
{
    Open(3);
    window->SetAboutText(L"the suite's about text");
    wchar_t face[LF_FACESIZE];
    winlayer::LoadText(IDS_FONT_FACE, face, LF_FACESIZE);
    const struct {
        WORD command;
        int control;
        std::wstring text;
    } routes[] = {
        {IDM_ABOUT, IDC_ABOUT_TEXT, L"the suite's about text"},
        {IDM_FONT, 0x470, face},
        {IDM_SAVE_DIRECTORY, IDC_SAVE_PATH, saveDir.Path()},
        {IDM_SAVE_PARAMS, IDC_SAVE_TIME, L"600"},
        {IDM_OPEN_LOG, 0x470, L"Oriel 7.5 Log Files (*.qxl)"},
        {IDM_PRINT_SETUP, IDC_HEADER_TEXT, ResourceText(IDS_PRINT_HEADER_DEFAULT)},
        {IDM_EXPORT_TEXT, 0x470, L"Oriel Text Files (*.txt)"},
    };
    for (const auto& route : routes) {
        std::wstring shown = L"<no dialog>";
        dialogs.Then([&](HWND dialog) {
            shown = ItemText(dialog, route.control);
            Click(dialog, IDCANCEL);
        });
        EXPECT_EQ(0, ::SendMessageW(Hwnd(), WM_COMMAND, route.command, 0));
        EXPECT_EQ(route.text, shown) << route.command;
    }
    EXPECT_TRUE(dialogs.Finished());
}

TEST_F(MessWndFixture, FontCommandSetsTheViewAndThePrintFontAndColourEvenAfterCancel)
{
    Open(200);
    const int lines = window->View().LinesPerPage();
    const HFONT firstFont = window->View().Font();
    testing_support::SendHScroll(Hwnd(), SB_THUMBPOSITION, 30);
    dialogs.Then([](HWND dialog) { Click(dialog, IDCANCEL); });
    ::SendMessageW(Hwnd(), WM_COMMAND, IDM_FONT, 0);
    EXPECT_EQ(0, window->View().HorizontalPosition()) << "back to the left edge";
    EXPECT_EQ(lines, window->View().LinesPerPage());
    EXPECT_EQ(0u, ::GetObjectType(firstFont)) << "the old font is deleted, a new one made";

    const COLORREF red = RGB(255, 0, 0);
    dialogs.Then([&](HWND dialog) {
        ::SetDlgItemTextW(dialog, kFontSize, L"24");
        ::SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(kFontSize, CBN_EDITCHANGE),
                       reinterpret_cast<LPARAM>(::GetDlgItem(dialog, kFontSize)));
        HWND colours = ::GetDlgItem(dialog, kFontColour);
        for (int i = 0; i < ::SendMessageW(colours, CB_GETCOUNT, 0, 0); ++i)
            if (::SendMessageW(colours, CB_GETITEMDATA, i, 0) == static_cast<LRESULT>(red))
                ::SendMessageW(colours, CB_SETCURSEL, i, 0);
        ::SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(kFontColour, CBN_SELCHANGE),
                       reinterpret_cast<LPARAM>(colours));
        Click(dialog, IDOK);
    });
    ::SendMessageW(Hwnd(), WM_COMMAND, IDM_FONT, 0);
    EXPECT_LT(window->View().LinesPerPage(), lines) << "a larger font holds fewer lines";
    const std::vector<DWORD> shot = ShotOnTop(Hwnd());
    const auto reddish = [](DWORD p) {
        return (p >> 16) > 160 && ((p >> 8) & 0xFF) < 100 && (p & 0xFF) < 100;
    };
    EXPECT_TRUE(std::any_of(shot.begin(), shot.end(), reddish)) << "the view draws in red";

    // The print setup's own font dialog starts from the same font and colour.
    dialogs.Then([](HWND setup) { Click(setup, IDC_PRINT_FONT); })
        .Then([&](HWND font) {
            EXPECT_EQ(L"24", ItemText(font, kFontSize));
            const LRESULT i = ::SendDlgItemMessageW(font, kFontColour, CB_GETCURSEL, 0, 0);
            EXPECT_EQ(static_cast<LRESULT>(red),
                      ::SendDlgItemMessageW(font, kFontColour, CB_GETITEMDATA, i, 0));
            Click(font, IDCANCEL);
        })
        .Then([](HWND setup) { Click(setup, IDCANCEL); });
    ::SendMessageW(Hwnd(), WM_COMMAND, IDM_PRINT_SETUP, 0);
    EXPECT_TRUE(dialogs.Finished()) << "both dialogs were shown";
}
