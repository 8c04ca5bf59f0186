// The real qxltool.exe on logs the tests write: golden outputs, filters
// against reading every record, a range across a rollover, check on damaged
// files, surrogates, conversion and the errors a script sees.
#include <gtest/gtest.h>

#include <random>
#include <regex>

#include "ToolTestSupport.h"
#include "log/LogFormat.h"
#include "tools/qxltool/ExitCodes.h"
#include "tools/qxltool/RangeSlots.h"
#include "tools/qxltool/TimeText.h"

using testing_support::TempDir;
using testing_support::WriteFileBytes;

namespace {

constexpr DWORD Code(QxlExitCode code)
{
    return static_cast<DWORD>(code);
}

const std::string kPump = "\xE6\xB3\xB5 P-102 \xE5\x81\x9C\xE6\xAD\xA2";  // "泵 P-102 停止"

// Two files of one log, rolled over at 14:06.
class ToolOnLogSet : public ::testing::Test {
protected:
    void SetUp() override
    {
        WriteFileBytes(dir / L"2611231405.qxl", LogImage({{LocalAt(23, 14, 5, 0), L"Pump P-101 started"},
                                                          {LocalAt(23, 14, 5, 30, 250), L"Valve V-7, \"open\""},
                                                          {LocalAt(23, 14, 5, 59, 999), L"\x6CF5 P-102 \x505C\x6B62"}}));
        WriteFileBytes(dir / L"2611231406.qxl",
                       LogImage({{LocalAt(23, 14, 6, 0, 1), L"Tank T-1 high"}, {LocalAt(23, 14, 6, 10), L""}}));
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
              "2026-11-23 14:05:59.999  " + kPump + "\n"
              "2026-11-23 14:06:00.001  Tank T-1 high\n"
              "2026-11-23 14:06:10.000  \n",
              r.out);
    EXPECT_EQ("", r.err);

    r = RunTool({L"dump", L"--csv", dir.Path()});
    EXPECT_EQ("time,file,slot,text\n"
              "2026-11-23T14:05:00.000,2611231405.qxl,1,Pump P-101 started\n"
              "2026-11-23T14:05:30.250,2611231405.qxl,2,\"Valve V-7, \"\"open\"\"\"\n"
              "2026-11-23T14:05:59.999,2611231405.qxl,3," + kPump + "\n"
              "2026-11-23T14:06:00.001,2611231406.qxl,1,Tank T-1 high\n"
              "2026-11-23T14:06:10.000,2611231406.qxl,2,\n",
              r.out);

    // Files named one by one come out in name-time order all the same.
    r = RunTool({L"dump", L"--json", dir / L"2611231406.qxl", dir / L"2611231405.qxl"});
    EXPECT_EQ("{\"time\":\"2026-11-23T14:05:00.000\",\"file\":\"2611231405.qxl\",\"slot\":1,\"text\":\"Pump P-101 started\"}\n"
              "{\"time\":\"2026-11-23T14:05:30.250\",\"file\":\"2611231405.qxl\",\"slot\":2,\"text\":\"Valve V-7, \\\"open\\\"\"}\n"
              "{\"time\":\"2026-11-23T14:05:59.999\",\"file\":\"2611231405.qxl\",\"slot\":3,\"text\":\"" + kPump + "\"}\n"
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
              "2026-11-23T14:05:59.999 " + kPump + "\n"
              "2026-11-23T14:06:00.001 Tank T-1 high\n",
              r.out);
    // The minute 14:05 as a whole.
    r = RunTool({L"dump", L"--count", L"--from", L"2026-11-23 14:05", L"--to", L"2026-11-23 14:05", dir.Path()});
    EXPECT_EQ("3\n", r.out);
}

TEST_F(ToolOnLogSet, ErrorsTellWhatWentWrongWithTheirOwnExitCode)
{
    ToolResult r = RunTool({L"dump", dir / L"2611231407.qxl"});
    EXPECT_EQ(Code(kExitUnreadable), r.exitCode);
    EXPECT_NE(std::string::npos, r.err.find("2611231407.qxl: no such file or directory"));

    r = RunTool({L"dump", L"--from", L"23.11.2026", dir.Path()});
    EXPECT_EQ(Code(kExitUsage), r.exitCode);
    EXPECT_NE(std::string::npos, r.err.find("not a time"));
    EXPECT_NE(std::string::npos, r.err.find("usage: qxltool"));
    EXPECT_EQ(Code(kExitUsage), RunTool({L"dump", L"--regex", L"([", dir.Path()}).exitCode);
    EXPECT_EQ(0u, RunTool({L"--help"}).out.find("usage: qxltool"));

    // A file of a newer version is refused and the rest still read.
    std::vector<unsigned char> newer = LogImage({{LocalAt(23, 14, 7, 0), L"from the future"}});
    newer[0] = '8';
    WriteFileBytes(dir / L"2611231407.qxl", newer);
    r = RunTool({L"dump", L"--count", dir.Path()});
    EXPECT_EQ(Code(kExitRefused), r.exitCode);
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
                             {LocalAt(23, 14, 5, 3), std::wstring(127, L'x') + L"\xD83D"}}));
    const ToolResult r = RunTool({L"dump", L"--json", dir.Path()});
    EXPECT_EQ(0u, r.exitCode);
    EXPECT_NE(std::string::npos, r.out.find("\"text\":\"high \\ud83d alone\""));
    EXPECT_NE(std::string::npos, r.out.find("\"text\":\"\\ude00 low first\""));
    EXPECT_NE(std::string::npos, r.out.find("\"text\":\"pair \xF0\x9F\x98\x80 ok\""));
    EXPECT_NE(std::string::npos, r.out.find("\"text\":\"" + std::string(127, 'x') + "\\ud83d\"}"));
}

namespace {

const wchar_t* const kWords[] = {L"Pump", L"Valve", L"Tank", L"alarm", L"P-101", L"V-7", L"high",
                                 L"low", L"started", L"stopped", L"\x6CF5", L"\x505C\x6B62"};

SYSTEMTIME AtMs(long long ms)
{
    return LocalAt(23, static_cast<WORD>(10 + ms / 3600000), static_cast<WORD>(ms / 60000 % 60),
                   static_cast<WORD>(ms / 1000 % 60), static_cast<WORD>(ms % 1000));
}

std::wstring Wide(const std::string& text)
{
    return std::wstring(text.begin(), text.end());
}

// "file slot" of each JSON line.
std::vector<std::string> Places(const std::string& json)
{
    std::vector<std::string> places;
    for (size_t at = json.find("\"file\":\""); at != std::string::npos; at = json.find("\"file\":\"", at + 1)) {
        const size_t nameEnd = json.find('"', at + 8);
        const size_t slot = json.find("\"slot\":", nameEnd) + 7;
        places.push_back(json.substr(at + 8, nameEnd - at - 8) + " " + json.substr(slot, json.find(',', slot) - slot));
    }
    return places;
}

} // namespace

TEST(ToolFilters, AgreeWithReadingEveryRecordOnRandomLogs)
{
    std::mt19937 random(20261123);
    for (int round = 0; round < 2; ++round) {
        // Three files of one log, each started in a minute of its own, with
        // runs of equal stamps.
        TempDir dir;
        std::vector<std::pair<std::string, TestRecord>> all;  // "file slot", record
        long long ms = 0;
        for (int f = 0; f < 3; ++f) {
            ms = (ms / 60000 + 1 + random() % 2) * 60000;
            wchar_t name[kLogFileNameBufferUnits];
            MakeLogFileName(AtMs(ms), name);
            std::vector<TestRecord> records;
            for (int i = static_cast<int>(random() % 300); i > 0; --i) {
                ms += random() % 3 == 0 ? 0 : random() % 700;
                std::wstring text;
                for (int w = static_cast<int>(random() % 4); w >= 0; --w)
                    text += std::wstring(kWords[random() % 12]) + L" ";
                records.push_back({AtMs(ms), text});
                all.push_back({std::string(name, name + 14) + " " + std::to_string(records.size()), records.back()});
            }
            WriteFileBytes(dir / name, LogImage(records));
        }
        for (int query = 0; query < 3; ++query) {
            // Ends on a record's own stamp half of the time, so that equal runs are hit.
            TimeRange range;
            range.from = AtMs(random() % ms);
            range.to = AtMs(random() % ms);
            if (!all.empty() && random() % 2 == 0)
                range.from = all[random() % all.size()].second.time;
            if (CompareLocalTimes(range.from, range.to) > 0)
                std::swap(range.from, range.to);
            range.hasFrom = random() % 3 != 0;
            range.hasTo = random() % 3 != 0;
            const std::wstring grep = random() % 2 == 0 ? kWords[random() % 12] : L"";
            const std::wstring regex = random() % 2 == 0 ? L"" : L"^(Pump|Tank) |P-1\\d+ (started|stopped)";
            std::vector<std::wstring> args = {L"dump", L"--json", L"--grep", grep, L"--regex", regex};
            if (range.hasFrom)
                args.insert(args.end(), {L"--from", Wide(IsoTime(range.from))});
            if (range.hasTo)
                args.insert(args.end(), {L"--to", Wide(IsoTime(range.to))});
            args.push_back(dir.Path());

            std::vector<std::string> expected;
            for (const auto& [place, record] : all) {
                if (range.Contains(record.time) && record.text.find(grep) != std::wstring::npos &&
                    (regex.empty() || std::regex_search(record.text, std::wregex(regex))))
                    expected.push_back(place);
            }
            const ToolResult r = RunTool(args);
            ASSERT_EQ(0u, r.exitCode) << r.err;
            EXPECT_EQ(expected, Places(r.out)) << "round " << round << " query " << query;
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
    // Noise, once more behind our header, so that its records are read too.
    std::mt19937 random(7);
    std::vector<unsigned char> noise(50000);
    std::generate(noise.begin(), noise.end(), [&] { return static_cast<unsigned char>(random()); });
    WriteFileBytes(dir / L"2611231408.qxl", noise);
    std::copy_n(LogImage({}).begin(), 32, noise.begin());
    WriteFileBytes(dir / L"2611231409.qxl", noise);
    WriteFileBytes(dir / L"2611231410.qxl", std::vector<unsigned char>(31, '7'));

    r = RunTool({L"check", dir.Path()});
    EXPECT_EQ(Code(kExitDamaged), r.exitCode);
    for (const char* finding : {"2611231406.qxl: 1 record, 2026-11-23T14:05:00.000 .. 2026-11-23T14:05:00.000, damaged\n"
                                "  torn tail: 172 bytes after slot 1, the last whole record\n",
                                "2611231407.qxl: 3 records, 2026-11-23T14:05:00.000 .. 2026-11-23T14:05:01.000, damaged\n"
                                "  zero slots: 1, the first at slot 2\n",
                                "2611231408.qxl: damaged\n  header: the version text sorts after ours",
                                "2611231409.qxl: 182 records",
                                "2611231410.qxl: damaged\n"
                                "  header: the file has 31 bytes, fewer than the 32 of the version text\n",
                                "\n6 files, 188 records: 5 damaged, 0 with warnings only\n"})
        EXPECT_NE(std::string::npos, r.out.find(finding)) << finding << "\n" << r.out;
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

    EXPECT_EQ(Code(kExitUsage), RunTool({L"convert", dir / L"day00.qxl"}).exitCode);
    // An earlier conversion too short for a header is neither reused nor
    // replaced: the browser gives up silently, the tool says so.
    WriteFileBytes(dir / L"day00.qxl", std::vector<unsigned char>(10, 0));
    r = RunTool({L"convert", dir / L"day.log"});
    EXPECT_EQ(Code(kExitNotConverted), r.exitCode);
    EXPECT_NE(std::string::npos, r.err.find("not converted"));
}
