// Hostile lines through both roads into the real program: arbitrary UTF-16
// with unpaired surrogates, control characters, format directives, empty and
// over-long texts, a null text, atoms at and past their limits.  Each is
// stored as it came, cut at the road's limit, and nothing else happens.
#include <gtest/gtest.h>

#include <random>

#include "../intake/ServerInstallation.h"
#include "msgwnd/MessAtom.h"
#include "FaultServer.h"
#include "ProcessBoxes.h"

namespace {

// Any units but zero, surrogate halves in any order included.
std::wstring RandomUnits(std::mt19937& random, size_t length)
{
    std::uniform_int_distribution<int> unit(1, 0xFFFF);
    std::wstring text;
    for (size_t i = 0; i < length; ++i)
        text += static_cast<wchar_t>(unit(random));
    return text;
}

TEST(BadInput, EveryLineIsStoredVerbatimUpToItsRoadsLimit)
{
    testing_support::TempDir directory;
    FaultServer server(directory.Path(), 600, 10);
    ASSERT_TRUE(server.Start());
    ShowMessClient client;
    ASSERT_EQ(S_OK, client.created());
    std::vector<std::wstring> expected;

    std::vector<std::wstring> componentTexts = {
        L"", L"%s%n%x%p%d%%", L"line\r\nbreak", L"\x01\x02\a\b\t\x1b\x7f",
        L"\xD800 lone high", L"lone low \xDC00", L"\xDC00\xD800 reversed",
        std::wstring(128, L'a'), std::wstring(129, L'b'), std::wstring(300, L'c')};
    std::mt19937 random(20261123);
    std::uniform_int_distribution<size_t> length(1, 300);
    for (int i = 0; i < 40; ++i)
        componentTexts.push_back(RandomUnits(random, length(random)));
    for (const std::wstring& text : componentTexts) {
        EXPECT_EQ(S_OK, client.Show(text));
        expected.push_back(text.substr(0, 128));
    }

    // The proxy refuses a null text before it leaves this process.
    EXPECT_TRUE(FAILED(client.get()->ShowMessage(nullptr)));
    EXPECT_EQ(S_OK, client.Show(L"after the null text"));
    expected.push_back(L"after the null text");

    for (const std::wstring& text :
         {std::wstring(127, L'd'), std::wstring(128, L'e'), std::wstring(255, L'f'),
          std::wstring(L"%s%n%x"), std::wstring(L"tab\tand\r\nbreak"), std::wstring(L"\xD800")}) {
        EXPECT_EQ(0, SendAtomLine(server.Window(), text));
        expected.push_back(text.substr(0, 127));
    }
    ATOM deleted = ::GlobalAddAtomW(L"deleted before it was sent");
    ::GlobalDeleteAtom(deleted);
    EXPECT_EQ(-1, ::SendMessageW(server.Window(), WM_MESSATOM, deleted, 0));
    EXPECT_EQ(-1, ::SendMessageW(server.Window(), WM_MESSATOM, 0, 0));
    EXPECT_EQ(0, ::GlobalAddAtomW(std::wstring(256, L'g').c_str())) << "no atom of 256 exists";

    EXPECT_TRUE(OpenBoxes(server.Id()).empty());
    client.Release();
    std::vector<std::wstring> closingBoxes;
    EXPECT_EQ(0u, server.Close(&closingBoxes));
    EXPECT_TRUE(closingBoxes.empty());

    const DecodedLog log = DecodeLog(testing_support::ReadFileBytes(server.LogFile()));
    ASSERT_EQ(expected.size(), log.records.size());
    for (size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(expected[i], log.records[i].text) << "record " << i;
    // Text of 128 units or more leaves no terminating zero in the record.
    EXPECT_NE(0, log.records[8].raw[16 + 254] | log.records[8].raw[16 + 255]);
}

} // namespace
