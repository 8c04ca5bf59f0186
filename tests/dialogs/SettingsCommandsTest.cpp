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

DialogScript::Step TypeAndOk(int id, const std::wstring& text)
{
    return [id, text](HWND dialog) {
        Type(dialog, id, text);
        Click(dialog, IDOK);
    };
}

TEST_F(SettingsCommands, UnchangedDirectoryTypedInAnotherCaseChangesNothing)
{
    Open();
    std::wstring typed = dir.Path();
    ::CharUpperW(&typed[0]);
    script.Then(TypeAndOk(IDC_SAVE_PATH, typed));
    RunSaveDirectory();
    EXPECT_TRUE(script.Finished());
    EXPECT_TRUE(host.events.empty());
    EXPECT_EQ(dir.Path(), writer.SaveDirectory());
    EXPECT_FALSE(testing_support::FileExists(settingsPath));
}

TEST_F(SettingsCommands, NewDirectoryIsWrittenAndTakesTheNextLinesAtOnce)
{
    Open();
    AddLines(0, 3);
    const std::wstring created = PathOf(L"new");
    script.Then(TypeAndOk(IDC_SAVE_PATH, created))
        .Then(ExpectBox(Box(IDS_SAVEPATH_CREATE_CAPTION, Text(IDS_SAVEPATH_CREATE_ASK, created),
                            L"question", L"ok cancel")));
    RunSaveDirectory();
    EXPECT_TRUE(script.Finished());
    EXPECT_EQ(created, Setting(L"savedirectory"));
    EXPECT_EQ(NewFileEvents(), host.events);
    EXPECT_EQ(created + L"\\" + kCurrentName, writer.LogFilePath());
    EXPECT_EQ(3u, ReadLog().records.size());  // the pending lines went into the old file

    AddLines(3, 2);
    ASSERT_EQ(1, writer.FlushPending(ring->PendingCount()));
    const DecodedLog fresh = DecodeLog(testing_support::ReadFileBytes(writer.LogFilePath()));
    ASSERT_EQ(2u, fresh.records.size());
    EXPECT_EQ(LineText(4), fresh.records[1].text);
}

TEST_F(SettingsCommands, FailedNewFileIsReportedAndTheDirectoryStays)
{
    Open();
    // An existing file passes as a directory, but no log file can be made in it.
    const std::wstring file = PathOf(L"file");
    testing_support::WriteFileBytes(file, {});
    script.Then(TypeAndOk(IDC_SAVE_PATH, file)).Then([&](HWND box) {
        EXPECT_EQ(script.Owner(), ::GetWindow(box, GW_OWNER));
        ExpectBox(Box(IDS_ERROR_CAPTION, Text(IDS_NEW_LOG_FAILED), L"error"))(box);
    });
    RunSaveDirectory();
    EXPECT_TRUE(script.Finished());
    EXPECT_EQ(file, writer.SaveDirectory());
    EXPECT_EQ(file, Setting(L"savedirectory"));
    EXPECT_EQ(PathOf(kCurrentName), writer.LogFilePath());
}

TEST_F(SettingsCommands, ParametersShowAsUnsignedAndAreWrittenInOrder)
{
    writer.SetSettings(30, 4294967295u, 7);
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
    EXPECT_EQ("[save]\r\nsavedays=2147483647\r\nsavetime=42\r\nlogsize=0\r\n",
              std::string(bytes.begin(), bytes.end()));
}

TEST_F(SettingsCommands, RefusedFieldKeepsTheDialogAndCancelChangesNothing)
{
    script.Then([](HWND dialog) {
              Type(dialog, IDC_SAVE_TIME, L"5");
              Type(dialog, IDC_SAVE_DAYS, L"3000000000");
              Click(dialog, IDOK);
          })
        .Then(ExpectBox(std::wstring(L"|") + kSettingRangeMessage + L"|none|ok"))
        .Then([](HWND dialog) { Click(dialog, IDCANCEL); });
    RunSaveParams();
    EXPECT_TRUE(script.Finished());
    EXPECT_EQ(600u, writer.SaveTime());
    EXPECT_EQ(10u, writer.SaveDays());
    EXPECT_FALSE(testing_support::FileExists(settingsPath));
}

TEST_F(SettingsCommands, NewLogSizeTakesEffectAtTheNextSizeCheck)
{
    Open();
    EXPECT_EQ(0, writer.OnTimer(LogTimer::Size));
    script.Then(TypeAndOk(IDC_LOG_SIZE, L"0"));
    RunSaveParams();
    EXPECT_TRUE(script.Finished());
    EXPECT_TRUE(host.events.empty());  // the command itself rolls nothing over

    testNow = LocalTime(2026, 3, 3, 14, 6);
    EXPECT_EQ(0, writer.OnTimer(LogTimer::Size));
    EXPECT_EQ(NewFileEvents(), host.events);
    EXPECT_EQ(PathOf(L"2603031406.qxl"), writer.LogFilePath());
}

} // namespace
