#include "ViewHost.h"

#include "lang/ResourceIds.h"
#include "ring/MessageRecord.h"
#include "support/TestFiles.h"
#include "support/ViewInput.h"
#include "winlayer/Resources.h"

HMODULE ViewFixture::english = nullptr;
HFONT ViewFixture::font = nullptr;
int ViewFixture::lineHeight = 0;

namespace {
constexpr wchar_t kClassName[] = L"OrielViewHost";
}

ViewHost::ViewHost(LineSource& source, ViewPolicy policy, HFONT font)
    : view(source, policy), font_(font)
{
    ChainMessages(view);
}

winlayer::MessageTable<ViewHost> ViewHost::Messages()
{
    static const winlayer::MessageEntry<ViewHost> table[] = {{WM_CREATE, 0, &ViewHost::OnCreate}};
    return winlayer::MakeTable(table);
}

LRESULT ViewHost::OnCreate(WPARAM, LPARAM, bool&)
{
    view.Attach(hwnd_);
    view.SetFont(font_);
    return 0;
}

void ViewFixture::SetUpTestSuite()
{
    english = ::LoadLibraryW((testing_support::InstallDir() + L"\\Lang\\EN\\OrielEN.dll").c_str());
    ASSERT_NE(nullptr, english);
    winlayer::SetResourceModule(english);
    LOGFONTW face = {};
    face.lfHeight = -12;
    face.lfCharSet = DEFAULT_CHARSET;
    winlayer::LoadText(IDS_FONT_FACE, face.lfFaceName, LF_FACESIZE);
    font = ::CreateFontIndirectW(&face);
    lineHeight = testing_support::LineHeightOf(font);

    WNDCLASSEXW wc = {};
    wc.hInstance = ::GetModuleHandleW(nullptr);
    wc.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    wc.lpszClassName = kClassName;
    ViewHost::RegisterWindowClass(wc);
}

void ViewFixture::TearDownTestSuite()
{
    ::DeleteObject(font);
    winlayer::SetResourceModule(nullptr);
    ::FreeLibrary(english);
}

void ViewFixture::TearDown()
{
    if (host && host->Handle() != nullptr)
        ::DestroyWindow(host->Handle());
}

void ViewFixture::CreateHost(LineSource& source, ViewPolicy policy, int lines)
{
    const DWORD style = WS_OVERLAPPEDWINDOW | WS_VSCROLL;
    RECT r = {100, 100, 900, 100 + lines * lineHeight + lineHeight / 2};
    ::AdjustWindowRectEx(&r, style, FALSE, WS_EX_CLIENTEDGE);
    // Room for the bars: the horizontal one appears once a line is measured.
    r.right += ::GetSystemMetrics(SM_CXVSCROLL);
    if (source.LineCount() > 0)
        r.bottom += ::GetSystemMetrics(SM_CYHSCROLL);
    host = std::make_unique<ViewHost>(source, policy, font);
    ASSERT_NE(nullptr, host->Create(kClassName, nullptr, L"view test", style | WS_VISIBLE,
                                    WS_EX_CLIENTEDGE, nullptr, r.left, r.top, r.right - r.left,
                                    r.bottom - r.top));
    ASSERT_EQ(lines, View().LinesPerPage());
}

SCROLLINFO ViewFixture::ScrollBar(int bar) const
{
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_ALL;
    ::GetScrollInfo(Hwnd(), bar, &info);
    return info;
}

void ViewFixture::Key(WPARAM key, bool control)
{
    BYTE keys[256];
    ::GetKeyboardState(keys);
    keys[VK_CONTROL] = control ? 0x80 : 0;
    ::SetKeyboardState(keys);
    ::SendMessageW(Hwnd(), WM_KEYDOWN, key, 0);
    keys[VK_CONTROL] = 0;
    ::SetKeyboardState(keys);
}

void ViewFixture::VScroll(int request)
{
    ::SendMessageW(Hwnd(), WM_VSCROLL, MAKEWPARAM(request, 0), 0);
}

void ViewFixture::HScroll(int request, int thumb)
{
    ::SendMessageW(Hwnd(), WM_HSCROLL, MAKEWPARAM(request, thumb), 0);
}

std::wstring ViewFixture::PageText(int i) const
{
    if (i < 0 || i >= View().PageCount())
        return L"<none>";
    const MessageRecord& record = View().Page()[i];
    return std::wstring(record.text, wcsnlen(record.text, kMessageTextUnits));
}
