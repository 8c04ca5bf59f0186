#include "QxDumpHandler/QxDumpHandler.h"

// The suite installs its crash-dump handler here; on its own the message
// window runs without one.
extern "C" int __stdcall InitHandler()
{
    return 1;
}
