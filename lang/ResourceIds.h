/*
 * Identifiers of every resource the program looks up in its language module,
 * and of the commands and controls those resources carry.  The numbers are
 * fixed: other programs of the suite and older language modules rely on them.
 * Plain preprocessor definitions only, so that the resource compiler and the
 * C++ compiler can both include this file.
 */
#ifndef ORIEL_RESOURCE_IDS_H
#define ORIEL_RESOURCE_IDS_H

/* ---- strings ---------------------------------------------------------- */
#define IDS_WINDOW_TITLE              101
#define IDS_WINDOW_CLASS              102
#define IDS_FONT_FACE                 103
#define IDS_SAVEPATH_CAPTION          104
#define IDS_SAVEPATH_EMPTY            105
#define IDS_BROWSE_FOLDER_TITLE       106
#define IDS_ERROR_CAPTION             107
#define IDS_SHORT_WRITE               108
#define IDS_SETTINGS_FILE             110
#define IDS_BROWSER_TITLE             111
#define IDS_TEXTLOG_STREAM_FAILED     112
#define IDS_TOPMOST                   113
#define IDS_NOTOPMOST                 114
#define IDS_FILE_DIALOG_TITLE         115
#define IDS_PRINT_FONT_SAMPLE         116
#define IDS_PRINT_HEADER_DEFAULT      117
#define IDS_PRINT_FOOTER_DEFAULT      118
#define IDS_PRINT_SETUP_CAPTION       119
#define IDS_BAD_YEAR                  120
#define IDS_BAD_MONTH                 121
#define IDS_BAD_DAY                   122 /* %d: days in the month */
#define IDS_BAD_HOUR                  123
#define IDS_BAD_MINUTE                124
#define IDS_BAD_SECOND                125
#define IDS_FIELD_EMPTY               126
#define IDS_OUTSIDE_LOG               127 /* %s first record time, %s last record time */
#define IDS_RANGE_TIME_FORMAT         128 /* %d x6: year month day hour minute second */
#define IDS_FROM_AFTER_TO             129
#define IDS_RECORD_LINE_FORMAT        130 /* %d x7 then %s: the text of one log line */
#define IDS_ICON_FOLDER               133 /* folder below the program directory that holds Resource\ */

#define IDS_PRINT_CAPTION             32785
#define IDS_PRINT_NOTHING_IN_RANGE    32786
#define IDS_PRINT_PAGE_PROGRESS       32787 /* %d page, %d pages */
#define IDS_PRINT_COPY_PROGRESS       32788 /* %d copy, %d copies */
#define IDS_PRINT_PAGE_LABEL          32789 /* %d page */
#define IDS_PRINT_PAGE_DRAW_FAILED    32790 /* %d page */
#define IDS_PRINT_PAGE_READ_FAILED    32791
#define IDS_PRINT_HEADER              32792 /* %s path, %d x6 time */
#define IDS_SAVEPATH_CREATE_CAPTION   32793
#define IDS_SAVEPATH_CREATE_ASK       32794 /* %s path */
#define IDS_SAVEPATH_CREATE_FAILED    32795 /* %s path */
#define IDS_SAVEPATH_INVALID          32796
#define IDS_SAVEPATH_READONLY_CAPTION 32797
#define IDS_SAVEPATH_READONLY         32798
#define IDS_SIZE_CHECK_FAILED         32799
#define IDS_TIMED_FLUSH_FAILED        32800
#define IDS_ROLLOVER_FAILED           32801
#define IDS_RETENTION_FAILED          32802
#define IDS_NEW_LOG_FAILED            32803
#define IDS_NEWER_FORMAT              32804
#define IDS_DISK_FULL_NOTICE          32805
/* Looked up in the program file itself, which has no string table: they
   always come out empty.  Not part of the language modules. */
#define IDS_ABOUT_FALLBACK            32806
#define IDS_AUX_FALLBACK              32807

/* ---- menus, dialogs, icon --------------------------------------------- */
#define IDR_MAIN_MENU                 202
#define IDR_CODE_MENU                 207
#define IDR_BROWSER_MENU              209
#define IDD_PRINT_SETUP               116
#define IDD_ABOUT                     203
#define IDD_SAVE_PATH                 204
#define IDD_SAVE_PARAMS               205
#define IDD_PRINT_PROGRESS            208
#define IDI_ORIEL                     201

/* ---- commands ---------------------------------------------------------- */
#define IDM_SAVE_DIRECTORY            32768
#define IDM_ABOUT                     32769
#define IDM_FONT                      32770
#define IDM_SAVE_PARAMS               32771
#define IDM_OPEN_LOG                  32772
#define IDM_TOPMOST                   32773
#define IDM_NOTOPMOST                 32774
#define IDM_PRINT                     32775
#define IDM_PRINT_SETUP               32776
#define IDM_CODE_FILE                 32778 /* inserts &F */
#define IDM_CODE_PAGE                 32779 /* &P */
#define IDM_CODE_DATE                 32780 /* &D */
#define IDM_CODE_TIME                 32781 /* &T */
#define IDM_CODE_LEFT                 32782 /* &L */
#define IDM_CODE_CENTER               32783 /* &C */
#define IDM_CODE_RIGHT                32784 /* &R */
#define IDM_EXPORT_TEXT               32806

/* ---- controls ---------------------------------------------------------- */
/* About dialog (203) */
#define IDC_ABOUT_TEXT                236
/* Save-path dialog (204) */
#define IDC_SAVE_PATH                 203
#define IDC_SAVE_PATH_BROWSE          204
/* Save-parameters dialog (205) */
#define IDC_SAVE_TIME                 201
#define IDC_SAVE_DAYS                 202
#define IDC_LOG_SIZE                  203
/* Print setup dialog (116) */
#define IDC_HEADER_TEXT               207
#define IDC_FOOTER_TEXT               208
#define IDC_RANGE_ALL                 210
#define IDC_RANGE_BETWEEN             211
#define IDC_RANGE_UPTO                216
#define IDC_RANGE_FROM                219
#define IDC_PRINT_FONT                222
#define IDC_FONT_SAMPLE               224
#define IDC_HEADER_CODES              226
#define IDC_FOOTER_CODES              227
#define IDC_PRINTER_SETUP             234
#define IDC_BETWEEN_FROM_YEAR         229
#define IDC_BETWEEN_FROM_MONTH        230
#define IDC_BETWEEN_FROM_DAY          231
#define IDC_BETWEEN_FROM_HOUR         232
#define IDC_BETWEEN_FROM_MINUTE       233
#define IDC_BETWEEN_FROM_SECOND       235
#define IDC_BETWEEN_TO_YEAR           241 /* 241..246: year month day hour minute second */
#define IDC_BETWEEN_TO_MONTH          242
#define IDC_BETWEEN_TO_DAY            243
#define IDC_BETWEEN_TO_HOUR           244
#define IDC_BETWEEN_TO_MINUTE         245
#define IDC_BETWEEN_TO_SECOND         246
#define IDC_UPTO_YEAR                 247 /* 247..252 */
#define IDC_UPTO_MONTH                248
#define IDC_UPTO_DAY                  249
#define IDC_UPTO_HOUR                 250
#define IDC_UPTO_MINUTE               251
#define IDC_UPTO_SECOND               252
#define IDC_FROM_YEAR                 253 /* 253..258 */
#define IDC_FROM_MONTH                254
#define IDC_FROM_DAY                  255
#define IDC_FROM_HOUR                 256
#define IDC_FROM_MINUTE               257
#define IDC_FROM_SECOND               258
/* Print progress dialog (208) */
#define IDC_PRINT_PAGE_LINE           235
#define IDC_PRINT_COPY_LINE           236

#endif
