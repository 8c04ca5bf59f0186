#include "intake/Registration.h"

#include <oleauto.h>

#include <string>

#include "intake/IntakeResources.h"
#include "intake/Registrar.h"

namespace {

// Runs `use` on the type library of resource 1 of `module`, loaded without
// registering anything, with the module's path.
template <typename Use>
HRESULT WithOwnTypeLib(HMODULE module, Use use)
{
    wchar_t path[MAX_PATH] = {};
    if (::GetModuleFileNameW(module, path, MAX_PATH) == 0)
        return HRESULT_FROM_WIN32(::GetLastError());
    ITypeLib* typeLib = nullptr;
    HRESULT result = ::LoadTypeLibEx(path, REGKIND_NONE, &typeLib);
    if (FAILED(result))
        return result;
    result = use(typeLib, path);
    typeLib->Release();
    return result;
}

HRESULT RegisterTypeLibrary(HMODULE module)
{
    return WithOwnTypeLib(module, [](ITypeLib* typeLib, wchar_t* path) {
        // The program's folder, up to and with its last backslash, is the
        // library's help directory, as the component library registers it.
        std::wstring helpDirectory = path;
        helpDirectory.erase(helpDirectory.find_last_of(L"\\/") + 1);
        return ::RegisterTypeLib(typeLib, path, &helpDirectory[0]);
    });
}

HRESULT UnregisterTypeLibrary(HMODULE module)
{
    return WithOwnTypeLib(module, [](ITypeLib* typeLib, wchar_t*) {
        TLIBATTR* attributes = nullptr;
        HRESULT result = typeLib->GetLibAttr(&attributes);
        if (FAILED(result))
            return result;
        result = ::UnRegisterTypeLib(attributes->guid, attributes->wMajorVerNum,
                                     attributes->wMinorVerNum, attributes->lcid, attributes->syskind);
        typeLib->ReleaseTLibAttr(attributes);
        return result;
    });
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
