// What an add stores and how it moves the counters is the intake fuzz
// driver's property; here the line rule and the resets.
#include "LogFixture.h"

namespace {

std::wstring FieldText(const MessageRecord& record)
{
    return std::wstring(record.text, kMessageTextUnits);
}

struct RingTest : ::testing::Test {
    std::unique_ptr<MessageRing> ring = std::make_unique<MessageRing>();
};

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
