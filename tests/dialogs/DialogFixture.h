#pragma once
#include <gtest/gtest.h>

#include <string>

#include "support/DialogScript.h"
#include "support/TestFiles.h"

// Every test of this program runs its dialogs from the English module on
// the test's thread, in a single-threaded apartment as the program does.

using testing_support::Click;
using testing_support::DialogScript;
using testing_support::ItemText;
using testing_support::Type;

std::wstring Text(UINT id);
// String `id` formatted with one wide-string argument.
std::wstring Text(UINT id, const std::wstring& argument);
// A step that expects a message box with this caption string, text, icon and
// buttons (as DescribeBox shows them) and answers it.
DialogScript::Step ExpectBox(UINT captionId, const std::wstring& text, const wchar_t* icon,
                             int answer = IDOK);
// The box asking whether to create the missing directory `path`.
DialogScript::Step ExpectCreateQuestion(const std::wstring& path, int answer = IDOK);
// Types `text` into `id` and presses OK.
DialogScript::Step TypeAndOk(int id, const std::wstring& text);

class DialogFixture : public ::testing::Test {
protected:
    DialogScript script;
    testing_support::TempDir dir;
};
