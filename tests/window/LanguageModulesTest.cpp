#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <string>
#include <vector>

#include "lang/resource_inventory.h"
#include "support/TestFiles.h"

using namespace oriel::lang;

namespace {

// The arguments a format string consumes, one letter each: 'd' for an
// integer conversion, 's' for a wide string, '?' for anything else.
std::string FormatSignature(const std::wstring& text)
{
    std::string signature;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != L'%')
            continue;
        if (++i < text.size() && text[i] == L'%')
            continue;
        while (i < text.size() && std::wcschr(L"-+ #0123456789.", text[i]) != nullptr)
            ++i;
        wchar_t conversion = i < text.size() ? text[i] : L'\0';
        signature += std::wcschr(L"diuxX", conversion) != nullptr && conversion != L'\0' ? 'd'
                     : conversion == L's'                                              ? 's'
                                                                                       : '?';
    }
    return signature;
}

std::wstring LoadWhole(HMODULE module, int id)
{
    const wchar_t* text = nullptr;
    int length = ::LoadStringW(module, id, reinterpret_cast<LPWSTR>(&text), 0);
    return length > 0 ? std::wstring(text, length) : std::wstring();
}

void CollectCommands(HMENU menu, std::vector<int>& commands)
{
    for (int i = 0; i < ::GetMenuItemCount(menu); ++i) {
        if (HMENU sub = ::GetSubMenu(menu, i))
            CollectCommands(sub, commands);
        else if (UINT id = ::GetMenuItemID(menu, i); id != 0 && id != UINT(-1))
            commands.push_back(static_cast<int>(id));
    }
}

INT_PTR CALLBACK NoDialogProc(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

class ModuleContents : public ::testing::TestWithParam<oriel::lang::LanguageModule> {
protected:
    void SetUp() override
    {
        const std::string relative = GetParam().relativePath;
        std::wstring path = testing_support::InstallDir() + L"\\";
        path.append(relative.begin(), relative.end());
        std::replace(path.begin(), path.end(), L'/', L'\\');
        module = ::LoadLibraryW(path.c_str());
        ASSERT_NE(nullptr, module) << relative;
    }
    void TearDown() override
    {
        if (module != nullptr)
            ::FreeLibrary(module);
    }
    HMODULE module = nullptr;
};

TEST_P(ModuleContents, HoldsEveryStringWithTheArgumentsItIsFormattedWithAndTheIcon)
{
    for (const StringEntry& entry : kStrings) {
        std::wstring text = LoadWhole(module, entry.id);
        EXPECT_FALSE(text.empty()) << "string " << entry.id;
        EXPECT_EQ(entry.args, FormatSignature(text)) << "string " << entry.id;
    }
    for (const StringLimit& limit : kStringLimits)
        EXPECT_LE(LoadWhole(module, limit.id).size(), limit.maxLength) << "string " << limit.id;
    for (const FixedString& fixed : kFixedStrings)
        EXPECT_EQ(fixed.text, LoadWhole(module, fixed.id)) << "string " << fixed.id;
    EXPECT_EQ(GetParam().iconFolder, LoadWhole(module, IDS_ICON_FOLDER));
    // Looked up in the program file, never in a language module.
    EXPECT_TRUE(LoadWhole(module, IDS_ABOUT_FALLBACK).empty());
    EXPECT_TRUE(LoadWhole(module, IDS_AUX_FALLBACK).empty());
    for (int id : kIcons)
        EXPECT_NE(nullptr, ::LoadIconW(module, MAKEINTRESOURCEW(id))) << "icon " << id;
}

TEST_P(ModuleContents, MenusCarryTheirCommands)
{
    for (const MenuEntry& entry : kMenus) {
        HMENU menu = ::LoadMenuW(module, MAKEINTRESOURCEW(entry.id));
        ASSERT_NE(nullptr, menu) << "menu " << entry.id;
        std::vector<int> commands;
        CollectCommands(entry.firstSubmenuInOrder ? ::GetSubMenu(menu, 0) : menu, commands);
        std::vector<int> expected(entry.commands, entry.commands + entry.count);
        if (!entry.firstSubmenuInOrder) {
            std::sort(commands.begin(), commands.end());
            std::sort(expected.begin(), expected.end());
        }
        EXPECT_EQ(expected, commands) << "menu " << entry.id;
        ::DestroyMenu(menu);
    }
}

TEST_P(ModuleContents, DialogsHaveEveryControlOfTheRightKind)
{
    for (const DialogEntry& entry : kDialogs) {
        HWND dialog = ::CreateDialogParamW(module, MAKEINTRESOURCEW(entry.id), nullptr,
                                           NoDialogProc, 0);
        ASSERT_NE(nullptr, dialog) << "dialog " << entry.id;
        for (std::size_t i = 0; i < entry.count; ++i) {
            const DialogControl& control = entry.controls[i];
            SCOPED_TRACE("dialog " + std::to_string(entry.id) + " control " + std::to_string(control.id));
            HWND item = ::GetDlgItem(dialog, control.id);
            ASSERT_NE(nullptr, item);
            wchar_t className[32] = {};
            ::GetClassNameW(item, className, 32);
            const ControlKind kind = control.kind;
            const bool button = kind == ControlKind::PushButton || kind == ControlKind::RadioButton;
            EXPECT_STREQ(button ? L"Button" : kind == ControlKind::Edit ? L"Edit" : L"Static", className);
            const LONG style = ::GetWindowLongW(item, GWL_STYLE), type = style & 0x0F;
            const bool styleFits =
                kind == ControlKind::PushButton ? type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON
                : kind == ControlKind::RadioButton ? type == BS_RADIOBUTTON || type == BS_AUTORADIOBUTTON
                : kind == ControlKind::ClickThroughText ? (style & SS_NOTIFY) == 0
                                                        : true;
            EXPECT_TRUE(styleFits);
            EXPECT_EQ(control.startsDisabled, !::IsWindowEnabled(item));
        }
        ::DestroyWindow(dialog);
    }
}

INSTANTIATE_TEST_SUITE_P(BothLanguages, ModuleContents, ::testing::ValuesIn(kModules), [](const auto& info) {
    return std::string(std::strstr(info.param.relativePath, "CHS") != nullptr ? "Chinese" : "English");
});

} // namespace
