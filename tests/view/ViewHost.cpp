#include "ViewHost.h"

#include "lang/ResourceIds.h"
#include "ring/MessageRecord.h"
#include "support/ResourceText.h"
#include "support/ViewInput.h"
#include "winlayer/Resources.h"

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
    testing_support::UseEnglishModule();
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
