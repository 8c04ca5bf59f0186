#pragma once
#include <windows.h>

#include <vector>

#include "intake/RegistryScript.h"

// Carries out registry operations below `root`.  A key that is to be
// deleted and does not exist counts as deleted.  Stops at the first failure
// and returns it; S_OK when all went through.
HRESULT ApplyRegistryOperations(HKEY root, const std::vector<RegistryOperation>& operations);

// Registers (`install`) or removes the registry script resource `id` (type
// "REGISTRY") of `module` under the classes root, with %MODULE% standing for
// the module's full path.
HRESULT ApplyRegistryScript(HMODULE module, UINT id, bool install);
