#pragma once
#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <string>
#include <thread>
#include <vector>

// What the export, setup and printing tests share: the English module as
// resource module, an owner window, logs on disk, dialogs answered from a
// helper thread, and the private printer's output read back.

// A visible dialog (class #32770, not a message box) of thread `threadId`
// other than `except`, waited for up to `timeoutMs`; null when none came.
HWND WaitForDialog(DWORD threadId, HWND except = nullptr, DWORD timeoutMs = 10000);

// Runs `script` on a helper thread while the test's thread sits in a modal
// loop; joined when the object goes away.
class DialogScript {
public:
    explicit DialogScript(std::function<void()> script) : thread_(std::move(script)) {}
    ~DialogScript() { thread_.join(); }

private:
    std::thread thread_;
};

// Posts a click of button `id` to `dialog` (needs no focus).
void PostClick(HWND dialog, int id);

// Puts `name` into a file dialog's name box and confirms it.
void AnswerFileDialog(HWND dialog, const std::wstring& name);

// A record stamped 2026-03-03 10:00:00.000 plus `seconds` seconds and
// `milliseconds`, as the records of the test logs are.
SYSTEMTIME TestStamp(int seconds, int milliseconds = 0);

// One word of a printed page and its box, in points from the page's top left.
struct PrintedWord {
    double xMin, yMin, xMax, yMax;
    std::wstring text;
};

struct Printout {
    bool exists = false;  // the printer produced a file
    int pages = 0;        // as pdfinfo counts them
    std::vector<std::vector<PrintedWord>> words;  // per page, in reading order
};

class PrintFixture : public ::testing::Test {
protected:
    static void SetUpTestSuite();
    static void TearDownTestSuite();
    void SetUp() override;
    void TearDown() override;

    // A log of `count` records "record 0" .. stamped TestStamp(i), plus
    // `tail` bytes of a torn record.
    std::wstring WriteLog(const std::wstring& name, size_t count, size_t tail = 0);

    // Whether the private printer runs (otherwise printing cases skip).
    static bool HavePrinter();
    // Waits for the printer to finish and reads what it printed since the
    // last call; `expectJob` false waits only for an idle queue.
    Printout CollectPrintout(bool expectJob);

    static HMODULE english;
    static HWND owner;
    static DWORD uiThread;
    std::wstring dir;

private:
    std::wstring tempDir_;
    static int printouts;
};
