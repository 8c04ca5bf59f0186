#pragma once

// The registration switches of the command line.  A switch counts only when
// it is the whole rest of the line after a "-" or "/", so it must come last.

// The position just after the first character of `text` that is one of
// `switchChars`, or null when there is none.
const wchar_t* FindSwitch(const wchar_t* text, const wchar_t* switchChars);

enum class SwitchAction { Run, Register, Unregister };

// Scans the full command line (program path included) for "UnregServer" or
// "RegServer", case-insensitively.  Anything else, the embedding switch the
// platform adds for a client among it, runs the program.
SwitchAction ScanCommandLine(const wchar_t* commandLine);
