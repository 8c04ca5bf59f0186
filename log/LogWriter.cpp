#include "log/LogWriter.h"

#include "lang/ResourceIds.h"
#include "log/LogDirectory.h"
#include "log/LogFileIo.h"
#include "log/LogFormat.h"
#include "log/LogRetention.h"

namespace {

constexpr DWORD kReadWrite = GENERIC_READ | GENERIC_WRITE;
constexpr DWORD kBytesPerMegabyte = 1048576;
constexpr DWORD kDiskFullError = ERROR_DISK_FULL;

} // namespace

LogWriter::LogWriter(MessageRing& ring, LogHost& host, LocalClock clock)
    : ring_(ring), host_(host), clock_(clock)
{
}

LogWriter::~LogWriter()
{
    if (logFile != INVALID_HANDLE_VALUE)
        ::CloseHandle(logFile);
}

void LogWriter::SetSaveDirectory(const wchar_t* directory)
{
    ::lstrcpynW(saveDirectory, directory, MAX_PATH);
}

void LogWriter::SetSettings(DWORD days, DWORD seconds, DWORD megabytes)
{
    saveDays = days;
    saveTime = seconds;
    logSize = megabytes;
}

bool LogWriter::CloseCurrentFile()
{
    if (logFile == INVALID_HANDLE_VALUE)
        return true;
    const bool closed = ::CloseHandle(logFile) != FALSE;
    // Marked closed before reporting: the report's box keeps dispatching
    // messages, and a timer running under it must not close this handle again.
    logFile = INVALID_HANDLE_VALUE;
    if (!closed)
        ReportFileError(true);
    return closed;
}

bool LogWriter::AppendOrReport(const void* bytes, DWORD size)
{
    switch (WriteLogBytes(logFile, bytes, size)) {
    case WriteResult::Complete:
        return true;
    case WriteResult::Failed:
        ReportFileError(true);
        return false;
    case WriteResult::Short:
        host_.ShowErrorBox(IDS_SHORT_WRITE);
        return false;
    }
    return false;
}

bool LogWriter::CurrentHeaderAccepted()
{
    unsigned char header[kLogHeaderTextBytes];
    switch (ReadLogHeader(logFile, header)) {
    case HeaderRead::Complete:
        break;
    case HeaderRead::SeekFailed:
    case HeaderRead::ReadFailed:
        ReportFileError(true);
        return false;
    case HeaderRead::TooShort:
        return false;
    }
    if (!IsNewerLogFormat(header, false))
        return true;
    // A newer program's file is closed untouched; a failed close is the
    // only message then.
    if (CloseCurrentFile())
        host_.ShowErrorBox(IDS_NEWER_FORMAT);
    return false;
}

void LogWriter::StartTimers()
{
    host_.StartTimer(LogTimer::Flush, kFlushTimerMs);
    host_.StartTimer(LogTimer::Size, kSizeTimerMs);
    host_.StartTimer(LogTimer::Retention, kRetentionTimerMs);
}

void LogWriter::StopTimers()
{
    host_.StopTimer(LogTimer::Flush);
    host_.StopTimer(LogTimer::Size);
    host_.StopTimer(LogTimer::Retention);
}

HANDLE LogWriter::OpenCurrentFile(DWORD access, DWORD disposition)
{
    CloseCurrentFile();
    logFile = OpenLogFile(logFilePath, access, disposition);
    return logFile;
}

void LogWriter::MakeCurrentLogFileName(wchar_t* name) const
{
    SYSTEMTIME now;
    clock_(&now);
    MakeLogFileName(now, name);
}

int LogWriter::FlushPending(int count)
{
    if (count < 1)
        return 1;
    if (OpenCurrentFile(kReadWrite, OPEN_ALWAYS) == INVALID_HANDLE_VALUE) {
        // An unusable current file is replaced by a new one, whose start
        // flushes into the old path again.  That inner flush does not start
        // yet another file, or the two could call each other for ever.  It
        // fails as a further start within the minute would: on the file of
        // the same name, which the outer start holds open, with the system's
        // box for that sharing violation.  The records it could not write
        // are then dropped by the ring reset of the new file.
        if (flushingBeforeSwitch_) {
            ::SetLastError(ERROR_SHARING_VIOLATION);
            ReportFileError(true);
            return 0;
        }
        if (!StartNewLogFile())
            return 0;
        // The new file began with an empty ring: `count` is stale.  Only
        // lines added since (under a message box) are pending now.
        count = ring_.PendingCount();
    }

    if (!CurrentHeaderAccepted())
        return 0;

    DWORD size = 0;
    if (!SeekLogFile(logFile, 0, FILE_END, &size)) {
        ReportFileError(true);
        return 0;
    }
    // A torn last record is completed with zeros so that records stay aligned.
    if (size % kRecordBytes != 0) {
        static const unsigned char zeros[kRecordBytes] = {};
        if (!AppendOrReport(zeros, kRecordBytes - size % kRecordBytes))
            return 0;
    }
    for (int i = 0; i < count; ++i) {
        if (!AppendOrReport(&ring_.ring[ring_.unwrittenPos], kRecordBytes))
            return 0;
        ring_.unwrittenPos = (ring_.unwrittenPos + 1) % kRingSlots;
    }
    CloseCurrentFile();
    return 1;
}

int LogWriter::StartNewLogFile()
{
    wchar_t name[kLogFileNameBufferUnits];
    MakeCurrentLogFileName(name);
    wchar_t newPath[MAX_PATH];
    JoinLogPath(newPath, saveDirectory, name);

    HANDLE newFile = OpenLogFile(newPath, kReadWrite, OPEN_ALWAYS);
    if (newFile == INVALID_HANDLE_VALUE) {
        ReportFileError(true);
        return 0;
    }
    // A file of this name already started in the same minute is continued as it is.
    DWORD size = 0;
    const bool ready =
        SeekLogFile(newFile, 0, FILE_END, &size) &&
        (size != 0 || (WriteLogHeader(newFile) && SeekLogFile(newFile, kRecordBytes, FILE_BEGIN)));
    if (!ready) {
        ReportFileError(true);
        ::CloseHandle(newFile);
        return 0;
    }

    StopTimers();
    // logFilePath still names the old file.  When this flush fails, its
    // records are dropped with the reset below.
    flushingBeforeSwitch_ = true;
    FlushPending(ring_.PendingCount());
    flushingBeforeSwitch_ = false;
    ring_.ResetForNewFile();
    flushTicks = 0;
    host_.LogListCleared();

    HANDLE previous = logFile;
    logFile = newFile;
    ::lstrcpynW(logFilePath, newPath, MAX_PATH);
    StartTimers();
    host_.NewLogFileStarted();
    if (previous != INVALID_HANDLE_VALUE && !::CloseHandle(previous))
        ReportFileError(true);
    return 1;
}

DWORD LogWriter::CurrentLogFileSize()
{
    if (OpenCurrentFile(GENERIC_READ, OPEN_EXISTING) == INVALID_HANDLE_VALUE)
        return kLogSizeError;

    if (!CurrentHeaderAccepted())
        return kLogSizeError;
    DWORD size = kLogSizeError;
    SeekLogFile(logFile, 0, FILE_END, &size);
    CloseCurrentFile();
    return size;
}

int LogWriter::OpenCurrentLogFile(const wchar_t* directory, const wchar_t* name)
{
    SetSaveDirectory(directory);
    if (::GetFileAttributesW(saveDirectory) == INVALID_FILE_ATTRIBUTES)
        CreateSaveDirectory(saveDirectory);
    JoinLogPath(logFilePath, saveDirectory, name);

    logFile = OpenLogFile(logFilePath, kReadWrite, OPEN_ALWAYS);
    if (logFile == INVALID_HANDLE_VALUE && !StartNewLogFile())
        return -1;
    DWORD size = 0;
    if (!SeekLogFile(logFile, 0, FILE_END, &size)) {
        ReportFileError(true);
        return -1;
    }
    if (size != 0) {
        unsigned char header[kLogHeaderTextBytes];
        switch (ReadLogHeader(logFile, header)) {
        case HeaderRead::Complete:
            // A file of a newer format is left alone; a new one takes its place.
            if (IsNewerLogFormat(header, true) && !StartNewLogFile())
                return -1;
            break;
        case HeaderRead::SeekFailed:
            ReportFileError(true);
            return -1;
        case HeaderRead::ReadFailed:
            // Reported, and the file is used unchecked.
            ReportFileError(true);
            break;
        case HeaderRead::TooShort:
            return -1;
        }
    } else if (!WriteLogHeader(logFile)) {
        ReportFileError(true);
        return -1;
    }

    // The view's page is dropped here together with its horizontal
    // position; when a later step fails the window is not created at all.
    host_.CurrentLogFileOpened();
    DWORD end = 0;
    if (!SeekLogFile(logFile, 0, FILE_END, &end)) {
        ReportFileError(true);
        return -1;
    }
    ring_.ResetForOpenedFile(RecordCountFromSize(end));
    if (!CloseCurrentFile())
        return -1;
    flushTicks = 0;
    StartTimers();
    return 0;
}

void LogWriter::FindNewestLogFile(const wchar_t* directory, wchar_t* name) const
{
    bool found = false;
    FILETIME newest = {};
    ForEachLogFile(directory, true, [&](const wchar_t* candidate) {
        // A name without a valid time is never the one to continue.
        FILETIME started;
        if (!ParseLogFileTime(candidate, &started))
            return;
        if (!found || ::CompareFileTime(&started, &newest) > 0) {
            newest = started;
            ::lstrcpynW(name, candidate, MAX_PATH);
            found = true;
        }
    });
    if (!found)
        MakeCurrentLogFileName(name);
}

int LogWriter::CreateSaveDirectory(const wchar_t* path)
{
    wchar_t copy[MAX_PATH];
    ::lstrcpynW(copy, path, MAX_PATH);
    wchar_t* next = wcschr(copy, L'\\');
    // The part before the first backslash (a drive) is never created.
    if (next == nullptr)
        return 0;
    ++next;
    while (*next != L'\0') {
        wchar_t* separator = wcschr(next, L'\\');
        if (separator == nullptr) {
            // The last component is created without looking first.
            return ::CreateDirectoryW(copy, nullptr) ? 1 : 0;
        }
        *separator = L'\0';
        if (::GetFileAttributesW(copy) == INVALID_FILE_ATTRIBUTES &&
            !::CreateDirectoryW(copy, nullptr))
            return 0;
        *separator = L'\\';
        next = separator + 1;
    }
    return 1;
}

void LogWriter::ReportFileError(bool withWindow)
{
    // Taken before anything else can overwrite it (a missing string in the
    // resource module sets its own error).
    const DWORD code = ::GetLastError();
    if (code == kDiskFullError && withWindow) {
        host_.StopTimer(LogTimer::Flush);
        host_.StopTimer(LogTimer::Size);
        diskFullState = 1;
        host_.AnnounceDiskFull();
    }
    host_.ShowSystemErrorBox(code);
}

int LogWriter::OnTimer(LogTimer timer)
{
    switch (timer) {
    case LogTimer::Flush:
        return OnFlushTimer();
    case LogTimer::Size:
        return OnSizeTimer();
    case LogTimer::Retention:
        return OnRetentionTimer();
    }
    return 0;
}

int LogWriter::OnFlushTimer()
{
    ++flushTicks;
    const int pending = ring_.PendingCount();
    int flushed = 1;
    if (saveTime == 0) {
        // Only the nearly full ring triggers a flush; the tick count keeps growing.
        if (pending > kEarlyFlushPending)
            flushed = FlushPending(pending);
    } else if (flushTicks >= saveTime || pending > kEarlyFlushPending) {
        flushed = FlushPending(pending);
        if (flushed)
            flushTicks = 0;
    }
    if (flushed)
        return 0;
    host_.StopTimer(LogTimer::Flush);
    host_.ShowErrorBox(IDS_TIMED_FLUSH_FAILED);
    return -1;
}

int LogWriter::OnSizeTimer()
{
    const DWORD size = CurrentLogFileSize();
    if (size == kLogSizeError) {
        host_.ShowErrorBox(IDS_SIZE_CHECK_FAILED);
        host_.StopTimer(LogTimer::Size);
        return -1;
    }
    // 32-bit on purpose: 4096 MB and more wrap to a small limit.
    const DWORD limit = logSize * kBytesPerMegabyte;
    if (size > limit && !StartNewLogFile()) {
        host_.ShowErrorBox(IDS_ROLLOVER_FAILED);
        host_.StopTimer(LogTimer::Size);
        return -1;
    }
    return 0;
}

int LogWriter::OnRetentionTimer()
{
    if (saveDays == 0)
        return 0;
    SYSTEMTIME now;
    clock_(&now);
    if (DeleteOldLogFiles(saveDirectory, logFilePath, saveDays, now) == 0) {
        host_.ShowErrorBox(IDS_RETENTION_FAILED);
        host_.StopTimer(LogTimer::Retention);
        return -1;
    }
    return 0;
}
