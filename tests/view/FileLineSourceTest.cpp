#include <gtest/gtest.h>

#include "lang/ResourceIds.h"
#include "ring/MessageRecord.h"
#include "support/DialogScript.h"
#include "support/LogFileDecoder.h"
#include "support/ResourceText.h"
#include "support/TestFiles.h"
#include "view/FileLineSource.h"

namespace {

using testing_support::ResourceText;

// A browser's lines, read straight from its source; MessageViewTest shows
// that the browser view asks for negative top lines as they stand.
class FileLinesTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { testing_support::UseEnglishModule(); }

    // A saved log of `count` records "saved N" as the source's file.
    void Save(size_t count, const std::wstring& version = L"7.000000")
    {
        testing_support::WriteFileBytes(path, LogImage(NumberedLines(count, L"saved "), version));
        source.SetPath(path.c_str());
        source.SetLineCount(static_cast<int>(count));
        source.SetOwner(boxes.Owner());
    }

    testing_support::TempDir dir;
    std::wstring path = dir / L"2603031405.qxl";
    FileLineSource source;
    testing_support::DialogScript boxes;
    MessageRecord page[10] = {};
};

TEST_F(FileLinesTest, ReadsPagesWhileTheWriterHoldsTheFile)
{
    Save(60);
    // The log writer keeps the file open for writing, sharing reading only.
    HANDLE writer = ::CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, writer);
    EXPECT_EQ(10, source.FillPage(10, page, 10));  // which records, the fuzz driver's
    ::CloseHandle(writer);
    EXPECT_EQ(INVALID_HANDLE_VALUE, source.File()) << "closed after each refill";
    EXPECT_TRUE(boxes.Boxes().empty());
}

// What a refill reads and how many boxes it costs are the fuzz driver's;
// here what the boxes say and whose they are.
TEST_F(FileLinesTest, RefusalsAndFailedSeeksAreReportedToTheUser)
{
    Save(3, L"8.000000");
    EXPECT_EQ(0, source.FillPage(0, page, 10));
    ASSERT_EQ(1u, boxes.Boxes().size());
    EXPECT_EQ(ResourceText(IDS_NEWER_FORMAT), boxes.Boxes()[0].text);
    EXPECT_EQ(boxes.Owner(), boxes.Boxes()[0].owner);
    EXPECT_EQ(INVALID_HANDLE_VALUE, source.File()) << "a refused file is closed";

    Save(0);
    EXPECT_EQ(0, source.FillPage(-3, page, 3));
    ASSERT_EQ(2u, boxes.Boxes().size());
    EXPECT_EQ(ResourceText(IDS_ERROR_CAPTION), boxes.Boxes()[1].caption);
}

} // namespace
