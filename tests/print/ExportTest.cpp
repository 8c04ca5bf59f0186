// Export to text on real files, byte for byte, and the save dialog's part
// answered in-process.
#include "PrintTestSupport.h"

#include "print/ExportText.h"
#include "support/LogFileDecoder.h"
#include "support/TestFiles.h"

using testing_support::FileExists;
using testing_support::ReadFileBytes;
using testing_support::WriteFileBytes;

namespace {

// An export file: UTF-16LE, the byte-order mark, then `lines`.
std::vector<unsigned char> ExportBytes(const std::wstring& lines)
{
    std::vector<unsigned char> bytes;
    for (wchar_t unit : L"\xFEFF" + lines) {
        bytes.push_back(static_cast<unsigned char>(unit & 0xFF));
        bytes.push_back(static_cast<unsigned char>(unit >> 8));
    }
    return bytes;
}

// The line of record i of the fixture's logs.
std::wstring Line(int i)
{
    return L"2026-03-03 10:00:0" + std::to_wstring(i) + L".000  record " + std::to_wstring(i) + L"\r\n";
}

using ExportTest = PrintFixture;

} // namespace

TEST_F(ExportTest, ShortLogsGiveTheMarkAloneExceptABrowsersWhichGivesNoFile)
{
    const std::wstring headerOnly = WriteLog(L"empty.qxl", 0);
    const std::wstring torn = dir / L"torn.qxl";
    WriteFileBytes(torn, std::vector<unsigned char>(271, 0x37));
    ASSERT_TRUE(ExportLogFile(headerOnly.c_str(), (dir / L"a.txt").c_str(), ExportSource::Browser));
    ASSERT_TRUE(ExportLogFile(torn.c_str(), (dir / L"b.txt").c_str(), ExportSource::MainWindow));
    EXPECT_EQ(ExportBytes(L""), ReadFileBytes(dir / L"a.txt"));
    EXPECT_EQ(ExportBytes(L""), ReadFileBytes(dir / L"b.txt"));

    EXPECT_FALSE(ExportLogFile(torn.c_str(), (dir / L"c.txt").c_str(), ExportSource::Browser));
    EXPECT_FALSE(FileExists(dir / L"c.txt"));
    // The browser's read handle stays open: nobody gets the file to himself.
    HANDLE alone = ::CreateFileW(torn.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_EQ(static_cast<DWORD>(ERROR_SHARING_VIOLATION), ::GetLastError());
    if (alone != INVALID_HANDLE_VALUE)
        ::CloseHandle(alone);
}

TEST_F(ExportTest, OneLinePerWholeRecordFullTextCutZeroSlotAsNumbers)
{
    std::vector<unsigned char> image = MakeLogImage(L"7.000000", 4, 100);
    const std::wstring full(128, L'\x5757');
    PutLogRecord(image, 0, L"record 0", TestStamp(0));
    PutLogRecord(image, 1, full, TestStamp(1, 1));
    // Slot 3 stays zero, as the writer leaves a completed torn record.
    PutLogRecord(image, 3, L"record 3", TestStamp(3));
    const std::wstring log = dir / L"odd.qxl";
    WriteFileBytes(log, image);
    ASSERT_TRUE(ExportLogFile(log.c_str(), (dir / L"out.txt").c_str(), ExportSource::Browser));
    EXPECT_EQ(ExportBytes(Line(0) + L"2026-03-03 10:00:01.001  " + full.substr(0, 127) + L"\r\n" +
                          L"0000-00-00 00:00:00.000  \r\n" + Line(3)),
              ReadFileBytes(dir / L"out.txt"));

    // Over a longer old file, whose tail stays.
    const std::wstring old = dir / L"old.txt";
    WriteFileBytes(old, std::vector<unsigned char>(500, 'Z'));
    ASSERT_TRUE(ExportLogFile(WriteLog(L"one.qxl", 1).c_str(), old.c_str(), ExportSource::MainWindow));
    std::vector<unsigned char> expected = ExportBytes(Line(0));
    expected.resize(500, 'Z');
    EXPECT_EQ(expected, ReadFileBytes(old));
}

TEST_F(ExportTest, TheChosenNameAlwaysGetsTxtAndEachWindowItsFilter)
{
    const std::wstring log = WriteLog(L"two.qxl", 2);
    const struct {
        ExportSource source;
        std::wstring typed, created, filter;
    } cases[] = {
        {ExportSource::MainWindow, L"day.txt", L"day.txt.txt", L"Oriel Text Files (*.txt)"},
        {ExportSource::Browser, L"night", L"night.txt", L"Oriel 7.5 Text Files (*.txt)"},
        {ExportSource::MainWindow, L"", L"", L""},  // cancelled
    };
    for (const auto& c : cases) {
        std::wstring filter;
        script.Then([&](HWND dialog) {
            filter = testing_support::ItemText(dialog, 0x470);
            if (c.typed.empty())
                testing_support::Click(dialog, IDCANCEL);
            else
                testing_support::ChooseFile(dir / c.typed)(dialog);
        });
        ExportLogText(owner, log.c_str(), c.source);
        EXPECT_TRUE(script.Finished());
        if (c.typed.empty())
            continue;
        EXPECT_EQ(c.filter, filter);
        EXPECT_EQ(ExportBytes(Line(0) + Line(1)), ReadFileBytes(dir / c.created)) << c.typed;
    }
    EXPECT_FALSE(FileExists(dir / L"day.txt"));
    EXPECT_FALSE(FileExists(dir / L".txt"));
}
