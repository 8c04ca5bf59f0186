#include <gtest/gtest.h>

#include "ViewHost.h"
#include "lang/ResourceIds.h"
#include "ring/MessageRecord.h"
#include "support/ResourceText.h"
#include "support/LogFileDecoder.h"
#include "support/DialogScript.h"
#include "support/TestFiles.h"
#include "support/ViewInput.h"
#include "view/FileLineSource.h"
#include "view/RecordLine.h"

#include <cwchar>
#include "winlayer/Resources.h"

namespace {

using testing_support::ResourceText;

using testing_support::PageLine;
using testing_support::SendKey;

class FileLinesTest : public ViewFixture {
protected:
    // A saved log of `count` records "saved N", shown in a browser view.
    void ShowLog(size_t count, int lines, const std::wstring& version = L"7.000000")
    {
        testing_support::WriteFileBytes(path, LogImage(NumberedLines(count, L"saved "), version));
        source.SetPath(path.c_str());
        source.SetLineCount(static_cast<int>(count));
        CreateHost(source, kBrowserViewPolicy, lines);
        source.SetOwner(Hwnd());
    }

    testing_support::TempDir dir;
    std::wstring path = dir / L"2603031405.qxl";
    FileLineSource source;
    testing_support::DialogScript boxes;
};

TEST_F(FileLinesTest, ReadsPagesWhileTheWriterHoldsTheFile)
{
    ShowLog(60, 10);
    EXPECT_EQ(L"saved 9", PageLine(View(), 9));
    // The log writer keeps the file open for writing, sharing reading only.
    HANDLE writer = ::CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, writer);
    SendKey(Hwnd(), VK_NEXT);
    EXPECT_EQ(L"saved 10", PageLine(View(), 0));
    ::CloseHandle(writer);
    EXPECT_EQ(INVALID_HANDLE_VALUE, source.File()) << "closed after each refill";
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST(RecordLine, DateTimeThenAllOfAFull128UnitText)
{
    testing_support::UseEnglishModule();
    MessageRecord record = {{2026, 11, 1, 23, 14, 5, 9, 123}, {}};
    std::wmemset(record.text, L'x', kMessageTextUnits);
    wchar_t line[kRecordLineBuffer];
    FormatRecordLine(line, &record);
    EXPECT_EQ(L"2026-11-23 14:05:09.123  " + std::wstring(kMessageTextUnits, L'x'), line);
}

TEST_F(FileLinesTest, NegativeTopLinesAreReadAsTheyStand)
{
    ShowLog(0, 1);
    // Page Down on a header-only file puts the top line at -1 here: the
    // header slot is shown as a line (its version text fills the time stamp).
    SendKey(Hwnd(), VK_NEXT);
    ASSERT_EQ(-1, View().TopLine());
    ASSERT_EQ(1, View().PageCount());
    EXPECT_EQ(L'7', View().Page()[0].time.wYear);
    EXPECT_TRUE(boxes.Boxes().empty());

    // Below -1 the seek fails and the system's text is shown.
    ::DestroyWindow(Hwnd());
    ShowLog(0, 3);
    SendKey(Hwnd(), VK_NEXT);
    EXPECT_EQ(-3, View().TopLine());
    EXPECT_EQ(0, View().PageCount());
    ASSERT_EQ(1u, boxes.Boxes().size());
    EXPECT_EQ(ResourceText(IDS_ERROR_CAPTION), boxes.Boxes()[0].caption);
}

TEST_F(FileLinesTest, NewerFormatIsRefusedOnEveryRefill)
{
    ShowLog(0, 10, L"8.000000");
    EXPECT_EQ(0, View().PageCount());
    const size_t atCreation = boxes.Boxes().size();
    EXPECT_GE(atCreation, 1u);
    SendKey(Hwnd(), VK_NEXT);
    EXPECT_EQ(0, View().PageCount());
    ASSERT_EQ(atCreation + 1, boxes.Boxes().size());
    for (const auto& box : boxes.Boxes())
        EXPECT_EQ(ResourceText(IDS_NEWER_FORMAT), box.text);
    EXPECT_EQ(INVALID_HANDLE_VALUE, source.File()) << "a refused file is closed";
}

} // namespace
