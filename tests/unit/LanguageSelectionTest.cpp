#include <gtest/gtest.h>

#include "app/LanguageModule.h"

TEST(LanguageSelection, OnlyTheExactSuiteSpellingSelectsChinese)
{
    EXPECT_EQ(LanguageChinese, LanguageCodeFromValue(L"CHINESE"));
    for (const wchar_t* value : {L"Chinese", L"chinese", L"ENGLISH", L"", L"CHINESE "})
        EXPECT_EQ(LanguageEnglish, LanguageCodeFromValue(value)) << value;
}

TEST(LanguageSelection, ModulePathCutsTheDirectoryAtBackslashesAndUsesBaseNameUpToFirstDot)
{
    EXPECT_EQ(L"C:\\Suite\\Bin", ModuleDirectoryFromPath(L"C:\\Suite\\Bin\\Oriel.exe", 0));
    EXPECT_EQ(L"C:\\Suite", ModuleDirectoryFromPath(L"C:\\Suite\\Bin\\Oriel.exe", 1));
    EXPECT_EQ(L"", ModuleDirectoryFromPath(L"Oriel.exe", 0));
    EXPECT_EQ(L"", ModuleDirectoryFromPath(L"", 0));
    const std::wstring bin = L"C:\\Suite\\Bin\\";
    EXPECT_EQ(L"C:\\Suite\\Bin\\Lang\\CHS\\OrielCHS.dll",
              LanguageModulePathFor(bin + L"Oriel.exe", LanguageChinese, 0));
    EXPECT_EQ(L"C:\\Suite\\Bin\\Lang\\EN\\OrielEN.dll",
              LanguageModulePathFor(bin + L"Oriel.exe", LanguageEnglish, 0));
    EXPECT_EQ(L"C:\\Suite\\Bin\\Lang\\CHS\\Oriel2CHS.dll",
              LanguageModulePathFor(bin + L"Oriel2.exe", LanguageChinese, 0));
    EXPECT_EQ(L"C:\\Suite\\Bin\\Lang\\EN\\OrielEN.dll",
              LanguageModulePathFor(bin + L"Oriel.new.exe", LanguageEnglish, 0));
    // A dot in a directory name does not count; a name without a dot leaves only the suffix.
    EXPECT_EQ(L"C:\\v1.2\\Lang\\EN\\EN.dll", LanguageModulePathFor(L"C:\\v1.2\\Oriel", 2, 0));
    // Every code but 1 means English.
    EXPECT_EQ(L"C:\\Lang\\EN\\OrielEN.dll", LanguageModulePathFor(L"C:\\x\\Oriel.exe", 0, 1));
}
