#pragma once
#include <windows.h>

#include "log/LogFormat.h"
#include "view/LineSource.h"

// The browser's file-error report: the platform's text for the last error in
// an ownerless box with the error caption.  Unlike the log writer's report it
// knows nothing of a full disk.
void ReportBrowseError();

// One saved log file as a list of lines, read from the file alone.  The file
// is opened for each operation, sharing reading and writing so that the log
// writer can go on appending to it, and closed again.
class FileLineSource : public LineSource {
public:
    FileLineSource() = default;
    FileLineSource(const FileLineSource&) = delete;
    FileLineSource& operator=(const FileLineSource&) = delete;
    ~FileLineSource();

    // The window that owns the newer-format refusal.
    void SetOwner(HWND owner) { owner_ = owner; }
    void SetPath(const wchar_t* path);
    const wchar_t* Path() const { return filePath_; }
    wchar_t (&PathBuffer())[MAX_PATH] { return filePath_; }

    int LineCount() const override { return lineCount_; }
    void SetLineCount(int count) { lineCount_ = count; }
    // No clamp and no ring: a negative top line is read as it stands (-1
    // reads the header slot as a line; below that the seek fails).
    int FillPage(int topLine, MessageRecord* page, int linesPerPage) override;

    // Closes the handle an operation left open; false (after the report)
    // when the close fails.
    bool CloseFile();
    // Opens the file for reading into the held handle; reported on failure.
    bool OpenFile();
    HANDLE File() const { return file_; }

    enum class Header { Accepted, Failed, TooShort, Refused };
    // Reads the 32-byte header of the open file from its start and checks
    // its version.  A failed seek or read is reported, a short header is
    // not; a newer format is closed and refused with its message.
    Header CheckHeader();

private:
    HWND owner_ = nullptr;
    wchar_t filePath_[MAX_PATH] = {};
    HANDLE file_ = INVALID_HANDLE_VALUE;
    int lineCount_ = 0;
};
