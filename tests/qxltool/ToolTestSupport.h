#pragma once
#include <windows.h>

#include <string>
#include <vector>

#include "support/LogFileDecoder.h"
#include "support/TestFiles.h"

// A day of November 2026, as the tool's test logs are stamped.
SYSTEMTIME LocalAt(WORD day, WORD hour, WORD minute, WORD second, WORD ms = 0);

// qxltool.exe from the installation folder as a real process, in a console
// of its own without a window, its output going to files the test reads.
class ToolProcess {
public:
    explicit ToolProcess(const std::vector<std::wstring>& args);
    ~ToolProcess();
    ToolProcess(const ToolProcess&) = delete;
    ToolProcess& operator=(const ToolProcess&) = delete;

    // What it has written so far to standard output and standard error.
    std::string Out() const;
    std::string Err() const;
    // Its exit code, or testing_support::kStillRunning after `timeoutMs`.
    DWORD Wait(DWORD timeoutMs) const;

private:
    testing_support::TempDir files_;
    PROCESS_INFORMATION info_ = {};
};

struct ToolResult {
    DWORD exitCode;
    std::string out;
    std::string err;
};

// Runs the tool to its end.
ToolResult RunTool(const std::vector<std::wstring>& args);
