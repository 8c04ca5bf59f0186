#pragma once
#include <windows.h>

// Export of a log file to a UTF-16 text file (command 32806), shared by the
// main window and the log browsers.  The two differ in the save dialog's
// filter caption and in what happens to a source of less than one slot.
enum class ExportSource { MainWindow, Browser };

// The whole command: asks for the output name (save dialog owned by
// `owner`), appends ".txt" to it and exports `logPath` into it.  Silent on
// cancel and on every failure.  The main window flushes its pending records
// into the log before calling this; a browser exports its file as it stands.
void ExportLogText(HWND owner, const wchar_t* logPath, ExportSource source);

// The export proper, to an output name taken as it is: the log is read whole
// into memory, then the output file is opened (created when missing, never
// truncated, so a longer old file keeps its tail) and receives a byte-order
// mark and one line per record.  From a browser, a source shorter than one
// slot ends the export before any output file exists, and its read handle
// is left open for the rest of the process.  Returns false when it ended
// early (cancel aside, the command never tells anyone).
bool ExportLogFile(const wchar_t* logPath, const wchar_t* outputPath, ExportSource source);
