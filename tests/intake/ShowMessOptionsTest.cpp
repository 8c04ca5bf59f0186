// What the command-line fuzz driver cannot judge: a rate's value, a count or
// option that should have been refused, and the text a line decodes to (it
// compares the lines of one input with each other).
#include <gtest/gtest.h>

#include "tools/showmess/LineSplitter.h"
#include "tools/showmess/ShowMessOptions.h"

namespace {

bool Parse(std::vector<std::wstring> args, ShowMessOptions& options)
{
    std::wstring error;
    return ParseShowMessOptions(args, options, error);
}

TEST(ShowMessOptions, FractionalRatesButNoFractionalCountsOrUnknownOptions)
{
    ShowMessOptions options;
    ASSERT_TRUE(Parse({L"--count", L"3", L"--rate", L"2.5"}, options));
    EXPECT_DOUBLE_EQ(2.5, options.rate);
    EXPECT_FALSE(Parse({L"--count", L"1.5"}, options));
    EXPECT_FALSE(Parse({L"--colour"}, options));
}

TEST(LineSplitter, DecodesUtf8)
{
    LineSplitter splitter;
    const char bytes[] = "Pump P-1 \xE6\xB3\xB5 on\n";
    EXPECT_EQ(std::vector<std::wstring>{L"Pump P-1 \x6CF5 on"}, splitter.Feed(bytes, sizeof bytes - 1));
}

} // namespace
