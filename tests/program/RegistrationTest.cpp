// The registration switches of the real program against the registry of
// the test prefix.  The case leaves the server registered, as it found it.
#include <gtest/gtest.h>

#include "ProgramCopy.h"

using testing_support::RunProcess;

namespace {

const std::wstring kClsid = L"{80403764-DB35-4592-9738-1A7F0CAC8D8C}";
const std::wstring kAppId = L"{E85EF030-3CF2-49E5-8EAC-8E62EA785DC3}";
const std::wstring kLibId = L"{BBC2A20E-2D66-46ED-BDFB-A3C48679786E}";

bool KeyExists(const std::wstring& path)
{
    HKEY key = nullptr;
    if (::RegOpenKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS)
        return false;
    ::RegCloseKey(key);
    return true;
}

std::wstring Value(const std::wstring& path, const wchar_t* name = nullptr)
{
    wchar_t text[512] = {};
    DWORD bytes = sizeof text;
    if (::RegGetValueW(HKEY_CLASSES_ROOT, path.c_str(), name, RRF_RT_REG_SZ, nullptr, text, &bytes) !=
        ERROR_SUCCESS)
        return L"<missing>";
    return text;
}

void ExpectRegistered()
{
    const std::wstring classKey = L"CLSID\\" + kClsid;
    EXPECT_EQ(L"Oriel", Value(L"AppID\\" + kAppId));
    EXPECT_EQ(kAppId, Value(L"AppID\\Oriel.EXE", L"AppID"));
    EXPECT_EQ(L"ShowMess Class", Value(L"Oriel.ShowMess.1"));
    EXPECT_EQ(kClsid, Value(L"Oriel.ShowMess.1\\CLSID"));
    EXPECT_EQ(L"ShowMess Class", Value(L"Oriel.ShowMess"));
    EXPECT_EQ(kClsid, Value(L"Oriel.ShowMess\\CLSID"));
    EXPECT_EQ(L"Oriel.ShowMess.1", Value(L"Oriel.ShowMess\\CurVer"));
    EXPECT_EQ(L"ShowMess Class", Value(classKey));
    EXPECT_EQ(L"Oriel.ShowMess.1", Value(classKey + L"\\ProgID"));
    EXPECT_EQ(L"Oriel.ShowMess", Value(classKey + L"\\VersionIndependentProgID"));
    EXPECT_EQ(RegisteredCopy() / L"Oriel.exe", Value(classKey + L"\\LocalServer32"));
    EXPECT_EQ(kAppId, Value(classKey, L"AppID"));
    EXPECT_EQ(kLibId, Value(classKey + L"\\TypeLib"));
    EXPECT_FALSE(KeyExists(classKey + L"\\InprocServer32"));
    EXPECT_EQ(L"Oriel 1.0 Type Library", Value(L"TypeLib\\" + kLibId + L"\\1.0"));
    EXPECT_TRUE(KeyExists(L"TypeLib\\" + kLibId + L"\\1.0\\409\\win64"));
    EXPECT_EQ(RegisteredCopy().Dir() + L"\\", Value(L"TypeLib\\" + kLibId + L"\\1.0\\HELPDIR"));
}

TEST(Registration, SwitchesWriteAndRemoveExactlyTheServersKeys)
{
    ExpectRegistered();

    // A stray key below the class is not kept by registering again.
    HKEY stray = nullptr;
    ASSERT_EQ(ERROR_SUCCESS, ::RegCreateKeyExW(HKEY_CLASSES_ROOT, (L"CLSID\\" + kClsid + L"\\Stray").c_str(),
                                               0, nullptr, 0, KEY_WRITE, nullptr, &stray, nullptr));
    ::RegCloseKey(stray);
    EXPECT_EQ(0u, RegisteredCopy().Run(L"-regserver"));
    EXPECT_FALSE(KeyExists(L"CLSID\\" + kClsid + L"\\Stray"));
    EXPECT_EQ(nullptr, ::FindWindowW(kMessWndClass, nullptr)) << "registering opens no window";

    EXPECT_EQ(0u, RegisteredCopy().Run(L"/UnregServer"));
    const std::wstring removed[] = {L"Oriel.ShowMess.1", L"Oriel.ShowMess", L"CLSID\\" + kClsid,
                                    L"AppID\\" + kAppId, L"AppID\\Oriel.EXE",
                                    L"TypeLib\\" + kLibId + L"\\1.0"};
    for (const std::wstring& key : removed)
        EXPECT_FALSE(KeyExists(key)) << std::string(key.begin(), key.end());
    EXPECT_TRUE(KeyExists(L"AppID"));
    EXPECT_TRUE(KeyExists(L"CLSID"));
    EXPECT_TRUE(KeyExists(L"Interface\\{714CDB34-8BCB-4726-B13B-0AF1FC2B132D}\\ProxyStubClsid32"))
        << "the proxy/stub is registered by its own library, not by the program";

    EXPECT_EQ(1u, RunProcess(RegisteredCopy().Command(L"showmess.exe") + L" \"nobody listens\"", 20000))
        << "not registered: clear failure";

    EXPECT_EQ(0u, RegisteredCopy().Run(L"/RegServer"));
    ExpectRegistered();
}

} // namespace
