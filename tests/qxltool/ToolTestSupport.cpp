#include "ToolTestSupport.h"

#include <algorithm>
#include <stdexcept>


using namespace testing_support;

SYSTEMTIME LocalAt(WORD day, WORD hour, WORD minute, WORD second, WORD ms)
{
    return SYSTEMTIME{2026, 11, 0, day, hour, minute, second, ms};
}

void AppendRecord(const std::wstring& path, const LogLine& record)
{
    const std::vector<unsigned char> image = LogImage({record});
    HANDLE file = ::CreateFileW(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    ::WriteFile(file, image.data() + 272, 272, &written, nullptr);
    ::CloseHandle(file);
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

BOOL WINAPI SwallowCtrlC(DWORD)
{
    return TRUE;
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

bool ToolProcess::WaitForErr(const std::string& text) const
{
    return WaitUntil([&] { return Err().find(text) != std::string::npos; }, 5000);
}

bool ToolProcess::WaitForOutLines(size_t lines) const
{
    return WaitUntil([&] {
        const std::string out = Out();
        return static_cast<size_t>(std::count(out.begin(), out.end(), '\n')) >= lines;
    }, 5000);
}

void ToolProcess::PressCtrlC() const
{
    // Only a process of the same console can raise the event: join the
    // tool's for the moment, with a handler that keeps the event from ending
    // the test.  (A null handler would ignore Ctrl+C, and that setting is
    // inherited: the next tool started would ignore it too.)
    ::FreeConsole();
    if (!::AttachConsole(info_.dwProcessId))
        throw std::runtime_error("cannot attach to the console of qxltool.exe");
    ::SetConsoleCtrlHandler(&SwallowCtrlC, TRUE);
    ::GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
    ::FreeConsole();
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
