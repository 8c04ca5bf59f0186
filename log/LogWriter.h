#pragma once
#include "log/LogHost.h"
#include "ring/MessageRing.h"

#include <windows.h>

// CurrentLogFileSize's answer when the file could not be measured.
constexpr DWORD kLogSizeError = 0xFFFFFFFF;

// Beyond this many pending records the flush timer writes at once: the
// ring's only defence against overwriting records the file does not hold.
constexpr int kEarlyFlushPending = 4000;

// Where "now" comes from, for file names and the retention sweep.
using LocalClock = void(WINAPI*)(LPSYSTEMTIME);

// Moves the ring's pending records into the current log file, starts a new
// file when the current one is too large or unusable, and sweeps old files.
// Every operation opens the current file by path, works and closes it again;
// nothing is held open between operations.  The writer holds the one handle
// of the current file; the view takes turns with it through OpenCurrentFile
// and CloseCurrentFile.  Runs on the user-interface thread only.
class LogWriter {
public:
    LogWriter(MessageRing& ring, LogHost& host, LocalClock clock = ::GetLocalTime);
    ~LogWriter();
    LogWriter(const LogWriter&) = delete;
    LogWriter& operator=(const LogWriter&) = delete;

    // Appends `count` records from unwrittenPos.  1 on success (also for
    // count < 1, which touches nothing), 0 on failure, after its message.
    int FlushPending(int count);
    // Switches to a file named after the current minute, after flushing the
    // pending records into the old one.  1 on success, 0 on failure.
    int StartNewLogFile();
    // Size of the current log file, or kLogSizeError.
    DWORD CurrentLogFileSize();
    // The log part of window creation: continue or create `name` in
    // `directory`, count its records, start the timers.  0, or -1 when the
    // window must not be created.
    int OpenCurrentLogFile(const wchar_t* directory, const wchar_t* name);
    // The name (into MAX_PATH units) of the log file to continue in
    // `directory`: the latest by the time in its name; a new name for the
    // current minute when there is none.
    void FindNewestLogFile(const wchar_t* directory, wchar_t* name) const;
    // The name (into kLogFileNameBufferUnits units) of a file started now.
    void MakeCurrentLogFileName(wchar_t* name) const;
    // Creates every missing directory of `path` below its first component.
    // 0 when the path holds no backslash or a directory cannot be created.
    static int CreateSaveDirectory(const wchar_t* path);
    // Shows the platform's text for the last error in an ownerless box.  On
    // a full disk, and only on behalf of the main window (`withWindow`), the
    // flush and size timers stop and the window is told first.
    void ReportFileError(bool withWindow);
    // One tick of `timer`: 0, or -1 after a failure message.
    int OnTimer(LogTimer timer);

    // Opens the current log file by path, after closing a handle an earlier
    // operation left; the handle stays with the writer until CloseCurrentFile.
    HANDLE OpenCurrentFile(DWORD access, DWORD disposition);
    // The handle held now: the one just opened, or the new file's after
    // StartNewLogFile; invalid when none is open.
    HANDLE CurrentFile() const { return logFile; }
    // Reads the header of the open current file.  A failed seek or read is
    // reported, a short header is not, and a newer format is closed and
    // refused with its message.
    bool CurrentHeaderAccepted();
    // Closes the held handle, if any; a failed close is reported.
    bool CloseCurrentFile();

    const wchar_t* LogFilePath() const { return logFilePath; }
    const wchar_t* SaveDirectory() const { return saveDirectory; }
    void SetSaveDirectory(const wchar_t* directory);

    DWORD SaveDays() const { return saveDays; }
    DWORD SaveTime() const { return saveTime; }
    DWORD LogSize() const { return logSize; }
    void SetSettings(DWORD days, DWORD seconds, DWORD megabytes);
    // Seconds counted by the flush timer since the last timed flush.
    unsigned FlushTicks() const { return flushTicks; }

    // 0 normal, 1 a full disk was just reported, 2 the intake has added the
    // notice (set by the window).  Never reset.
    int DiskFullState() const { return diskFullState; }
    void SetDiskFullState(int state) { diskFullState = state; }

private:
    bool AppendOrReport(const void* bytes, DWORD size);
    void StartTimers();
    void StopTimers();
    int OnFlushTimer();
    int OnSizeTimer();
    int OnRetentionTimer();

    MessageRing& ring_;
    LogHost& host_;
    LocalClock clock_;
    // Set while StartNewLogFile flushes into the old file; see FlushPending.
    bool flushingBeforeSwitch_ = false;

    HANDLE logFile = INVALID_HANDLE_VALUE;
    wchar_t saveDirectory[MAX_PATH] = {};
    wchar_t logFilePath[MAX_PATH] = {};
    DWORD saveDays = 0;   // days a log file is kept; 0 keeps them all
    DWORD saveTime = 0;   // seconds between timed flushes; 0 flushes only when the ring fills
    DWORD logSize = 0;    // megabytes above which a new file starts
    int diskFullState = 0;
    unsigned flushTicks = 0;
};
