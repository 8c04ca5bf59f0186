#include "MessWndFixture.h"

#include <shlwapi.h>

#include "lang/ResourceIds.h"
#include "support/LogFileDecoder.h"
#include "support/ViewInput.h"
#include "winlayer/Resources.h"

HMODULE MessWndFixture::english = nullptr;
std::wstring MessWndFixture::configDir;

namespace {

constexpr wchar_t kClassName[] = L"OrielMessWnd";

} // namespace

int MessWndFixture::FontLineHeight()
{
    wchar_t face[LF_FACESIZE];
    winlayer::LoadText(IDS_FONT_FACE, face, LF_FACESIZE);
    LOGFONTW font = {};
    font.lfHeight = -12;
    font.lfOrientation = 10;
    font.lfWeight = FW_NORMAL;
    font.lfCharSet = DEFAULT_CHARSET;
    ::lstrcpynW(font.lfFaceName, face, LF_FACESIZE);
    HFONT handle = ::CreateFontIndirectW(&font);
    const int height = testing_support::LineHeightOf(handle);
    ::DeleteObject(handle);
    return height;
}

void MessWndFixture::SetUpTestSuite()
{
    english = ::LoadLibraryW((testing_support::InstallDir() + L"\\Lang\\EN\\OrielEN.dll").c_str());
    ASSERT_NE(nullptr, english);
    winlayer::SetResourceModule(english);
    CMessWnd::RegisterClass(::GetModuleHandleW(nullptr), kClassName, nullptr);
    wchar_t exe[MAX_PATH];
    ::GetModuleFileNameW(nullptr, exe, MAX_PATH);
    ::PathRemoveFileSpecW(exe);
    configDir = std::wstring(exe) + L"\\config";
    ::CreateDirectoryW(configDir.c_str(), nullptr);
}

void MessWndFixture::TearDownTestSuite()
{
    testing_support::RemoveTree(configDir);
    winlayer::SetResourceModule(nullptr);
    ::FreeLibrary(english);
}

void MessWndFixture::TearDown()
{
    if (window && window->Handle() != nullptr) {
        ::DestroyWindow(window->Handle());
        DrainQuit();
    }
    window.reset();
    ::DeleteFileW(SettingsFilePath().c_str());
}

std::wstring MessWndFixture::SettingsFilePath() const
{
    return configDir + L"\\ShowMess.ini";
}

std::wstring MessWndFixture::WriteLog(size_t count, const std::wstring& version)
{
    std::vector<unsigned char> image = MakeLogImage(version, count);
    SYSTEMTIME stamp = {2026, 3, 2, 3, 14, 5, 0, 0};
    for (size_t i = 0; i < count; ++i) {
        stamp.wSecond = static_cast<WORD>(i % 60);
        PutLogRecord(image, i, L"record " + std::to_wstring(i), stamp);
    }
    std::wstring path = saveDir / L"2603031405.qxl";
    testing_support::WriteFileBytes(path, image);
    return path;
}

void MessWndFixture::WriteSettings(const std::string& extraKeys, bool withDirectory)
{
    std::string text = "[save]\r\n" + extraKeys;
    if (withDirectory) {
        text += "savedirectory=";
        for (wchar_t c : saveDir.Path())
            text += static_cast<char>(c);
        text += "\r\n";
    }
    testing_support::WriteFileBytes(SettingsFilePath(),
                                    std::vector<unsigned char>(text.begin(), text.end()));
}

void MessWndFixture::CreateWindowWithRoom(int lines)
{
    const DWORD style = WS_OVERLAPPEDWINDOW | WS_VSCROLL;
    const int lineHeight = FontLineHeight();
    RECT r = {100, 100, 900, 100 + lines * lineHeight + lineHeight / 2};
    ::AdjustWindowRectEx(&r, style, TRUE, WS_EX_WINDOWEDGE | WS_EX_CLIENTEDGE);
    r.right += ::GetSystemMetrics(SM_CXVSCROLL);
    HMENU menu = ::LoadMenuW(english, MAKEINTRESOURCEW(IDR_MAIN_MENU));
    window = std::make_unique<CMessWnd>();
    ASSERT_NE(nullptr, window->CreateMainWindow(::GetModuleHandleW(nullptr), kClassName,
                                                L"Oriel test", menu, &r));
}

void MessWndFixture::DrainQuit()
{
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        if (message.message != WM_QUIT)
            ::DispatchMessageW(&message);
}
