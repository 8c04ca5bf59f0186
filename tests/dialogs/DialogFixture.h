#pragma once
#include <gtest/gtest.h>

#include <string>

#include "DialogScript.h"
#include "support/TestFiles.h"

// Every test of this program runs its dialogs from the English module on
// the test's thread, in a single-threaded apartment as the program does.

std::wstring Text(UINT id);
// String `id` formatted with one wide-string argument.
std::wstring Text(UINT id, const std::wstring& argument);
// How DescribeBox shows a box with this caption string, text and icon.
std::wstring Box(UINT captionId, const std::wstring& text, const wchar_t* icon,
                 const wchar_t* buttons = L"ok");
// A step that expects a message box described as `expected` and answers it.
DialogScript::Step ExpectBox(const std::wstring& expected, int answer = IDOK);

class DialogFixture : public ::testing::Test {
protected:
    DialogScript script;
    testing_support::TempDir dir;
};
