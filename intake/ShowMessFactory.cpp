#include "intake/ShowMessFactory.h"

#include "server/ExeModule.h"
#include "intake/ShowMess.h"

HRESULT CShowMessFactory::QueryInterface(REFIID iid, void** object)
{
    if (object == nullptr)
        return E_POINTER;
    if (::IsEqualIID(iid, IID_IUnknown) || ::IsEqualIID(iid, IID_IClassFactory)) {
        *object = static_cast<IClassFactory*>(this);
        return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
}

// The object is never deleted, so the counts only have to look plausible.
ULONG CShowMessFactory::AddRef()
{
    return 2;
}

ULONG CShowMessFactory::Release()
{
    return 1;
}

HRESULT CShowMessFactory::CreateInstance(IUnknown* outer, REFIID iid, void** object)
{
    return CShowMess::Create(outer, iid, object);
}

HRESULT CShowMessFactory::LockServer(BOOL lock)
{
    if (lock)
        exeModule.Lock();
    else
        exeModule.Unlock();
    return S_OK;
}
