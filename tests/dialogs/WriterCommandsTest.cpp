#include "DialogFixture.h"

#include "dialogs/SettingsCommands.h"
#include "dialogs/WriterLogSettings.h"
#include "lang/ResourceIds.h"
#include "log/WriterFixture.h"

namespace {

// The commands on a real log writer, as the main window will run them.
class WriterCommands : public WriterTest {
protected:
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

TEST_F(WriterCommands, NewDirectoryTakesTheNextLinesAtOnce)
{
    Open();
    AddLines(0, 3);
    const std::wstring created = PathOf(L"new");
    script.Then(TypeAndOk(IDC_SAVE_PATH, created))
        .Then(ExpectBox(Box(IDS_SAVEPATH_CREATE_CAPTION, Text(IDS_SAVEPATH_CREATE_ASK, created),
                            L"question", L"ok cancel")));
    RunSaveDirectoryCommand(script.Owner(), settingsPath.c_str(), settings);
    EXPECT_TRUE(script.Finished());
    EXPECT_EQ(NewFileEvents(), host.events);
    EXPECT_EQ(created + L"\\" + kCurrentName, writer.LogFilePath());
    EXPECT_EQ(3u, ReadLog().records.size());  // the pending lines went into the old file

    AddLines(3, 2);
    ASSERT_EQ(1, writer.FlushPending(ring->PendingCount()));
    const DecodedLog fresh = DecodeLog(testing_support::ReadFileBytes(writer.LogFilePath()));
    ASSERT_EQ(2u, fresh.records.size());
    EXPECT_EQ(LineText(4), fresh.records[1].text);
}

TEST_F(WriterCommands, NewLogSizeTakesEffectAtTheNextSizeCheck)
{
    Open();
    EXPECT_EQ(0, writer.OnTimer(SizeTimer));
    script.Then(TypeAndOk(IDC_LOG_SIZE, L"0"));
    RunSaveParamsCommand(script.Owner(), settingsPath.c_str(), settings);
    EXPECT_TRUE(script.Finished());
    EXPECT_TRUE(host.events.empty());  // the command itself rolls nothing over
    EXPECT_EQ(600u, writer.SaveTime());

    testNow = LocalTime(2026, 3, 3, 14, 6);
    EXPECT_EQ(0, writer.OnTimer(SizeTimer));
    EXPECT_EQ(NewFileEvents(), host.events);
    EXPECT_EQ(PathOf(L"2603031406.qxl"), writer.LogFilePath());
}

} // namespace
