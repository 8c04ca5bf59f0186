#pragma once
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "msgwnd/MessWnd.h"
#include "support/DialogScript.h"
#include "support/ViewInput.h"
#include "support/TestFiles.h"

// A real main window in the test process, on a real log in a temporary save
// directory.  The window reads its settings from config\ShowMess.ini beside
// the test program, as the program does beside itself; the fixture writes
// that file and removes it again.
class MessWndFixture : public ::testing::Test {
protected:
    static void SetUpTestSuite();
    static void TearDownTestSuite();
    void TearDown() override;

    // A log of `count` records "record 0" .. in the save directory.
    std::wstring WriteLog(size_t count, const std::wstring& version = L"7.000000");
    // The settings file: a save directory unless `withDirectory` is false.
    void WriteSettings(const std::string& extraKeys, bool withDirectory = true);
    // Creates the window with a client area `lines` lines high (plus a few
    // pixels less than a line).
    void CreateWindowWithRoom(int lines);

    HWND Hwnd() const { return window->Handle(); }
    const MessageRing& Ring() const { return window->Ring(); }
    int TopLine() const { return window->View().TopLine(); }
    SCROLLINFO ScrollBar(int bar) const { return testing_support::ScrollBarOf(Hwnd(), bar); }
    LRESULT Key(WPARAM key, bool control = false)
    {
        return testing_support::SendKey(Hwnd(), key, control);
    }
    std::wstring PageText(int i) const { return testing_support::PageLine(window->View(), i); }
    std::wstring LastPageText() const { return PageText(window->View().PageCount() - 1); }
    std::wstring SettingsFilePath() const;
    // Height of one line of the view font.
    static int FontLineHeight();
    // Answers the quit message that destroying the window posts.
    static void DrainQuit();

    static HMODULE english;
    static std::wstring configDir;
    testing_support::TempDir saveDir;
    testing_support::DialogScript dialogs;
    std::unique_ptr<CMessWnd> window;
};
