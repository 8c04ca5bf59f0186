#include "tools/showmess/ShowMessOptions.h"

#include <cwchar>

const char kShowMessUsage[] =
    "usage: showmess [--atom] [--show] [--close] [--hold] [--count N [--rate R]] [TEXT...]\n"
    "\n"
    "Hands lines to the running message window: each TEXT is one line; without\n"
    "TEXT the lines are read from standard input (UTF-8, one per line).\n"
    "\n"
    "  --atom      send through the window message with a global atom (at most\n"
    "              127 characters arrive) instead of the ShowMess component\n"
    "  --show      restore the message window from its minimised state\n"
    "  --close     close the message window afterwards (it writes its pending\n"
    "              lines to the log) and wait until it has gone\n"
    "  --hold      keep the ShowMess object until the window closes: a server\n"
    "              ends 5 seconds after its last client lets go\n"
    "  --count N   send N numbered lines \"TEXT 1\" .. \"TEXT N\" and report the rate\n"
    "  --rate R    at most R lines per second (with --count)\n"
    "  --help      this text\n"
    "\n"
    "--show or --close alone sends nothing.  Exit code 0 when every line was\n"
    "handed over, 1 when the window or its component could not be reached, 2 for\n"
    "a wrong command line.\n";

namespace {

bool ReadNumber(const std::wstring& text, double& value)
{
    wchar_t* end = nullptr;
    value = std::wcstod(text.c_str(), &end);
    return !text.empty() && end != nullptr && *end == L'\0' && value >= 0;
}

} // namespace

bool ParseShowMessOptions(const std::vector<std::wstring>& args, ShowMessOptions& options,
                          std::wstring& error)
{
    options = ShowMessOptions();
    bool textsOnly = false;
    for (size_t i = 0; i < args.size(); ++i) {
        const std::wstring& arg = args[i];
        if (textsOnly || arg.size() < 2 || arg.compare(0, 2, L"--") != 0) {
            options.texts.push_back(arg);
        } else if (arg == L"--") {
            textsOnly = true;
        } else if (arg == L"--help") {
            options.help = true;
        } else if (arg == L"--atom") {
            options.useAtom = true;
        } else if (arg == L"--show") {
            options.show = true;
        } else if (arg == L"--close") {
            options.close = true;
        } else if (arg == L"--hold") {
            options.hold = true;
        } else if (arg == L"--count" || arg == L"--rate") {
            double value = 0;
            if (i + 1 >= args.size() || !ReadNumber(args[i + 1], value)) {
                error = arg + L" needs a number that is not negative";
                return false;
            }
            ++i;
            if (arg == L"--count") {
                if (value < 1 || value > 4e9 || value != static_cast<unsigned>(value)) {
                    error = L"--count needs a whole number of lines, at least 1";
                    return false;
                }
                options.count = static_cast<unsigned>(value);
            } else {
                options.rate = value;
            }
        } else {
            error = L"unknown option " + arg;
            return false;
        }
    }
    if (options.rate > 0 && options.count == 0) {
        error = L"--rate goes with --count";
        return false;
    }
    if (options.hold && (options.useAtom || options.close)) {
        error = L"--hold keeps a component: not with --atom or --close";
        return false;
    }
    if (options.count > 0 && options.texts.size() > 1) {
        error = L"--count takes at most one TEXT, the prefix of the numbered lines";
        return false;
    }
    return true;
}

std::wstring NumberedLine(const ShowMessOptions& options, unsigned index)
{
    std::wstring prefix = options.texts.empty() ? L"Test line" : options.texts.front();
    return prefix + L" " + std::to_wstring(index);
}
