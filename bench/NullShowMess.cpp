// The baseline for the component road: a local server of the same build and
// the same interface (marshalled by the same proxy/stub) whose ShowMessage
// does nothing.  Started by oriel_ratio_bench, which ends it.  With --exit it
// ends at once: the baseline for a program's start.
#include <windows.h>

#include <cwchar>

#include "Oriel.h"
#include "bench/NullShowMessClass.h"

namespace {

class NullShowMess : public IShowMess {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override
    {
        if (!::IsEqualIID(iid, IID_IUnknown) && !::IsEqualIID(iid, IID_IShowMess)) {
            *object = nullptr;
            return E_NOINTERFACE;
        }
        *object = static_cast<IShowMess*>(this);
        return S_OK;
    }
    // One static object for every client: the counts do not matter.
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE ShowMessage(unsigned short*) override { return S_OK; }
};

class Factory : public IClassFactory {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override
    {
        if (!::IsEqualIID(iid, IID_IUnknown) && !::IsEqualIID(iid, IID_IClassFactory)) {
            *object = nullptr;
            return E_NOINTERFACE;
        }
        *object = static_cast<IClassFactory*>(this);
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override
    {
        static NullShowMess instance;
        return outer != nullptr ? CLASS_E_NOAGGREGATION : instance.QueryInterface(iid, object);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

} // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t* commandLine, int)
{
    if (std::wcsstr(commandLine, L"--exit") != nullptr)
        return 0;
    ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    static Factory factory;
    DWORD cookie = 0;
    if (FAILED(::CoRegisterClassObject(kNullShowMessClass, &factory, CLSCTX_LOCAL_SERVER,
                                       REGCLS_MULTIPLEUSE, &cookie)))
        return 1;
    MSG message;
    while (::GetMessageW(&message, nullptr, 0, 0) > 0)
        ::DispatchMessageW(&message);
    ::CoRevokeClassObject(cookie);
    ::CoUninitialize();
    return 0;
}
