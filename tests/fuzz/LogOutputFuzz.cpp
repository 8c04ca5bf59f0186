// Log files as export and printing read them: the export from either
// window, print setup's first and last record, and the print job's range
// selection and pages.  Input: the file, then the choices (which window
// exports, the range kind, the page size and the range's two times).
#include <windows.h>

#include <algorithm>
#include <memory>
#include <string>

#include "LogBytes.h"
#include "print/ExportText.h"
#include "print/PrintRecords.h"
#include "print/PrintSettings.h"
#include "print/RecordTimes.h"
#include "support/ResourceText.h"
#include "tools/fuzz/FuzzDriver.h"

namespace {

bool SameTime(const SYSTEMTIME& a, const SYSTEMTIME& b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

// Every record's text (up to its first zero) appears in the output, in
// record order.
void CheckExport(const std::wstring& log, const std::string& file, ExportSource source)
{
    const std::wstring outputPath = FuzzScratchPath(L"export.txt");
    ::DeleteFileW(outputPath.c_str());
    // A browser's export of a source shorter than one slot leaves the
    // source open for the rest of the process, as it always has; a campaign
    // of those would run out of handles, so the export test keeps that case.
    if (source == ExportSource::Browser && file.size() < kRecordBytes)
        return;
    const bool exported = ExportLogFile(log.c_str(), outputPath.c_str(), source);
    const std::string output = ReadWholeFile(outputPath);
    FUZZ_CHECK(exported && output.size() % 2 == 0 && output.compare(0, 2, "\xFF\xFE") == 0);
    const std::wstring text(reinterpret_cast<const wchar_t*>(output.data()), output.size() / 2);
    std::size_t at = 0;
    for (std::size_t offset = kRecordBytes; offset + kRecordBytes <= file.size(); offset += kRecordBytes) {
        // A line ends at 158 characters: behind a time of the widest numbers
        // 100 units of the text still fit.
        const MessageRecord record = RecordAt(file, offset);
        const std::wstring message(record.text, std::find(record.text, record.text + 100, L'\0'));
        at = text.find(message, at);
        FUZZ_CHECK(at != std::wstring::npos);
        at += message.size();
    }
}

// Print setup needs a header it accepts and a whole first record; the
// last record is the 272 bytes before the end, whole slot or not.
void CheckRecordTimes(HANDLE log, const std::string& file)
{
    SYSTEMTIME first;
    SYSTEMTIME last;
    const RecordTimesRead read = ReadRecordTimes(log, &first, &last);
    if (file.size() < kLogHeaderTextBytes)
        FUZZ_CHECK(read == RecordTimesRead::HeaderTooShort);
    else if (NewerHeader(file))
        FUZZ_CHECK(read == RecordTimesRead::NewerFormat);
    else if (file.size() < 2 * kRecordBytes)
        FUZZ_CHECK(read == RecordTimesRead::NoRecord);
    else
        FUZZ_CHECK(read == RecordTimesRead::Complete &&
                   SameTime(first, RecordAt(file, kRecordBytes).time) &&
                   SameTime(last, RecordAt(file, file.size() - kRecordBytes).time));
}

// The job's pages hold, in order, exactly the whole records of the span it
// selected, and the span lies within the file's slots.  The range's times
// are often those of the file's own records, where the searches end early.
void CheckPrintPages(HANDLE log, const std::string& file, FuzzInput& input)
{
    const int range = static_cast<int>(input.Number(5));  // one past the known kinds too
    const int linesPerPage = 1 + static_cast<int>(input.Number(100));
    const int slots = static_cast<int>(file.size() / kRecordBytes);
    SYSTEMTIME times[2];
    for (SYSTEMTIME& time : times) {
        const int slot = static_cast<int>(input.Number(slots + 1));
        for (WORD& field : reinterpret_cast<WORD(&)[8]>(time))
            field = static_cast<WORD>(input.Number(0x10000));
        if (slot >= 1 && slot < slots)
            time = RecordAt(file, slot * kRecordBytes).time;
    }
    int first = -2;
    int last = -2;
    const bool selected = SelectPrintRecords(log, range, times[0], times[1], &first, &last);
    if (slots <= 1) {  // nothing to print, whatever the range kind
        FUZZ_CHECK(selected && first == -1 && last == -1);
        return;
    }
    FUZZ_CHECK(selected == (range >= RangeAll && range <= RangeFrom));
    if (!selected)
        return;
    FUZZ_CHECK(first >= 1 && first <= slots && last >= 0 && last <= slots);
    FUZZ_CHECK(range != RangeAll || (first == 1 && last == slots - 1));
    auto page = std::make_unique<MessageRecord[]>(linesPerPage);
    int printed = 0;
    for (int read; (read = ReadPrintPage(log, first, last, printed, linesPerPage, page.get())) > 0; printed += read) {
        FUZZ_CHECK(read <= linesPerPage && first + printed + read - 1 <= last);
        FUZZ_CHECK(std::memcmp(page.get(), file.data() + (first + printed) * kRecordBytes, read * kRecordBytes) == 0);
    }
    FUZZ_CHECK(printed == std::max(0, std::min(last, slots - 1) - first + 1));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const HMODULE english = testing_support::UseEnglishModule();
    FUZZ_CHECK(english != nullptr);
    // The choices come last, so that the file's records stay in line with
    // the seeds' own.
    const std::size_t choiceBytes = std::min<std::size_t>(size, 84);
    const std::string file(reinterpret_cast<const char*>(data), size - choiceBytes);
    FuzzInput input(data + file.size(), choiceBytes);
    const bool fromBrowser = input.Number(2) == 1;
    const std::wstring log = FuzzScratchPath(L"2601010000.qxl");
    WriteWholeFile(log, file.data(), file.size());
    CheckExport(log, file, fromBrowser ? ExportSource::Browser : ExportSource::MainWindow);

    HANDLE handle = ::CreateFileW(log.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    FUZZ_CHECK(handle != INVALID_HANDLE_VALUE);
    CheckRecordTimes(handle, file);
    CheckPrintPages(handle, file, input);
    ::CloseHandle(handle);
    FUZZ_CHECK(FuzzBoxes().empty());
    return 0;
}
