#include "print/ExportText.h"

#include <commdlg.h>

#include <cstring>
#include <memory>
#include <new>

#include "lang/ResourceIds.h"
#include "print/ExportLines.h"
#include "winlayer/FileDialogSize.h"
#include "winlayer/Resources.h"

namespace {

// Filter pairs of the save dialog, each ending in a double zero.
constexpr wchar_t kMainFilter[] = L"Oriel Text Files (*.txt)\0*.txt\0";
constexpr wchar_t kBrowserFilter[] = L"Oriel 7.5 Text Files (*.txt)\0*.txt\0";

constexpr WORD kByteOrderMark = 0xFEFF;

class FileHandle {
public:
    explicit FileHandle(HANDLE handle) : handle_(handle) {}
    ~FileHandle()
    {
        if (handle_ != INVALID_HANDLE_VALUE)
            ::CloseHandle(handle_);
    }
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    HANDLE Get() const { return handle_; }
    bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
    // Lets the handle go without closing it.
    void Abandon() { handle_ = INVALID_HANDLE_VALUE; }
    void Close()
    {
        ::CloseHandle(handle_);
        handle_ = INVALID_HANDLE_VALUE;
    }

private:
    HANDLE handle_;
};

bool AskOutputName(HWND owner, ExportSource source, wchar_t (&name)[MAX_PATH])
{
    std::memset(name, 0, sizeof(name));
    wchar_t title[128];
    winlayer::LoadText(IDS_FILE_DIALOG_TITLE, title, 128);
    OPENFILENAMEW dialog = {};
    dialog.lStructSize = winlayer::kOpenFileNameVersion4Size;
    dialog.hwndOwner = owner;
    dialog.hInstance = ::GetModuleHandleW(nullptr);
    dialog.lpstrFilter = source == ExportSource::MainWindow ? kMainFilter : kBrowserFilter;
    dialog.nFilterIndex = 1;
    dialog.lpstrFile = name;
    dialog.nMaxFile = MAX_PATH;
    dialog.lpstrTitle = title;
    dialog.Flags = OFN_EXPLORER | OFN_OVERWRITEPROMPT | OFN_HIDEREADONLY;
    return ::GetSaveFileNameW(&dialog) != FALSE;
}

} // namespace

bool ExportLogFile(const wchar_t* logPath, const wchar_t* outputPath, ExportSource source)
{
    FileHandle log(::CreateFileW(logPath, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                 FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!log.IsOpen())
        return false;
    const DWORD size = ::SetFilePointer(log.Get(), 0, nullptr, FILE_END);
    ::SetFilePointer(log.Get(), 0, nullptr, FILE_BEGIN);
    if (source == ExportSource::Browser && size < kRecordBytes) {
        // The browser's export has always stopped here without closing its
        // handle; the source stays open until the process ends.
        log.Abandon();
        return false;
    }
    const DWORD slots = size / kRecordBytes;
    std::unique_ptr<MessageRecord[]> block(new (std::nothrow) MessageRecord[slots]());
    if (!block)
        return false;
    DWORD read = 0;
    if (!::ReadFile(log.Get(), block.get(), slots * kRecordBytes, &read, nullptr))
        return false;
    log.Close();

    FileHandle output(::CreateFileW(outputPath, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ,
                                    nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!output.IsOpen())
        return false;
    DWORD written = 0;
    ::WriteFile(output.Get(), &kByteOrderMark, sizeof(kByteOrderMark), &written, nullptr);
    const RecordLineFormatter formatter;
    wchar_t line[kExportLineUnits] = {};
    for (DWORD i = 1; i < slots; ++i) {
        const int length = MakeExportLine(block[i], formatter, line);
        // A write that fails part-way is not noticed; the next line follows.
        ::WriteFile(output.Get(), line, static_cast<DWORD>(length) * sizeof(wchar_t), &written,
                    nullptr);
    }
    return true;
}

void ExportLogText(HWND owner, const wchar_t* logPath, ExportSource source)
{
    wchar_t name[MAX_PATH];
    if (!AskOutputName(owner, source, name))
        return;
    AppendTextExtension(name);
    ExportLogFile(logPath, name, source);
}
