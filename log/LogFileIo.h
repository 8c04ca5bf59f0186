#pragma once
#include "log/LogFormat.h"

#include <windows.h>

// The file operations every log-file user shares.  A log file is opened by
// path for each operation and closed again; while the writer has it open it
// is shared for reading only, so other programs can follow it; readers of a
// saved log share writing too, so the writer can go on appending.  Handles
// are inheritable.

HANDLE OpenLogFile(const wchar_t* path, DWORD access, DWORD disposition,
                   DWORD share = FILE_SHARE_READ);

// Moves the file pointer; `position` (optional) receives the new offset.
bool SeekLogFile(HANDLE file, LONG offset, DWORD method, DWORD* position = nullptr);

enum class HeaderRead { Complete, SeekFailed, ReadFailed, TooShort };

// Reads the 32-byte version text from offset 0 into a zero-filled `header`.
HeaderRead ReadLogHeader(HANDLE file, unsigned char (&header)[kLogHeaderTextBytes]);

enum class WriteResult { Complete, Failed, Short };

// One write call of `size` bytes at the current position.
WriteResult WriteLogBytes(HANDLE file, const void* bytes, DWORD size);

// Header of a new, empty file: a zero slot, then the version text over its
// start.  False when a seek or write fails; the position is left after the
// version text.
bool WriteLogHeader(HANDLE file);
