#include "tools/qxltool/Commands.h"

#include "tools/qxltool/CommandInputs.h"
#include "tools/qxltool/ExitCodes.h"
#include "tools/qxltool/LogSet.h"
#include "tools/qxltool/RecordPrinter.h"

namespace {

HANDLE stopEvent = nullptr;

// Ctrl+C, Ctrl+Break and the console closing end the follow between two
// looks at the directory, so that what was read is written out whole.
BOOL WINAPI OnConsoleControl(DWORD type)
{
    if (type != CTRL_C_EVENT && type != CTRL_BREAK_EVENT && type != CTRL_CLOSE_EVENT)
        return FALSE;
    ::SetEvent(stopEvent);
    return TRUE;
}

// The newest log file of `directory` by the time in its name; empty when
// it holds none.
LogFileEntry NewestLogFile(const std::wstring& directory)
{
    std::vector<LogFileEntry> files;
    std::wstring missing;
    CollectLogSet({directory}, files, missing);
    files = OrderLogSet(std::move(files));
    return files.empty() ? LogFileEntry() : files.back();
}

// Follows the newest file of a directory as the window appends to it, and
// moves on to each file the window starts.  After a rollover the window
// still writes its pending records into the old file, so the old file is
// read once more, one look later, before the new one.
class Follower {
public:
    Follower(const std::wstring& directory, RecordPrinter& printer, OutputStream& output)
        : directory_(directory), printer_(printer), output_(output)
    {
    }

    // One look at the directory and the current file; an exit code when
    // following has to end.
    bool Look(int& exitCode)
    {
        const LogFileEntry newest = NewestLogFile(directory_);
        if (current_.path.empty()) {
            // The file there at the start is followed from its end, one that
            // appears later from its first record.
            const bool atStart = !started_;
            started_ = true;
            if (newest.path.empty())
                return true;
            Start(newest, atStart ? -1 : 1);
        }
        if (!ReadNewRecords(exitCode))
            return false;
        if (newest.path.empty() || _wcsicmp(newest.path.c_str(), current_.path.c_str()) == 0) {
            settling_ = false;
            return true;
        }
        if (!settling_) {
            settling_ = true;
            return true;
        }
        settling_ = false;
        Start(newest, 1);
        return ReadNewRecords(exitCode);
    }

private:
    // `slot` -1 starts after the file's last record.
    void Start(const LogFileEntry& file, long long slot)
    {
        current_ = file;
        nextSlot_ = slot;
        announced_ = false;
    }

    bool ReadNewRecords(int& exitCode)
    {
        LogFileReader reader;
        const LogFileReader::Opened opened = reader.Open(current_.path.c_str());
        // A file just created may not hold its header yet, and one deleted
        // under us is replaced by the next: both are looked at again later.
        if (opened == LogFileReader::Opened::Failed || opened == LogFileReader::Opened::TooShort)
            return true;
        if (opened == LogFileReader::Opened::Newer) {
            ReportError(current_.path + L": " + OpenFailureText(opened, 0));
            exitCode = kExitRefused;
            return false;
        }
        const long long size = reader.Size();
        if (size < 0)
            return true;
        const long long slots = size / kRecordBytes;
        if (nextSlot_ < 0)
            nextSlot_ = slots;
        if (nextSlot_ < 1)
            nextSlot_ = 1;
        if (!announced_) {
            ReportError(L"following " + current_.path + L" from slot " + std::to_wstring(nextSlot_));
            announced_ = true;
        }
        if (slots < nextSlot_) {
            ReportError(current_.path + L" has shrunk: reading it again from its start");
            nextSlot_ = 1;
        }
        if (nextSlot_ < slots) {
            SlotSpan span{static_cast<int>(nextSlot_), static_cast<int>(slots - 1)};
            if (printer_.Print(reader, current_.name, span))
                nextSlot_ = slots;
        }
        if (!printer_.OutputOpen() || !output_.Flush()) {
            exitCode = kExitOutputClosed;
            return false;
        }
        return true;
    }

    std::wstring directory_;
    RecordPrinter& printer_;
    OutputStream& output_;
    LogFileEntry current_;
    long long nextSlot_ = -1;
    bool started_ = false;
    bool settling_ = false;
    bool announced_ = false;
};

} // namespace

int RunFollow(const QxlOptions& options, const wchar_t* lineFormat)
{
    const std::wstring& directory = options.paths[0];
    const DWORD attributes = ::GetFileAttributesW(directory.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        ReportError(directory + L": no such directory");
        return kExitUnreadable;
    }
    TextFilter filter;
    if (const int exitCode = SetUpTextFilter(options, filter))
        return exitCode;

    OutputStream output(STD_OUTPUT_HANDLE);
    const RecordFormatter formatter(options.format, lineFormat);
    formatter.AppendHeading(output.Buffer());
    RecordPrinter printer(formatter, filter, TimeRange(), false, output);
    Follower follower(directory, printer, output);

    stopEvent = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    ::SetConsoleCtrlHandler(&OnConsoleControl, TRUE);
    int exitCode = kExitOk;
    while (follower.Look(exitCode) &&
           ::WaitForSingleObject(stopEvent, options.pollMilliseconds) == WAIT_TIMEOUT) {
    }
    ::SetConsoleCtrlHandler(&OnConsoleControl, FALSE);
    ::CloseHandle(stopEvent);
    if (exitCode == kExitOk && !output.Flush())
        exitCode = kExitOutputClosed;
    return exitCode;
}
