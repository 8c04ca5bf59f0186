#include "intake/Registrar.h"

#include <string>

namespace {

HRESULT SetStringValue(HKEY root, const RegistryOperation& operation)
{
    HKEY key = nullptr;
    LONG status = ::RegCreateKeyExW(root, operation.key.c_str(), 0, nullptr, 0, KEY_SET_VALUE,
                                    nullptr, &key, nullptr);
    if (status != ERROR_SUCCESS)
        return HRESULT_FROM_WIN32(status);
    const DWORD bytes = static_cast<DWORD>((operation.value.size() + 1) * sizeof(wchar_t));
    status = ::RegSetValueExW(key, operation.name.empty() ? nullptr : operation.name.c_str(), 0,
                              REG_SZ, reinterpret_cast<const BYTE*>(operation.value.c_str()), bytes);
    ::RegCloseKey(key);
    return HRESULT_FROM_WIN32(status);
}

HRESULT Apply(HKEY root, const RegistryOperation& operation)
{
    switch (operation.kind) {
    case RegistryOperation::CreateKey: {
        HKEY key = nullptr;
        LONG status = ::RegCreateKeyExW(root, operation.key.c_str(), 0, nullptr, 0, KEY_READ,
                                        nullptr, &key, nullptr);
        if (status == ERROR_SUCCESS)
            ::RegCloseKey(key);
        return HRESULT_FROM_WIN32(status);
    }
    case RegistryOperation::SetValue:
        return SetStringValue(root, operation);
    case RegistryOperation::DeleteTree: {
        LONG status = ::RegDeleteTreeW(root, operation.key.c_str());
        if (status == ERROR_FILE_NOT_FOUND)
            status = ERROR_SUCCESS;
        return HRESULT_FROM_WIN32(status);
    }
    }
    return E_INVALIDARG;
}

// The script resource is plain text in UTF-8 (ASCII in practice).
bool LoadScriptText(HMODULE module, UINT id, std::wstring& text)
{
    HRSRC found = ::FindResourceW(module, MAKEINTRESOURCEW(id), L"REGISTRY");
    if (found == nullptr)
        return false;
    HGLOBAL loaded = ::LoadResource(module, found);
    const char* bytes = loaded ? static_cast<const char*>(::LockResource(loaded)) : nullptr;
    if (bytes == nullptr)
        return false;
    const int size = static_cast<int>(::SizeofResource(module, found));
    const int units = ::MultiByteToWideChar(CP_UTF8, 0, bytes, size, nullptr, 0);
    text.assign(static_cast<size_t>(units), L'\0');
    if (units > 0)
        ::MultiByteToWideChar(CP_UTF8, 0, bytes, size, &text[0], units);
    return true;
}

} // namespace

HRESULT ApplyRegistryOperations(HKEY root, const std::vector<RegistryOperation>& operations)
{
    for (const auto& operation : operations) {
        HRESULT result = Apply(root, operation);
        if (FAILED(result))
            return result;
    }
    return S_OK;
}

HRESULT ApplyRegistryScript(HMODULE module, UINT id, bool install)
{
    wchar_t modulePath[MAX_PATH] = {};
    if (::GetModuleFileNameW(module, modulePath, MAX_PATH) == 0)
        return HRESULT_FROM_WIN32(::GetLastError());
    std::wstring script;
    if (!LoadScriptText(module, id, script))
        return HRESULT_FROM_WIN32(ERROR_RESOURCE_NAME_NOT_FOUND);

    std::vector<RegistryKeyEntry> keys;
    std::wstring error;
    if (!ParseRegistryScript(ExpandModulePath(script, modulePath), keys, error))
        return HRESULT_FROM_WIN32(ERROR_INVALID_DATA);
    return ApplyRegistryOperations(HKEY_CLASSES_ROOT, install ? RegistrationOperations(keys)
                                                              : RemovalOperations(keys));
}
