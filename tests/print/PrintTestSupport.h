#pragma once
#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "support/DialogScript.h"
#include "support/ResourceText.h"
#include "support/TestFiles.h"

// What the export, setup and printing tests share: the English module as
// resource module, logs on disk, a dialog script whose owner window owns
// the dialogs, and the private printer's output read back.

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
    // Per page, every page counted, empty or not; each in reading order.
    std::vector<std::vector<PrintedWord>> words;
};

// Whether the private printer runs (otherwise printing cases skip).
bool HavePrinter();
// Waits for the printer to finish and reads what it printed since the last
// call; `expectJob` false waits only for an idle queue.
Printout CollectPrintout(bool expectJob);

class PrintFixture : public ::testing::Test {
protected:
    static void SetUpTestSuite() { testing_support::UseEnglishModule(); }

    // A log of `count` records "record 0" .. stamped TestStamp(i).
    std::wstring WriteLog(const std::wstring& name, size_t count);

    testing_support::DialogScript script;
    const HWND owner = script.Owner();
    testing_support::TempDir dir;
};
