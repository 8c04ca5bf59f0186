/* The generated proxy code calls the three IUnknown proxy routines of the
 * RPC runtime.  MinGW's import library has them, its headers do not declare
 * them; this file is force-included into the proxy sources. */
#ifndef ORIEL_PROXY_PROTOTYPES_H
#define ORIEL_PROXY_PROTOTYPES_H
#include <objbase.h>

#ifdef __cplusplus
extern "C" {
#endif
HRESULT STDMETHODCALLTYPE IUnknown_QueryInterface_Proxy(IUnknown* This, REFIID riid, void** ppvObject);
ULONG STDMETHODCALLTYPE IUnknown_AddRef_Proxy(IUnknown* This);
ULONG STDMETHODCALLTYPE IUnknown_Release_Proxy(IUnknown* This);
#ifdef __cplusplus
}
#endif
#endif
