#include "intake/ClassObjects.h"

#include "Oriel.h"
#include "intake/ShowMessFactory.h"

namespace {
CShowMessFactory factory;
DWORD registrationCookie = 0;
}

HRESULT RegisterClassObjects()
{
    return ::CoRegisterClassObject(CLSID_ShowMess, &factory, CLSCTX_LOCAL_SERVER,
                                   REGCLS_MULTIPLEUSE, &registrationCookie);
}

void RevokeClassObjects()
{
    if (registrationCookie != 0) {
        ::CoRevokeClassObject(registrationCookie);
        registrationCookie = 0;
    }
}
