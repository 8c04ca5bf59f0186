#include "tools/qxltool/QxlOptions.h"

#include "tools/qxltool/TimeText.h"

#include <cwchar>

const char kQxlUsage[] =
    "usage: qxltool dump [--iso|--csv [--utf16le]|--json] [--lang chs|en] [--from TIME]\n"
    "                    [--to TIME] [--grep TEXT] [--regex RE] [--count] FILE|DIR...\n"
    "       qxltool follow [--iso|--csv [--utf16le]|--json] [--lang chs|en] [--grep TEXT]\n"
    "                    [--regex RE] [--poll MS] [--position FILE] DIR\n"
    "       qxltool check FILE|DIR...\n"
    "       qxltool convert [--lang chs|en] FILE.log\n"
    "\n"
    "Reads the message window's log files (*.qxl).  Several files, or a directory,\n"
    "are read as one log in the order of the times in their names.\n"
    "\n"
    "  dump      print the records, in the window's line format by default\n"
    "  follow    print records as they are appended to the newest file of DIR,\n"
    "            going on into each new file the window starts; Ctrl+C ends it\n"
    "  check     look for damage: header, torn tail, zero slots, bad time stamps;\n"
    "            warn of time going backwards and of names that are not times\n"
    "  convert   convert an old text log into a binary log beside it, as the\n"
    "            log browser does (day.log into day00.qxl), and print its path\n"
    "\n"
    "  --iso         \"2026-11-23T14:05:10.250 text\"\n"
    "  --csv         header \"time,file,slot,text\", then one row a record\n"
    "  --json        one object a line: {\"time\":\"2026-11-23T14:05:10.250\",\n"
    "                \"file\":\"2611231405.qxl\",\"slot\":1,\"text\":\"...\"}\n"
    "  --utf16le     with --csv: a fifth column text_utf16le, filled as in JSON\n"
    "  --lang L      the line format of the Chinese (chs) or English (en) module\n"
    "                instead of the one the window chooses\n"
    "  --from TIME   only records at or after TIME (local): YYYY-MM-DD[ hh:mm[:ss[.fff]]]\n"
    "  --to TIME     only records at or before TIME; parts left out reach to the end,\n"
    "                so --from \"2026-11-23 14:05\" --to \"2026-11-23 14:05\" is one minute\n"
    "  --grep TEXT   only records whose text contains TEXT (case matters)\n"
    "  --regex RE    only records whose text matches RE (ECMAScript) somewhere\n"
    "  --count       print only the number of records\n"
    "  --poll MS     how often follow looks for new records (default 250)\n"
    "  --position F  follow goes on where the file F says (\"2611231405.qxl 18\": that\n"
    "                file from that slot, then every later file) and rewrites it after\n"
    "                each batch written, so a restarted follow repeats and skips\n"
    "                nothing; without F, or while F does not exist, it starts at the end\n"
    "  --help        this text\n"
    "\n"
    "Output is valid UTF-8 with \\n line ends, one record a line, whatever a text holds:\n"
    "half of a surrogate pair becomes U+FFFD, and then JSON adds \"text_utf16le\", the\n"
    "text's exact UTF-16LE bytes in hex.  The text and --iso lines show control\n"
    "characters as their pictures (a line feed as U+240A, a tab as U+2409); CSV\n"
    "keeps them, quoting a field with a line break; JSON escapes them.  Exit codes: 0 done; 1 check found damage;\n"
    "2 wrong command line; 3 a file or directory missing or unreadable, or no log\n"
    "files; 4 a file refused: written by a newer version or shorter than a header;\n"
    "5 the conversion failed; 6 standard output was closed.\n";

namespace {

// Each option and the commands that take it.
enum CommandBit { kDump = 1, kFollow = 2, kCheck = 4, kConvert = 8 };

struct OptionRule {
    const wchar_t* name;
    bool takesValue;
    int commands;
};

const OptionRule kOptionRules[] = {
    {L"--iso", false, kDump | kFollow},      {L"--csv", false, kDump | kFollow},
    {L"--json", false, kDump | kFollow},     {L"--lang", true, kDump | kFollow | kConvert},
    {L"--from", true, kDump},                {L"--to", true, kDump},
    {L"--grep", true, kDump | kFollow},      {L"--regex", true, kDump | kFollow},
    {L"--count", false, kDump},              {L"--poll", true, kFollow},
    {L"--utf16le", false, kDump | kFollow},  {L"--position", true, kFollow},
};

bool ReadCommand(const std::wstring& word, QxlCommand& command, int& bit)
{
    static const struct {
        const wchar_t* word;
        QxlCommand command;
        int bit;
    } kCommands[] = {{L"dump", QxlCommand::Dump, kDump},
                     {L"follow", QxlCommand::Follow, kFollow},
                     {L"check", QxlCommand::Check, kCheck},
                     {L"convert", QxlCommand::Convert, kConvert}};
    for (const auto& known : kCommands) {
        if (word == known.word) {
            command = known.command;
            bit = known.bit;
            return true;
        }
    }
    return false;
}

bool IsHelp(const std::wstring& arg)
{
    return arg == L"--help" || arg == L"-h" || arg == L"/?";
}

bool SetFormat(QxlOptions& options, OutputFormat format, bool& formatGiven, std::wstring& error)
{
    if (formatGiven && options.format != format) {
        error = L"choose one of --iso, --csv and --json";
        return false;
    }
    formatGiven = true;
    options.format = format;
    return true;
}

bool ApplyOption(const std::wstring& name, const std::wstring& value, QxlOptions& options,
                 bool& formatGiven, std::wstring& error)
{
    if (name == L"--iso")
        return SetFormat(options, OutputFormat::Iso, formatGiven, error);
    if (name == L"--csv")
        return SetFormat(options, OutputFormat::Csv, formatGiven, error);
    if (name == L"--json")
        return SetFormat(options, OutputFormat::Json, formatGiven, error);
    if (name == L"--count") {
        options.count = true;
    } else if (name == L"--utf16le") {
        options.csvUnits = true;
    } else if (name == L"--position") {
        options.positionFile = value;
    } else if (name == L"--grep") {
        options.grep = value;
    } else if (name == L"--regex") {
        options.regex = value;
    } else if (name == L"--lang") {
        if (_wcsicmp(value.c_str(), L"chs") == 0) {
            options.language = LanguageChoice::Chinese;
        } else if (_wcsicmp(value.c_str(), L"en") == 0) {
            options.language = LanguageChoice::English;
        } else {
            error = L"--lang takes chs or en, not '" + value + L"'";
            return false;
        }
    } else if (name == L"--from") {
        options.range.hasFrom = ParseTimeArgument(value, TimeEnd::Start, options.range.from, error);
        return options.range.hasFrom;
    } else if (name == L"--to") {
        options.range.hasTo = ParseTimeArgument(value, TimeEnd::End, options.range.to, error);
        return options.range.hasTo;
    } else if (name == L"--poll") {
        wchar_t* end = nullptr;
        const unsigned long ms = std::wcstoul(value.c_str(), &end, 10);
        if (value.empty() || *end != L'\0' || ms < 10 || ms > 60000) {
            error = L"--poll takes milliseconds from 10 to 60000, not '" + value + L"'";
            return false;
        }
        options.pollMilliseconds = ms;
    }
    return true;
}

bool CheckPaths(const QxlOptions& options, const std::wstring& command, std::wstring& error)
{
    const std::size_t count = options.paths.size();
    const bool single = options.command == QxlCommand::Follow || options.command == QxlCommand::Convert;
    if (count == 0)
        error = command + L" needs " + (options.command == QxlCommand::Follow ? L"a directory" : L"a file");
    else if (single && count > 1)
        error = command + L" takes one " + (options.command == QxlCommand::Follow ? L"directory" : L"file");
    else if (options.csvUnits && options.format != OutputFormat::Csv)
        error = L"--utf16le goes with --csv";
    else if (options.range.hasFrom && options.range.hasTo &&
             CompareLocalTimes(options.range.from, options.range.to) > 0)
        error = L"--from is after --to";
    return error.empty();
}

} // namespace

bool ParseQxlOptions(const std::vector<std::wstring>& args, QxlOptions& options,
                     std::wstring& error)
{
    options = QxlOptions();
    error.clear();
    for (const std::wstring& arg : args) {
        if (IsHelp(arg))
            return true;
    }
    if (!args.empty() && args[0] == L"help")
        return true;
    if (args.empty()) {
        error = L"no command given";
        return false;
    }
    int commandBit = 0;
    if (!ReadCommand(args[0], options.command, commandBit)) {
        error = L"unknown command '" + args[0] + L"'";
        return false;
    }
    bool pathsOnly = false;
    bool formatGiven = false;
    for (std::size_t i = 1; i < args.size(); ++i) {
        const std::wstring& arg = args[i];
        if (pathsOnly || arg.size() < 2 || arg.compare(0, 2, L"--") != 0) {
            options.paths.push_back(arg);
            continue;
        }
        if (arg == L"--") {
            pathsOnly = true;
            continue;
        }
        // "--name value" or "--name=value".
        const std::size_t equals = arg.find(L'=');
        const std::wstring name = arg.substr(0, equals);
        const OptionRule* rule = nullptr;
        for (const OptionRule& known : kOptionRules) {
            if (name == known.name)
                rule = &known;
        }
        if (rule == nullptr) {
            error = L"unknown option '" + name + L"'";
            return false;
        }
        if ((rule->commands & commandBit) == 0) {
            error = args[0] + L" does not take " + name;
            return false;
        }
        std::wstring value;
        if (rule->takesValue && equals != std::wstring::npos) {
            value = arg.substr(equals + 1);
        } else if (rule->takesValue) {
            if (i + 1 >= args.size()) {
                error = name + L" needs a value";
                return false;
            }
            value = args[++i];
        } else if (equals != std::wstring::npos) {
            error = name + L" takes no value";
            return false;
        }
        if (!ApplyOption(name, value, options, formatGiven, error))
            return false;
    }
    return CheckPaths(options, args[0], error);
}
