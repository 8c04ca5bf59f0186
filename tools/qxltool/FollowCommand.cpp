#include "tools/qxltool/Commands.h"

#include "tools/qxltool/CommandInputs.h"
#include "tools/qxltool/ExitCodes.h"
#include "tools/qxltool/LogSet.h"
#include "tools/qxltool/RecordPrinter.h"
#include "tools/qxltool/TextEncoding.h"

#include "log/LogDirectory.h"

#include <algorithm>
#include <cwchar>

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

// The log files of `directory` in log order, with `extra` among them (a
// file that need not exist any longer) when it is given.
std::vector<LogFileEntry> OrderedLogFiles(const std::wstring& directory, const LogFileEntry& extra)
{
    std::vector<LogFileEntry> files;
    std::wstring missing;
    CollectLogSet({directory}, files, missing);
    if (!extra.path.empty())
        files.push_back(extra);
    return OrderLogSet(std::move(files));
}

// The position file: one line "NAME SLOT", the file follow reads and the
// slot it reads next there.  It is written whole under a new name and then
// put in place, so that a follow ended at any moment leaves one that reads.
bool ReadPosition(const std::wstring& path, std::wstring& name, long long& slot)
{
    HANDLE file = ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    char bytes[512];
    DWORD read = 0;
    const BOOL ok = ::ReadFile(file, bytes, sizeof(bytes), &read, nullptr);
    ::CloseHandle(file);
    wchar_t text[512];
    const int units = ok ? ::MultiByteToWideChar(CP_UTF8, 0, bytes, static_cast<int>(read), text, 511) : 0;
    const std::wstring line(text, static_cast<std::size_t>(units));
    const std::size_t space = line.rfind(L' ');
    if (space == std::wstring::npos || space == 0)
        return false;
    wchar_t* end = nullptr;
    slot = std::wcstoll(line.c_str() + space + 1, &end, 10);
    name = line.substr(0, space);
    return slot >= 1 && end != line.c_str() + space + 1 && (*end == L'\0' || *end == L'\n');
}

bool WritePosition(const std::wstring& path, const std::wstring& name, long long slot)
{
    const std::string line = ToUtf8(name) + " " + std::to_string(slot) + "\n";
    const std::wstring fresh = path + L".new";
    HANDLE file = ::CreateFileW(fresh.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    DWORD written = 0;
    const BOOL ok = ::WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &written, nullptr) &&
                    written == line.size();
    ::CloseHandle(file);
    return ok && ::MoveFileExW(fresh.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
}

// Follows a directory's log as the window appends to it: the current file
// to its end, then the file after it in log order, from its start, so that
// no record is skipped even when several files came while nobody looked.
// After a rollover the window still writes its pending records into the
// old file, so the old file is read once more, one look later, before the
// next.  Where a read stops, the next look goes on: no record comes twice.
class Follower {
public:
    Follower(const std::wstring& directory, const std::wstring& positionFile, RecordPrinter& printer,
             OutputStream& output)
        : directory_(directory), positionFile_(positionFile), printer_(printer), output_(output)
    {
    }

    // False, with the exit code, when the position file is there but says nothing.
    bool Resume(int& exitCode)
    {
        if (positionFile_.empty() || ::GetFileAttributesW(positionFile_.c_str()) == INVALID_FILE_ATTRIBUTES)
            return true;
        std::wstring name;
        long long slot = 0;
        if (!ReadPosition(positionFile_, name, slot)) {
            ReportError(positionFile_ + L": not a position: a line \"NAME SLOT\" is expected");
            exitCode = kExitUnreadable;
            return false;
        }
        wchar_t path[MAX_PATH];
        JoinLogPath(path, directory_.c_str(), name.c_str());
        Start(MakeLogFileEntry(path), slot);
        started_ = true;
        return true;
    }

    // One look at the directory and the current file; false, with the exit
    // code, when following has to end.
    bool Look(int& exitCode)
    {
        const std::vector<LogFileEntry> files = OrderedLogFiles(directory_, current_);
        if (current_.path.empty()) {
            // The file there at the start is followed from its end, files
            // that appear later from their first record.
            const bool atStart = !started_;
            started_ = true;
            if (files.empty())
                return true;
            Start(atStart ? files.back() : files.front(), atStart ? -1 : 1);
        }
        if (!ReadNewRecords(exitCode))
            return false;
        const auto current = std::find_if(files.begin(), files.end(), [&](const LogFileEntry& file) {
            return _wcsicmp(file.path.c_str(), current_.path.c_str()) == 0;
        });
        if (current == files.end() || current + 1 == files.end()) {
            settling_ = false;
            return true;
        }
        if (!settling_) {
            settling_ = true;
            return true;
        }
        settling_ = false;
        Start(*(current + 1), 1);
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
            printer_.Print(reader, current_.name, span);
            nextSlot_ = printer_.Reached();
        }
        if (!printer_.OutputOpen() || !output_.Flush()) {
            exitCode = kExitOutputClosed;
            return false;
        }
        return SavePosition(exitCode);
    }

    // After the records are written out, never before: a follow ended in
    // between prints them again rather than leaving them out.
    bool SavePosition(int& exitCode)
    {
        if (positionFile_.empty() || (current_.name == savedName_ && nextSlot_ == savedSlot_))
            return true;
        if (!WritePosition(positionFile_, current_.name, nextSlot_)) {
            ReportError(positionFile_ + L": " + SystemErrorText(::GetLastError()));
            exitCode = kExitUnreadable;
            return false;
        }
        savedName_ = current_.name;
        savedSlot_ = nextSlot_;
        return true;
    }

    std::wstring directory_;
    std::wstring positionFile_;
    RecordPrinter& printer_;
    OutputStream& output_;
    LogFileEntry current_;
    long long nextSlot_ = -1;
    bool started_ = false;
    bool settling_ = false;
    bool announced_ = false;
    std::wstring savedName_;
    long long savedSlot_ = 0;
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
    const RecordFormatter formatter(options.format, lineFormat, options.csvUnits);
    formatter.AppendHeading(output.Buffer());
    RecordPrinter printer(formatter, filter, TimeRange(), false, output);
    Follower follower(directory, options.positionFile, printer, output);
    int exitCode = kExitOk;
    if (!follower.Resume(exitCode))
        return exitCode;

    stopEvent = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    ::SetConsoleCtrlHandler(&OnConsoleControl, TRUE);
    while (follower.Look(exitCode) &&
           ::WaitForSingleObject(stopEvent, options.pollMilliseconds) == WAIT_TIMEOUT) {
    }
    ::SetConsoleCtrlHandler(&OnConsoleControl, FALSE);
    ::CloseHandle(stopEvent);
    if (exitCode == kExitOk && !output.Flush())
        exitCode = kExitOutputClosed;
    return exitCode;
}
