#pragma once
#include <windows.h>
#include <objbase.h>

// The class object of ShowMess.  It is a static object of the process: COM's
// references to it (from the class-object registration) do not keep the
// server alive; only LockServer does, through the module's lock count.
class CShowMessFactory final : public IClassFactory {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;
};
