// The settings dialogs and the two commands that run them, driven for real
// under Wine and answered in-process.
#include <objbase.h>
#include <shlobj.h>

#include "dialogs/FolderBrowser.h"
#include "dialogs/SaveParamDlg.h"
#include "dialogs/SavePathDlg.h"
#include "dialogs/SettingsCommands.h"
#include "dialogs/WriterLogSettings.h"
#include "lang/ResourceIds.h"
#include "log/LogFixture.h"
#include "support/DialogScript.h"
#include "support/ResourceText.h"
#include "winlayer/Resources.h"

namespace {

using testing_support::Click;
using testing_support::DialogScript;
using testing_support::FileExists;
using testing_support::ItemText;
using testing_support::Type;

// Every test runs its dialogs from the English module on the test's thread,
// in a single-threaded apartment as the program does.
class EnglishDialogs : public ::testing::Environment {
public:
    void SetUp() override
    {
        ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        testing_support::UseEnglishModule();
    }
    void TearDown() override { ::CoUninitialize(); }
};

const auto* const environment = ::testing::AddGlobalTestEnvironment(new EnglishDialogs);

// String `id`, formatted with `argument` where it has a "%s".
std::wstring Text(UINT id, const std::wstring& argument = L"")
{
    wchar_t text[1024];
    winlayer::FormatText(text, 1024, testing_support::ResourceText(id).c_str(), argument.c_str());
    return text;
}

// A step that expects a message box with this caption string, text and icon
// (as DescribeBox shows them) and answers it.  Questions offer Cancel; the
// rest only report.
DialogScript::Step ExpectBox(UINT captionId, const std::wstring& text, const wchar_t* icon,
                             int answer = IDOK)
{
    const std::wstring buttons = icon == std::wstring(L"question") ? L"|ok cancel" : L"|ok";
    const std::wstring expected =
        (captionId != 0 ? Text(captionId) : L"") + L"|" + text + L"|" + icon + buttons;
    return [expected, answer](HWND box) {
        EXPECT_EQ(expected, testing_support::IsMessageBox(box) ? testing_support::DescribeBox(box)
                                                               : L"no message box");
        Click(box, answer);
    };
}

// The box asking whether to create the missing directory `path`.
DialogScript::Step ExpectCreateQuestion(const std::wstring& path, int answer = IDOK)
{
    return ExpectBox(IDS_SAVEPATH_CREATE_CAPTION, Text(IDS_SAVEPATH_CREATE_ASK, path), L"question",
                     answer);
}

// Types `text` into `id` and presses OK, with the focus elsewhere as a user
// leaving the box would have it.
DialogScript::Step TypeAndOk(int id, const std::wstring& text)
{
    return [id, text](HWND dialog) {
        Type(dialog, id, text);
        ::SetFocus(::GetDlgItem(dialog, IDCANCEL));
        Click(dialog, IDOK);
    };
}

class SavePathDialog : public ::testing::Test {
protected:
    INT_PTR Run(const std::wstring& initial = L"")
    {
        ::lstrcpynW(dialog.savePath, initial.c_str(), MAX_PATH);
        return dialog.DoModal(script.Owner());
    }
    DialogScript script;
    testing_support::TempDir dir;
    CSavePathDlg dialog;
};

TEST_F(SavePathDialog, AcceptsAnExistingOrConfirmedNewPathInCanonicalForm)
{
    testing_support::WriteFileBytes(dir / L"file", {});
    script.Then([](HWND dialog) { EXPECT_EQ(L"C:\\old", ItemText(dialog, IDC_SAVE_PATH)); })
        .Then(TypeAndOk(IDC_SAVE_PATH, L"  " + dir.Path() + L"\\ file \\ "));
    EXPECT_EQ(IDOK, Run(L"C:\\old"));
    EXPECT_EQ(dir / L"file", dialog.savePath);

    // A missing directory is created, level by level, once confirmed.
    const std::wstring missing = dir / L"a\\b\\c";
    script.Then(TypeAndOk(IDC_SAVE_PATH, missing + L"\\")).Then(ExpectCreateQuestion(missing));
    EXPECT_EQ(IDOK, Run());
    EXPECT_EQ(missing, dialog.savePath);
    EXPECT_TRUE(FileExists(missing));
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
        script.Then(TypeAndOk(IDC_SAVE_PATH, c.typed));
        for (const DialogScript::Step& box : c.boxes)
            script.Then(box);
        script.Then([typed = c.typed](HWND dialog) {
            EXPECT_EQ(::GetDlgItem(dialog, IDC_SAVE_PATH), ::GetFocus()) << typed;
        });
    }
    script.Then([](HWND dialog) { Click(dialog, IDCANCEL); });
    EXPECT_EQ(IDCANCEL, Run());
    EXPECT_TRUE(script.Finished());
    EXPECT_FALSE(FileExists(dir / L"a"));
}

// What BrowseCallback asks a browser to select, recorded by a stand-in window.
std::wstring selectionAsked;

LRESULT CALLBACK FakeBrowserProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == BFFM_SETSELECTIONW && wParam == TRUE)
        selectionAsked = reinterpret_cast<const wchar_t*>(lParam);
    return ::DefWindowProcW(window, message, wParam, lParam);
}

TEST_F(SavePathDialog, BrowserStartsInTheCurrentDirectory)
{
    WNDCLASSW wc = {};
    wc.lpfnWndProc = FakeBrowserProc;
    wc.lpszClassName = L"OrielFakeBrowser";
    ::RegisterClassW(&wc);
    HWND browser = ::CreateWindowW(L"OrielFakeBrowser", L"", WS_POPUP, 0, 0, 200, 100, nullptr,
                                   nullptr, nullptr, nullptr);
    wchar_t previous[MAX_PATH];
    ::GetCurrentDirectoryW(MAX_PATH, previous);
    ::SetCurrentDirectoryW(dir.Path().c_str());
    EXPECT_EQ(0, BrowseCallback(browser, BFFM_INITIALIZED, 0, 0));
    ::SetCurrentDirectoryW(previous);
    EXPECT_EQ(dir.Path(), selectionAsked);
    ::DestroyWindow(browser);
}

TEST_F(SavePathDialog, BrowsedPathIsShownAndFillsTheEditShortenedToFit)
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
        .ThenWhen(selectDeep,
                  [](HWND browser) {
                      // The selection is shown compacted to the browser's width.
                      const std::wstring status = ItemText(browser, 0x3743);
                      EXPECT_NE(std::wstring::npos, status.find(L"...\\")) << status;
                      Click(browser, IDOK);
                  })
        .Then([&](HWND dialog) {
            const std::wstring shown = ItemText(dialog, IDC_SAVE_PATH);
            EXPECT_NE(std::wstring::npos, shown.find(L"...")) << shown;
            EXPECT_EQ(L"number 3", shown.substr(shown.size() - 8));
            Click(dialog, IDCANCEL);
        });
    EXPECT_EQ(IDCANCEL, Run());
    EXPECT_TRUE(script.Finished());
}

// The two commands on a real log writer, as the main window runs them.
class SettingsCommands : public WriterTest {
protected:
    std::wstring Setting(const wchar_t* key) const
    {
        wchar_t value[MAX_PATH] = {};
        ::GetPrivateProfileStringW(L"save", key, L"", value, MAX_PATH, settingsPath.c_str());
        return value;
    }
    void RunSaveDirectory() { RunSaveDirectoryCommand(script.Owner(), SettingsFile(settingsPath.c_str()), settings); }
    void RunSaveParams() { RunSaveParamsCommand(script.Owner(), SettingsFile(settingsPath.c_str()), settings); }

    DialogScript script;
    WriterLogSettings settings{writer};
    const std::wstring settingsPath = PathOf(L"ShowMess.ini");
};

TEST_F(SettingsCommands, SaveDirectoryMovesTheLogOnlyWhenItChanges)
{
    Open();
    // The same directory in another case changes nothing at all.
    std::wstring typed = dir.Path();
    ::CharUpperW(&typed[0]);
    script.Then(TypeAndOk(IDC_SAVE_PATH, typed));
    RunSaveDirectory();
    EXPECT_TRUE(host.events.empty());
    EXPECT_EQ(dir.Path(), writer.SaveDirectory());
    EXPECT_FALSE(FileExists(settingsPath));

    // A new one, named in any script, is written and takes the next lines at
    // once (the switch itself is LogRolloverTest's).
    const std::wstring created = PathOf(L"\x65B0\x65E5\x5FD7 new");
    script.Then(TypeAndOk(IDC_SAVE_PATH, created)).Then(ExpectCreateQuestion(created));
    RunSaveDirectory();
    EXPECT_EQ(created, Setting(L"savedirectory"));
    EXPECT_EQ(NewFileEvents(), host.events);
    EXPECT_EQ(created + L"\\" + kCurrentName, writer.LogFilePath());

    // An existing file passes as a directory, but no log file can be made in
    // it: reported to the owner, and the directory is kept all the same.
    const std::wstring file = PathOf(L"file");
    testing_support::WriteFileBytes(file, {});
    const DialogScript::Step failure = ExpectBox(IDS_ERROR_CAPTION, Text(IDS_NEW_LOG_FAILED), L"error");
    script.Then(TypeAndOk(IDC_SAVE_PATH, file)).Then([&](HWND box) {
        EXPECT_EQ(script.Owner(), ::GetWindow(box, GW_OWNER));
        failure(box);
    });
    RunSaveDirectory();
    EXPECT_TRUE(script.Finished());
    EXPECT_EQ(file, writer.SaveDirectory());
    EXPECT_EQ(file, Setting(L"savedirectory"));
    EXPECT_EQ(created + L"\\" + kCurrentName, writer.LogFilePath());
}

TEST_F(SettingsCommands, ParametersShowUnsignedRefuseOutOfRangeAndTakeEffectAtOnce)
{
    Open();
    writer.SetSettings(30, 4294967295u, 7);
    // The first refused field keeps the dialog with one box, the later ones
    // unexamined; Cancel then changes nothing.
    script.Then([](HWND dialog) {
              Type(dialog, IDC_SAVE_TIME, L"-1");
              TypeAndOk(IDC_SAVE_DAYS, L"3000000000")(dialog);
          })
        .Then(ExpectBox(0, kSettingRangeMessage, L"none"))
        .Then([](HWND dialog) { Click(dialog, IDCANCEL); });
    RunSaveParams();
    EXPECT_EQ(1u, script.Boxes().size());
    EXPECT_EQ(4294967295u, writer.SaveTime());
    EXPECT_EQ(30u, writer.SaveDays());
    EXPECT_FALSE(FileExists(settingsPath));

    script.Then([](HWND dialog) {
        EXPECT_EQ(L"4294967295", ItemText(dialog, IDC_SAVE_TIME));
        EXPECT_EQ(L"30", ItemText(dialog, IDC_SAVE_DAYS));
        EXPECT_EQ(L"7", ItemText(dialog, IDC_LOG_SIZE));
        Type(dialog, IDC_SAVE_TIME, L" 42");
        Type(dialog, IDC_SAVE_DAYS, L"0x7FFFFFFF");
        Type(dialog, IDC_LOG_SIZE, L"");
        Click(dialog, IDOK);
    });
    RunSaveParams();
    EXPECT_TRUE(script.Finished());
    EXPECT_EQ(2147483647u, writer.SaveDays());
    EXPECT_EQ(42u, writer.SaveTime());
    EXPECT_EQ(0u, writer.LogSize());
    const std::vector<unsigned char> bytes = testing_support::ReadFileBytes(settingsPath);
    std::wstring text(bytes.size() / 2, L'\0');
    std::copy(bytes.begin(), bytes.end(), reinterpret_cast<unsigned char*>(&text[0]));
    EXPECT_EQ(L"\xFEFF[save]\r\nsavedays=2147483647\r\nsavetime=42\r\nlogsize=0\r\n", text);

    // No timer restarts and no rollover here: the next size check rolls over.
    EXPECT_TRUE(host.events.empty());
}

} // namespace
