#include <gtest/gtest.h>

#include "support/TestFiles.h"

using testing_support::CopyTree;
using testing_support::InstallDir;
using testing_support::RunProcess;
using testing_support::TempDir;

namespace {

constexpr DWORD kExitRefused = static_cast<DWORD>(-1);

// A private copy of the installation folder, so each case can add or remove
// language modules and the selection file.
class Installation : public ::testing::Test {
protected:
    void SetUp() override { CopyTree(InstallDir(), dir.Path()); }

    void RemoveModule(const std::wstring& relative)
    {
        ASSERT_TRUE(::DeleteFileW((dir / relative).c_str()));
    }
    void SetLanguage(const char* value)
    {
        ::CreateDirectoryW((dir / L"Config").c_str(), nullptr);
        std::string text = std::string("[Language]\r\nCorvaneLanguage=") + value + "\r\n";
        testing_support::WriteFileBytes(dir / L"Config\\Language.ini",
                                        std::vector<unsigned char>(text.begin(), text.end()));
    }
    DWORD Run(const std::wstring& exeName = L"Oriel.exe")
    {
        return RunProcess(L"\"" + (dir / exeName) + L"\"", 20000);
    }

    TempDir dir;
};

TEST_F(Installation, WithoutSelectionFileTheChineseModuleIsRequired)
{
    RemoveModule(L"Lang\\EN\\OrielEN.dll");
    EXPECT_EQ(0u, Run());
    RemoveModule(L"Lang\\CHS\\OrielCHS.dll");
    SetLanguage("ENGLISH");
    EXPECT_EQ(kExitRefused, Run()) << "no English module either";
}

TEST_F(Installation, OnlyEnglishInstalledAndNoSelectionFileRefusesToStart)
{
    RemoveModule(L"Lang\\CHS\\OrielCHS.dll");
    EXPECT_EQ(kExitRefused, Run());
}

TEST_F(Installation, AnySpellingButTheExactOneSelectsEnglish)
{
    RemoveModule(L"Lang\\CHS\\OrielCHS.dll");
    SetLanguage("Chinese");
    EXPECT_EQ(0u, Run());
    SetLanguage("CHINESE");
    EXPECT_EQ(kExitRefused, Run());
}

TEST_F(Installation, ModuleNameFollowsTheProgramNameUpToItsFirstDot)
{
    ASSERT_TRUE(::CopyFileW((dir / L"Oriel.exe").c_str(), (dir / L"Oriel2.exe").c_str(), FALSE));
    ASSERT_TRUE(::CopyFileW((dir / L"Oriel.exe").c_str(), (dir / L"Oriel.new.exe").c_str(), FALSE));
    EXPECT_EQ(kExitRefused, Run(L"Oriel2.exe")) << "Oriel2CHS.dll does not exist yet";
    ASSERT_TRUE(::CopyFileW((dir / L"Lang\\CHS\\OrielCHS.dll").c_str(),
                            (dir / L"Lang\\CHS\\Oriel2CHS.dll").c_str(), FALSE));
    EXPECT_EQ(0u, Run(L"Oriel2.exe"));
    EXPECT_EQ(0u, Run(L"Oriel.new.exe"));
    RemoveModule(L"Lang\\CHS\\OrielCHS.dll");
    EXPECT_EQ(kExitRefused, Run(L"Oriel.new.exe"));
}

} // namespace
