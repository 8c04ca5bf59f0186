#pragma once
#include <windows.h>

#include <string>
#include <vector>

#include "support/TestFiles.h"

// qxltool from the installation folder, run as a real process with its
// standard output and error going to files the test reads.
struct ToolResult {
    DWORD exitCode;
    std::string out;
    std::string err;
};

class ToolProcess {
public:
    explicit ToolProcess(const std::vector<std::wstring>& args);
    ~ToolProcess();
    ToolProcess(const ToolProcess&) = delete;
    ToolProcess& operator=(const ToolProcess&) = delete;

    // What it has written so far.
    std::string Out() const;
    std::string Err() const;
    // Waits until its standard error holds `text`; false after `timeoutMs`.
    bool WaitForErr(const std::string& text, DWORD timeoutMs) const;
    // Waits until its standard output holds `lines` lines.
    bool WaitForOutLines(size_t lines, DWORD timeoutMs) const;
    // Ctrl+C, as a user presses it in the console the tool runs in.
    void PressCtrlC() const;
    // Its exit code, or testing_support::kStillRunning after `timeoutMs`.
    DWORD Wait(DWORD timeoutMs) const;

private:
    testing_support::TempDir files_;
    PROCESS_INFORMATION info_ = {};
};

// Runs the tool to its end (at most 20 s).
ToolResult RunTool(const std::vector<std::wstring>& args);
