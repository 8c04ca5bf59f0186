#include "intake/Registration.h"

#include <oleauto.h>

#include "intake/IntakeResources.h"
#include "intake/Registrar.h"

namespace {

// The type library of resource 1, loaded without registering anything.
HRESULT LoadOwnTypeLib(HMODULE module, wchar_t (&path)[MAX_PATH], ITypeLib** typeLib)
{
    if (::GetModuleFileNameW(module, path, MAX_PATH) == 0)
        return HRESULT_FROM_WIN32(::GetLastError());
    return ::LoadTypeLibEx(path, REGKIND_NONE, typeLib);
}

HRESULT RegisterTypeLibrary(HMODULE module)
{
    wchar_t path[MAX_PATH] = {};
    ITypeLib* typeLib = nullptr;
    HRESULT result = LoadOwnTypeLib(module, path, &typeLib);
    if (FAILED(result))
        return result;
    result = ::RegisterTypeLib(typeLib, path, nullptr);
    typeLib->Release();
    return result;
}

HRESULT UnregisterTypeLibrary(HMODULE module)
{
    wchar_t path[MAX_PATH] = {};
    ITypeLib* typeLib = nullptr;
    HRESULT result = LoadOwnTypeLib(module, path, &typeLib);
    if (FAILED(result))
        return result;
    TLIBATTR* attributes = nullptr;
    result = typeLib->GetLibAttr(&attributes);
    if (SUCCEEDED(result)) {
        result = ::UnRegisterTypeLib(attributes->guid, attributes->wMajorVerNum,
                                     attributes->wMinorVerNum, attributes->lcid,
                                     attributes->syskind);
        typeLib->ReleaseTLibAttr(attributes);
    }
    typeLib->Release();
    return result;
}

} // namespace

HRESULT RegisterServer(HMODULE module)
{
    HRESULT result = ApplyRegistryScript(module, IDR_SHOWMESS_SCRIPT, true);
    if (FAILED(result))
        return result;
    return RegisterTypeLibrary(module);
}

HRESULT UnregisterServer(HMODULE module)
{
    HRESULT result = ApplyRegistryScript(module, IDR_SHOWMESS_SCRIPT, false);
    if (FAILED(result))
        return result;
    return UnregisterTypeLibrary(module);
}

HRESULT UpdateRegistration(HMODULE module, bool install)
{
    ApplyRegistryScript(module, IDR_APPID_SCRIPT, install);
    return install ? RegisterServer(module) : UnregisterServer(module);
}
