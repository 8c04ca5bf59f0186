#include "DialogFixture.h"

#include <shlobj.h>

#include "dialogs/FolderBrowser.h"
#include "dialogs/SavePathDlg.h"

namespace {

bool IsDirectory(const std::wstring& path)
{
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

class SavePathDialog : public DialogFixture {
protected:
    INT_PTR Run(const std::wstring& initial = L"")
    {
        ::lstrcpynW(dialog.savePath, initial.c_str(), MAX_PATH);
        return dialog.DoModal(script.Owner());
    }
    CSavePathDlg dialog;
};

// Typed with the focus elsewhere, as a user leaving the box would.
DialogScript::Step TypeAndOk(const std::wstring& path)
{
    return [path](HWND dialog) {
        Type(dialog, IDC_SAVE_PATH, path);
        ::SetFocus(::GetDlgItem(dialog, IDCANCEL));
        Click(dialog, IDOK);
    };
}

TEST_F(SavePathDialog, AcceptsAnExistingOrConfirmedNewPathInCanonicalForm)
{
    testing_support::WriteFileBytes(dir / L"file", {});
    script.Then([](HWND dialog) { EXPECT_EQ(L"C:\\old", ItemText(dialog, IDC_SAVE_PATH)); })
        .Then(TypeAndOk(L"  " + dir.Path() + L"\\ file \\ "));
    EXPECT_EQ(IDOK, Run(L"C:\\old"));
    EXPECT_EQ(dir / L"file", dialog.savePath);

    // A missing directory is created, level by level, once confirmed.
    const std::wstring missing = dir / L"a\\b\\c";
    script.Then(TypeAndOk(missing + L"\\")).Then(ExpectCreateQuestion(missing));
    EXPECT_EQ(IDOK, Run());
    EXPECT_EQ(missing, dialog.savePath);
    EXPECT_TRUE(IsDirectory(missing));
    EXPECT_TRUE(script.Finished());
}

TEST_F(SavePathDialog, EachRefusalExplainsItselfAndKeepsTheDialogWithTheFocusOnThePath)
{
    // The directory with-readonly-dir.sh made.
    const std::wstring readOnly = testing_support::PathFromEnvironment("ORIEL_READONLY_DIR");
    ASSERT_FALSE(readOnly.empty()) << "run through with-readonly-dir.sh";
    testing_support::WriteFileBytes(dir / L"file", {});
    const std::wstring missing = dir / L"a\\b\\c";
    const std::wstring belowFile = dir / L"file\\sub";
    const struct {
        std::wstring typed;
        std::vector<DialogScript::Step> boxes;
    } cases[] = {
        {L"", {ExpectBox(IDS_SAVEPATH_CAPTION, Text(IDS_SAVEPATH_EMPTY), L"error")}},
        {L"C:\\a:b", {ExpectBox(IDS_SAVEPATH_CAPTION, Text(IDS_SAVEPATH_INVALID), L"error")}},
        {readOnly, {ExpectBox(IDS_SAVEPATH_READONLY_CAPTION, Text(IDS_SAVEPATH_READONLY), L"error")}},
        // Creation declined: nothing is made.
        {missing + L"\\", {ExpectCreateQuestion(missing, IDCANCEL)}},
        {belowFile,
         {ExpectCreateQuestion(belowFile),
          ExpectBox(IDS_SAVEPATH_CREATE_CAPTION, Text(IDS_SAVEPATH_CREATE_FAILED, belowFile), L"error")}},
    };
    for (const auto& c : cases) {
        script.Then(TypeAndOk(c.typed));
        for (const DialogScript::Step& box : c.boxes)
            script.Then(box);
        script.Then([typed = c.typed](HWND dialog) {
            EXPECT_EQ(::GetDlgItem(dialog, IDC_SAVE_PATH), ::GetFocus()) << typed;
        });
    }
    script.Then([](HWND dialog) { Click(dialog, IDCANCEL); });
    EXPECT_EQ(IDCANCEL, Run());
    EXPECT_TRUE(script.Finished());
    EXPECT_FALSE(testing_support::FileExists(dir / L"a"));
}

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

    const std::wstring logs = dir / L"a folder name far too long for two hundred pixels\\logs";
    ::SHCreateDirectoryExW(nullptr, logs.c_str(), nullptr);
    PIDLIST_ABSOLUTE item = ::ILCreateFromPathW(logs.c_str());
    EXPECT_EQ(0, BrowseCallback(browser, BFFM_SELCHANGED, reinterpret_cast<LPARAM>(item), 0));
    ::ILFree(item);
    EXPECT_NE(std::wstring::npos, requests.status.find(L"...\\logs")) << requests.status;
    ::DestroyWindow(browser);
}

TEST_F(SavePathDialog, BrowsedPathFillsTheEditShortenedToFit)
{
    std::wstring deep = dir.Path();
    for (int level = 0; level < 4; ++level)
        deep += L"\\a rather long folder name number " + std::to_wstring(level);
    ASSERT_EQ(ERROR_SUCCESS, ::SHCreateDirectoryExW(nullptr, deep.c_str(), nullptr));
    // Wine's browser now and then fails to find a folder it is asked to
    // select; asking again finds it.  0x3743 is its status line.
    auto selectDeep = [&](HWND browser) {
        ::SendMessageW(browser, BFFM_SETSELECTIONW, TRUE, (LPARAM)deep.c_str());
        return ItemText(browser, 0x3743).find(L"number 3") != std::wstring::npos;
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
