#include "ToolTestSupport.h"

#include <stdexcept>


using namespace testing_support;

SYSTEMTIME LocalAt(WORD day, WORD hour, WORD minute, WORD second, WORD ms)
{
    return SYSTEMTIME{2026, 11, 0, day, hour, minute, second, ms};
}

namespace {

HANDLE InheritableFile(const std::wstring& path)
{
    SECURITY_ATTRIBUTES inherit = {sizeof(inherit), nullptr, TRUE};
    return ::CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherit,
                         CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

std::string FileText(const std::wstring& path)
{
    const std::vector<unsigned char> bytes = ReadFileBytes(path);
    return std::string(bytes.begin(), bytes.end());
}

} // namespace

ToolProcess::ToolProcess(const std::vector<std::wstring>& args)
{
    // Every argument quoted; none of the tests' holds a quote.
    std::wstring line = L"\"" + InstallDir() + L"\\qxltool.exe\"";
    for (const std::wstring& arg : args)
        line += L" \"" + arg + L"\"";
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = INVALID_HANDLE_VALUE;
    startup.hStdOutput = InheritableFile(files_ / L"out");
    startup.hStdError = InheritableFile(files_ / L"err");
    const BOOL started = ::CreateProcessW(nullptr, &line[0], nullptr, nullptr, TRUE, CREATE_NO_WINDOW,
                                          nullptr, nullptr, &startup, &info_);
    ::CloseHandle(startup.hStdOutput);
    ::CloseHandle(startup.hStdError);
    if (!started)
        throw std::runtime_error("cannot start qxltool.exe");
}

ToolProcess::~ToolProcess()
{
    if (Wait(0) == kStillRunning) {
        ::TerminateProcess(info_.hProcess, kStillRunning);
        ::WaitForSingleObject(info_.hProcess, 5000);
    }
    ::CloseHandle(info_.hThread);
    ::CloseHandle(info_.hProcess);
}

std::string ToolProcess::Out() const
{
    return FileText(files_ / L"out");
}

std::string ToolProcess::Err() const
{
    return FileText(files_ / L"err");
}

DWORD ToolProcess::Wait(DWORD timeoutMs) const
{
    DWORD exitCode = kStillRunning;
    if (::WaitForSingleObject(info_.hProcess, timeoutMs) == WAIT_OBJECT_0)
        ::GetExitCodeProcess(info_.hProcess, &exitCode);
    return exitCode;
}

ToolResult RunTool(const std::vector<std::wstring>& args)
{
    ToolProcess tool(args);
    const DWORD exitCode = tool.Wait(20000);
    return ToolResult{exitCode, tool.Out(), tool.Err()};
}
