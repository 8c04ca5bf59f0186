#pragma once
#include "log/LogWriter.h"
#include "ring/MessageRing.h"
#include "support/LogFileDecoder.h"
#include "support/TestFiles.h"
#include "RecordingHost.h"
#include "TestClock.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

// A writer on a real directory, a fresh ring and a recording host, with the
// clock fixed at 14:05:20 on 3 March 2026.
class WriterTest : public ::testing::Test {
protected:
    static constexpr const wchar_t* kCurrentName = L"2603031405.qxl";

    testing_support::TempDir dir;
    std::unique_ptr<MessageRing> ring = std::make_unique<MessageRing>();
    RecordingHost host;
    LogWriter writer{*ring, host, TestClock};

    void SetUp() override;

    std::wstring PathOf(const wchar_t* name) const { return dir / name; }
    // Makes `name` the current log file, as start-up does, and forgets the
    // events of that start.
    void Open(const wchar_t* name = kCurrentName);
    // Adds "line <first>" .. "line <first + count - 1>".
    void AddLines(int first, int count);
    DecodedLog ReadLog(const wchar_t* name = kCurrentName) const;
};

inline std::wstring LineText(int n) { return L"line " + std::to_wstring(n); }

// Holds a file open the way another program might, sharing nothing, so
// that no one else can open it while the object lives.
class ExclusiveOpen {
public:
    explicit ExclusiveOpen(const std::wstring& path)
        : file_(::CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr))
    {
        EXPECT_NE(file_, INVALID_HANDLE_VALUE);
    }
    ~ExclusiveOpen() { ::CloseHandle(file_); }
    ExclusiveOpen(const ExclusiveOpen&) = delete;
    ExclusiveOpen& operator=(const ExclusiveOpen&) = delete;

private:
    HANDLE file_;
};
