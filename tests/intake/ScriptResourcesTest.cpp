// The registration scripts as the program file carries them (this test
// program links the same resources), read into registry operations.
#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <string>

#include "intake/IntakeResources.h"
#include "intake/RegistryScript.h"

namespace {

const std::wstring kClsid = L"{80403764-DB35-4592-9738-1A7F0CAC8D8C}";
const std::wstring kAppId = L"{E85EF030-3CF2-49E5-8EAC-8E62EA785DC3}";
const std::wstring kLibId = L"{BBC2A20E-2D66-46ED-BDFB-A3C48679786E}";
const std::wstring kModule = L"C:\\Program Files\\Oriel\\Oriel.exe";

std::vector<RegistryKeyEntry> ScriptKeys(UINT id)
{
    HRSRC found = ::FindResourceW(nullptr, MAKEINTRESOURCEW(id), L"REGISTRY");
    EXPECT_NE(nullptr, found);
    if (found == nullptr)
        return {};
    const char* bytes = static_cast<const char*>(::LockResource(::LoadResource(nullptr, found)));
    std::wstring text(bytes, bytes + ::SizeofResource(nullptr, found));
    std::vector<RegistryKeyEntry> keys;
    std::wstring error;
    EXPECT_TRUE(ParseRegistryScript(ExpandModulePath(text, kModule), keys, error));
    return keys;
}

std::vector<std::wstring> Deleted(const std::vector<RegistryOperation>& operations)
{
    std::vector<std::wstring> keys;
    for (const auto& operation : operations) {
        EXPECT_EQ(RegistryOperation::DeleteTree, operation.kind);
        keys.push_back(operation.key);
    }
    return keys;
}

std::wstring Written(const std::vector<RegistryOperation>& operations, const std::wstring& key,
                     const std::wstring& name = L"")
{
    auto found = std::find_if(operations.begin(), operations.end(), [&](const RegistryOperation& op) {
        return op.kind == RegistryOperation::SetValue && op.key == key && op.name == name;
    });
    return found == operations.end() ? L"<missing>" : found->value;
}

TEST(ScriptResources, ApplicationScriptNamesTheApplicationAndItsProgram)
{
    auto operations = RegistrationOperations(ScriptKeys(IDR_APPID_SCRIPT));
    EXPECT_EQ(L"Oriel", Written(operations, L"AppID\\" + kAppId));
    EXPECT_EQ(kAppId, Written(operations, L"AppID\\Oriel.EXE", L"AppID"));
    EXPECT_EQ(5u, operations.size()) << "three keys and two values";

    std::vector<std::wstring> removed = {L"AppID\\" + kAppId, L"AppID\\Oriel.EXE"};
    EXPECT_EQ(removed, Deleted(RemovalOperations(ScriptKeys(IDR_APPID_SCRIPT))));
}

TEST(ScriptResources, ClassScriptWritesProgramIdsAndTheClassWithItsServerPath)
{
    auto operations = RegistrationOperations(ScriptKeys(IDR_SHOWMESS_SCRIPT));
    const std::wstring classKey = L"CLSID\\" + kClsid;
    EXPECT_EQ(L"ShowMess Class", Written(operations, L"Oriel.ShowMess.1"));
    EXPECT_EQ(kClsid, Written(operations, L"Oriel.ShowMess.1\\CLSID"));
    EXPECT_EQ(L"ShowMess Class", Written(operations, L"Oriel.ShowMess"));
    EXPECT_EQ(kClsid, Written(operations, L"Oriel.ShowMess\\CLSID"));
    EXPECT_EQ(L"Oriel.ShowMess.1", Written(operations, L"Oriel.ShowMess\\CurVer"));
    EXPECT_EQ(L"ShowMess Class", Written(operations, classKey));
    EXPECT_EQ(L"Oriel.ShowMess.1", Written(operations, classKey + L"\\ProgID"));
    EXPECT_EQ(L"Oriel.ShowMess", Written(operations, classKey + L"\\VersionIndependentProgID"));
    EXPECT_EQ(kModule, Written(operations, classKey + L"\\LocalServer32"));
    EXPECT_EQ(kAppId, Written(operations, classKey, L"AppID"));
    EXPECT_EQ(kLibId, Written(operations, classKey + L"\\TypeLib"));

    const size_t values = std::count_if(operations.begin(), operations.end(),
        [](const RegistryOperation& op) { return op.kind == RegistryOperation::SetValue; });
    EXPECT_EQ(11u, values) << "no threading model, no interface keys";
    auto firstOnClass = std::find_if(operations.begin(), operations.end(),
                                     [&](const RegistryOperation& op) { return op.key == classKey; });
    ASSERT_NE(operations.end(), firstOnClass);
    EXPECT_EQ(RegistryOperation::DeleteTree, firstOnClass->kind) << "the class key is replaced whole";

    std::vector<std::wstring> removed = {L"Oriel.ShowMess.1", L"Oriel.ShowMess", classKey};
    EXPECT_EQ(removed, Deleted(RemovalOperations(ScriptKeys(IDR_SHOWMESS_SCRIPT))));
}

} // namespace
