#include "DialogFixture.h"

#include "dialogs/SaveParamDlg.h"
#include "dialogs/SettingsCommands.h"
#include "dialogs/WriterLogSettings.h"
#include "lang/ResourceIds.h"
#include "log/WriterFixture.h"

namespace {

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
    AddLines(0, 3);
    // The same directory in another case changes nothing at all.
    std::wstring typed = dir.Path();
    ::CharUpperW(&typed[0]);
    script.Then(TypeAndOk(IDC_SAVE_PATH, typed));
    RunSaveDirectory();
    EXPECT_TRUE(host.events.empty());
    EXPECT_EQ(dir.Path(), writer.SaveDirectory());
    EXPECT_FALSE(testing_support::FileExists(settingsPath));

    // A new one, named in any script, is written and takes the next lines at
    // once; the pending lines go into the old file.
    const std::wstring created = PathOf(L"\x65B0\x65E5\x5FD7 new");
    script.Then(TypeAndOk(IDC_SAVE_PATH, created)).Then(ExpectCreateQuestion(created));
    RunSaveDirectory();
    EXPECT_EQ(created, Setting(L"savedirectory"));
    EXPECT_EQ(NewFileEvents(), host.events);
    EXPECT_EQ(3u, ReadLog().records.size());
    AddLines(3, 2);
    ASSERT_EQ(1, writer.FlushPending(ring->PendingCount()));
    const DecodedLog fresh = DecodeLog(testing_support::ReadFileBytes(created + L"\\" + kCurrentName));
    ASSERT_EQ(2u, fresh.records.size());
    EXPECT_EQ(LineText(4), fresh.records[1].text);

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

TEST_F(SettingsCommands, ParametersShowUnsignedRefuseOutOfRangeAndTakeEffectAtTheNextCheck)
{
    Open();
    writer.SetSettings(30, 4294967295u, 7);
    EXPECT_EQ(0, writer.OnTimer(LogTimer::Size));
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
    EXPECT_FALSE(testing_support::FileExists(settingsPath));

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

    // The commands themselves roll nothing over; the next size check does.
    EXPECT_TRUE(host.events.empty());
    testNow = LocalTime(2026, 3, 3, 14, 6);
    EXPECT_EQ(0, writer.OnTimer(LogTimer::Size));
    EXPECT_EQ(NewFileEvents(), host.events);
    EXPECT_EQ(PathOf(L"2603031406.qxl"), writer.LogFilePath());
}

} // namespace
