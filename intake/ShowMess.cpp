#include "intake/ShowMess.h"

#include <new>

#include "server/ExeModule.h"

HRESULT CShowMess::Create(IUnknown* outer, REFIID iid, void** object)
{
    if (object == nullptr)
        return E_POINTER;
    *object = nullptr;
    if (outer != nullptr && !::IsEqualIID(iid, IID_IUnknown))
        return CLASS_E_NOAGGREGATION;
    CShowMess* created = new (std::nothrow) CShowMess(outer);
    if (created == nullptr)
        return E_OUTOFMEMORY;
    // Held across the query so that a refused interface deletes the object.
    created->inner_.AddRef();
    HRESULT result = created->inner_.QueryInterface(iid, object);
    created->inner_.Release();
    return result;
}

CShowMess::CShowMess(IUnknown* outer)
    : inner_(this), controlling_(outer != nullptr ? outer : &inner_)
{
    exeModule.Lock();
}

CShowMess::~CShowMess()
{
    exeModule.Unlock();
}

HRESULT CShowMess::QueryInterface(REFIID iid, void** object)
{
    return controlling_->QueryInterface(iid, object);
}

ULONG CShowMess::AddRef()
{
    return controlling_->AddRef();
}

ULONG CShowMess::Release()
{
    return controlling_->Release();
}

HRESULT CShowMess::ShowMessage(unsigned short* szMess)
{
    // The interface speaks of 16-bit units; they are the program's wide text.
    if (exeModule.lineSink != nullptr)
        exeModule.lineSink->AddMessage(reinterpret_cast<const wchar_t*>(szMess));
    return S_OK;
}

HRESULT CShowMess::Inner::QueryInterface(REFIID iid, void** object)
{
    if (object == nullptr)
        return E_POINTER;
    if (::IsEqualIID(iid, IID_IUnknown)) {
        *object = static_cast<IUnknown*>(this);
    } else if (::IsEqualIID(iid, IID_IShowMess)) {
        *object = static_cast<IShowMess*>(owner);
    } else {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    static_cast<IUnknown*>(*object)->AddRef();
    return S_OK;
}

ULONG CShowMess::Inner::AddRef()
{
    return ++refCount;
}

ULONG CShowMess::Inner::Release()
{
    ULONG count = --refCount;
    if (count == 0)
        delete owner;
    return count;
}
