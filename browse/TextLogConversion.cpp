#include "browse/TextLogConversion.h"

#include "browse/ConvertedLog.h"
#include "browse/TextLogLine.h"
#include "lang/ResourceIds.h"
#include "log/LogFileIo.h"
#include "view/FileLineSource.h"
#include "winlayer/Resources.h"

#include <cstdio>
#include <cwchar>
#include <fcntl.h>
#include <io.h>
#include <shlwapi.h>

namespace {

enum class Earlier { Reused, Removed, Failed };

// Looks at the earlier conversion at `convertedPath` through `logFile`.  A
// header that cannot be read leaves the file open there, for the browser to
// close as it closes.
Earlier CheckEarlierConversion(const wchar_t* convertedPath, HANDLE& logFile)
{
    logFile = OpenLogFile(convertedPath, GENERIC_READ, OPEN_EXISTING);
    if (logFile == INVALID_HANDLE_VALUE) {
        ReportBrowseError();
        return Earlier::Failed;
    }
    unsigned char header[kLogHeaderTextBytes];
    switch (ReadLogHeader(logFile, header)) {
    case HeaderRead::Complete:
        break;
    case HeaderRead::SeekFailed:
    case HeaderRead::ReadFailed:
        ReportBrowseError();
        return Earlier::Failed;
    case HeaderRead::TooShort:
        return Earlier::Failed;
    }
    ::CloseHandle(logFile);
    logFile = INVALID_HANDLE_VALUE;
    if (IsReusableConversion(header))
        return Earlier::Reused;
    return ::DeleteFileW(convertedPath) ? Earlier::Removed : Earlier::Failed;
}

// The text log's handle as a stream of the runtime's text mode: carriage
// return and line feed become one line feed, a Ctrl+Z byte ends the text,
// and in the runtime's default locale each byte reads as the character of
// the same value.  Null when no stream can be made; the handle is then still
// open, owned by `descriptor` when that was made.
std::FILE* OpenTextStream(HANDLE file, int& descriptor)
{
    descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(file), _O_RDONLY | _O_TEXT);
    return descriptor == -1 ? nullptr : _fdopen(descriptor, "rt");
}

void CloseUnwrappedFile(HANDLE file, int descriptor)
{
    // A descriptor that was made owns the handle and closes it with itself.
    if (descriptor == -1)
        ::CloseHandle(file);
    else
        _close(descriptor);
}

// One record per piece of the text log, appended at the current position.
bool AppendRecords(std::FILE* text, HANDLE converted)
{
    MessageRecord record = {};
    TextLogLine line = {};
    while (std::fgetws(line, kTextLogLineUnits, text) != nullptr) {
        TrimLineFeed(line);
        FillRecordFromLine(line, record);
        if (WriteLogBytes(converted, &record, sizeof(record)) == WriteResult::Failed)
            return false;
    }
    return true;
}

// Converts the text log `textLogPath` into `convertedPath`.  A failure
// after the output was created leaves the text stream and the output open:
// the partial output then stays locked for writing, so a later opening
// reports the sharing failure rather than reusing a torn conversion.
bool Convert(HWND owner, const wchar_t* textLogPath, const wchar_t* convertedPath,
             HANDLE& logFile)
{
    ::SetCursor(::LoadCursorW(nullptr, IDC_WAIT));
    wchar_t caption[128];
    wchar_t streamFailed[128];
    winlayer::LoadText(IDS_ERROR_CAPTION, caption, 128);
    winlayer::LoadText(IDS_TEXTLOG_STREAM_FAILED, streamFailed, 128);

    if (logFile != INVALID_HANDLE_VALUE) {
        if (!::CloseHandle(logFile)) {
            ReportBrowseError();
            return false;
        }
        logFile = INVALID_HANDLE_VALUE;
    }
    logFile = OpenSavedLog(textLogPath);
    if (logFile == INVALID_HANDLE_VALUE) {
        ReportBrowseError();
        return false;
    }
    int descriptor = -1;
    std::FILE* text = OpenTextStream(logFile, descriptor);
    if (text == nullptr) {
        ::MessageBoxW(owner, streamFailed, caption, MB_ICONERROR);
        CloseUnwrappedFile(logFile, descriptor);
        logFile = INVALID_HANDLE_VALUE;
        return false;
    }

    HANDLE converted = OpenLogFile(convertedPath, GENERIC_WRITE, OPEN_ALWAYS);
    if (converted == INVALID_HANDLE_VALUE || !WriteLogHeader(converted) ||
        !SeekLogFile(converted, kRecordBytes, FILE_BEGIN) || !AppendRecords(text, converted)) {
        ReportBrowseError();
        return false;
    }
    std::fclose(text);
    logFile = INVALID_HANDLE_VALUE;
    if (!::CloseHandle(converted)) {
        ReportBrowseError();
        return false;
    }
    return true;
}

} // namespace

int ConvertTextLog(HWND owner, wchar_t (&filePath)[MAX_PATH], HANDLE& logFile)
{
    if (!IsTextLogPath(filePath))
        return 1;
    wchar_t convertedPath[MAX_PATH];
    if (!MakeConvertedLogPath(filePath, convertedPath)) {
        ::SetLastError(ERROR_FILENAME_EXCED_RANGE);
        ReportBrowseError();
        return 0;
    }
    if (::PathFileExistsW(convertedPath)) {
        switch (CheckEarlierConversion(convertedPath, logFile)) {
        case Earlier::Reused:
            ::lstrcpynW(filePath, convertedPath, MAX_PATH);
            return 1;
        case Earlier::Failed:
            return 0;
        case Earlier::Removed:
            break;
        }
    }
    if (!Convert(owner, filePath, convertedPath, logFile))
        return 0;
    ::lstrcpynW(filePath, convertedPath, MAX_PATH);
    return 1;
}
