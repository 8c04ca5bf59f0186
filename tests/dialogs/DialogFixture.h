#pragma once
#include <gtest/gtest.h>

#include <string>

#include "DialogScript.h"
#include "support/TestFiles.h"

// Dialogs of the English module on the test's thread, in a single-threaded
// apartment as in the program, each owned by the script's window.
class DialogFixture : public ::testing::Test {
protected:
    static void SetUpTestSuite();
    static void TearDownTestSuite();

    static std::wstring Text(UINT id);
    // String `id` formatted with one wide-string argument.
    static std::wstring Text(UINT id, const std::wstring& argument);
    // The description DescribeBox gives of a box with these strings.
    static std::wstring Box(UINT captionId, const std::wstring& text, const wchar_t* icon,
                            const wchar_t* buttons = L"ok");

    // A step that expects a message box described as `expected` and answers it.
    static DialogScript::Step ExpectBox(const std::wstring& expected, int answer = IDOK);

    DialogScript script;
    testing_support::TempDir dir;

private:
    static HMODULE english;
};
