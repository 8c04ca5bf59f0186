#include "ToolProcess.h"

#include <algorithm>
#include <functional>
#include <stdexcept>

using testing_support::InstallDir;
using testing_support::ReadFileBytes;

namespace {

std::wstring Quoted(const std::wstring& arg)
{
    if (!arg.empty() && arg.find_first_of(L" \t\"") == std::wstring::npos)
        return arg;
    std::wstring quoted = L"\"";
    for (wchar_t c : arg) {
        if (c == L'"')
            quoted += L'\\';
        quoted += c;
    }
    return quoted + L"\"";
}

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

bool WaitUntil(DWORD timeoutMs, const std::function<bool()>& done)
{
    const ULONGLONG deadline = ::GetTickCount64() + timeoutMs;
    while (!done()) {
        if (::GetTickCount64() > deadline)
            return false;
        ::Sleep(20);
    }
    return true;
}

BOOL WINAPI SwallowCtrlC(DWORD)
{
    return TRUE;
}

} // namespace

ToolProcess::ToolProcess(const std::vector<std::wstring>& args)
{
    std::wstring line = Quoted(InstallDir() + L"\\qxltool.exe");
    for (const std::wstring& arg : args)
        line += L" " + Quoted(arg);
    HANDLE out = InheritableFile(files_ / L"out");
    HANDLE err = InheritableFile(files_ / L"err");
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = INVALID_HANDLE_VALUE;
    startup.hStdOutput = out;
    startup.hStdError = err;
    // A console of its own, without a window, for Ctrl+C to be pressed in.
    const BOOL started = ::CreateProcessW(nullptr, &line[0], nullptr, nullptr, TRUE, CREATE_NO_WINDOW,
                                          nullptr, nullptr, &startup, &info_);
    ::CloseHandle(out);
    ::CloseHandle(err);
    if (!started)
        throw std::runtime_error("cannot start qxltool.exe");
}

ToolProcess::~ToolProcess()
{
    if (Wait(0) == testing_support::kStillRunning) {
        ::TerminateProcess(info_.hProcess, testing_support::kStillRunning);
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

bool ToolProcess::WaitForErr(const std::string& text, DWORD timeoutMs) const
{
    return WaitUntil(timeoutMs, [&] { return Err().find(text) != std::string::npos; });
}

bool ToolProcess::WaitForOutLines(size_t lines, DWORD timeoutMs) const
{
    return WaitUntil(timeoutMs, [&] {
        const std::string out = Out();
        return static_cast<size_t>(std::count(out.begin(), out.end(), '\n')) >= lines;
    });
}

void ToolProcess::PressCtrlC() const
{
    // Only a process of the same console can raise the event: join the
    // tool's for the moment, with a handler that keeps the event from
    // ending the test itself.  (Ignoring Ctrl+C with a null handler would be
    // inherited by the next tool started, which would then ignore it too.)
    ::FreeConsole();
    if (!::AttachConsole(info_.dwProcessId))
        throw std::runtime_error("cannot attach to the console of qxltool.exe");
    ::SetConsoleCtrlHandler(&SwallowCtrlC, TRUE);
    ::GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
    ::FreeConsole();
}

DWORD ToolProcess::Wait(DWORD timeoutMs) const
{
    DWORD exitCode = testing_support::kStillRunning;
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
