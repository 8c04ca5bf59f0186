// Export to text on real files: the bytes written, byte for byte, and the
// save dialog's part (name, filter, cancel) answered in-process.
#include "PrintTestSupport.h"

#include <string>
#include <vector>

#include "print/ExportText.h"
#include "support/LogFileDecoder.h"
#include "support/TestFiles.h"

using testing_support::FileExists;
using testing_support::ReadFileBytes;
using testing_support::WriteFileBytes;

namespace {

std::vector<unsigned char> Utf16(const std::wstring& text)
{
    std::vector<unsigned char> bytes;
    for (wchar_t unit : text) {
        bytes.push_back(static_cast<unsigned char>(unit & 0xFF));
        bytes.push_back(static_cast<unsigned char>(unit >> 8));
    }
    return bytes;
}

// What an export file holds: the byte-order mark, then `lines`.
std::vector<unsigned char> ExportBytes(const std::wstring& lines)
{
    return Utf16(L"\xFEFF" + lines);
}

// The line of record i of the fixture's logs.
std::wstring Line(int i)
{
    wchar_t time[32];
    _snwprintf(time, 32, L"2026-03-03 10:00:%02d.000  ", i);
    return time + std::wstring(L"record ") + std::to_wstring(i) + L"\r\n";
}

class ExportTest : public PrintFixture {};

} // namespace

TEST_F(ExportTest, HeaderOnlyAndShortLogsGiveTheByteOrderMarkAlone)
{
    const std::wstring headerOnly = WriteLog(L"empty.qxl", 0);
    ASSERT_TRUE(ExportLogFile(headerOnly.c_str(), (dir + L"\\a.txt").c_str(), ExportSource::MainWindow));
    EXPECT_EQ((std::vector<unsigned char>{0xFF, 0xFE}), ReadFileBytes(dir + L"\\a.txt"));
    ASSERT_TRUE(ExportLogFile(headerOnly.c_str(), (dir + L"\\b.txt").c_str(), ExportSource::Browser));
    EXPECT_EQ(2u, ReadFileBytes(dir + L"\\b.txt").size());

    // Less than one slot: the main window still writes the mark.
    const std::wstring torn = dir + L"\\torn.qxl";
    WriteFileBytes(torn, std::vector<unsigned char>(100, 0x37));
    ASSERT_TRUE(ExportLogFile(torn.c_str(), (dir + L"\\c.txt").c_str(), ExportSource::MainWindow));
    EXPECT_EQ(2u, ReadFileBytes(dir + L"\\c.txt").size());
}

TEST_F(ExportTest, BrowsersShortSourceCreatesNothingAndStaysOpen)
{
    const std::wstring torn = dir + L"\\torn.qxl";
    WriteFileBytes(torn, std::vector<unsigned char>(271, 0x37));
    EXPECT_FALSE(ExportLogFile(torn.c_str(), (dir + L"\\out.txt").c_str(), ExportSource::Browser));
    EXPECT_FALSE(FileExists(dir + L"\\out.txt"));
    // The export's read handle is still open: nobody gets the file to himself.
    HANDLE exclusive = ::CreateFileW(torn.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_EQ(INVALID_HANDLE_VALUE, exclusive);
    EXPECT_EQ(static_cast<DWORD>(ERROR_SHARING_VIOLATION), ::GetLastError());
    if (exclusive != INVALID_HANDLE_VALUE)
        ::CloseHandle(exclusive);
}

TEST_F(ExportTest, EveryWholeRecordOneLineTornTailIgnored)
{
    const std::wstring log = WriteLog(L"three.qxl", 3, 100);
    ASSERT_TRUE(ExportLogFile(log.c_str(), (dir + L"\\out.txt").c_str(), ExportSource::MainWindow));
    EXPECT_EQ(ExportBytes(Line(0) + Line(1) + Line(2)), ReadFileBytes(dir + L"\\out.txt"));
}

TEST_F(ExportTest, FullTextLosesItsLastUnitAndZeroSlotsExportAsNumbers)
{
    std::vector<unsigned char> image = MakeLogImage(L"7.000000", 3);
    const std::wstring full(128, L'\x5757');
    PutLogRecord(image, 0, full, TestStamp(0, 1));
    // Slot 2 stays zero, as the writer leaves a completed torn record.
    PutLogRecord(image, 2, L"after", TestStamp(2, 999));
    const std::wstring log = dir + L"\\odd.qxl";
    WriteFileBytes(log, image);
    ASSERT_TRUE(ExportLogFile(log.c_str(), (dir + L"\\out.txt").c_str(), ExportSource::Browser));
    EXPECT_EQ(ExportBytes(L"2026-03-03 10:00:00.001  " + full.substr(0, 127) + L"\r\n" +
                          L"0000-00-00 00:00:00.000  \r\n" + L"2026-03-03 10:00:02.999  after\r\n"),
              ReadFileBytes(dir + L"\\out.txt"));
}

TEST_F(ExportTest, ALongerOldFileKeepsItsTail)
{
    const std::wstring out = dir + L"\\old.txt";
    WriteFileBytes(out, std::vector<unsigned char>(500, 'Z'));
    const std::wstring log = WriteLog(L"one.qxl", 1);
    ASSERT_TRUE(ExportLogFile(log.c_str(), out.c_str(), ExportSource::MainWindow));
    std::vector<unsigned char> expected = ExportBytes(Line(0));
    expected.resize(500, 'Z');
    EXPECT_EQ(expected, ReadFileBytes(out));
}

TEST_F(ExportTest, TheChosenNameAlwaysGetsTxtAndEachWindowItsFilter)
{
    const std::wstring log = WriteLog(L"two.qxl", 2);
    struct Case {
        ExportSource source;
        std::wstring typed;
        std::wstring created;
        std::wstring filter;
    };
    const Case cases[] = {
        {ExportSource::MainWindow, L"day.txt", L"day.txt.txt", L"Oriel Text Files (*.txt)"},
        {ExportSource::Browser, L"night", L"night.txt", L"Oriel 7.5 Text Files (*.txt)"},
    };
    for (const Case& c : cases) {
        std::wstring filter;
        std::wstring title;
        {
            DialogScript script([&] {
                HWND dialog = WaitForDialog(uiThread);
                ASSERT_NE(nullptr, dialog);
                wchar_t text[128] = {};
                ::GetWindowTextW(::GetDlgItem(dialog, 0x470), text, 128);
                filter = text;
                ::GetWindowTextW(dialog, text, 128);
                title = text;
                AnswerFileDialog(dialog, dir + L"\\" + c.typed);
            });
            ExportLogText(owner, log.c_str(), c.source);
        }
        EXPECT_EQ(c.filter, filter);
        EXPECT_EQ(L"Select File", title);
        EXPECT_EQ(ExportBytes(Line(0) + Line(1)), ReadFileBytes(dir + L"\\" + c.created)) << c.typed;
    }
    EXPECT_FALSE(FileExists(dir + L"\\day.txt"));
}

TEST_F(ExportTest, CancelWritesNothing)
{
    const std::wstring log = WriteLog(L"two.qxl", 2);
    {
        DialogScript script([&] {
            HWND dialog = WaitForDialog(uiThread);
            ASSERT_NE(nullptr, dialog);
            PostClick(dialog, IDCANCEL);
        });
        ExportLogText(owner, log.c_str(), ExportSource::MainWindow);
    }
    WIN32_FIND_DATAW found;
    HANDLE search = ::FindFirstFileW((dir + L"\\*.txt").c_str(), &found);
    EXPECT_EQ(INVALID_HANDLE_VALUE, search);
    if (search != INVALID_HANDLE_VALUE)
        ::FindClose(search);
}
