// The real qxltool.exe on logs the tests write: a filtered range across a
// rollover, check on damaged files, conversion and the errors a script
// sees.  Every format, read by the tools it is written for, is checked in
// consumers_test.py; the rules behind them directly in LogRulesTest and
// TextRulesTest.
#include <gtest/gtest.h>


#include "ToolTestSupport.h"
#include "tools/qxltool/ExitCodes.h"

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
        WriteFileBytes(dir / L"2611231405.qxl", LogImage({{L"Pump P-101 started", LocalAt(23, 14, 5, 0)},
                                                          {L"Valve V-7, \"open\"", LocalAt(23, 14, 5, 30, 250)},
                                                          {L"\x6CF5 P-102 \x505C\x6B62", LocalAt(23, 14, 5, 59, 999)}}));
        WriteFileBytes(dir / L"2611231406.qxl",
                       LogImage({{L"Tank T-1 high", LocalAt(23, 14, 6, 0, 1)}, {L"", LocalAt(23, 14, 6, 10)}}));
    }

    TempDir dir;
};

} // namespace

TEST_F(ToolOnLogSet, AFilteredRangeReadsAcrossTheRollover)
{
    ToolResult r = RunTool({L"dump", L"--iso", L"--from", L"2026-11-23 14:05:30.250", L"--to",
                            L"2026-11-23T14:06:00.001", dir.Path()});
    EXPECT_EQ(0u, r.exitCode);
    EXPECT_EQ("2026-11-23T14:05:30.250 Valve V-7, \"open\"\n"
              "2026-11-23T14:05:59.999 " + kPump + "\n"
              "2026-11-23T14:06:00.001 Tank T-1 high\n",
              r.out);
    // Both filters at once: each alone would pass two records.
    r = RunTool({L"dump", L"--count", L"--grep", L"P-10", L"--regex", L"started|high", dir.Path()});
    EXPECT_EQ("1\n", r.out);
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
    WriteFileBytes(dir / L"2611231407.qxl", LogImage({{L"from the future", LocalAt(23, 14, 7, 0)}}, L"8.000000"));
    r = RunTool({L"dump", L"--count", dir.Path()});
    EXPECT_EQ(Code(kExitRefused), r.exitCode);
    EXPECT_EQ("5\n", r.out);
    EXPECT_NE(std::string::npos, r.err.find("2611231407.qxl: written by a newer version"));
}

TEST(ToolCheck, ReportsDamageAndExitsWithOne)
{
    TempDir dir;
    const LogLine a = {L"a", LocalAt(23, 14, 5, 0)};
    const LogLine b = {L"b", LocalAt(23, 14, 5, 1)};
    WriteFileBytes(dir / L"2611231405.qxl", LogImage({a, b}));
    ToolResult r = RunTool({L"check", dir.Path()});
    EXPECT_EQ(0u, r.exitCode);
    EXPECT_EQ("2611231405.qxl: 2 records, 2026-11-23T14:05:00.000 .. 2026-11-23T14:05:01.000, ok\n"
              "1 file, 2 records: 0 damaged, 0 with warnings only\n",
              r.out);

    std::vector<unsigned char> torn = LogImage({a, b});
    torn.resize(torn.size() - 100);
    WriteFileBytes(dir / L"2611231406.qxl", torn);
    WriteFileBytes(dir / L"2611231407.qxl", MakeLogImage(L"8.000000", 3));
    WriteFileBytes(dir / L"2611231408.qxl", std::vector<unsigned char>(31, '7'));

    r = RunTool({L"check", dir.Path()});
    EXPECT_EQ(Code(kExitDamaged), r.exitCode);
    for (const char* finding : {"2611231406.qxl: 1 record, 2026-11-23T14:05:00.000 .. 2026-11-23T14:05:00.000, damaged\n"
                                "  torn tail: 172 bytes after slot 1, the last whole record\n",
                                "2611231407.qxl: damaged\n  header: the version text sorts after ours",
                                "2611231408.qxl: damaged\n"
                                "  header: the file has 31 bytes, fewer than the 32 of the version text\n",
                                "\n4 files, 3 records: 3 damaged, 0 with warnings only\n"})
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
