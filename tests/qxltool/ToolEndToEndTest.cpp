// The real qxltool.exe on logs the tests write: golden outputs, filters
// against reading every record, ranges across a rollover, check on damaged
// files, surrogates, conversion and the errors a script sees.
#include <gtest/gtest.h>

#include <random>
#include <set>

#include "TestLogs.h"
#include "ToolProcess.h"
#include "log/LogFormat.h"
#include "tools/qxltool/ExitCodes.h"
#include "tools/qxltool/RangeSlots.h"
#include "tools/qxltool/TextFilter.h"

using testing_support::TempDir;
using testing_support::WriteFileBytes;

namespace {

// Two files of one log, rolled over at 14:06.
class ToolOnLogSet : public ::testing::Test {
protected:
    void SetUp() override
    {
        WriteFileBytes(dir / L"2611231405.qxl",
                       LogImage({{LocalAt(23, 14, 5, 0), L"Pump P-101 started"},
                                 {LocalAt(23, 14, 5, 30, 250), L"Valve V-7, \"open\""},
                                 {LocalAt(23, 14, 5, 59, 999), L"\x6CF5 P-102 \x505C\x6B62"}}));
        WriteFileBytes(dir / L"2611231406.qxl",
                       LogImage({{LocalAt(23, 14, 6, 0, 1), L"Tank T-1 high"},
                                 {LocalAt(23, 14, 6, 10), L""}}));
    }

    TempDir dir;
};

} // namespace

TEST_F(ToolOnLogSet, DumpsInEachFormat)
{
    ToolResult r = RunTool({L"dump", L"--lang", L"en", dir.Path()});
    EXPECT_EQ(0u, r.exitCode) << r.err;
    EXPECT_EQ("2026-11-23 14:05:00.000  Pump P-101 started\n"
              "2026-11-23 14:05:30.250  Valve V-7, \"open\"\n"
              "2026-11-23 14:05:59.999  \xE6\xB3\xB5 P-102 \xE5\x81\x9C\xE6\xAD\xA2\n"
              "2026-11-23 14:06:00.001  Tank T-1 high\n"
              "2026-11-23 14:06:10.000  \n",
              r.out);
    EXPECT_EQ("", r.err);

    r = RunTool({L"dump", L"--iso", dir / L"2611231406.qxl"});
    EXPECT_EQ("2026-11-23T14:06:00.001 Tank T-1 high\n2026-11-23T14:06:10.000 \n", r.out);

    r = RunTool({L"dump", L"--csv", dir.Path()});
    EXPECT_EQ("time,file,slot,text\n"
              "2026-11-23T14:05:00.000,2611231405.qxl,1,Pump P-101 started\n"
              "2026-11-23T14:05:30.250,2611231405.qxl,2,\"Valve V-7, \"\"open\"\"\"\n"
              "2026-11-23T14:05:59.999,2611231405.qxl,3,\xE6\xB3\xB5 P-102 \xE5\x81\x9C\xE6\xAD\xA2\n"
              "2026-11-23T14:06:00.001,2611231406.qxl,1,Tank T-1 high\n"
              "2026-11-23T14:06:10.000,2611231406.qxl,2,\n",
              r.out);

    // Files named one by one come out in name-time order all the same.
    r = RunTool({L"dump", L"--json", dir / L"2611231406.qxl", dir / L"2611231405.qxl"});
    EXPECT_EQ("{\"time\":\"2026-11-23T14:05:00.000\",\"file\":\"2611231405.qxl\",\"slot\":1,\"text\":\"Pump P-101 started\"}\n"
              "{\"time\":\"2026-11-23T14:05:30.250\",\"file\":\"2611231405.qxl\",\"slot\":2,\"text\":\"Valve V-7, \\\"open\\\"\"}\n"
              "{\"time\":\"2026-11-23T14:05:59.999\",\"file\":\"2611231405.qxl\",\"slot\":3,\"text\":\"\xE6\xB3\xB5 P-102 \xE5\x81\x9C\xE6\xAD\xA2\"}\n"
              "{\"time\":\"2026-11-23T14:06:00.001\",\"file\":\"2611231406.qxl\",\"slot\":1,\"text\":\"Tank T-1 high\"}\n"
              "{\"time\":\"2026-11-23T14:06:10.000\",\"file\":\"2611231406.qxl\",\"slot\":2,\"text\":\"\"}\n",
              r.out);
}

TEST_F(ToolOnLogSet, ARangeReadsAcrossTheRollover)
{
    ToolResult r = RunTool({L"dump", L"--iso", L"--from", L"2026-11-23 14:05:30.250", L"--to",
                            L"2026-11-23T14:06:00.001", dir.Path()});
    EXPECT_EQ(0u, r.exitCode);
    EXPECT_EQ("2026-11-23T14:05:30.250 Valve V-7, \"open\"\n"
              "2026-11-23T14:05:59.999 \xE6\xB3\xB5 P-102 \xE5\x81\x9C\xE6\xAD\xA2\n"
              "2026-11-23T14:06:00.001 Tank T-1 high\n",
              r.out);
    // The minute 14:05 as a whole, and a count of it.
    r = RunTool({L"dump", L"--count", L"--from", L"2026-11-23 14:05", L"--to", L"2026-11-23 14:05", dir.Path()});
    EXPECT_EQ("3\n", r.out);
    r = RunTool({L"dump", L"--count", L"--from", L"2026-11-24", dir.Path()});
    EXPECT_EQ("0\n", r.out);
}

TEST_F(ToolOnLogSet, ErrorsTellWhatWentWrongWithTheirOwnExitCode)
{
    ToolResult r = RunTool({L"dump", dir / L"2611231407.qxl"});
    EXPECT_EQ(static_cast<DWORD>(kExitUnreadable), r.exitCode);
    EXPECT_NE(std::string::npos, r.err.find("2611231407.qxl: no such file or directory"));

    TempDir empty;
    EXPECT_EQ(static_cast<DWORD>(kExitUnreadable), RunTool({L"check", empty.Path()}).exitCode);

    r = RunTool({L"dump", L"--from", L"23.11.2026", dir.Path()});
    EXPECT_EQ(static_cast<DWORD>(kExitUsage), r.exitCode);
    EXPECT_NE(std::string::npos, r.err.find("not a time"));
    EXPECT_NE(std::string::npos, r.err.find("usage: qxltool"));
    EXPECT_EQ(static_cast<DWORD>(kExitUsage), RunTool({L"dump", L"--regex", L"([", dir.Path()}).exitCode);

    r = RunTool({L"--help"});
    EXPECT_EQ(0u, r.exitCode);
    EXPECT_EQ(0u, r.out.find("usage: qxltool"));

    // A newer file is refused and the rest still read.
    std::vector<unsigned char> newer = LogImage({{LocalAt(23, 14, 7, 0), L"from the future"}});
    newer[0] = '8';
    WriteFileBytes(dir / L"2611231407.qxl", newer);
    r = RunTool({L"dump", L"--count", dir.Path()});
    EXPECT_EQ(static_cast<DWORD>(kExitRefused), r.exitCode);
    EXPECT_EQ("5\n", r.out);
    EXPECT_NE(std::string::npos, r.err.find("2611231407.qxl: written by a newer version"));
}

TEST(ToolSurrogates, JsonEscapesUnpairedHalvesAndKeepsPairs)
{
    TempDir dir;
    WriteFileBytes(dir / L"2611231405.qxl",
                   LogImage({{LocalAt(23, 14, 5, 0), L"high \xD83D alone"},
                             {LocalAt(23, 14, 5, 1), L"\xDE00 low first"},
                             {LocalAt(23, 14, 5, 2), L"pair \xD83D\xDE00 ok"},
                             {LocalAt(23, 14, 5, 3), L"cut " + std::wstring(123, L'x') + L"\xD83D"}}));
    const ToolResult r = RunTool({L"dump", L"--json", dir.Path()});
    EXPECT_EQ(0u, r.exitCode);
    EXPECT_NE(std::string::npos, r.out.find("\"text\":\"high \\ud83d alone\""));
    EXPECT_NE(std::string::npos, r.out.find("\"text\":\"\\ude00 low first\""));
    EXPECT_NE(std::string::npos, r.out.find("\"text\":\"pair \xF0\x9F\x98\x80 ok\""));
    EXPECT_NE(std::string::npos, r.out.find(std::string(123, 'x') + "\\ud83d\"}"));
}

namespace {

// A random log of three files in time order, with runs of equal stamps.
struct RandomLog {
    std::vector<std::wstring> names;
    std::vector<std::vector<TestRecord>> files;
};

const wchar_t* const kWords[] = {L"Pump", L"Valve", L"Tank", L"alarm", L"P-101", L"V-7", L"high",
                                 L"low", L"started", L"stopped", L"\x6CF5", L"\x505C\x6B62"};

RandomLog MakeRandomLog(std::mt19937& random, const TempDir& dir)
{
    RandomLog log;
    long long ms = 0;
    for (int f = 0; f < 3; ++f) {
        ms += 60000 + random() % 60000;  // each file starts in a minute of its own
        std::vector<TestRecord> records;
        const int count = static_cast<int>(random() % 300);
        SYSTEMTIME first = {};
        for (int i = 0; i < count; ++i) {
            ms += random() % 3 == 0 ? 0 : random() % 700;
            const SYSTEMTIME t = LocalAt(23, static_cast<WORD>(10 + ms / 3600000), static_cast<WORD>(ms / 60000 % 60),
                                         static_cast<WORD>(ms / 1000 % 60), static_cast<WORD>(ms % 1000));
            if (i == 0)
                first = t;
            std::wstring text;
            for (int w = static_cast<int>(random() % 4); w >= 0; --w)
                text += std::wstring(kWords[random() % 12]) + L" ";
            records.push_back({t, text});
        }
        if (count == 0)
            first = LocalAt(23, static_cast<WORD>(10 + ms / 3600000), static_cast<WORD>(ms / 60000 % 60), 0);
        wchar_t name[kLogFileNameBufferUnits];
        MakeLogFileName(first, name);
        WriteFileBytes(dir / name, LogImage(records));
        log.names.push_back(name);
        log.files.push_back(records);
    }
    return log;
}

// The records a query should give, read one by one: "file slot" lines.
std::vector<std::string> BruteForce(const RandomLog& log, const TimeRange& range, const std::wstring& grep,
                                    const std::wstring& regex)
{
    TextFilter filter;
    std::wstring error;
    filter.Set(grep, regex, error);
    std::vector<std::string> found;
    for (size_t f = 0; f < log.files.size(); ++f) {
        for (size_t i = 0; i < log.files[f].size(); ++i) {
            const TestRecord& r = log.files[f][i];
            if (range.Contains(r.time) && filter.Matches(r.text.data(), r.text.size()))
                found.push_back(std::string(log.names[f].begin(), log.names[f].end()) + " " + std::to_string(i + 1));
        }
    }
    return found;
}

// "file slot" of each JSON line the tool wrote.
std::vector<std::string> Places(const std::string& json)
{
    std::vector<std::string> places;
    for (size_t at = json.find("\"file\":\""); at != std::string::npos; at = json.find("\"file\":\"", at + 1)) {
        const size_t nameEnd = json.find('"', at + 8);
        const size_t slot = json.find("\"slot\":", nameEnd) + 7;
        places.push_back(json.substr(at + 8, nameEnd - at - 8) + " " +
                         json.substr(slot, json.find(',', slot) - slot));
    }
    return places;
}

std::wstring TimeArgument(const SYSTEMTIME& t)
{
    wchar_t text[32];
    swprintf(text, 32, L"%04u-%02u-%02u %02u:%02u:%02u.%03u", t.wYear, t.wMonth, t.wDay, t.wHour,
             t.wMinute, t.wSecond, t.wMilliseconds);
    return text;
}

} // namespace

TEST(ToolFilters, AgreeWithReadingEveryRecordOnRandomLogs)
{
    std::mt19937 random(20261123);
    for (int round = 0; round < 2; ++round) {
        TempDir dir;
        const RandomLog log = MakeRandomLog(random, dir);
        std::vector<TestRecord> all;
        for (const auto& file : log.files)
            all.insert(all.end(), file.begin(), file.end());
        for (int query = 0; query < 4; ++query) {
            std::vector<std::wstring> args = {L"dump", L"--json"};
            TimeRange range;
            // Ends on a record's own stamp half of the time, so equal runs are hit.
            const auto pick = [&] {
                SYSTEMTIME t = all.empty() ? LocalAt(23, 10, 0, 0) : all[random() % all.size()].time;
                if (random() % 2 == 0)
                    t.wMilliseconds = static_cast<WORD>(random() % 1000);
                return t;
            };
            range.hasFrom = random() % 3 != 0;
            range.hasTo = random() % 3 != 0;
            range.from = pick();
            range.to = pick();
            if (CompareLocalTimes(range.from, range.to) > 0)
                std::swap(range.from, range.to);
            if (range.hasFrom)
                args.insert(args.end(), {L"--from", TimeArgument(range.from)});
            if (range.hasTo)
                args.insert(args.end(), {L"--to", TimeArgument(range.to)});
            std::wstring grep, regex;
            if (random() % 2 == 0) {
                grep = kWords[random() % 12];
                args.insert(args.end(), {L"--grep", grep});
            }
            if (random() % 2 == 0) {
                regex = random() % 2 == 0 ? L"^(Pump|Tank) " : L"P-1\\d+ (started|stopped)";
                args.insert(args.end(), {L"--regex", regex});
            }
            args.push_back(dir.Path());
            const ToolResult r = RunTool(args);
            ASSERT_EQ(0u, r.exitCode) << r.err;
            EXPECT_EQ(BruteForce(log, range, grep, regex), Places(r.out)) << "round " << round << " query " << query;
        }
    }
}

TEST(ToolCheck, ReportsDamageAndExitsWithOne)
{
    TempDir dir;
    const TestRecord a = {LocalAt(23, 14, 5, 0), L"a"};
    const TestRecord b = {LocalAt(23, 14, 5, 1), L"b"};
    WriteFileBytes(dir / L"2611231405.qxl", LogImage({a, b}));
    ToolResult r = RunTool({L"check", dir.Path()});
    EXPECT_EQ(0u, r.exitCode);
    EXPECT_EQ("2611231405.qxl: 2 records, 2026-11-23T14:05:00.000 .. 2026-11-23T14:05:01.000, ok\n"
              "1 file, 2 records: 0 damaged, 0 with warnings only\n",
              r.out);

    std::vector<unsigned char> torn = LogImage({a, b});
    torn.resize(torn.size() - 100);
    WriteFileBytes(dir / L"2611231406.qxl", torn);
    std::vector<unsigned char> zero = LogImage({a, b, b});
    std::fill(zero.begin() + 2 * 272, zero.begin() + 3 * 272, 0);
    WriteFileBytes(dir / L"2611231407.qxl", zero);
    // Noise, once behind our header so that its records are read too.
    std::mt19937 random(7);
    std::vector<unsigned char> noise(50000);
    for (unsigned char& byte : noise)
        byte = static_cast<unsigned char>(random());
    WriteFileBytes(dir / L"2611231408.qxl", noise);
    std::copy_n(LogImage({}).begin(), 32, noise.begin());
    WriteFileBytes(dir / L"2611231410.qxl", noise);
    WriteFileBytes(dir / L"2611231409.qxl", std::vector<unsigned char>(31, '7'));

    r = RunTool({L"check", dir.Path()});
    EXPECT_EQ(static_cast<DWORD>(kExitDamaged), r.exitCode);
    EXPECT_NE(std::string::npos, r.out.find("2611231406.qxl: 1 record, 2026-11-23T14:05:00.000 .. 2026-11-23T14:05:00.000, damaged\n"
                                            "  torn tail: 172 bytes after slot 1, the last whole record\n"));
    EXPECT_NE(std::string::npos, r.out.find("2611231407.qxl: 3 records, 2026-11-23T14:05:00.000 .. 2026-11-23T14:05:01.000, damaged\n"
                                            "  zero slots: 1, the first at slot 2\n"));
    EXPECT_NE(std::string::npos, r.out.find("2611231409.qxl: damaged\n"
                                            "  header: the file has 31 bytes, fewer than the 32 of the version text\n"));
    EXPECT_NE(std::string::npos, r.out.find("2611231410.qxl: 182 records"));
    EXPECT_NE(std::string::npos, r.out.find("\n6 files, "));
    EXPECT_NE(std::string::npos, r.out.find(" 5 damaged, 0 with warnings only\n"));
}

TEST(ToolConvert, ConvertsATextLogAsTheBrowserDoes)
{
    TempDir dir;
    const std::string text = "2009-03-04 05:06:07 pump started\r\n2009-03-04 05:06:08 valve opened\r\n";
    WriteFileBytes(dir / L"day.log", std::vector<unsigned char>(text.begin(), text.end()));
    ToolResult r = RunTool({L"convert", dir / L"day.log"});
    EXPECT_EQ(0u, r.exitCode) << r.err;
    EXPECT_EQ(std::string(dir.Path().begin(), dir.Path().end()) + "\\day00.qxl\n", r.out);
    r = RunTool({L"dump", L"--iso", dir / L"day00.qxl"});
    EXPECT_EQ("2009-03-04T05:06:07.000 pump started\n2009-03-04T05:06:08.000 valve opened\n", r.out);

    EXPECT_EQ(static_cast<DWORD>(kExitUsage), RunTool({L"convert", dir / L"day00.qxl"}).exitCode);
    EXPECT_EQ(static_cast<DWORD>(kExitUnreadable), RunTool({L"convert", dir / L"night.log"}).exitCode);
    // An earlier conversion too short to hold a header is neither reused
    // nor replaced: the browser gives up silently, the tool says so.
    WriteFileBytes(dir / L"day00.qxl", std::vector<unsigned char>(10, 0));
    r = RunTool({L"convert", dir / L"day.log"});
    EXPECT_EQ(static_cast<DWORD>(kExitNotConverted), r.exitCode);
    EXPECT_NE(std::string::npos, r.err.find("not converted"));
}
