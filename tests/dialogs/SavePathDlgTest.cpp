#include "DialogFixture.h"

#include <shlobj.h>

#include <cstdlib>

#include "dialogs/FolderBrowser.h"
#include "dialogs/SavePathDlg.h"

namespace {

// Types `path`, moves the focus away from it, and presses OK.
DialogScript::Step TypeAndOk(const std::wstring& path)
{
    return [path](HWND dialog) {
        Type(dialog, IDC_SAVE_PATH, path);
        ::SetFocus(::GetDlgItem(dialog, IDCANCEL));
        Click(dialog, IDOK);
    };
}

void ExpectFocusOnPathThenCancel(HWND dialog)
{
    EXPECT_EQ(::GetDlgItem(dialog, IDC_SAVE_PATH), ::GetFocus());
    Click(dialog, IDCANCEL);
}

class SavePathDialog : public DialogFixture {
protected:
    INT_PTR Run(const std::wstring& initial = L"")
    {
        ::lstrcpynW(dialog.savePath, initial.c_str(), MAX_PATH);
        return dialog.DoModal(script.Owner());
    }
    // Runs the dialog through one refusal: `path` typed, the boxes answered
    // by `boxes`, then the focus is expected back on the path.
    void ExpectRefusal(const std::wstring& path, std::initializer_list<DialogScript::Step> boxes)
    {
        script.Then(TypeAndOk(path));
        for (const DialogScript::Step& box : boxes)
            script.Then(box);
        script.Then(ExpectFocusOnPathThenCancel);
        EXPECT_EQ(IDCANCEL, Run());
        EXPECT_TRUE(script.Finished());
    }
    CSavePathDlg dialog;
};

TEST_F(SavePathDialog, ShowsThePathAndAcceptsAnExistingFileInCanonicalForm)
{
    testing_support::WriteFileBytes(dir / L"file", {});
    script.Then([](HWND dialog) { EXPECT_EQ(L"C:\\old", ItemText(dialog, IDC_SAVE_PATH)); })
        .Then(TypeAndOk(L"  " + dir.Path() + L"\\ file \\ "));
    EXPECT_EQ(IDOK, Run(L"C:\\old"));
    EXPECT_EQ(dir / L"file", dialog.savePath);
    EXPECT_TRUE(script.Finished());
}

TEST_F(SavePathDialog, EmptyAndInvalidPathsAreRefused)
{
    ExpectRefusal(L"", {ExpectBox(Box(IDS_SAVEPATH_CAPTION, Text(IDS_SAVEPATH_EMPTY), L"error"))});
    ExpectRefusal(L"C:\\a:b",
                  {ExpectBox(Box(IDS_SAVEPATH_CAPTION, Text(IDS_SAVEPATH_INVALID), L"error"))});
}

TEST_F(SavePathDialog, ReadOnlyDirectoryIsRefused)
{
    const char* unixPath = std::getenv("ORIEL_READONLY_DIR");
    if (unixPath == nullptr)
        GTEST_SKIP() << "needs with-readonly-dir.sh";
    std::wstring readOnly = L"Z:";
    for (const char* p = unixPath; *p != '\0'; ++p)
        readOnly += *p == '/' ? L'\\' : static_cast<wchar_t>(*p);
    ASSERT_TRUE(::GetFileAttributesW(readOnly.c_str()) & FILE_ATTRIBUTE_READONLY);
    ExpectRefusal(readOnly, {ExpectBox(Box(IDS_SAVEPATH_READONLY_CAPTION,
                                           Text(IDS_SAVEPATH_READONLY), L"error"))});
}

TEST_F(SavePathDialog, MissingDirectoryIsCreatedLevelByLevelAfterConfirmation)
{
    const std::wstring missing = dir / L"a\\b\\c";
    const std::wstring question =
        Box(IDS_SAVEPATH_CREATE_CAPTION, Text(IDS_SAVEPATH_CREATE_ASK, missing), L"question",
            L"ok cancel");
    // Cancel first: nothing is created and the dialog stays.
    ExpectRefusal(missing + L"\\", {ExpectBox(question, IDCANCEL)});
    EXPECT_FALSE(testing_support::FileExists(dir / L"a"));

    script.Then(TypeAndOk(missing + L"\\")).Then(ExpectBox(question, IDOK));
    EXPECT_EQ(IDOK, Run());
    EXPECT_EQ(missing, dialog.savePath);
    EXPECT_TRUE(::GetFileAttributesW(missing.c_str()) & FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_TRUE(script.Finished());
}

TEST_F(SavePathDialog, FailedCreationIsReportedWithThePath)
{
    testing_support::WriteFileBytes(dir / L"file", {});
    const std::wstring below = dir / L"file\\sub";
    ExpectRefusal(below, {ExpectBox(Box(IDS_SAVEPATH_CREATE_CAPTION,
                                        Text(IDS_SAVEPATH_CREATE_ASK, below), L"question",
                                        L"ok cancel")),
                          ExpectBox(Box(IDS_SAVEPATH_CREATE_CAPTION,
                                        Text(IDS_SAVEPATH_CREATE_FAILED, below), L"error"))});
}

// The folder browser's status line (the same control on Windows and Wine).
constexpr int kBrowserStatus = 0x3743;

// What BrowseCallback asks of a browser, recorded by a stand-in window.
struct BrowserRequests {
    std::wstring selection;
    std::wstring status;
};

LRESULT CALLBACK FakeBrowserProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* requests = reinterpret_cast<BrowserRequests*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message == BFFM_SETSELECTIONW && wParam == TRUE)
        requests->selection = reinterpret_cast<const wchar_t*>(lParam);
    else if (message == BFFM_SETSTATUSTEXTW)
        requests->status = reinterpret_cast<const wchar_t*>(lParam);
    return ::DefWindowProcW(window, message, wParam, lParam);
}

TEST_F(SavePathDialog, BrowserStartsInTheCurrentDirectoryAndShowsCompactedSelections)
{
    WNDCLASSW wc = {};
    wc.lpfnWndProc = FakeBrowserProc;
    wc.lpszClassName = L"OrielFakeBrowser";
    ::RegisterClassW(&wc);
    BrowserRequests requests;
    HWND browser = ::CreateWindowW(L"OrielFakeBrowser", L"", WS_POPUP, 0, 0, 200, 100, nullptr,
                                   nullptr, nullptr, nullptr);
    ::SetWindowLongPtrW(browser, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&requests));

    wchar_t previous[MAX_PATH];
    ::GetCurrentDirectoryW(MAX_PATH, previous);
    ::SetCurrentDirectoryW(dir.Path().c_str());
    EXPECT_EQ(0, BrowseCallback(browser, BFFM_INITIALIZED, 0, 0));
    ::SetCurrentDirectoryW(previous);
    EXPECT_EQ(dir.Path(), requests.selection);

    const std::wstring deep = dir / L"a folder name far too long for two hundred pixels";
    ::CreateDirectoryW(deep.c_str(), nullptr);
    ::CreateDirectoryW((deep + L"\\logs").c_str(), nullptr);
    PIDLIST_ABSOLUTE item = ::ILCreateFromPathW((deep + L"\\logs").c_str());
    EXPECT_EQ(0, BrowseCallback(browser, BFFM_SELCHANGED, reinterpret_cast<LPARAM>(item), 0));
    ::ILFree(item);
    EXPECT_NE(std::wstring::npos, requests.status.find(L"...\\logs")) << requests.status;
    ::DestroyWindow(browser);
}

TEST_F(SavePathDialog, BrowsedPathFillsTheEditShortenedToFit)
{
    std::wstring deep = dir.Path();
    for (int level = 0; level < 4; ++level) {
        deep += L"\\a rather long folder name number " + std::to_wstring(level);
        ASSERT_TRUE(::CreateDirectoryW(deep.c_str(), nullptr));
    }
    // Wine's browser now and then fails to find a folder it is asked to
    // select; asking again finds it.
    auto selectDeep = [&](HWND browser) {
        ::SendMessageW(browser, BFFM_SETSELECTIONW, TRUE, (LPARAM)deep.c_str());
        return ItemText(browser, kBrowserStatus).find(L"number 3") != std::wstring::npos;
    };
    script.Then([](HWND dialog) { Click(dialog, IDC_SAVE_PATH_BROWSE); })
        .ThenWhen(selectDeep, [](HWND browser) { Click(browser, IDOK); })
        .Then([&](HWND dialog) {
            const std::wstring shown = ItemText(dialog, IDC_SAVE_PATH);
            EXPECT_NE(std::wstring::npos, shown.find(L"...")) << shown;
            EXPECT_EQ(L"number 3", shown.substr(shown.size() - 8));
            Click(dialog, IDCANCEL);
        });
    EXPECT_EQ(IDCANCEL, Run());
    EXPECT_TRUE(script.Finished());
}

} // namespace
