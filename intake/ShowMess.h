#pragma once
#include <windows.h>

#include "Oriel.h"

// The ShowMess component: hands each submitted line to the main window.
// Single-threaded: every call arrives on the user-interface thread through
// its message loop, so the reference count is a plain integer.  It can be
// aggregated; it has no state of its own and holds one module lock while it
// lives, so that its release lets the server end.
class CShowMess final : public IShowMess {
public:
    // Creates an object and returns interface `iid` of it.  With an outer
    // object only IUnknown may be asked for (the inner, non-delegating one).
    static HRESULT Create(IUnknown* outer, REFIID iid, void** object);

    // IUnknown: the controlling unknown's, the outer object's when aggregated.
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    // Adds the line; S_OK in every case.
    HRESULT STDMETHODCALLTYPE ShowMessage(unsigned short* szMess) override;

private:
    // The object's own IUnknown, which owns the reference count.
    class Inner final : public IUnknown {
    public:
        explicit Inner(CShowMess* owner) : owner(owner) {}
        HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
        ULONG STDMETHODCALLTYPE AddRef() override;
        ULONG STDMETHODCALLTYPE Release() override;

        CShowMess* const owner;
        ULONG refCount = 0;
    };

    explicit CShowMess(IUnknown* outer);
    ~CShowMess();
    CShowMess(const CShowMess&) = delete;
    CShowMess& operator=(const CShowMess&) = delete;

    Inner inner_;
    IUnknown* controlling_;  // the outer object, or inner_ when not aggregated
};
