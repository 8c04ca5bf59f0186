// The tool's pure text rules: encodings, times and the command line.
#include <gtest/gtest.h>

#include "tools/qxltool/QxlOptions.h"
#include "tools/qxltool/TextEncoding.h"
#include "tools/qxltool/TextFilter.h"
#include "tools/qxltool/TimeText.h"

namespace {

std::string Json(const std::wstring& text)
{
    std::string out;
    AppendJsonString(out, text.data(), text.size());
    return out;
}

std::string Csv(const std::wstring& text)
{
    std::string out;
    AppendCsvField(out, text.data(), text.size());
    return out;
}

} // namespace

TEST(TextEncoding, KeepsEveryCodeUnitOfValidAndBrokenUtf16)
{
    EXPECT_EQ("Pump P-101", ToUtf8(L"Pump P-101"));
    EXPECT_EQ("\xC3\xA9\xE6\xB3\xB5", ToUtf8(L"\x00E9\x6CF5"));
    // A pair is one four-byte character; a lone half keeps its three-byte form.
    EXPECT_EQ("\xF0\x9F\x98\x80", ToUtf8(L"\xD83D\xDE00"));
    EXPECT_EQ("a\xED\xA0\xBD" "b", ToUtf8(L"a\xD83D" L"b"));
    EXPECT_EQ("\xED\xB8\x80\xED\xA0\xBD", ToUtf8(L"\xDE00\xD83D"));  // halves in the wrong order
    EXPECT_EQ("\xED\xA0\xBD", ToUtf8(L"\xD83D"));                    // high half at the very end
}

TEST(TextEncoding, JsonEscapesWhatJsonNeedsAndUnpairedSurrogates)
{
    EXPECT_EQ("\"say \\\"hi\\\" \\\\ now\"", Json(L"say \"hi\" \\ now"));
    EXPECT_EQ("\"\\t\\r\\n\\b\\f\\u0001\\u001f\x7F\"", Json(L"\t\r\n\b\f\x01\x1F\x7F"));
    EXPECT_EQ("\"\xF0\x9F\x98\x80\"", Json(L"\xD83D\xDE00"));
    EXPECT_EQ("\"x\\ud83dy\\ude00\"", Json(L"x\xD83Dy\xDE00"));
    EXPECT_EQ("\"/ \xE6\xB3\xB5\"", Json(L"/ \x6CF5"));
    EXPECT_EQ("\"\"", Json(L""));
}

TEST(TextEncoding, CsvQuotesOnlyFieldsThatNeedIt)
{
    EXPECT_EQ("plain text", Csv(L"plain text"));
    EXPECT_EQ("\"a,b\"", Csv(L"a,b"));
    EXPECT_EQ("\"say \"\"hi\"\"\"", Csv(L"say \"hi\""));
    EXPECT_EQ("\"two\nlines\"", Csv(L"two\nlines"));
    EXPECT_EQ("\"cr\r\"", Csv(L"cr\r"));
    EXPECT_EQ("\" padded \"", Csv(L" padded "));
    EXPECT_EQ("", Csv(L""));
    EXPECT_EQ("\"\xED\xA0\xBD,\"", Csv(L"\xD83D,"));
}

TEST(TimeText, ReadsEachFormAndFillsLeftOutPartsByTheEndOfTheSpan)
{
    SYSTEMTIME t;
    std::wstring error;
    const auto fields = [](const SYSTEMTIME& s) {
        return std::vector<int>{s.wYear, s.wMonth, s.wDay, s.wHour, s.wMinute, s.wSecond, s.wMilliseconds};
    };
    ASSERT_TRUE(ParseTimeArgument(L"2026-11-23", TimeEnd::Start, t, error)) << error;
    EXPECT_EQ((std::vector<int>{2026, 11, 23, 0, 0, 0, 0}), fields(t));
    ASSERT_TRUE(ParseTimeArgument(L"2026-11-23", TimeEnd::End, t, error));
    EXPECT_EQ((std::vector<int>{2026, 11, 23, 23, 59, 59, 999}), fields(t));
    ASSERT_TRUE(ParseTimeArgument(L"2026-11-23 14:05", TimeEnd::End, t, error));
    EXPECT_EQ((std::vector<int>{2026, 11, 23, 14, 5, 59, 999}), fields(t));
    ASSERT_TRUE(ParseTimeArgument(L"2026-11-23T14:05:07", TimeEnd::Start, t, error));
    EXPECT_EQ((std::vector<int>{2026, 11, 23, 14, 5, 7, 0}), fields(t));
    ASSERT_TRUE(ParseTimeArgument(L"2026-11-23T14:05:07", TimeEnd::End, t, error));
    EXPECT_EQ((std::vector<int>{2026, 11, 23, 14, 5, 7, 999}), fields(t));
    ASSERT_TRUE(ParseTimeArgument(L"2026-11-23 14:05:07.5", TimeEnd::Start, t, error));
    EXPECT_EQ(500, t.wMilliseconds);
    ASSERT_TRUE(ParseTimeArgument(L"2026-11-23 14:05:07.5", TimeEnd::End, t, error));
    EXPECT_EQ(599, t.wMilliseconds);
    ASSERT_TRUE(ParseTimeArgument(L"2024-02-29 00:00:00.042", TimeEnd::End, t, error));
    EXPECT_EQ(42, t.wMilliseconds);
}

TEST(TimeText, RefusesMalformedAndOutOfRangeTimes)
{
    SYSTEMTIME t;
    std::wstring error;
    for (const wchar_t* bad : {L"", L"2026-11", L"2026-1-23", L"2026-11-23x", L"2026-11-23 14",
                               L"2026-11-23 14:5", L"2026-11-23 14:05:", L"2026-11-23 14:05:07.",
                               L"2026-11-23 14:05:07.1234", L"2026-11-23  14:05", L"26-11-23",
                               L"2026-13-01", L"2026-00-01", L"2026-11-00", L"2026-11-31",
                               L"2025-02-29", L"1900-02-29", L"2026-11-23 24:00",
                               L"2026-11-23 23:60", L"2026-11-23 23:59:60", L"1600-12-31"}) {
        EXPECT_FALSE(ParseTimeArgument(bad, TimeEnd::Start, t, error)) << bad;
        EXPECT_FALSE(error.empty()) << bad;
    }
}

TEST(TimeText, IsoTimeWritesTheFieldsAsTheyStand)
{
    EXPECT_EQ("2026-03-04T05:06:07.089", IsoTime(SYSTEMTIME{2026, 3, 3, 4, 5, 6, 7, 89}));
    EXPECT_EQ("0000-00-00T00:00:00.000", IsoTime(SYSTEMTIME{}));
    EXPECT_EQ("65535-13-00T99:00:00.1000", IsoTime(SYSTEMTIME{65535, 13, 0, 0, 99, 0, 0, 1000}));
}

TEST(TextFilter, GrepAndRegexMustBothMatch)
{
    TextFilter filter;
    std::wstring error;
    const auto matches = [&](const std::wstring& text) { return filter.Matches(text.data(), text.size()); };
    ASSERT_TRUE(filter.Set(L"", L"", error));
    EXPECT_TRUE(matches(L""));
    ASSERT_TRUE(filter.Set(L"Pump", L"", error));
    EXPECT_TRUE(matches(L"Pump P-101 started"));
    EXPECT_FALSE(matches(L"pump P-101 started"));
    ASSERT_TRUE(filter.Set(L"", L"P-1\\d{2}\\b", error));
    EXPECT_TRUE(matches(L"Pump P-101 started"));
    EXPECT_FALSE(matches(L"Pump P-1012 started"));
    ASSERT_TRUE(filter.Set(L"started", L"^Valve", error));
    EXPECT_FALSE(matches(L"Pump P-101 started"));
    EXPECT_TRUE(matches(L"Valve V-7 started"));
    EXPECT_FALSE(filter.Set(L"", L"(unclosed", error));
    EXPECT_NE(std::wstring::npos, error.find(L"(unclosed"));
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
    EXPECT_TRUE(dump.range.hasFrom && dump.range.hasTo);
    EXPECT_EQ(6, dump.range.to.wMinute);
    EXPECT_EQ(L"--count", dump.grep);  // a value, not an option
    EXPECT_EQ(L"a=b", dump.regex);
    EXPECT_FALSE(dump.count);
    EXPECT_EQ((std::vector<std::wstring>{L"a.qxl", L"--odd name"}), dump.paths);

    QxlOptions follow = Parse({L"follow", L"--csv", L"--lang", L"EN", L"--poll", L"50", L"D:\\log"});
    EXPECT_EQ(QxlCommand::Follow, follow.command);
    EXPECT_EQ(LanguageChoice::English, follow.language);
    EXPECT_EQ(50u, follow.pollMilliseconds);

    EXPECT_EQ(QxlCommand::Check, Parse({L"check", L"a", L"b"}).command);
    EXPECT_EQ(LanguageChoice::Chinese, Parse({L"convert", L"--lang=chs", L"day.log"}).language);
    EXPECT_EQ(QxlCommand::Help, Parse({L"dump", L"--json", L"--help"}).command);
    EXPECT_EQ(QxlCommand::Help, Parse({L"help"}).command);
    EXPECT_EQ(QxlCommand::Help, Parse({L"check", L"-h"}).command);
}

TEST(QxlOptions, RefusesWhatMakesNoSense)
{
    const std::vector<std::vector<std::wstring>> bad = {
        {},
        {L"show", L"x"},
        {L"dump"},
        {L"dump", L"--iso", L"--json", L"x"},
        {L"dump", L"--from", L"yesterday", L"x"},
        {L"dump", L"--from", L"2026-11-23 14:06", L"--to", L"2026-11-23 14:05", L"x"},
        {L"dump", L"x", L"--grep"},
        {L"dump", L"--count=yes", L"x"},
        {L"dump", L"--poll", L"100", L"x"},
        {L"dump", L"--lang", L"fr", L"x"},
        {L"dump", L"--verbose", L"x"},
        {L"follow", L"--from", L"2026-11-23", L"d"},
        {L"follow", L"--count", L"d"},
        {L"follow", L"d", L"e"},
        {L"follow", L"--poll", L"5", L"d"},
        {L"follow", L"--poll", L"1s", L"d"},
        {L"check", L"--json", L"x"},
        {L"convert", L"a.log", L"b.log"},
        {L"convert", L"--grep", L"x", L"a.log"},
    };
    for (const auto& args : bad)
        Parse(args, false);
}
