#pragma once
#include <windows.h>
#include <string>

// Choosing and finding the language module: the resource-only library that
// holds every text, menu, dialog and icon of the program.

enum LanguageCode { LanguageChinese = 1, LanguageEnglish = 4 };

// The value-level rules, kept apart from the calls that read the program's
// own path and the selection file.
std::wstring ModuleDirectoryFromPath(const std::wstring& programPath, int levels);
int LanguageCodeFromValue(const std::wstring& value);
std::wstring LanguageModulePathFor(const std::wstring& programPath, int languageCode, int levels);

// The long-form full path of the running program ("" when it cannot be had).
std::wstring ProgramLongPath();
// The program's directory without a trailing backslash, `levels` further up.
std::wstring GetModuleDirectory(int levels);
// 1 (Chinese) when Config\Language.ini says exactly "CHINESE" or says nothing; else 4.
int ReadLanguageCode(int levels);
std::wstring BuildLanguageModulePath(int languageCode, int levels);
