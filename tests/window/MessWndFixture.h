#pragma once
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "msgwnd/MessWnd.h"
#include "support/DialogScript.h"
#include "support/TestFiles.h"
#include "support/ViewInput.h"

// A real main window in the test process, on a real log in a temporary save
// directory.  The window reads its settings from config\ShowMess.ini beside
// the test program, as the program does beside itself; the fixture writes
// that file and removes it again.
class MessWndFixture : public ::testing::Test {
public:
    // Dispatches what is waiting, answering the quit message that destroying
    // the window posts.
    static void DrainQuit();

protected:
    static void SetUpTestSuite();
    static void TearDownTestSuite() { testing_support::RemoveTree(configDir); }
    void TearDown() override;

    // The current log: `records` records "record 0".., a second apart from
    // 2026-03-03 10:00:00; the settings naming its directory; and the window
    // over it with room for `lines` lines.
    void Open(size_t records, int lines = 20);
    // Creates the window with a client area `lines` lines high (plus half a
    // line).
    void CreateWindowWithRoom(int lines);
    // Opens a browser through the menu command, answering the file dialog.
    CBrowseWnd* OpenLog(const std::wstring& path);
    // Overwrites the version text of a log with a newer one.
    static void MakeNewer(const std::wstring& log);

    HWND Hwnd() const { return window->Handle(); }
    int TopLine() const { return window->View().TopLine(); }
    std::wstring PageText(int i) const { return testing_support::PageLine(window->View(), i); }
    std::wstring LastPageText() const { return PageText(window->View().PageCount() - 1); }
    std::wstring SettingsFilePath() const { return configDir + L"\\ShowMess.ini"; }

    static inline std::wstring configDir;
    testing_support::TempDir saveDir;
    const std::wstring currentLog = saveDir / L"2603031000.qxl";
    testing_support::DialogScript dialogs;
    std::unique_ptr<CMessWnd> window;
};
