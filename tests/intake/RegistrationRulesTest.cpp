// The registration side of the server: where its files are, and the
// registry script it runs (its command line is the fuzz driver's).
#include <gtest/gtest.h>

#include "intake/RegistryScript.h"
#include "server/ProgramFiles.h"

namespace {

// Settings, icon and language paths are the directory and a name appended.
TEST(ProgramDirectoryOf, KeepsTheBackslashThatNamesAreAppendedTo)
{
    EXPECT_EQ(L"C:\\Suite\\Bin\\", ProgramDirectoryOf(L"C:\\Suite\\Bin\\Oriel.exe"));
}

using Op = RegistryOperation;

std::vector<RegistryKeyEntry> Parse(const std::wstring& script)
{
    std::vector<RegistryKeyEntry> keys;
    std::wstring error;
    EXPECT_TRUE(ParseRegistryScript(script, keys, error)) << std::string(error.begin(), error.end());
    return keys;
}

const wchar_t kClassScript[] = LR"(HKCR
{
    Oriel.ShowMess = s 'ShowMess Class'
    {
        CurVer = s 'Oriel.ShowMess.1'
    }
    NoRemove CLSID
    {
        ForceRemove {CLS} = s 'ShowMess Class'
        {
            LocalServer32 = s '%MODULE%'
            val AppID = s '{APP}'
        }
    }
})";

TEST(RegistryScript, RegistrationWritesParentsFirstReplacesForceRemoveKeysAndExpandsTheModule)
{
    std::vector<Op> expected = {
        {Op::CreateKey, L"Oriel.ShowMess", L"", L""},
        {Op::SetValue, L"Oriel.ShowMess", L"", L"ShowMess Class"},
        {Op::CreateKey, L"Oriel.ShowMess\\CurVer", L"", L""},
        {Op::SetValue, L"Oriel.ShowMess\\CurVer", L"", L"Oriel.ShowMess.1"},
        {Op::CreateKey, L"CLSID", L"", L""},
        {Op::DeleteTree, L"CLSID\\{CLS}", L"", L""},
        {Op::CreateKey, L"CLSID\\{CLS}", L"", L""},
        {Op::SetValue, L"CLSID\\{CLS}", L"", L"ShowMess Class"},
        {Op::SetValue, L"CLSID\\{CLS}", L"AppID", L"{APP}"},
        {Op::CreateKey, L"CLSID\\{CLS}\\LocalServer32", L"", L""},
        {Op::SetValue, L"CLSID\\{CLS}\\LocalServer32", L"", L"C:\\O'Neil\\Oriel.exe"},
    };
    auto keys = Parse(ExpandModulePath(kClassScript, L"C:\\O'Neil\\Oriel.exe"));
    EXPECT_EQ(expected, RegistrationOperations(keys));
    // The module path's quotes are doubled; other percent signs are kept.
    EXPECT_EQ(L"'C:\\a''b\\O.exe' 100% %PATH%",
              ExpandModulePath(L"'%MODULE%' 100%% %PATH%", L"C:\\a'b\\O.exe"));
}

TEST(RegistryScript, RemovalDeletesWholeKeysButKeepsNoRemoveParents)
{
    std::vector<Op> expected = {
        {Op::DeleteTree, L"Oriel.ShowMess", L"", L""},
        {Op::DeleteTree, L"CLSID\\{CLS}", L"", L""},
    };
    EXPECT_EQ(expected, RemovalOperations(Parse(kClassScript)));
}

TEST(RegistryScript, QuotedNamesAndValuesKeepSpacesBracesAndDoubledQuotes)
{
    auto keys = Parse(LR"(hkcr { 'A key' = s 'it''s { } = s' { 'val' = s '' val 'x y' = s '%' } })");
    ASSERT_EQ(1u, keys.size());
    EXPECT_EQ(L"A key", keys[0].name);
    EXPECT_EQ(L"it's { } = s", keys[0].defaultValue);
    ASSERT_EQ(1u, keys[0].subkeys.size()) << "a quoted 'val' is a key name";
    EXPECT_EQ(L"val", keys[0].subkeys[0].name);
    EXPECT_TRUE(keys[0].subkeys[0].hasDefault);
    EXPECT_EQ(L"", keys[0].subkeys[0].defaultValue);
    ASSERT_EQ(1u, keys[0].values.size());
    EXPECT_EQ(L"x y", keys[0].values[0].first);
}

TEST(RegistryScript, RefusesWhatItDoesNotUnderstand)
{
    const wchar_t* broken[] = {
        L"HKLM { A }",                     // another root
        L"HKCR { A = d '1' }",             // a number value
        L"HKCR { A = s unquoted }",
        L"HKCR { A = s 'open }",
        L"HKCR { A { B }",                 // unbalanced
        L"HKCR { A } B",
        L"HKCR { 'a\\b' }",                // a path where one key name belongs
        L"HKCR { A { val X } }",          // a named value without its text
    };
    for (const wchar_t* script : broken) {
        std::vector<RegistryKeyEntry> keys;
        std::wstring error;
        EXPECT_FALSE(ParseRegistryScript(script, keys, error)) << std::string(script, script + wcslen(script));
        EXPECT_FALSE(error.empty());
    }
}

} // namespace
