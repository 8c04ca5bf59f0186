// showmess: hands lines of text to the running message window.
#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "tools/showmess/AtomSender.h"
#include "tools/showmess/ComSender.h"
#include "tools/showmess/LineSplitter.h"
#include "tools/showmess/ShowMessOptions.h"

namespace {

int Fail(const std::string& message)
{
    std::fprintf(stderr, "showmess: %s\n", message.c_str());
    return 1;
}

std::string Narrow(const std::wstring& text)
{
    int size = ::WideCharToMultiByte(CP_UTF8, 0, text.c_str(), -1, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<size_t>(size > 0 ? size : 1), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, text.c_str(), -1, &result[0], size, nullptr, nullptr);
    result.resize(result.size() - 1);
    return result;
}

bool RestoreWindow()
{
    HWND window = ::FindWindowW(kMessageWindowClass, nullptr);
    if (window == nullptr)
        return false;
    ::ShowWindow(window, SW_RESTORE);
    ::SetForegroundWindow(window);
    return true;
}

bool WaitWhileWindowExists(HWND window, DWORD timeoutMs)
{
    const DWORD start = ::GetTickCount();
    while (::IsWindow(window)) {
        if (::GetTickCount() - start > timeoutMs)
            return false;
        ::Sleep(50);
    }
    return true;
}

// Closing runs the window's destroy handler, which writes the pending lines.
// The process lingers a second after its window (calls in progress finish)
// and holds the single-instance mutex until it ends, so wait for the process.
int CloseWindow()
{
    HWND window = ::FindWindowW(kMessageWindowClass, nullptr);
    if (window == nullptr)
        return Fail("no message window is running (no window of class OrielMessWnd)");
    DWORD processId = 0;
    ::GetWindowThreadProcessId(window, &processId);
    HANDLE process = ::OpenProcess(SYNCHRONIZE, FALSE, processId);
    const bool closed = ::PostMessageW(window, WM_CLOSE, 0, 0) &&
                        (process != nullptr ? ::WaitForSingleObject(process, 15000) == WAIT_OBJECT_0
                                            : WaitWhileWindowExists(window, 15000));
    if (process != nullptr)
        ::CloseHandle(process);
    return closed ? 0 : Fail("the message window did not close");
}

double Seconds(const LARGE_INTEGER& from, const LARGE_INTEGER& to)
{
    LARGE_INTEGER frequency;
    ::QueryPerformanceFrequency(&frequency);
    return static_cast<double>(to.QuadPart - from.QuadPart) / static_cast<double>(frequency.QuadPart);
}

// Numbered lines, paced to `rate` per second when one is given; reports the
// rate achieved on standard output.
int SendCounted(LineSender& sender, const ShowMessOptions& options)
{
    LARGE_INTEGER start, now;
    ::QueryPerformanceCounter(&start);
    std::string error;
    for (unsigned i = 1; i <= options.count; ++i) {
        if (options.rate > 0) {
            const double due = (i - 1) / options.rate;
            for (::QueryPerformanceCounter(&now); Seconds(start, now) < due;
                 ::QueryPerformanceCounter(&now))
                ::Sleep(static_cast<DWORD>((due - Seconds(start, now)) * 1000));
        }
        if (!sender.Send(NumberedLine(options, i), error))
            return Fail(error + " (line " + std::to_string(i) + ")");
    }
    ::QueryPerformanceCounter(&now);
    const double seconds = Seconds(start, now);
    std::printf("showmess: %u lines in %.3f s (%.0f lines/s)\n", options.count, seconds,
                seconds > 0 ? options.count / seconds : 0.0);
    return 0;
}

int SendStandardInput(LineSender& sender)
{
    _setmode(_fileno(stdin), _O_BINARY);
    LineSplitter splitter;
    std::string error;
    char buffer[4096];
    size_t read;
    while ((read = std::fread(buffer, 1, sizeof buffer, stdin)) > 0) {
        for (const std::wstring& line : splitter.Feed(buffer, read)) {
            if (!sender.Send(line, error))
                return Fail(error + ": " + Narrow(line));
        }
    }
    std::wstring last;
    if (splitter.Finish(last) && !sender.Send(last, error))
        return Fail(error + ": " + Narrow(last));
    return 0;
}


int SendTexts(LineSender& sender, const std::vector<std::wstring>& texts)
{
    std::string error;
    for (const std::wstring& text : texts) {
        if (!sender.Send(text, error))
            return Fail(error + ": " + Narrow(text));
    }
    return 0;
}

int SendLines(const ShowMessOptions& options)
{
    std::unique_ptr<LineSender> sender;
    std::string error;
    if (options.useAtom) {
        auto atoms = std::make_unique<AtomSender>();
        if (!atoms->Connect(error))
            return Fail(error);
        sender = std::move(atoms);
    } else {
        auto component = std::make_unique<ComSender>();
        if (!component->Connect(error))
            return Fail(error);
        sender = std::move(component);
    }

    int result = 0;
    if (options.count > 0)
        result = SendCounted(*sender, options);
    else if (options.texts.empty())
        result = SendStandardInput(*sender);
    else
        result = SendTexts(*sender, options.texts);
    if (result == 0 && options.hold)
        WaitWhileWindowExists(::FindWindowW(kMessageWindowClass, nullptr), INFINITE);
    return result;
}

} // namespace

int wmain(int argc, wchar_t** argv)
{
    ShowMessOptions options;
    std::wstring optionError;
    if (!ParseShowMessOptions(std::vector<std::wstring>(argv + 1, argv + argc), options,
                              optionError)) {
        std::fprintf(stderr, "showmess: %s\n\n%s", Narrow(optionError).c_str(), kShowMessUsage);
        return 2;
    }
    if (options.help) {
        std::fputs(kShowMessUsage, stdout);
        return 0;
    }
    if (options.show && !RestoreWindow())
        return Fail("no message window is running (no window of class OrielMessWnd)");
    const bool nothingToSend = options.texts.empty() && options.count == 0;
    int result = 0;
    if (!(nothingToSend && (options.show || options.close)))
        result = SendLines(options);
    if (result == 0 && options.close)
        result = CloseWindow();
    return result;
}

