#pragma once
#include <windows.h>

#include <string>
#include <vector>

#include "tools/qxltool/RangeSlots.h"
#include "tools/qxltool/RecordFormats.h"

enum class QxlCommand { Help, Dump, Follow, Check, Convert };

// Which language module gives the line format: the one the window would
// load, or the one --lang names.
enum class LanguageChoice { AsWindow, Chinese, English };

// What the command line of qxltool asks for.
struct QxlOptions {
    QxlCommand command = QxlCommand::Help;
    std::vector<std::wstring> paths;
    OutputFormat format = OutputFormat::Line;
    LanguageChoice language = LanguageChoice::AsWindow;
    TimeRange range;
    std::wstring grep;
    std::wstring regex;
    bool count = false;           // print only the number of records
    bool csvUnits = false;        // CSV: the text_utf16le column
    std::wstring positionFile;    // follow: where it goes on from, and records how far it got
    DWORD pollMilliseconds = 250; // how often follow looks at the directory
};

// False, with a message in `error`, when the arguments make no sense.
bool ParseQxlOptions(const std::vector<std::wstring>& args, QxlOptions& options,
                     std::wstring& error);

extern const char kQxlUsage[];
