#pragma once
#include <windows.h>

#include <string>

namespace testing_support {

// String `id` of the resource module the test has loaded.
std::wstring ResourceText(UINT id);

} // namespace testing_support
