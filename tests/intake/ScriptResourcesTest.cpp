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
    EXPECT_TRUE(ParseRegistryScript(ExpandModulePath(text, L"C:\\Oriel\\Oriel.exe"), keys, error));
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

// The values each script writes are checked in the registry by the
// registration end-to-end test; these are the parts it cannot see.
TEST(ScriptResources, WriteNothingExtraReplaceTheClassWholeAndRemoveOnlyTheServersKeys)
{
    EXPECT_EQ(5u, RegistrationOperations(ScriptKeys(IDR_APPID_SCRIPT)).size()) << "three keys and two values";
    std::vector<std::wstring> removed = {L"AppID\\" + kAppId, L"AppID\\Oriel.EXE"};
    EXPECT_EQ(removed, Deleted(RemovalOperations(ScriptKeys(IDR_APPID_SCRIPT))));

    auto operations = RegistrationOperations(ScriptKeys(IDR_SHOWMESS_SCRIPT));
    const std::wstring classKey = L"CLSID\\" + kClsid;
    const size_t values = std::count_if(operations.begin(), operations.end(),
        [](const RegistryOperation& op) { return op.kind == RegistryOperation::SetValue; });
    EXPECT_EQ(11u, values) << "no threading model, no interface keys";
    auto firstOnClass = std::find_if(operations.begin(), operations.end(),
                                     [&](const RegistryOperation& op) { return op.key == classKey; });
    ASSERT_NE(operations.end(), firstOnClass);
    EXPECT_EQ(RegistryOperation::DeleteTree, firstOnClass->kind) << "the class key is replaced whole";
    removed = {L"Oriel.ShowMess.1", L"Oriel.ShowMess", classKey};
    EXPECT_EQ(removed, Deleted(RemovalOperations(ScriptKeys(IDR_SHOWMESS_SCRIPT))));
}

} // namespace
