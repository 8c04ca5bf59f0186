#include "MessWndFixture.h"

#include <functional>
#include <shlwapi.h>

#include "lang/ResourceIds.h"
#include "support/ResourceText.h"
#include "support/LogFileDecoder.h"
#include "winlayer/Resources.h"

namespace {

using testing_support::ResourceText;

std::wstring ReadSetting(const std::wstring& file, const wchar_t* key)
{
    wchar_t value[MAX_PATH] = {};
    ::GetPrivateProfileStringW(L"save", key, L"<missing>", value, MAX_PATH, file.c_str());
    return value;
}

// Scrolls to the bottom the way a user does: Page Down until it stops moving.
void ScrollToBottom(const std::function<LRESULT()>& pageDown, const MessageView& view)
{
    for (int previous = -1; previous != view.TopLine();) {
        previous = view.TopLine();
        pageDown();
    }
}

} // namespace

TEST_F(MessWndFixture, OpensTheNewestLogAtItsLastPage)
{
    WriteLog(500);
    WriteSettings("");
    CreateWindowWithRoom(20);
    EXPECT_EQ(500, Ring().lineCount);
    EXPECT_EQ(500, Ring().fileOnlyLines);
    EXPECT_EQ(480, TopLine());

    const int lines = window->View().LinesPerPage();
    ASSERT_GT(lines, 15);
    SCROLLINFO bar = ScrollBar(SB_VERT);
    EXPECT_EQ(0, bar.nMin);
    EXPECT_EQ(499, bar.nMax);
    EXPECT_EQ(static_cast<UINT>(lines), bar.nPage);
    EXPECT_EQ(480, bar.nPos);
    EXPECT_EQ(L"record 480", PageText(0));
    EXPECT_EQ(std::min(lines, 20), window->View().PageCount());
    EXPECT_TRUE(dialogs.Boxes().empty());
}

TEST_F(MessWndFixture, AShortLogStartsAtTheTop)
{
    WriteLog(10);
    WriteSettings("");
    CreateWindowWithRoom(20);
    EXPECT_EQ(0, TopLine());
    EXPECT_EQ(10, window->View().PageCount());
    EXPECT_EQ(L"record 9", LastPageText());
}

TEST_F(MessWndFixture, FollowsNewLinesOnlyWhileAtTheBottom)
{
    WriteLog(500);
    WriteSettings("");
    CreateWindowWithRoom(20);
    const int lines = window->View().LinesPerPage();
    ScrollToBottom([&] { return Key(VK_NEXT); }, window->View());
    ASSERT_EQ(500 - lines, TopLine());

    window->AddMessage(L"first new line");
    EXPECT_EQ(501, Ring().lineCount);
    EXPECT_EQ(501 - lines, TopLine());
    EXPECT_EQ(L"first new line", LastPageText()) << "unwritten records complete the file page";
    EXPECT_EQ(501 - lines, ScrollBar(SB_VERT).nPos);
    EXPECT_EQ(500, ScrollBar(SB_VERT).nMax);

    testing_support::SendVScroll(Hwnd(), SB_LINEUP);
    const int scrolledTo = TopLine();
    ASSERT_EQ(500 - lines, scrolledTo);
    window->AddMessage(L"second new line");
    EXPECT_EQ(502, Ring().lineCount);
    EXPECT_EQ(scrolledTo, TopLine());
    EXPECT_EQ(L"record " + std::to_wstring(scrolledTo), PageText(0));
}

TEST_F(MessWndFixture, LiveViewLagsOneLineOnceTheRingIsFull)
{
    WriteLog(0);
    WriteSettings("");
    CreateWindowWithRoom(20);
    // Hidden, the window skips the costly scroll bar redraws of the bulk.
    ::ShowWindow(Hwnd(), SW_HIDE);
    for (int i = 1; i <= 4998; ++i)
        window->AddMessage((L"line " + std::to_wstring(i)).c_str());
    ::ShowWindow(Hwnd(), SW_SHOW);
    Key(VK_END, true);
    EXPECT_EQ(L"line 4998", LastPageText());
    EXPECT_EQ(0, Ring().ringFull);

    window->AddMessage(L"line 4999");
    EXPECT_EQ(1, Ring().ringFull);
    EXPECT_EQ(4999, Ring().lineCount);
    EXPECT_EQ(4999 - window->View().LinesPerPage(), TopLine()) << "the view followed";
    EXPECT_EQ(L"line 4998", LastPageText()) << "the newest line shows only with the next one";
    window->AddMessage(L"line 5000");
    EXPECT_EQ(L"line 4999", LastPageText());
}

TEST_F(MessWndFixture, ALogOfANewerFormatIsRefusedOnRefresh)
{
    std::wstring log = WriteLog(500);
    WriteSettings("");
    CreateWindowWithRoom(20);
    ASSERT_TRUE(dialogs.Boxes().empty());

    std::vector<unsigned char> bytes = testing_support::ReadFileBytes(log);
    const char newer[] = "8\0.\0""0\0""0\0""0\0""0\0""0\0""0\0";
    std::copy(newer, newer + 16, bytes.begin());
    testing_support::WriteFileBytes(log, bytes);

    Key(VK_HOME, true);
    ASSERT_EQ(1u, dialogs.Boxes().size());
    EXPECT_EQ(ResourceText(IDS_NEWER_FORMAT), dialogs.Boxes()[0].text);
    EXPECT_EQ(ResourceText(IDS_ERROR_CAPTION), dialogs.Boxes()[0].caption);
    EXPECT_EQ(0, window->View().PageCount());
}

TEST_F(MessWndFixture, MissingSaveDirectoryWritesTheConstantDefaultsBack)
{
    WriteSettings("savedays=30\r\nlogsize=2\r\n", false);
    CreateWindowWithRoom(20);
    EXPECT_EQ(30u, window->Writer().SaveDays()) << "this run keeps the value it read";
    EXPECT_EQ(2u, window->Writer().LogSize());
    const std::wstring settings = SettingsFilePath();
    EXPECT_EQ(L"10", ReadSetting(settings, L"savedays"));
    EXPECT_EQ(L"600", ReadSetting(settings, L"savetime"));
    EXPECT_EQ(L"10", ReadSetting(settings, L"logsize"));

    wchar_t expected[MAX_PATH];
    ::GetModuleFileNameW(nullptr, expected, MAX_PATH);
    ::PathRemoveFileSpecW(expected);
    ::PathAppendW(expected, L"log");
    EXPECT_EQ(expected, ReadSetting(settings, L"savedirectory"));
    EXPECT_EQ(std::wstring(expected), window->Writer().SaveDirectory());
    EXPECT_TRUE(::PathIsDirectoryW(expected));
    ::DestroyWindow(Hwnd());
    DrainQuit();
    testing_support::RemoveTree(expected);
}

TEST_F(MessWndFixture, ClosingWritesExactlyThePendingRecords)
{
    std::wstring log = WriteLog(500);
    WriteSettings("");
    CreateWindowWithRoom(20);
    window->AddMessage(L"pending one");
    window->AddMessage(L"pending two");
    window->AddMessage(L"pending three");
    ASSERT_EQ(3, Ring().PendingCount());

    ::SendMessageW(Hwnd(), WM_CLOSE, 0, 0);
    EXPECT_EQ(nullptr, window->Handle());
    MSG quit;
    EXPECT_TRUE(::PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(0, Ring().PendingCount());

    DecodedLog decoded = DecodeLog(testing_support::ReadFileBytes(log));
    ASSERT_EQ(503u, decoded.records.size());
    EXPECT_EQ(L"record 499", decoded.records[499].text);
    EXPECT_EQ(L"pending one", decoded.records[500].text);
    EXPECT_EQ(L"pending three", decoded.records[502].text);
    EXPECT_EQ(0u, decoded.trailingBytes);
}

TEST_F(MessWndFixture, SystemMenuTogglesStayOnTop)
{
    WriteLog(5);
    WriteSettings("");
    CreateWindowWithRoom(10);
    HMENU systemMenu = ::GetSystemMenu(Hwnd(), FALSE);
    auto topmost = [&] { return (::GetWindowLongW(Hwnd(), GWL_EXSTYLE) & WS_EX_TOPMOST) != 0; };
    auto hasItem = [&](UINT id) { return ::GetMenuState(systemMenu, id, MF_BYCOMMAND) != UINT(-1); };
    ASSERT_TRUE(hasItem(IDM_TOPMOST));
    ASSERT_FALSE(topmost());

    ::SendMessageW(Hwnd(), WM_SYSCOMMAND, IDM_TOPMOST, 0);
    EXPECT_TRUE(topmost());
    EXPECT_FALSE(hasItem(IDM_TOPMOST));
    EXPECT_TRUE(hasItem(IDM_NOTOPMOST));

    // A synthetic second "stay on top" still makes the window topmost; the
    // menu, which no longer holds that item, stays as it is.
    ::SendMessageW(Hwnd(), WM_SYSCOMMAND, IDM_NOTOPMOST, 0);
    EXPECT_FALSE(topmost());
    ::SendMessageW(Hwnd(), WM_SYSCOMMAND, IDM_TOPMOST, 0);
    ::SendMessageW(Hwnd(), WM_SYSCOMMAND, IDM_TOPMOST, 0);
    EXPECT_TRUE(topmost());
    EXPECT_TRUE(hasItem(IDM_NOTOPMOST));
    EXPECT_FALSE(hasItem(IDM_TOPMOST));

    // Standard system commands still reach the default handling.
    ::SendMessageW(Hwnd(), WM_SYSCOMMAND, SC_MINIMIZE, 0);
    EXPECT_TRUE(::IsIconic(Hwnd()));
}

TEST_F(MessWndFixture, AtomMessagesAddLinesUntilADiskFullNotice)
{
    WriteLog(0);
    WriteSettings("");
    CreateWindowWithRoom(20);
    std::wstring longText(200, L'x');
    ATOM atom = ::GlobalAddAtomW(longText.c_str());
    ASSERT_NE(0, atom);
    EXPECT_EQ(0, ::SendMessageW(Hwnd(), WM_MESSATOM, atom, 0));
    ::GlobalDeleteAtom(atom);
    EXPECT_EQ(std::wstring(127, L'x'), LastPageText());
    EXPECT_EQ(-1, ::SendMessageW(Hwnd(), WM_MESSATOM, atom, 0)) << "deleted atom";
    EXPECT_EQ(1, Ring().lineCount);

    // The log writer has just met a full disk: the next atom message adds the
    // notice instead of its own line, once; later ones are ignored.
    window->Writer().SetDiskFullState(1);
    atom = ::GlobalAddAtomW(L"line from a driver");
    EXPECT_EQ(0, ::SendMessageW(Hwnd(), WM_MESSATOM, atom, 0));
    EXPECT_EQ(ResourceText(IDS_DISK_FULL_NOTICE), LastPageText());
    EXPECT_EQ(2, window->Writer().DiskFullState());
    EXPECT_EQ(0, ::SendMessageW(Hwnd(), WM_MESSATOM, atom, 0));
    EXPECT_EQ(0, ::SendMessageW(Hwnd(), WM_MESSATOM, 0, 0));
    ::GlobalDeleteAtom(atom);
    EXPECT_EQ(2, Ring().lineCount);
    // The component road stays open.
    window->AddMessage(L"line from a component client");
    EXPECT_EQ(3, Ring().lineCount);
    EXPECT_EQ(L"line from a component client", LastPageText());
}

namespace {

// What the client area shows on screen, as 32-bit pixels, row by row.
struct ClientPixels {
    int width = 0;
    int height = 0;
    std::vector<DWORD> pixels;
    bool DarkAt(int x, int y) const
    {
        DWORD p = pixels[static_cast<size_t>(y) * width + x];
        return ((p & 0xFF) + ((p >> 8) & 0xFF) + ((p >> 16) & 0xFF)) < 3 * 96;
    }
    // First column with a dark pixel in rows [top, bottom); -1 when none.
    int FirstDarkColumn(int top, int bottom) const
    {
        for (int x = 0; x < width; ++x)
            for (int y = top; y < bottom && y < height; ++y)
                if (DarkAt(x, y))
                    return x;
        return -1;
    }
};

ClientPixels CaptureClient(HWND window)
{
    ::UpdateWindow(window);
    RECT client;
    ::GetClientRect(window, &client);
    POINT origin = {0, 0};
    ::ClientToScreen(window, &origin);
    ClientPixels shot;
    shot.width = client.right;
    shot.height = client.bottom;
    HDC screen = ::GetDC(nullptr);
    HDC memory = ::CreateCompatibleDC(screen);
    HBITMAP bitmap = ::CreateCompatibleBitmap(screen, shot.width, shot.height);
    HGDIOBJ old = ::SelectObject(memory, bitmap);
    ::BitBlt(memory, 0, 0, shot.width, shot.height, screen, origin.x, origin.y, SRCCOPY);
    ::SelectObject(memory, old);
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = shot.width;
    info.bmiHeader.biHeight = -shot.height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    shot.pixels.resize(static_cast<size_t>(shot.width) * shot.height);
    ::GetDIBits(memory, bitmap, 0, shot.height, shot.pixels.data(), &info, DIB_RGB_COLORS);
    ::DeleteObject(bitmap);
    ::DeleteDC(memory);
    ::ReleaseDC(nullptr, screen);
    return shot;
}

} // namespace

TEST_F(MessWndFixture, DrawsEveryPageLineFivePixelsInFromTheOffset)
{
    WriteLog(6);
    WriteSettings("");
    CreateWindowWithRoom(12);
    ::SetWindowPos(Hwnd(), HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW);
    DrainQuit();
    ClientPixels shot = CaptureClient(Hwnd());
    const int lineHeight = FontLineHeight();
    ASSERT_GT(lineHeight, 8);
    for (int line = 0; line < 6; ++line)
        EXPECT_NE(-1, shot.FirstDarkColumn(line * lineHeight, (line + 1) * lineHeight)) << line;
    EXPECT_EQ(-1, shot.FirstDarkColumn(6 * lineHeight + 2, shot.height)) << "nothing below the list";
    const int margin = shot.FirstDarkColumn(0, lineHeight);
    EXPECT_GE(margin, 5);
    EXPECT_LE(margin, 7);

    // Scrolled right by three pixels, the text starts three pixels further left.
    testing_support::SendHScroll(Hwnd(), SB_THUMBPOSITION, 3);
    DrainQuit();
    EXPECT_EQ(margin - 3, CaptureClient(Hwnd()).FirstDarkColumn(0, lineHeight));
}

TEST_F(MessWndFixture, AboutBoxShowsTheSuitesAboutText)
{
    WriteLog(1);
    WriteSettings("");
    CreateWindowWithRoom(10);
    window->SetAboutText(L"Line 1 of the suite's about text");
    std::wstring aboutSeen = L"<not shown>";
    dialogs.Then([&](HWND box) {
        aboutSeen = testing_support::ItemText(box, IDC_ABOUT_TEXT);
        testing_support::Click(box, IDOK);
    });
    EXPECT_EQ(0, ::SendMessageW(Hwnd(), WM_COMMAND, MAKEWPARAM(IDM_ABOUT, 0), 0));
    EXPECT_EQ(L"Line 1 of the suite's about text", aboutSeen);
}

TEST_F(MessWndFixture, FontCommandLaysTheViewOutAgainEvenAfterCancel)
{
    WriteLog(200);
    WriteSettings("");
    CreateWindowWithRoom(20);
    const int lines = window->View().LinesPerPage();
    const HFONT firstFont = window->View().Font();
    testing_support::SendHScroll(Hwnd(), SB_THUMBPOSITION, 30);
    ASSERT_EQ(30, window->View().HorizontalPosition());

    dialogs.Then([](HWND dialog) { testing_support::Click(dialog, IDCANCEL); });
    ::SendMessageW(Hwnd(), WM_COMMAND, IDM_FONT, 0);
    EXPECT_TRUE(dialogs.Finished());
    EXPECT_EQ(0, window->View().HorizontalPosition()) << "back to the left edge";
    EXPECT_EQ(lines, window->View().LinesPerPage());
    EXPECT_EQ(0u, ::GetObjectType(firstFont)) << "the old font is deleted, a new one made";
    EXPECT_NE(nullptr, window->View().Font());

    dialogs.Then([](HWND dialog) {
        ::SendDlgItemMessageW(dialog, 0x472, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"24"));
        ::SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(0x472, CBN_EDITCHANGE),
                       reinterpret_cast<LPARAM>(::GetDlgItem(dialog, 0x472)));
        testing_support::Click(dialog, IDOK);
    });
    ::SendMessageW(Hwnd(), WM_COMMAND, IDM_FONT, 0);
    EXPECT_LT(window->View().LinesPerPage(), lines) << "a larger font holds fewer lines";
}

// The settings commands act on the running writer at once.
TEST_F(MessWndFixture, SettingsCommandsTakeEffectInTheRunningWindow)
{
    WriteLog(10);
    WriteSettings("");
    CreateWindowWithRoom(20);
    const std::wstring newDirectory = saveDir / L"new\\logs";
    dialogs.Then([&](HWND dialog) {
        testing_support::Type(dialog, IDC_SAVE_PATH, newDirectory);
        testing_support::Click(dialog, IDOK);
    });
    // The creation question is a message box: with no step left it gets OK.
    ::SendMessageW(Hwnd(), WM_COMMAND, IDM_SAVE_DIRECTORY, 0);
    EXPECT_TRUE(dialogs.Finished());
    EXPECT_EQ(newDirectory, window->Writer().SaveDirectory());
    EXPECT_EQ(newDirectory, ReadSetting(SettingsFilePath(), L"savedirectory"));
    EXPECT_EQ(0, Ring().lineCount) << "a new, empty log file in the new directory";
    window->AddMessage(L"after the move");
    window->Writer().FlushPending(window->Ring().PendingCount());
    std::wstring newest = window->Writer().LogFilePath();
    EXPECT_EQ(0u, newest.rfind(newDirectory, 0));
    EXPECT_EQ(1u, DecodeLog(testing_support::ReadFileBytes(newest)).records.size());

    dialogs.Then([](HWND dialog) {
        testing_support::Type(dialog, IDC_LOG_SIZE, L"0");
        testing_support::Click(dialog, IDOK);
    });
    ::SendMessageW(Hwnd(), WM_COMMAND, IDM_SAVE_PARAMS, 0);
    EXPECT_EQ(0u, window->Writer().LogSize());
    EXPECT_EQ(L"0", ReadSetting(SettingsFilePath(), L"logsize"));
    window->AddMessage(L"pending");
    // Size 0: the next size check, within 55 ms, starts a new file.
    const DWORD end = ::GetTickCount() + 300;
    while (Ring().lineCount != 0 && static_cast<LONG>(end - ::GetTickCount()) > 0) {
        MSG message;
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            ::DispatchMessageW(&message);
        ::Sleep(5);
    }
    EXPECT_EQ(0, Ring().lineCount);
}
