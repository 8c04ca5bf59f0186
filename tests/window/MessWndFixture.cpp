#include "MessWndFixture.h"

#include <shlwapi.h>

#include "lang/ResourceIds.h"
#include "support/LogFileDecoder.h"
#include "support/ResourceText.h"
#include "winlayer/Resources.h"

constexpr wchar_t kClassName[] = L"OrielMessWnd";

void MessWndFixture::SetUpTestSuite()
{
    testing_support::UseEnglishModule();
    CMessWnd::RegisterClass(::GetModuleHandleW(nullptr), kClassName, nullptr);
    wchar_t exe[MAX_PATH];
    ::GetModuleFileNameW(nullptr, exe, MAX_PATH);
    ::PathRemoveFileSpecW(exe);
    configDir = std::wstring(exe) + L"\\config";
    ::CreateDirectoryW(configDir.c_str(), nullptr);
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

void MessWndFixture::Open(size_t records, int lines)
{
    testing_support::WriteFileBytes(currentLog, LogImage(NumberedLines(records)));
    testing_support::WriteSaveSettings(SettingsFilePath(),
                                       testing_support::SaveKeys(saveDir.Path(), 10, 600, 10));
    CreateWindowWithRoom(lines);
}

void MessWndFixture::CreateWindowWithRoom(int lines)
{
    RECT r = testing_support::WindowRectForLines(lines, WS_EX_WINDOWEDGE | WS_EX_CLIENTEDGE, true);
    HMENU menu = ::LoadMenuW(winlayer::ResourceModule(), MAKEINTRESOURCEW(IDR_MAIN_MENU));
    window = std::make_unique<CMessWnd>();
    ASSERT_NE(nullptr, window->CreateMainWindow(::GetModuleHandleW(nullptr), kClassName,
                                                L"Oriel test", menu, &r));
}

CBrowseWnd* MessWndFixture::OpenLog(const std::wstring& path)
{
    const size_t before = window->Browsers().size();
    dialogs.Then(testing_support::ChooseFile(path));
    ::SendMessageW(Hwnd(), WM_COMMAND, IDM_OPEN_LOG, 0);
    EXPECT_TRUE(dialogs.Finished());
    return window->Browsers().size() > before ? window->Browsers().back().get() : nullptr;
}

void MessWndFixture::MakeNewer(const std::wstring& log)
{
    std::vector<unsigned char> bytes = testing_support::ReadFileBytes(log);
    const std::vector<unsigned char> newer = MakeLogImage(L"8.000000", 0);
    std::copy(newer.begin(), newer.begin() + 32, bytes.begin());
    testing_support::WriteFileBytes(log, bytes);
}

void MessWndFixture::DrainQuit()
{
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        if (message.message != WM_QUIT)
            ::DispatchMessageW(&message);
}
