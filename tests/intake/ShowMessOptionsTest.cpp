#include <gtest/gtest.h>

#include "tools/showmess/LineSplitter.h"
#include "tools/showmess/ShowMessOptions.h"

namespace {

bool Parse(std::vector<std::wstring> args, ShowMessOptions& options)
{
    std::wstring error;
    bool ok = ParseShowMessOptions(args, options, error);
    EXPECT_EQ(ok, error.empty());
    return ok;
}

TEST(ShowMessOptions, TextsOptionsAndCountedRuns)
{
    ShowMessOptions options;
    ASSERT_TRUE(Parse({L"Valve V-12 open", L"--atom", L"--close", L"-x", L"--", L"--show"}, options));
    EXPECT_TRUE(options.close);
    EXPECT_TRUE(options.useAtom);
    EXPECT_FALSE(options.show);
    std::vector<std::wstring> texts = {L"Valve V-12 open", L"-x", L"--show"};
    EXPECT_EQ(texts, options.texts);

    ASSERT_TRUE(Parse({L"--count", L"3", L"--rate", L"2.5", L"Load"}, options));
    EXPECT_EQ(3u, options.count);
    EXPECT_DOUBLE_EQ(2.5, options.rate);
    EXPECT_EQ(L"Load 3", NumberedLine(options, 3));
    ASSERT_TRUE(Parse({L"--count", L"2"}, options));
    EXPECT_EQ(L"Test line 1", NumberedLine(options, 1));
}

TEST(ShowMessOptions, RefusesWhatCannotBeMeant)
{
    ShowMessOptions options;
    EXPECT_FALSE(Parse({L"--count"}, options));
    EXPECT_FALSE(Parse({L"--count", L"0"}, options));
    EXPECT_FALSE(Parse({L"--count", L"1.5"}, options));
    EXPECT_FALSE(Parse({L"--count", L"-3"}, options));
    EXPECT_FALSE(Parse({L"--rate", L"10"}, options)) << "a rate needs a count";
    EXPECT_FALSE(Parse({L"--count", L"2", L"a", L"b"}, options));
    EXPECT_FALSE(Parse({L"--colour"}, options));
    EXPECT_FALSE(Parse({L"--hold", L"--atom"}, options)) << "atoms hold nothing";
}

TEST(LineSplitter, CutsUtf8IntoLinesAcrossChunksAndDropsCarriageReturns)
{
    LineSplitter splitter;
    const char first[] = "Pump P-1 \xE6\xB3";   // the pump character split across chunks
    const char second[] = "\xB5 on\r\n\r\nDriver lost\nlast";
    EXPECT_TRUE(splitter.Feed(first, sizeof first - 1).empty());
    std::vector<std::wstring> lines = splitter.Feed(second, sizeof second - 1);
    std::vector<std::wstring> expected = {L"Pump P-1 \x6CF5 on", L"", L"Driver lost"};
    EXPECT_EQ(expected, lines);
    std::wstring rest;
    ASSERT_TRUE(splitter.Finish(rest));
    EXPECT_EQ(L"last", rest);
    EXPECT_FALSE(splitter.Finish(rest));
}

} // namespace
