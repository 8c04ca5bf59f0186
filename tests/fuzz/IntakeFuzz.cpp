// Lines as the intake roads hand them to the ring: any UTF-16 units, any length, or no string (U+FFFF alone
// stands for a null pointer), anywhere in the ring's laps.  Input: the records at the last reset, the lines
// added since, the first unwritten slot, then texts that each end at a zero unit.
#include <algorithm>
#include <cstring>

#include "ring/MessageRing.h"
#include "tools/fuzz/FuzzDriver.h"

namespace {
MessageRing ring;  // 1.3 MB: static, as in the main window
struct CountingView : AddedLineView {
    int calls = 0, linesDue = 0;  // told once per line, once the line is counted
    void ShowAddedLine() override { ++calls, FUZZ_CHECK(ring.lineCount == linesDue); }
} view;
ULONGLONG Moment(SYSTEMTIME time)  // 0 for a time the platform refuses
{
    FILETIME file = {};
    return ::SystemTimeToFileTime(&time, &file) ? ULARGE_INTEGER{{file.dwLowDateTime, file.dwHighDateTime}}.QuadPart : 0;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static char* const pages = static_cast<char*>(::VirtualAlloc(nullptr, 8192, MEM_COMMIT, PAGE_READWRITE));
    static DWORD oldAccess = 0, guarded = ::VirtualProtect(pages + 4096, 4096, PAGE_NOACCESS, &oldAccess);
    FUZZ_CHECK(guarded);
    FuzzInput in(data, size);
    const int records = static_cast<int>(in.Number(1 << 20)) - 1, added = static_cast<int>(in.Number(15000));
    const int unwritten = static_cast<int>(in.Number(kRingSlots));
    auto fileOnly = [&](int lines) { return records + std::max(0, lines - (kRingSlots - 2)); };
    ring.writePos = added % kRingSlots, ring.ringFull = added >= kRingSlots - 1, ring.fileOnlyLines = fileOnly(added);
    ring.lineCount = records + added, ring.unwrittenPos = unwritten, view.calls = 0;
    ring.SetView(&view);
    for (int total = added + 1; in.RestSize() > 0 && total <= added + 64; ++total) {
        const std::wstring text = in.Text(2000);
        const int slot = ring.writePos, next = (slot + 1) % kRingSlots;
        const MessageRecord neighbour = ring.ring[next];
        std::memset(ring.ring[slot].text, 0xA5, sizeof ring.ring[slot].text);  // every unit must be set
        // The text ends just before the unreadable page: a reader past its terminator faults.
        wchar_t* const copy = reinterpret_cast<wchar_t*>(pages + 4096) - text.size() - 1;
        std::copy(text.c_str(), text.c_str() + text.size() + 1, copy);
        SYSTEMTIME before, after;
        ::GetLocalTime(&before);
        view.linesDue = ring.lineCount + 1;
        FUZZ_CHECK(ring.AddMessage(text == L"\xFFFF" ? nullptr : copy) == 1);
        ::GetLocalTime(&after);
        // The ring counts as full one add early; from then on each add moves a line to the file-only part.
        FUZZ_CHECK(ring.writePos == total % kRingSlots && ring.ringFull == (total >= kRingSlots - 1) &&
                   ring.fileOnlyLines == fileOnly(total) && ring.lineCount == records + total && ring.ringStart == 0 &&
                   ring.PendingCount() == ((total - unwritten) % kRingSlots + kRingSlots) % kRingSlots &&
                   view.calls == total - added && std::memcmp(&neighbour, &ring.ring[next], sizeof neighbour) == 0);
        // Stored: the first min(n, 128) units, zeros to the field's end, the time of the add.
        const MessageRecord& stored = ring.ring[slot];
        const std::size_t kept = text == L"\xFFFF" ? 0 : std::min<std::size_t>(text.size(), kMessageTextUnits);
        FUZZ_CHECK(std::equal(stored.text, stored.text + kept, text.begin()) && Moment(before) != 0 &&
                   std::all_of(stored.text + kept, stored.text + kMessageTextUnits, [](wchar_t c) { return c == 0; }) &&
                   Moment(before) <= Moment(stored.time) && Moment(stored.time) <= Moment(after));
    }
    return 0;
}
