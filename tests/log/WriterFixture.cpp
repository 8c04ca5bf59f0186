#include "WriterFixture.h"

void WriterTest::SetUp()
{
    testNow = LocalTime(2026, 3, 3, 14, 5, 20);
    host.writer = &writer;
    writer.SetSettings(10, 600, 10);
}

void WriterTest::Open(const wchar_t* name)
{
    ASSERT_EQ(writer.OpenCurrentLogFile(dir.Path().c_str(), name), 0);
    host.events.clear();
}

void WriterTest::AddLines(int first, int count)
{
    for (int n = first; n < first + count; ++n)
        ring->AddMessage(LineText(n).c_str());
}

DecodedLog WriterTest::ReadLog(const wchar_t* name) const
{
    return DecodeLog(testing_support::ReadFileBytes(PathOf(name)));
}
