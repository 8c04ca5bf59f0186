// Log files as the windows meet them: the newest file at start, with the
// last page the view shows, and a browser's refills while it follows the
// file as it grows.  Input: a page size, two top lines, the bytes appended
// while following, then the file.
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>

#include "LogBytes.h"
#include "log/LogWriter.h"
#include "tools/fuzz/FuzzDriver.h"
#include "view/FileLineSource.h"
#include "view/LiveLineSource.h"

namespace {

constexpr wchar_t kName[] = L"2601010000.qxl";

struct SilentHost : LogHost {
    void StartTimer(LogTimer, UINT) override {}
    void StopTimer(LogTimer) override {}
    void ShowErrorBox(UINT) override {}
    void ShowSystemErrorBox(DWORD) override {}
    void AnnounceDiskFull() override {}
    void LogListCleared() override {}
    void NewLogFileStarted() override {}
    void CurrentLogFileOpened() override {}
};

void WINAPI LaterClock(LPSYSTEMTIME now) { *now = {2026, 6, 1, 1, 12, 0, 0, 0}; }

// The records a read of `lines` from `topLine` finds in `file`: whole
// records only, nothing before the first record slot but the header slot.
int RecordsAt(const std::string& file, int topLine, int lines)
{
    const long long start = (topLine + 1LL) * kRecordBytes;
    if (start < 0 || start >= static_cast<long long>(file.size()))
        return 0;
    return static_cast<int>(std::min<long long>(lines, (file.size() - start) / kRecordBytes));
}

// A page read from a file holds its records byte for byte.
void CheckPage(const std::string& file, int topLine, const MessageRecord* page, int filled)
{
    FUZZ_CHECK(filled == 0 || std::memcmp(page, file.data() + (topLine + 1) * kRecordBytes, filled * kRecordBytes) == 0);
}

// What start-up makes of the file: a file too short for its version text
// stops the window, an empty one gets a header, a newer one is left alone
// for a new file, any other is continued unchanged with every whole record
// counted (a torn header slot counts -1 lines); the view then shows its end.
void CheckStart(const std::wstring& folder, const std::wstring& path, const std::string& file, int pageLines)
{
    SilentHost host;
    auto ring = std::make_unique<MessageRing>();
    LogWriter writer(*ring, host, LaterClock);
    writer.SetSettings(10, 600, 10);
    const int result = writer.OpenCurrentLogFile(folder.c_str(), kName);
    const std::string after = ReadWholeFile(path);
    if (!file.empty() && file.size() < kLogHeaderTextBytes) {
        FUZZ_CHECK(result == -1 && after == file);
        return;
    }
    FUZZ_CHECK(result == 0);
    if (file.empty() || NewerHeader(file)) {
        FUZZ_CHECK(file.empty() == (writer.LogFilePath() == path));
        FUZZ_CHECK(ring->lineCount == 0);
        if (!file.empty())
            ::DeleteFileW(writer.LogFilePath());
        return;
    }
    FUZZ_CHECK(after == file && writer.LogFilePath() == path);
    FUZZ_CHECK(ring->lineCount == (file.size() < kRecordBytes ? -1 : static_cast<int>(file.size() / kRecordBytes) - 1));
    LiveLineSource lines(*ring, writer);
    const int top = std::max(0, ring->lineCount - pageLines);
    auto page = std::make_unique<MessageRecord[]>(pageLines);
    const int filled = lines.FillPage(top, page.get(), pageLines);
    // With the count at -1 the ring's line rule lays the page over empty
    // ring slots, as it always has; only its size is certain then.
    FUZZ_CHECK(ring->lineCount < 0 ? filled <= pageLines
                                   : filled == (ring->lineCount == 0 ? 0 : RecordsAt(file, top, pageLines)));
    if (ring->lineCount >= 0)
        CheckPage(file, top, page.get(), filled);
    FUZZ_CHECK(FuzzBoxes().empty());
}

// One refill of a browser at `topLine`: a newer file is refused with one
// box; a top line before the header slot fails its seek, reported with the
// platform's text for the error (Wine has none to show for that one); a
// file without a whole version text fills nothing, silently.
void CheckRefill(FileLineSource& lines, const std::string& file, int topLine, int pageLines)
{
    const std::size_t boxesBefore = FuzzBoxes().size();
    auto page = std::make_unique<MessageRecord[]>(pageLines);
    const int filled = lines.FillPage(topLine, page.get(), pageLines);
    const std::size_t boxes = FuzzBoxes().size() - boxesBefore;
    const bool headerRead = file.size() >= kLogHeaderTextBytes;
    const bool refused = headerRead && NewerHeader(file);
    const bool seekFails = headerRead && !refused && topLine < -1;
    FUZZ_CHECK(refused ? boxes == 1 : seekFails ? boxes <= 1 : boxes == 0);
    FUZZ_CHECK(filled == (!headerRead || refused || seekFails ? 0 : RecordsAt(file, topLine, pageLines)));
    CheckPage(file, topLine, page.get(), filled);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const int pageLines = 1 + static_cast<int>(input.Number(80));
    const int chosenTop = static_cast<int>(input.Number(0x10000)) - 8;
    const int fromEnd = static_cast<int>(input.Number(200)) - 100;
    const std::size_t appended = input.Number(4 * kRecordBytes);
    const std::string bytes(reinterpret_cast<const char*>(input.Rest()), input.RestSize());
    const std::string file = bytes.substr(0, bytes.size() - std::min(appended, bytes.size()));
    std::wstring folder = FuzzScratchPath(L"");
    folder.pop_back();
    const std::wstring path = FuzzScratchPath(kName);
    WriteWholeFile(path, file.data(), file.size());
    CheckStart(folder, path, file, pageLines);

    WriteWholeFile(path, file.data(), file.size());
    FileLineSource lines;
    lines.SetPath(path.c_str());
    for (const std::string& seen : {file, bytes}) {
        WriteWholeFile(path, seen.data(), seen.size());
        lines.SetLineCount(RecordCountFromSize(static_cast<DWORD>(seen.size())));
        // A refusal is the same at every top line, and each costs a box.
        if (seen.size() >= kLogHeaderTextBytes && NewerHeader(seen)) {
            CheckRefill(lines, seen, chosenTop, pageLines);
            continue;
        }
        for (int top : {-1, 0, chosenTop, lines.LineCount() - pageLines, lines.LineCount() + fromEnd})
            CheckRefill(lines, seen, std::max(top, -1), pageLines);
        // Below the header slot only the chosen top line goes, now and then.
        if (chosenTop < -1)
            CheckRefill(lines, seen, chosenTop, pageLines);
    }
    ::DeleteFileW(path.c_str());
    return 0;
}
