#include <gtest/gtest.h>

#include <string>

#include "dialogs/DirectoryChain.h"
#include "dialogs/PathRules.h"
#include "support/TestFiles.h"

namespace {

// NormalizeSavePath's answer: the canonical path, or "refused" (the buffer
// must then be left as it was).
std::wstring Normalized(const std::wstring& typed)
{
    wchar_t path[MAX_PATH];
    ::lstrcpynW(path, typed.c_str(), MAX_PATH);
    if (NormalizeSavePath(path))
        return path;
    return typed == path ? L"refused" : L"refused, but changed to " + std::wstring(path);
}

std::wstring Canonical(const wchar_t* fullPath)
{
    wchar_t result[MAX_PATH];
    return CanonicalSavePath(fullPath, result) ? result : L"refused";
}

TEST(SavePathRules, AbsolutePathsComeOutCanonical)
{
    EXPECT_EQ(L"C:\\my logs\\2026", Normalized(L"  C:\\ my logs \\2026\\ "));
    EXPECT_EQ(L"C:", Normalized(L"C:\\"));
    EXPECT_EQ(L"C:\\a\\c", Normalized(L"C:\\a\\.\\b\\..\\c"));
    EXPECT_EQ(L"D:\\x\\y", Normalized(L"D:/x/y"));
    EXPECT_EQ(L"\\\\server\\share\\logs", Normalized(L"\\\\server\\share\\logs"));
    EXPECT_EQ(L"\\\\server\\share", Canonical(L"//server/share"));
    // An empty component ends the path.
    EXPECT_EQ(L"C:\\a", Canonical(L"C:\\a\\\\b"));
}

TEST(SavePathRules, UnusablePathsAreRefusedAndLeftAlone)
{
    for (const wchar_t* typed : {L"", L"   ", L"\\\\", L"C:\\a:b", L"C:\\a\\   \\b", L"C:\\a|b",
                                 L"C:\\a\\b?", L"C:\\\"q\""})
        EXPECT_EQ(L"refused", Normalized(typed)) << typed;
    EXPECT_EQ(L"refused", Canonical(L"1:\\logs"));
    EXPECT_EQ(L"refused", Canonical(L"CC:\\logs"));
    EXPECT_EQ(L"refused", Canonical(L"C"));
}

TEST(SavePathRules, RelativePathsAreMadeAbsoluteAgainstTheCurrentDirectory)
{
    testing_support::TempDir dir;
    wchar_t previous[MAX_PATH];
    ::GetCurrentDirectoryW(MAX_PATH, previous);
    ASSERT_TRUE(::SetCurrentDirectoryW((dir / L"").c_str()));
    EXPECT_EQ(dir / L"logs\\sub", Normalized(L"logs\\sub"));
    EXPECT_EQ(dir / L"up", Normalized(L".\\x\\..\\up"));
    ::SetCurrentDirectoryW(previous);
}

TEST(SavePathRules, ComponentsAndComparison)
{
    wchar_t text[] = L"\t two words \r\n";
    TrimSpaces(text);
    EXPECT_STREQ(L"two words", text);
    EXPECT_TRUE(IsValidPathComponent(L"logs 2026"));
    EXPECT_FALSE(IsValidPathComponent(L""));
    for (const wchar_t* bad : {L":", L"*", L"?", L"\"", L"<", L">", L"|", L"\\", L"/"})
        EXPECT_FALSE(IsValidPathComponent((std::wstring(L"a") + bad + L"b").c_str())) << bad;
    EXPECT_TRUE(SameSaveDirectory(L"c:\\LOG", L"C:\\log"));
    EXPECT_FALSE(SameSaveDirectory(L"C:\\log", L"C:\\log2"));
}

TEST(CreateDirectoryChain, CreatesEveryMissingLevel)
{
    testing_support::TempDir dir;
    wchar_t path[MAX_PATH];
    ::lstrcpynW(path, (dir / L"a\\b\\c\\").c_str(), MAX_PATH);
    EXPECT_NE(0, CreateDirectoryChain(path));
    EXPECT_EQ(dir / L"a\\b\\c", path);
    EXPECT_TRUE(::GetFileAttributesW(path) & FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_NE(0, CreateDirectoryChain(path));  // existing: success, nothing to do

    testing_support::WriteFileBytes(dir / L"file", {});
    ::lstrcpynW(path, (dir / L"file\\sub").c_str(), MAX_PATH);
    EXPECT_EQ(0, CreateDirectoryChain(path));
}

} // namespace
