// qxltool's commands in-process: a command line from the front of the input, one or two log files from its
// rest, standard output and error caught in files, each run held against what the files say by the format
// alone.  follow ends only on Ctrl+C: it runs where its directory or --position file is refused at the start.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "tools/fuzz/FuzzDriver.h"
#include "tools/qxltool/Commands.h"
#include "tools/qxltool/ExitCodes.h"

namespace {

const wchar_t* const kNames[] = {L"2611231405.qxl", L"2611231406.qxl", L"8912312359.QXL", L"copy.qxl", L"day.log", L"day00.qxl"};
const wchar_t* const kOptions[] = {L"--iso", L"--csv", L"--json", L"--count", L"--utf16le", L"--lang", L"--from",
                                   L"--to", L"--grep", L"--regex", L"--poll", L"--position", L"--", L"-h"};

// What a file holds by the format: a version text (32 bytes) no later than ours, a 272-byte header slot,
// whole 272-byte records with valid times (a zero slot has none); a torn tail is no record.
struct LogModel { std::wstring path; bool log, refused, damaged; long long records; };
LogModel Model(const wchar_t* name, const std::string& bytes)
{
    wchar_t version[17] = {};
    std::memcpy(version, bytes.data(), std::min<std::size_t>(bytes.size(), 32));
    const bool refused = bytes.size() < 32 || _wcsnicmp(version, L"7.000000", 16) > 0, torn = bytes.size() < 272 || bytes.size() % 272;
    LogModel m{FuzzScratchPath(name), _wcsicmp(name + std::wcslen(name) - 4, L".qxl") == 0, refused, refused || torn,
               refused || bytes.size() < 272 ? 0 : static_cast<long long>(bytes.size() / 272) - 1};
    SYSTEMTIME time;
    FILETIME unused;
    for (long long slot = 1; slot <= m.records && !m.damaged; ++slot)
        m.damaged = !::SystemTimeToFileTime(static_cast<SYSTEMTIME*>(std::memcpy(&time, &bytes[272 * slot], 16)), &unused);
    WriteWholeFile(m.path, bytes.data(), bytes.size());
    return m;
}

// Of kOptions[option]: a time mostly from fields; a pattern with one quantifier at most and no counted
// repeat (a user's own exponential or deeply repeated pattern is no fault of the tool).
std::wstring Value(FuzzInput& in, std::uint32_t option)
{
    if (option == 11)  // the position file, or one that nothing makes
        return FuzzScratchPath(in.Number(4) != 0 ? L"pos.txt" : (L"m-" + in.Text(8)).c_str());
    if ((option == 6 || option == 7) && in.Number(4) != 0) {
        const unsigned y = 1598 + in.Number(512), mo = in.Number(14), d = in.Number(32), h = in.Number(25),
                       mi = in.Number(61), s = in.Number(61), ms = in.Number(1000), t = in.Number(2) ? L' ' : L'T';
        wchar_t text[32];
        _snwprintf(text, 32, L"%04u-%02u-%02u%c%02u:%02u:%02u.%03u", y, mo, d, t, h, mi, s, ms);
        return std::wstring(text, L"\x0A\x10\x13\x15\x16\x17\x0C"[in.Number(7)]);  // YYYY-MM-DD[ hh:mm[:ss[.f]]], torn
    }
    std::wstring text = in.Text(option == 6 || option == 7 ? 24 : 8);
    for (std::size_t i = 0, quantifiers = 0; option == 9 && i < text.size(); ++i)
        text[i] = (std::wcschr(L"*+?|", text[i]) && quantifiers++ > 0) || text[i] == L'{' ? L'x' : text[i];
    return text;
}

// One JSON object a line: its quotes paired (none raw inside a string), every escape one that JSON has.
bool JsonShape(const std::string& line)
{
    bool inside = false;
    for (std::size_t i = 0; i < line.size(); ++i)
        if (line[i] == '"')
            inside = !inside;
        else if (line[i] == '\\' && (!inside || !std::strchr("\"\\/bfnrtu", line[++i]) || line[i] == '\0'))
            return false;
    return !inside && line.compare(0, 9, "{\"time\":\"") == 0 && line.back() == '}';
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const std::wstring pos = FuzzScratchPath(L"pos.txt"), dir = pos.substr(0, pos.size() - 8);
    static const wchar_t* const kCommands[] = {L"dump", L"check", L"convert", L"follow"};
    FuzzInput in(data, size);
    const std::uint32_t a = in.Number(6), file[2] = {a, (a + 1 + in.Number(5)) % 6}, command = in.Number(5);
    std::vector<std::wstring> args{command < 4 ? kCommands[command] : in.Text(6)};
    for (std::uint32_t n = in.Number(8), k, form; n > 0; --n) {  // form: --o v, --o=v, --o, or a path
        if ((form = (k = in.Number(18)) < 14 ? in.Number(3) : 3) == 3)
            args.push_back(k == 14 ? dir : FuzzScratchPath(k == 17 ? (L"m-" + in.Text(8)).c_str() : kNames[file[k - 15]]));
        else
            args.push_back(kOptions[k] + (form == 1 ? L"=" + Value(in, k) : L""));
        if (form == 0 && k >= 5 && k <= 11)
            args.push_back(Value(in, k));
    }
    QxlOptions o;
    std::wstring error;
    const bool parsed = ParseQxlOptions(args, o, error);
    FUZZ_CHECK(parsed == error.empty());
    if (!parsed || o.command == QxlCommand::Help)
        return 0;
    FILETIME from{}, to{};  // what the parser takes is coherent: valid times in order, paths as the command needs
    FUZZ_CHECK(!o.range.hasFrom || ::SystemTimeToFileTime(&o.range.from, &from));
    FUZZ_CHECK(!o.range.hasTo || ::SystemTimeToFileTime(&o.range.to, &to));
    FUZZ_CHECK((!o.range.hasFrom || !o.range.hasTo || ::CompareFileTime(&from, &to) <= 0) && (!o.csvUnits || o.format == OutputFormat::Csv));
    FUZZ_CHECK(o.paths.size() == 1 || (!o.paths.empty() && (o.command == QxlCommand::Dump || o.command == QxlCommand::Check)));

    const std::wstring units = in.Text(20);
    const std::string position(units.begin(), units.end());  // the low bytes: any bytes at all
    const bool hasPosition = in.Number(2) == 1, two = in.Number(2) == 1;
    const std::size_t cut = in.Number(static_cast<std::uint32_t>(in.RestSize()) + 1), split = two ? std::min(cut, in.RestSize()) : in.RestSize();
    const std::string rest(reinterpret_cast<const char*>(in.Rest()), in.RestSize()), bytes[2] = {rest.substr(0, split), rest.substr(split)};
    static unsigned made = 0x3F;  // the names that may exist: making a file costs more than most runs
    for (std::uint32_t i = 0; i < 6; ++i)
        if ((made & 1u << i) && i != file[0] && (i != file[1] || !two))
            ::DeleteFileW(FuzzScratchPath(kNames[i]).c_str());
    made = 1u << file[0] | static_cast<unsigned>(two) << file[1] | static_cast<unsigned>(o.command == QxlCommand::Convert) << 5;
    if (o.command == QxlCommand::Follow && o.positionFile == pos)
        hasPosition ? WriteWholeFile(pos, position.data(), position.size()) : ::DeleteFileW(pos.c_str());
    std::vector<LogModel> models;
    long long earlier = -1, total = 0, named = 0;  // the size of an earlier conversion (day00.qxl); records and files named
    for (int i = 0; i < 1 + two; ++i)
        models.push_back(Model(kNames[file[i]], bytes[i])), earlier = file[i] == 5 ? bytes[i].size() : earlier;
    bool missing = false, refused = false, damaged = false;
    for (const std::wstring& path : o.paths) {
        const bool absent = ::GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES;
        if (!absent && path != dir && std::none_of(models.begin(), models.end(), [&](const LogModel& m) { return path == m.path; }))
            return 0;  // the tool stays inside the scratch folder
        missing = missing || absent;
    }
    for (const LogModel& m : models)
        if (std::any_of(o.paths.begin(), o.paths.end(), [&](const std::wstring& path) { return path == m.path || (path == dir && m.log); }))
            ++named, total += m.records, refused = refused || m.refused, damaged = damaged || m.damaged;
    const DWORD followed = ::GetFileAttributesW(o.paths[0].c_str());
    const bool noDir = followed == INVALID_FILE_ATTRIBUTES || !(followed & FILE_ATTRIBUTE_DIRECTORY);
    const std::size_t space = position.rfind(' ');  // surely no "NAME SLOT": no space after the start, no number after the last
    const unsigned char next = space + 1 < position.size() ? position[space + 1] : 0;
    if (o.command == QxlCommand::Follow && !noDir && !(o.positionFile == pos && hasPosition && (space == std::string::npos || space == 0 ||
                                                          next == 0 || (next < 0x80 && !std::strchr("+-0123456789\t\n\v\f\r", next)))))
        return 0;

    // Standard output and error go to two files open for the whole run, beside the scratch folder, gone at exit.
    static const std::wstring stem = dir + L"-" + std::to_wstring(::GetTickCount64());
    const auto make = [](const std::wstring& path) {
        return ::CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    };
    static const HANDLE caught[2] = {make(stem + L"-out"), make(stem + L"-err")};
    const DWORD kStd[2] = {STD_OUTPUT_HANDLE, STD_ERROR_HANDLE};
    HANDLE real[2];
    for (int i = 0; i < 2; ++i) {
        real[i] = ::GetStdHandle(kStd[i]), ::SetStdHandle(kStd[i], caught[i]);
        ::SetFilePointer(caught[i], 0, nullptr, FILE_BEGIN), ::SetEndOfFile(caught[i]);
    }
    const wchar_t* const lineFormat = L"%04d-%02d-%02d %02d:%02d:%02d.%03d  %s";  // both language modules'
    const int code = o.command == QxlCommand::Dump ? RunDump(o, lineFormat) : o.command == QxlCommand::Check ? RunCheck(o)
                     : o.command == QxlCommand::Convert ? RunConvert(o) : RunFollow(o, lineFormat);
    std::string text[2];  // output and errors: valid UTF-8 whatever records and paths hold
    for (int i = 0; i < 2; ++i) {
        DWORD read = 0;
        const DWORD length = ::GetFileSize(caught[i], nullptr);
        text[i].resize(length), ::SetStdHandle(kStd[i], real[i]), ::SetFilePointer(caught[i], 0, nullptr, FILE_BEGIN);
        FUZZ_CHECK(::ReadFile(caught[i], &text[i][0], length, &read, nullptr) && read == length);
        FUZZ_CHECK(length == 0 || ::MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text[i].data(), static_cast<int>(length), nullptr, 0) > 0);
    }
    const std::string& output = text[0];
    const bool usage = code == kExitUsage && !o.regex.empty(), unfiltered = o.grep.empty() && o.regex.empty() && !o.range.Limited();
    if (o.command == QxlCommand::Follow) {
        FUZZ_CHECK(code == kExitUnreadable || (usage && !noDir));
    } else if (o.command == QxlCommand::Convert) {  // day.log into day00.qxl, unless an earlier one is too short for a header
        const std::wstring converted = FuzzScratchPath(L"day00.qxl");
        FUZZ_CHECK(missing ? code == kExitUsage || code == kExitUnreadable : code == (o.paths[0] != FuzzScratchPath(L"day.log") ? kExitUsage
                                                                          : earlier >= 0 && earlier < 32 ? kExitNotConverted : kExitOk));
        FUZZ_CHECK(code != kExitOk || output == std::string(converted.begin(), converted.end()) + "\n");
    } else if (missing || named == 0) {
        FUZZ_CHECK(code == kExitUnreadable);
    } else if (o.command == QxlCommand::Check) {  // and its summary line, "N files, R records: ..."
        unsigned long files = 0, records = 0;
        FUZZ_CHECK(code == (damaged ? kExitDamaged : kExitOk));
        const std::size_t last = output.size() < 2 ? 0 : output.rfind('\n', output.size() - 2) + 1;
        FUZZ_CHECK(std::sscanf(output.c_str() + last, "%lu %*s %lu", &files, &records) == 2);
        FUZZ_CHECK(static_cast<long long>(files) == named && static_cast<long long>(records) == total);
    } else {  // dump: every whole record once (the CSV heading aside), or their count
        FUZZ_CHECK(code == (refused ? kExitRefused : kExitOk) || (code == kExitOk && o.range.Limited()) || usage);
        long long lines = 0;
        for (std::size_t start = 0, end; (end = output.find('\n', start)) != std::string::npos; start = end + 1, ++lines) {
            const std::string line = output.substr(start, end - start);
            FUZZ_CHECK(o.format == OutputFormat::Csv || std::none_of(line.begin(), line.end(), [&](char c) {
                           return static_cast<unsigned char>(c) < 0x20 || (c == 0x7F && o.format != OutputFormat::Json); }));
            FUZZ_CHECK(o.format != OutputFormat::Json || o.count || JsonShape(line));
        }
        const long long shown = o.count ? std::atoll(output.c_str()) : lines;
        FUZZ_CHECK(usage || ((output.empty() || output.back() == '\n') && (!o.count || output == std::to_string(shown) + "\n")));
        FUZZ_CHECK(usage || (o.format == OutputFormat::Csv && !o.count ? lines >= 1 + (unfiltered ? total : 0)
                                                                         : shown <= total && (shown == total || !unfiltered)));
    }
    return 0;
}
