// The tool's pure text rules: times, filters and the command line.  The
// encodings are proven by the tools that read them, in qxltool_test.py.
#include <gtest/gtest.h>

#include "app/LanguageModule.h"
#include "tools/qxltool/QxlOptions.h"
#include "tools/qxltool/TimeText.h"
#include "tools/qxltool/ToolLanguage.h"

TEST(TimeText, ReadsEachFormAndFillsLeftOutPartsByTheEndOfTheSpan)
{
    const auto parse = [](const wchar_t* text, TimeEnd end) {
        SYSTEMTIME t = {};
        std::wstring error;
        EXPECT_TRUE(ParseTimeArgument(text, end, t, error)) << text << L": " << error;
        return IsoTime(t);
    };
    EXPECT_EQ("2026-11-23T00:00:00.000", parse(L"2026-11-23", TimeEnd::Start));
    EXPECT_EQ("2026-11-23T23:59:59.999", parse(L"2026-11-23", TimeEnd::End));
    EXPECT_EQ("2026-11-23T14:05:59.999", parse(L"2026-11-23 14:05", TimeEnd::End));
    EXPECT_EQ("2026-11-23T14:05:07.000", parse(L"2026-11-23T14:05:07", TimeEnd::Start));
    EXPECT_EQ("2026-11-23T14:05:07.999", parse(L"2026-11-23T14:05:07", TimeEnd::End));
    EXPECT_EQ("2026-11-23T14:05:07.500", parse(L"2026-11-23 14:05:07.5", TimeEnd::Start));
    EXPECT_EQ("2026-11-23T14:05:07.599", parse(L"2026-11-23 14:05:07.5", TimeEnd::End));
    EXPECT_EQ("2024-02-29T00:00:00.042", parse(L"2024-02-29 00:00:00.042", TimeEnd::End));
}

TEST(TimeText, RefusesMalformedAndOutOfRangeTimes)
{
    SYSTEMTIME t;
    std::wstring error;
    for (const wchar_t* bad : {L"", L"2026-1-23", L"2026-11-23x", L"2026-11-23 14", L"2026-11-23 14:05:",
                               L"2026-11-23 14:05:07.", L"2026-11-23 14:05:07.1234", L"2026-13-01",
                               L"2026-11-31", L"2025-02-29", L"1900-02-29", L"2026-11-23 24:00",
                               L"2026-11-23 23:59:60", L"1600-12-31"}) {
        EXPECT_FALSE(ParseTimeArgument(bad, TimeEnd::Start, t, error)) << bad;
        EXPECT_FALSE(error.empty()) << bad;
    }
}

TEST(ToolLanguage, UsesTheWindowsModulesNotOnesNamedAfterTheTool)
{
    const std::wstring here = GetModuleDirectory(0);
    EXPECT_EQ(here + L"\\Lang\\EN\\OrielEN.dll", ToolLanguageModulePath(LanguageChoice::English));
    EXPECT_EQ(here + L"\\Lang\\CHS\\OrielCHS.dll", ToolLanguageModulePath(LanguageChoice::Chinese));
}

namespace {

QxlOptions Parse(std::vector<std::wstring> args, bool expectOk = true)
{
    QxlOptions options;
    std::wstring error;
    const bool ok = ParseQxlOptions(args, options, error);
    EXPECT_EQ(expectOk, ok) << (args.empty() ? L"" : args[0]) << L": " << error;
    EXPECT_EQ(ok, error.empty());
    return options;
}

} // namespace

TEST(QxlOptions, ReadsEachCommandWithItsOptions)
{
    QxlOptions dump = Parse({L"dump", L"--json", L"--from", L"2026-11-23 14:05", L"--to=2026-11-23 14:06",
                             L"--grep", L"--count", L"--regex=a=b", L"a.qxl", L"--", L"--odd name"});
    EXPECT_EQ(QxlCommand::Dump, dump.command);
    EXPECT_EQ(OutputFormat::Json, dump.format);
    EXPECT_EQ("2026-11-23T14:06:59.999", IsoTime(dump.range.to));
    EXPECT_TRUE(dump.range.hasFrom && dump.range.hasTo);
    EXPECT_EQ(L"--count", dump.grep);  // a value, not an option
    EXPECT_EQ(L"a=b", dump.regex);
    EXPECT_FALSE(dump.count);
    EXPECT_EQ((std::vector<std::wstring>{L"a.qxl", L"--odd name"}), dump.paths);

    QxlOptions follow = Parse({L"follow", L"--csv", L"--lang", L"EN", L"--poll", L"50", L"D:\\log"});
    EXPECT_EQ(LanguageChoice::English, follow.language);
    EXPECT_EQ(50u, follow.pollMilliseconds);
    EXPECT_EQ(QxlCommand::Check, Parse({L"check", L"a", L"b"}).command);
    EXPECT_EQ(LanguageChoice::Chinese, Parse({L"convert", L"--lang=chs", L"day.log"}).language);
    EXPECT_EQ(QxlCommand::Help, Parse({L"dump", L"--json", L"--help"}).command);
    EXPECT_EQ(QxlCommand::Help, Parse({L"help"}).command);
}

// Paths each command needs and --from after --to are the fuzz driver's.
TEST(QxlOptions, RefusesWhatMakesNoSense)
{
    for (const auto& args : std::vector<std::vector<std::wstring>>{
             {}, {L"show", L"x"}, {L"dump", L"--iso", L"--json", L"x"}, {L"dump", L"x", L"--grep"},
             {L"dump", L"--count=yes", L"x"}, {L"dump", L"--lang", L"fr", L"x"}, {L"check", L"--json", L"x"},
             {L"follow", L"--from", L"2026-11-23", L"d"}, {L"follow", L"--poll", L"5", L"d"}})
        Parse(args, false);
}
