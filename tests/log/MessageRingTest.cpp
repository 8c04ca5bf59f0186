#include "LogFixture.h"

#include <cstring>
#include <tuple>
#include <utility>

namespace {

std::wstring FieldText(const MessageRecord& record)
{
    return std::wstring(record.text, kMessageTextUnits);
}

struct RingTest : ::testing::Test {
    std::unique_ptr<MessageRing> ring = std::make_unique<MessageRing>();
};

TEST(FillRecordTest, KeepsAtMost128UnitsPadsWithZerosAndStampsTheLocalTime)
{
    const std::wstring a127(127, L'a'), c128(128, L'c'), zeros(kMessageTextUnits, L'\0');
    const std::wstring c300 = c128 + std::wstring(172, L'd');
    const std::pair<const wchar_t*, std::wstring> cases[] = {
        {L"ab", L"ab" + std::wstring(126, L'\0')}, {a127.c_str(), a127 + L'\0'}, {c128.c_str(), c128},
        {c300.c_str(), c128}, {L"", zeros}, {nullptr, zeros}};
    MessageRecord record;
    for (const auto& c : cases) {
        std::memset(&record, 0x5A, sizeof(record));
        SYSTEMTIME before, after;
        ::GetLocalTime(&before);
        FillRecord(c.first, record);
        ::GetLocalTime(&after);
        EXPECT_EQ(FieldText(record), c.second);
        EXPECT_LE(Ticks(before), Ticks(record.time));
        EXPECT_LE(Ticks(record.time), Ticks(after));
    }
}

// writePos, ringFull, fileOnlyLines, lineCount.
std::tuple<int, int, int, int> Counters(const MessageRing& ring)
{
    return std::make_tuple(ring.writePos, ring.ringFull, ring.fileOnlyLines, ring.lineCount);
}

// Captures the counters at the moment the view is asked to show the line.
struct CountingView : AddedLineView {
    const MessageRing* ring = nullptr;
    int calls = 0;
    std::tuple<int, int, int, int> seen;
    void ShowAddedLine() override
    {
        ++calls;
        seen = Counters(*ring);
    }
};

TEST_F(RingTest, RingBecomesFullOneAddEarlyAndFileOnlyLinesFollow)
{
    CountingView view;
    view.ring = ring.get();
    ring->SetView(&view);
    AddLines(*ring, 0, 4998);
    EXPECT_EQ(Counters(*ring), std::make_tuple(4998, 0, 0, 4998));
    ring->AddMessage(L"4999th");
    EXPECT_EQ(Counters(*ring), std::make_tuple(4999, 1, 1, 4999));
    ring->AddMessage(L"5000th");
    EXPECT_EQ(Counters(*ring), std::make_tuple(0, 1, 2, 5000));
    // The view is asked once a line, after every counter has moved.
    EXPECT_EQ(view.calls, 5000);
    EXPECT_EQ(view.seen, Counters(*ring));
    ring->AddMessage(L"5001st");
    EXPECT_EQ(Counters(*ring), std::make_tuple(1, 1, 3, 5001));
    EXPECT_EQ(std::wstring(ring->ring[4999].text), L"5000th");
    EXPECT_EQ(std::wstring(ring->ring[0].text), L"5001st");
}

// Logical line `line` is in `slot`, which holds the line added as number
// `holds`, and the ring has `remaining` lines from there on.
void ExpectLine(const MessageRing& ring, int line, int slot, int remaining, int holds)
{
    const RingSpan span = ring.LocateLine(line);
    EXPECT_EQ(span.slot, slot) << "line " << line;
    EXPECT_EQ(span.remaining, remaining) << "line " << line;
    EXPECT_EQ(std::wstring(ring.ring[span.slot].text), LineText(holds)) << "line " << line;
}

TEST_F(RingTest, LineRuleCountsFromTheFileAndLagsOneLineOnceFull)
{
    ring->ResetForOpenedFile(7);
    AddLines(*ring, 0, 10);
    // Line 7 is the first ring line; line 16 the newest.
    ExpectLine(*ring, 7, 0, 10, 0);
    ExpectLine(*ring, 16, 9, 1, 9);

    ring->ResetForNewFile();
    AddLines(*ring, 0, 4999);
    // writePos 4999 and base 5000: every ring line shows the line before it.
    ExpectLine(*ring, 1, 0, 4999, 0);
    ExpectLine(*ring, 4998, 4997, 2, 4997);

    AddLines(*ring, 4999, 2);
    ASSERT_EQ(ring->fileOnlyLines, 3);
    ExpectLine(*ring, 3, 2, 4999, 2);
    ExpectLine(*ring, 2500, 2499, 2502, 2499);
    // The newest line shows slot 4999, the line before the one in slot 0.
    ExpectLine(*ring, 5000, 4999, 2, 4999);
}

TEST_F(RingTest, PendingCountWrapsAroundTheRingAndLosesAWholeRing)
{
    AddLines(*ring, 0, 10);
    EXPECT_EQ(ring->PendingCount(), 10);

    ring->unwrittenPos = 4990;
    ring->writePos = 4990;
    AddLines(*ring, 0, 15);
    EXPECT_EQ(ring->writePos, 5);
    EXPECT_EQ(ring->PendingCount(), 15);
    // A whole ring (5000) of unflushed adds leaves nothing pending.
    AddLines(*ring, 0, 4985);
    EXPECT_EQ(ring->PendingCount(), 0);
}

TEST_F(RingTest, ResetsEmptyTheRingAndCountTheFile)
{
    AddLines(*ring, 0, 5001);
    ring->unwrittenPos = 17;
    ring->ResetForOpenedFile(42);
    EXPECT_EQ(ring->lineCount, 42);
    EXPECT_EQ(ring->fileOnlyLines, 42);
    EXPECT_EQ(ring->writePos + ring->unwrittenPos + ring->ringStart + ring->ringFull, 0);
    EXPECT_EQ(FieldText(ring->ring[4999]), std::wstring(kMessageTextUnits, L'\0'));

    AddLines(*ring, 0, 5001);
    ring->ResetForNewFile();
    EXPECT_EQ(ring->lineCount + ring->fileOnlyLines + ring->writePos + ring->unwrittenPos +
                  ring->ringStart + ring->ringFull,
              0);
    EXPECT_EQ(FieldText(ring->ring[0]), std::wstring(kMessageTextUnits, L'\0'));
}

} // namespace
