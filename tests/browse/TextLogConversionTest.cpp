#include "browse/TextLogConversion.h"
#include "lang/ResourceIds.h"
#include "support/LogFileDecoder.h"
#include "support/DialogScript.h"
#include "support/ResourceText.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <iterator>
#include <string>
#include <vector>

namespace {

using namespace testing_support;

SYSTEMTIME At(WORD year, WORD month, WORD day, WORD hour, WORD minute, WORD second)
{
    return {year, month, 0, day, hour, minute, second, 0};
}

const std::string kPump = "2009-03-04 05:06:07 pump started\r\n";

HANDLE OpenSharing(const std::wstring& path, DWORD share)
{
    return ::CreateFileW(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr);
}

// Whether no one holds `path` open: an open that shares nothing succeeds.
bool Unheld(const std::wstring& path)
{
    HANDLE file = OpenSharing(path, 0);
    ::CloseHandle(file);
    return file != INVALID_HANDLE_VALUE;
}

class TextLogConversionTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { UseEnglishModule(); }
    ~TextLogConversionTest() override
    {
        if (logFile != INVALID_HANDLE_VALUE)
            ::CloseHandle(logFile);
    }

    int Convert(const std::wstring& name, const std::string& text)
    {
        WriteFileBytes(dir / name, {text.begin(), text.end()});
        return Convert(name);
    }
    int Convert(const std::wstring& name)
    {
        ::lstrcpynW(path, (dir / name).c_str(), MAX_PATH);
        return ConvertTextLog(owner, path, logFile);
    }
    void ExpectOneBox(const std::wstring& text, HWND boxOwner)
    {
        ASSERT_EQ(boxes.Boxes().size(), 1u);
        EXPECT_EQ(boxes.Boxes()[0].text, text);
        EXPECT_EQ(boxes.Boxes()[0].caption, ResourceText(IDS_ERROR_CAPTION));
        EXPECT_EQ(boxes.Boxes()[0].owner, boxOwner);
        boxes.Clear();
    }

    TempDir dir;
    DialogScript boxes;
    const HWND owner = boxes.Owner();  // the browser's window
    HANDLE logFile = INVALID_HANDLE_VALUE;
    wchar_t path[MAX_PATH] = {};
};

TEST_F(TextLogConversionTest, EveryPieceOfALineBecomesARecord)
{
    const std::wstring a(107, L'a'), nul(1, L'\0');
    const std::pair<std::string, std::vector<unsigned char>> cases[] = {
        {kPump + "2009-03-04 05:06:08 caf\xE9\n",
         LogImage({{L"pump started", At(2009, 3, 4, 5, 6, 7)},
                {L"caf\u00E9" + nul + L"started", At(2009, 3, 4, 5, 6, 8)}})},
        // 150 characters: 127, then the rest as a line of its own.
        {"2009-03-04 05:06:07 " + std::string(107, 'a') + "2010-01-02 03:04:05 end\n",
         LogImage({{a, At(2009, 3, 4, 5, 6, 7)}, {L"end" + nul + a.substr(4), At(2010, 1, 2, 3, 4, 5)}})},
    };
    for (size_t i = 0; i < std::size(cases); ++i) {
        SCOPED_TRACE(cases[i].first);
        const std::wstring name = std::to_wstring(i);
        ASSERT_EQ(Convert(name + L".log", cases[i].first), 1);
        EXPECT_EQ(path, dir / (name + L"00.qxl"));
        EXPECT_EQ(ReadFileBytes(path), cases[i].second);
        EXPECT_EQ(logFile, INVALID_HANDLE_VALUE);
        EXPECT_TRUE(Unheld(dir / (name + L".log")));
    }
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST_F(TextLogConversionTest, OnlyDotLogInAnyCaseIsConvertedAndThenReused)
{
    ::SetCursor(::LoadCursorW(nullptr, IDC_ARROW));
    ASSERT_EQ(Convert(L"day.txt", kPump), 1);
    EXPECT_EQ(path, dir / L"day.txt");
    EXPECT_FALSE(FileExists(dir / L"day00.qxl"));
    EXPECT_EQ(::GetCursor(), ::LoadCursorW(nullptr, IDC_ARROW));
    logFile = OpenSharing(path, FILE_SHARE_READ);  // the browser's, closed first
    ASSERT_EQ(Convert(L"day.LOG", kPump), 1);
    EXPECT_EQ(path, dir / L"day00.qxl");
    EXPECT_TRUE(Unheld(dir / L"day.txt"));
    EXPECT_EQ(::GetCursor(), ::LoadCursorW(nullptr, IDC_WAIT));
    // Which earlier conversion is reused is the fuzz driver's; a reuse
    // neither waits nor holds the file.
    ::SetCursor(::LoadCursorW(nullptr, IDC_ARROW));
    ASSERT_EQ(Convert(L"day.LOG"), 1);
    EXPECT_EQ(::GetCursor(), ::LoadCursorW(nullptr, IDC_ARROW));
    EXPECT_EQ(logFile, INVALID_HANDLE_VALUE);
}

TEST_F(TextLogConversionTest, FailuresAreReportedEachToItsOwner)
{
    // A text log someone holds: the platform's text, in a box of no window.
    WriteFileBytes(dir / L"day.log", {kPump.begin(), kPump.end()});
    HANDLE lock = OpenSharing(dir / L"day.log", 0);
    EXPECT_EQ(Convert(L"day.log"), 0);
    ::CloseHandle(lock);
    wchar_t text[256] = {};
    ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                     ERROR_SHARING_VIOLATION, MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT), text, 256,
                     nullptr);
    ExpectOneBox(text, nullptr);
    // No stream left in the runtime: string 112 in a box of the browser.
    std::vector<std::FILE*> taken;
    while (std::FILE* stream = std::fopen("NUL", "r"))
        taken.push_back(stream);
    const int result = Convert(L"day.log");
    for (std::FILE* stream : taken)
        std::fclose(stream);
    EXPECT_EQ(result, 0);
    ExpectOneBox(ResourceText(IDS_TEXTLOG_STREAM_FAILED), owner);
    EXPECT_EQ(logFile, INVALID_HANDLE_VALUE);
    EXPECT_TRUE(Unheld(dir / L"day.log"));
    EXPECT_FALSE(FileExists(dir / L"day00.qxl"));
}

TEST_F(TextLogConversionTest, UndeletableEarlierConversionFailsSilently)
{
    WriteFileBytes(dir / L"day00.qxl", MakeLogImage(L"6.000000", 1));
    HANDLE keep = OpenSharing(dir / L"day00.qxl", FILE_SHARE_READ);  // but not deletion
    EXPECT_EQ(Convert(L"day.log", kPump), 0);
    ::CloseHandle(keep);
    EXPECT_EQ(ReadFileBytes(dir / L"day00.qxl"), MakeLogImage(L"6.000000", 1));
    EXPECT_TRUE(boxes.Boxes().empty());
}

} // namespace
