#pragma once
#include <windows.h>

#include <string>

namespace testing_support {

// Loads the English language module of the installation folder, once per
// process, and makes it the resource module; the module.
HMODULE UseEnglishModule();

// String `id` of the resource module the test has loaded.
std::wstring ResourceText(UINT id);

} // namespace testing_support
