/*
 * What every language module must hold: the string identifiers with the
 * printf arguments each string is formatted with, the menus with the commands
 * they carry, the dialog templates with their controls, and the icon.
 *
 * The program looks all of these up by identifier in whichever module the
 * suite's language setting selects, and formats several strings with fixed
 * arguments, so a module that lacks an entry, or whose format string expects
 * other arguments, breaks the program.  Checks of the built modules iterate
 * over the tables below.  Plain C++17, no platform headers needed.
 */
#ifndef ORIEL_LANG_RESOURCE_INVENTORY_H
#define ORIEL_LANG_RESOURCE_INVENTORY_H

#include <cstddef>
#include <iterator>

#include "ResourceIds.h"

namespace oriel::lang {

/* ---- modules ------------------------------------------------------------ */

struct LanguageModule {
    const char* relativePath;   // below the installation folder
    const wchar_t* iconFolder;  // the exact text of IDS_ICON_FOLDER
};

inline constexpr LanguageModule kModules[] = {
    {"Lang/CHS/OrielCHS.dll", L"Lang\\CHS\\"},
    {"Lang/EN/OrielEN.dll", L"Lang\\EN\\"},
};

/* Strings whose text is not a translation: the same in every module. */
struct FixedString {
    int id;
    const wchar_t* text;
};

inline constexpr FixedString kFixedStrings[] = {
    {IDS_WINDOW_CLASS, L"OrielMessWnd"},
    {IDS_SETTINGS_FILE, L"ShowMess.ini"},
    {IDS_RECORD_LINE_FORMAT, L"%04d-%02d-%02d %02d:%02d:%02d.%03d  %s"},
};

/* ---- strings ------------------------------------------------------------ */

/*
 * Every string the modules must hold, with the arguments the program passes
 * when it formats it, one letter per argument, in order:
 *   'd'  an int (any integer conversion: %d, %i, %u, %x, with flags, width
 *        or precision, for example %04d)
 *   's'  a wide string (%s under the platform's wide printf convention)
 * An empty signature means the text is shown as it is and must contain no
 * conversion at all; a literal percent sign is then not allowed either,
 * except written as %% in a string that is formatted.
 *
 * Strings 32806 and 32807 are looked up in the program file, not in the
 * modules, and are deliberately absent.
 */
struct StringEntry {
    int id;
    const char* args;
};

inline constexpr StringEntry kStrings[] = {
    {IDS_WINDOW_TITLE, ""},
    {IDS_WINDOW_CLASS, ""},
    {IDS_FONT_FACE, ""},
    {IDS_SAVEPATH_CAPTION, ""},
    {IDS_SAVEPATH_EMPTY, ""},
    {IDS_BROWSE_FOLDER_TITLE, ""},
    {IDS_ERROR_CAPTION, ""},
    {IDS_SHORT_WRITE, ""},
    {IDS_SETTINGS_FILE, ""},
    {IDS_BROWSER_TITLE, ""},
    {IDS_TEXTLOG_STREAM_FAILED, ""},
    {IDS_TOPMOST, ""},
    {IDS_NOTOPMOST, ""},
    {IDS_FILE_DIALOG_TITLE, ""},
    {IDS_PRINT_FONT_SAMPLE, ""},
    {IDS_PRINT_HEADER_DEFAULT, ""},
    {IDS_PRINT_FOOTER_DEFAULT, ""},
    {IDS_PRINT_SETUP_CAPTION, ""},
    {IDS_BAD_YEAR, ""},
    {IDS_BAD_MONTH, ""},
    {IDS_BAD_DAY, "d"},                       // days in the month
    {IDS_BAD_HOUR, ""},
    {IDS_BAD_MINUTE, ""},
    {IDS_BAD_SECOND, ""},
    {IDS_FIELD_EMPTY, ""},
    {IDS_OUTSIDE_LOG, "ss"},                  // first and last record time
    {IDS_RANGE_TIME_FORMAT, "dddddd"},        // year month day hour minute second
    {IDS_FROM_AFTER_TO, ""},
    {IDS_RECORD_LINE_FORMAT, "ddddddds"},     // y m d h min s ms, then the text
    {IDS_ICON_FOLDER, ""},

    {IDS_PRINT_CAPTION, ""},
    {IDS_PRINT_NOTHING_IN_RANGE, ""},
    {IDS_PRINT_PAGE_PROGRESS, "dd"},          // page, pages
    {IDS_PRINT_COPY_PROGRESS, "dd"},          // copy, copies
    {IDS_PRINT_PAGE_LABEL, "d"},              // page
    {IDS_PRINT_PAGE_DRAW_FAILED, "d"},        // page
    {IDS_PRINT_PAGE_READ_FAILED, ""},
    {IDS_PRINT_HEADER, "sdddddd"},            // path, then y m d h min s
    {IDS_SAVEPATH_CREATE_CAPTION, ""},
    {IDS_SAVEPATH_CREATE_ASK, "s"},           // path
    {IDS_SAVEPATH_CREATE_FAILED, "s"},        // path
    {IDS_SAVEPATH_INVALID, ""},
    {IDS_SAVEPATH_READONLY_CAPTION, ""},
    {IDS_SAVEPATH_READONLY, ""},
    {IDS_SIZE_CHECK_FAILED, ""},
    {IDS_TIMED_FLUSH_FAILED, ""},
    {IDS_ROLLOVER_FAILED, ""},
    {IDS_RETENTION_FAILED, ""},
    {IDS_NEW_LOG_FAILED, ""},
    {IDS_NEWER_FORMAT, ""},
    {IDS_DISK_FULL_NOTICE, ""},
};

/* Longest text the program reads for some strings (code units, terminating
   zero excluded); a longer text would be cut. */
struct StringLimit {
    int id;
    std::size_t maxLength;
};

inline constexpr StringLimit kStringLimits[] = {
    {IDS_WINDOW_TITLE, 127},
    {IDS_WINDOW_CLASS, 127},
    {IDS_FONT_FACE, 31},
    {IDS_BROWSE_FOLDER_TITLE, 63},
    {IDS_ERROR_CAPTION, 63},
    {IDS_SETTINGS_FILE, 127},
    {IDS_BROWSER_TITLE, 127},
    {IDS_TEXTLOG_STREAM_FAILED, 127},
    {IDS_TOPMOST, 127},
    {IDS_NOTOPMOST, 127},
    {IDS_FILE_DIALOG_TITLE, 127},
    {IDS_PRINT_HEADER_DEFAULT, 259},
    {IDS_PRINT_FOOTER_DEFAULT, 259},
    {IDS_PRINT_CAPTION, 63},
    {IDS_NEWER_FORMAT, 255},
    {IDS_DISK_FULL_NOTICE, 127},
    {IDS_SAVEPATH_CAPTION, 63},
    {IDS_SAVEPATH_EMPTY, 255},
    {IDS_SAVEPATH_CREATE_CAPTION, 63},
    {IDS_SAVEPATH_CREATE_ASK, 255},
    {IDS_SAVEPATH_CREATE_FAILED, 255},
    {IDS_SAVEPATH_INVALID, 255},
    {IDS_SAVEPATH_READONLY_CAPTION, 63},
    {IDS_SAVEPATH_READONLY, 255},
    {IDS_NEW_LOG_FAILED, 255},
};

/* ---- menus -------------------------------------------------------------- */

struct MenuEntry {
    int id;
    const int* commands;
    std::size_t count;
    /* true: the commands are the items of the menu's first submenu, in this
       order (separators may sit between them); false: each command appears
       somewhere in the menu, in any submenu and order. */
    bool firstSubmenuInOrder;
};

inline constexpr int kMainMenuCommands[] = {
    IDM_ABOUT, IDM_FONT, IDM_SAVE_DIRECTORY, IDM_SAVE_PARAMS,
    IDM_OPEN_LOG, IDM_PRINT, IDM_PRINT_SETUP, IDM_EXPORT_TEXT,
};

inline constexpr int kCodeMenuCommands[] = {
    IDM_CODE_FILE, IDM_CODE_PAGE, IDM_CODE_DATE, IDM_CODE_TIME,
    IDM_CODE_LEFT, IDM_CODE_CENTER, IDM_CODE_RIGHT,
};

inline constexpr int kBrowserMenuCommands[] = {
    IDM_PRINT, IDM_PRINT_SETUP, IDM_EXPORT_TEXT,
};

/* Every command a menu item may carry: the main window and the browser
   route nothing else, so any other identifier would be a dead item. */
inline constexpr MenuEntry kMenus[] = {
    {IDR_MAIN_MENU, kMainMenuCommands, std::size(kMainMenuCommands), false},
    {IDR_CODE_MENU, kCodeMenuCommands, std::size(kCodeMenuCommands), true},
    {IDR_BROWSER_MENU, kBrowserMenuCommands, std::size(kBrowserMenuCommands), false},
};

/* ---- dialogs ------------------------------------------------------------ */

enum class ControlKind {
    PushButton,        // "Button", push style
    RadioButton,       // "Button", radio style
    Edit,              // "Edit"
    Text,              // "Static" showing text set by the program
    ClickThroughText,  // "Static" without SS_NOTIFY: clicks reach the dialog
    Frame,             // "Static" marking an area the dialog paints itself
};

struct DialogControl {
    int id;
    ControlKind kind;
    bool startsDisabled;  // WS_DISABLED in the template
};

struct DialogEntry {
    int id;
    const DialogControl* controls;
    std::size_t count;
};

inline constexpr DialogControl kAboutControls[] = {
    {IDC_ABOUT_TEXT, ControlKind::Text, false},
    {1, ControlKind::PushButton, false},
};

inline constexpr DialogControl kSavePathControls[] = {
    {IDC_SAVE_PATH, ControlKind::Edit, false},
    {IDC_SAVE_PATH_BROWSE, ControlKind::PushButton, false},
    {1, ControlKind::PushButton, false},
    {2, ControlKind::PushButton, false},
};

inline constexpr DialogControl kSaveParamControls[] = {
    {IDC_SAVE_TIME, ControlKind::Edit, false},
    {IDC_SAVE_DAYS, ControlKind::Edit, false},
    {IDC_LOG_SIZE, ControlKind::Edit, false},
    {1, ControlKind::PushButton, false},
    {2, ControlKind::PushButton, false},
};

/* The four range buttons form one group.  The time fields start disabled:
   the dialog enables only the fields of the range kind in force. */
inline constexpr DialogControl kPrintSetupControls[] = {
    {1, ControlKind::PushButton, false},
    {2, ControlKind::PushButton, false},
    {IDC_HEADER_TEXT, ControlKind::Edit, false},
    {IDC_FOOTER_TEXT, ControlKind::Edit, false},
    {IDC_RANGE_ALL, ControlKind::RadioButton, false},
    {IDC_RANGE_BETWEEN, ControlKind::RadioButton, false},
    {IDC_RANGE_UPTO, ControlKind::RadioButton, false},
    {IDC_RANGE_FROM, ControlKind::RadioButton, false},
    {IDC_PRINT_FONT, ControlKind::PushButton, false},
    {IDC_FONT_SAMPLE, ControlKind::Frame, false},
    {IDC_HEADER_CODES, ControlKind::ClickThroughText, false},
    {IDC_FOOTER_CODES, ControlKind::ClickThroughText, false},
    {IDC_PRINTER_SETUP, ControlKind::PushButton, false},
    {IDC_BETWEEN_FROM_YEAR, ControlKind::Edit, true},
    {IDC_BETWEEN_FROM_MONTH, ControlKind::Edit, true},
    {IDC_BETWEEN_FROM_DAY, ControlKind::Edit, true},
    {IDC_BETWEEN_FROM_HOUR, ControlKind::Edit, true},
    {IDC_BETWEEN_FROM_MINUTE, ControlKind::Edit, true},
    {IDC_BETWEEN_FROM_SECOND, ControlKind::Edit, true},
    {IDC_BETWEEN_TO_YEAR, ControlKind::Edit, true},
    {IDC_BETWEEN_TO_MONTH, ControlKind::Edit, true},
    {IDC_BETWEEN_TO_DAY, ControlKind::Edit, true},
    {IDC_BETWEEN_TO_HOUR, ControlKind::Edit, true},
    {IDC_BETWEEN_TO_MINUTE, ControlKind::Edit, true},
    {IDC_BETWEEN_TO_SECOND, ControlKind::Edit, true},
    {IDC_UPTO_YEAR, ControlKind::Edit, true},
    {IDC_UPTO_MONTH, ControlKind::Edit, true},
    {IDC_UPTO_DAY, ControlKind::Edit, true},
    {IDC_UPTO_HOUR, ControlKind::Edit, true},
    {IDC_UPTO_MINUTE, ControlKind::Edit, true},
    {IDC_UPTO_SECOND, ControlKind::Edit, true},
    {IDC_FROM_YEAR, ControlKind::Edit, true},
    {IDC_FROM_MONTH, ControlKind::Edit, true},
    {IDC_FROM_DAY, ControlKind::Edit, true},
    {IDC_FROM_HOUR, ControlKind::Edit, true},
    {IDC_FROM_MINUTE, ControlKind::Edit, true},
    {IDC_FROM_SECOND, ControlKind::Edit, true},
};

/* The progress dialog is made hidden and shown when printing starts, so its
   template must not carry WS_VISIBLE. */
inline constexpr DialogControl kPrintProgressControls[] = {
    {IDC_PRINT_PAGE_LINE, ControlKind::Text, false},
    {IDC_PRINT_COPY_LINE, ControlKind::Text, false},
    {2, ControlKind::PushButton, false},
};

inline constexpr DialogEntry kDialogs[] = {
    {IDD_ABOUT, kAboutControls, std::size(kAboutControls)},
    {IDD_SAVE_PATH, kSavePathControls, std::size(kSavePathControls)},
    {IDD_SAVE_PARAMS, kSaveParamControls, std::size(kSaveParamControls)},
    {IDD_PRINT_SETUP, kPrintSetupControls, std::size(kPrintSetupControls)},
    {IDD_PRINT_PROGRESS, kPrintProgressControls, std::size(kPrintProgressControls)},
};

/* ---- icons -------------------------------------------------------------- */

inline constexpr int kIcons[] = {IDI_ORIEL};

}  // namespace oriel::lang

#endif
