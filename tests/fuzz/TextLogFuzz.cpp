// Older text logs through the conversion that both the browser and
// `qxltool convert` run, beside an earlier conversion or none.  Input:
// whether an earlier conversion exists and its length, its bytes, then the
// text log.
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "browse/TextLogConversion.h"
#include "log/LogFormat.h"
#include "ring/MessageRecord.h"
#include "tools/fuzz/FuzzDriver.h"

namespace {

std::string VersionHeader()
{
    wchar_t text[kLogHeaderTextUnits];
    FormatLogVersion(text);
    std::string header(kRecordBytes, '\0');
    std::memcpy(&header[0], text, sizeof text);
    return header;
}

// The version text at the start of a file: up to a zero, at most 16 units.
std::wstring HeaderText(const std::string& file)
{
    const auto* units = reinterpret_cast<const wchar_t*>(file.data());
    return std::wstring(units, std::find(units, units + kLogHeaderTextUnits, L'\0'));
}

// A new conversion is a header slot of our version, then one whole record
// for each piece of the text, whose text ends inside its field; a text log
// has at least a piece for every line feed before its end-of-text mark.
void CheckConverted(const std::string& converted, const std::string& textLog)
{
    FUZZ_CHECK(converted.size() >= kRecordBytes && converted.size() % kRecordBytes == 0);
    FUZZ_CHECK(converted.compare(0, kRecordBytes, VersionHeader()) == 0);
    const std::size_t records = converted.size() / kRecordBytes - 1;
    const std::string text = textLog.substr(0, textLog.find('\x1A'));
    FUZZ_CHECK(records >= static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')));
    FUZZ_CHECK(records <= text.size());
    for (std::size_t offset = kRecordBytes; offset < converted.size(); offset += kRecordBytes) {
        const auto* record = reinterpret_cast<const MessageRecord*>(converted.data() + offset);
        FUZZ_CHECK(std::find(record->text, record->text + kMessageTextUnits, L'\0') != record->text + kMessageTextUnits);
        FUZZ_CHECK(record->time.wMilliseconds == 0);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const bool hasEarlier = input.Number(2) == 1;
    const std::size_t earlierSize = std::min<std::size_t>(input.Number(3 * kRecordBytes), input.RestSize());
    const std::string earlier(reinterpret_cast<const char*>(input.Rest()), hasEarlier ? earlierSize : 0);
    const std::string textLog(reinterpret_cast<const char*>(input.Rest()) + earlier.size(),
                              input.RestSize() - earlier.size());
    const std::wstring textPath = FuzzScratchPath(L"day.LOG");
    const std::wstring convertedPath = FuzzScratchPath(L"day00.qxl");
    WriteWholeFile(textPath, textLog.data(), textLog.size());
    if (hasEarlier)
        WriteWholeFile(convertedPath, earlier.data(), earlier.size());
    else
        ::DeleteFileW(convertedPath.c_str());

    wchar_t path[MAX_PATH];
    ::lstrcpynW(path, textPath.c_str(), MAX_PATH);
    HANDLE held = INVALID_HANDLE_VALUE;
    const int result = ConvertTextLog(nullptr, path, held);
    const std::string converted = ReadWholeFile(convertedPath);
    if (hasEarlier && earlier.size() < kLogHeaderTextBytes) {
        // An earlier conversion too short to judge is neither used nor replaced.
        FUZZ_CHECK(result == 0 && held != INVALID_HANDLE_VALUE && converted == earlier);
        ::CloseHandle(held);
    } else if (hasEarlier && HeaderText(earlier) == HeaderText(VersionHeader())) {
        FUZZ_CHECK(result == 1 && converted == earlier && convertedPath == path);
    } else {
        FUZZ_CHECK(result == 1 && convertedPath == path && held == INVALID_HANDLE_VALUE);
        CheckConverted(converted, textLog);
    }
    FUZZ_CHECK(FuzzBoxes().empty());
    return 0;
}
