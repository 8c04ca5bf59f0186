#include "DialogFixture.h"

#include <string>
#include <vector>

#include "dialogs/SaveParamDlg.h"
#include "dialogs/SavePathDlg.h"
#include "dialogs/SettingsCommands.h"

namespace {

// The writer's settings as the commands change them: every change and every
// start of a new file is one event; a start also records what the settings
// file says at that moment.
class RecordingSettings : public LogSettings {
public:
    RecordingSettings(std::wstring directory, std::wstring settingsPath)
        : directory_(std::move(directory)), settingsPath_(std::move(settingsPath))
    {
    }
    std::vector<std::wstring> events;
    int startResult = 1;

    const wchar_t* SaveDirectory() const override { return directory_.c_str(); }
    void SetSaveDirectory(const wchar_t* directory) override
    {
        directory_ = directory;
        events.push_back(L"directory " + directory_);
    }
    int StartNewLogFile() override
    {
        wchar_t written[MAX_PATH] = {};
        ::GetPrivateProfileStringW(L"save", L"savedirectory", L"", written, MAX_PATH,
                                   settingsPath_.c_str());
        events.push_back(L"start, file says " + std::wstring(written));
        return startResult;
    }
    SaveParameters Parameters() const override { return {30, 4294967295u, 7}; }
    void SetParameters(const SaveParameters& p) override
    {
        events.push_back(L"parameters " + std::to_wstring(p.saveDays) + L" " +
                         std::to_wstring(p.saveTime) + L" " + std::to_wstring(p.logSize));
    }

private:
    std::wstring directory_;
    std::wstring settingsPath_;
};

class SettingsCommands : public DialogFixture {
protected:
    std::string SettingsFile() const
    {
        const std::vector<unsigned char> bytes = testing_support::ReadFileBytes(settingsPath);
        return std::string(bytes.begin(), bytes.end());
    }
    const std::wstring settingsPath = dir / L"ShowMess.ini";
    RecordingSettings settings{L"C:\\old", settingsPath};
};

DialogScript::Step TypeAndOk(int id, const std::wstring& text)
{
    return [id, text](HWND dialog) {
        Type(dialog, id, text);
        Click(dialog, IDOK);
    };
}

TEST_F(SettingsCommands, UnchangedDirectoryInAnotherCaseChangesNothing)
{
    settings.SetSaveDirectory(dir.Path().c_str());
    settings.events.clear();
    std::wstring typed = dir.Path();
    ::CharUpperW(&typed[0]);
    script.Then(TypeAndOk(IDC_SAVE_PATH, typed));
    RunSaveDirectoryCommand(script.Owner(), settingsPath.c_str(), settings);
    EXPECT_TRUE(script.Finished());
    EXPECT_TRUE(settings.events.empty());
    EXPECT_FALSE(testing_support::FileExists(settingsPath));
}

TEST_F(SettingsCommands, NewDirectoryIsStoredWrittenAndStartedIn)
{
    script.Then(TypeAndOk(IDC_SAVE_PATH, dir.Path() + L"\\"));
    RunSaveDirectoryCommand(script.Owner(), settingsPath.c_str(), settings);
    EXPECT_TRUE(script.Finished());
    const std::vector<std::wstring> expected = {L"directory " + dir.Path(),
                                                L"start, file says " + dir.Path()};
    EXPECT_EQ(expected, settings.events);
}

TEST_F(SettingsCommands, FailedStartIsReportedAndTheDirectoryStays)
{
    settings.startResult = 0;
    script.Then(TypeAndOk(IDC_SAVE_PATH, dir.Path()))
        .Then([&](HWND box) {
            EXPECT_EQ(script.Owner(), ::GetWindow(box, GW_OWNER));
            ExpectBox(Box(IDS_ERROR_CAPTION, Text(IDS_NEW_LOG_FAILED), L"error"))(box);
        });
    RunSaveDirectoryCommand(script.Owner(), settingsPath.c_str(), settings);
    EXPECT_TRUE(script.Finished());
    EXPECT_EQ(2u, settings.events.size());
    EXPECT_EQ(dir.Path(), settings.SaveDirectory());
}

TEST_F(SettingsCommands, ParametersShowAsUnsignedAndAreWrittenInOrderOnOk)
{
    script.Then([](HWND dialog) {
        EXPECT_EQ(L"4294967295", ItemText(dialog, IDC_SAVE_TIME));
        EXPECT_EQ(L"30", ItemText(dialog, IDC_SAVE_DAYS));
        EXPECT_EQ(L"7", ItemText(dialog, IDC_LOG_SIZE));
        Type(dialog, IDC_SAVE_TIME, L" 42");
        Type(dialog, IDC_SAVE_DAYS, L"0x7FFFFFFF");
        Type(dialog, IDC_LOG_SIZE, L"");
        Click(dialog, IDOK);
    });
    RunSaveParamsCommand(script.Owner(), settingsPath.c_str(), settings);
    EXPECT_TRUE(script.Finished());
    EXPECT_EQ(std::vector<std::wstring>{L"parameters 2147483647 42 0"}, settings.events);
    EXPECT_EQ("[save]\r\nsavedays=2147483647\r\nsavetime=42\r\nlogsize=0\r\n", SettingsFile());
}

TEST_F(SettingsCommands, RefusedFieldKeepsTheDialogAndCancelChangesNothing)
{
    const std::wstring rangeBox = std::wstring(L"|") + kSettingRangeMessage + L"|none|ok";
    script.Then([](HWND dialog) {
              Type(dialog, IDC_SAVE_TIME, L"5");
              Type(dialog, IDC_SAVE_DAYS, L"3000000000");
              Click(dialog, IDOK);
          })
        .Then(ExpectBox(rangeBox))
        .Then([](HWND dialog) { Click(dialog, IDCANCEL); });
    RunSaveParamsCommand(script.Owner(), settingsPath.c_str(), settings);
    EXPECT_TRUE(script.Finished());
    EXPECT_TRUE(settings.events.empty());
    EXPECT_FALSE(testing_support::FileExists(settingsPath));
}

TEST_F(SettingsCommands, EachRefusedFieldStopsTheCheckThere)
{
    CSaveParamDlg dialog;
    const std::wstring rangeBox = std::wstring(L"|") + kSettingRangeMessage + L"|none|ok";
    script.Then(TypeAndOk(IDC_LOG_SIZE, L"12345678901"))
        .Then(ExpectBox(rangeBox))
        .Then(TypeAndOk(IDC_LOG_SIZE, L"-1"))
        .Then(ExpectBox(rangeBox))
        .Then(TypeAndOk(IDC_LOG_SIZE, L"12abc"));
    dialog.saveDays = 0;
    EXPECT_EQ(IDOK, dialog.DoModal(script.Owner()));
    EXPECT_TRUE(script.Finished());
    EXPECT_EQ(600u, dialog.saveTime);
    EXPECT_EQ(0u, dialog.saveDays);
    EXPECT_EQ(12u, dialog.logSize);
}

} // namespace
