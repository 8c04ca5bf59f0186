#pragma once
#include <windows.h>

#include "log/LogFormat.h"
#include "view/LineSource.h"

// The browser's file-error report: the platform's text for the last error in
// an ownerless box with the error caption.  Unlike the log writer's report it
// knows nothing of a full disk.
void ReportBrowseError();

// Opens a saved log for reading: existing files only, sharing reading and
// writing so that the log writer can go on appending to the log a browser
// shows, with an inheritable handle.
HANDLE OpenSavedLog(const wchar_t* path);

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

    // The steps every operation on the file is made of.  None of them
    // reports: each caller has its own order of reporting and stopping.
    //
    // Closes the handle an operation left open; on failure it stays held.
    bool CloseFile();
    // Opens the file for reading into the held handle.
    bool OpenFile();
    HANDLE File() const { return file_; }
    // The held handle itself, for the text-log conversion, which uses it
    // for the text log and may leave a file in it for the next close.
    HANDLE& FileSlot() { return file_; }

    enum class Header { Accepted, Failed, TooShort, Newer };
    // Reads the 32-byte header of the open file from its start and compares
    // its version text, case-insensitively, with ours.
    Header ReadHeader();
    // The refusal of a file of a newer format, owned by the owner window.
    void RefuseNewerFormat() const;

private:
    HWND owner_ = nullptr;
    wchar_t filePath_[MAX_PATH] = {};
    HANDLE file_ = INVALID_HANDLE_VALUE;
    int lineCount_ = 0;
};
