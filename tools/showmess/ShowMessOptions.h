#pragma once
#include <string>
#include <vector>

// What the command line of showmess asks for.
struct ShowMessOptions {
    bool help = false;
    bool useAtom = false;   // the atom road instead of the component
    bool show = false;      // restore the message window first
    bool close = false;     // close the message window last, which writes its log
    bool hold = false;      // keep the component until the window closes
    unsigned count = 0;     // > 0: send that many numbered lines
    double rate = 0;        // lines per second; 0 sends as fast as possible
    std::vector<std::wstring> texts;  // the lines, or with count the prefix
};

// False, with a message in `error`, when the arguments make no sense.
bool ParseShowMessOptions(const std::vector<std::wstring>& args, ShowMessOptions& options,
                          std::wstring& error);

// Line `index` (from 1) of a counted run: "<prefix> <index>".
std::wstring NumberedLine(const ShowMessOptions& options, unsigned index);

extern const char kShowMessUsage[];
