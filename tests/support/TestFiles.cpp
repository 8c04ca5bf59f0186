#include "support/TestFiles.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace testing_support {

std::wstring WindowsPath(const std::string& unixPath)
{
    std::wstring path = L"Z:";
    for (char c : unixPath)
        path += c == '/' ? L'\\' : static_cast<wchar_t>(c);
    return path;
}

std::wstring PathFromEnvironment(const char* variable)
{
    const char* unixPath = std::getenv(variable);
    return unixPath != nullptr && *unixPath != '\0' ? WindowsPath(unixPath) : std::wstring();
}

std::wstring InstallDir()
{
    const std::wstring path = PathFromEnvironment("ORIEL_INSTALL_DIR");
    if (path.empty())
        throw std::runtime_error("ORIEL_INSTALL_DIR is not set");
    return path;
}

bool WaitUntil(const std::function<bool()>& done, DWORD timeoutMs)
{
    const ULONGLONG deadline = ::GetTickCount64() + timeoutMs;
    for (;;) {
        if (done())
            return true;
        if (::GetTickCount64() >= deadline)
            return false;
        MSG message;
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            ::TranslateMessage(&message);
            ::DispatchMessageW(&message);
        }
        ::Sleep(10);
    }
}

void WriteSaveSettings(const std::wstring& path, const std::wstring& keys)
{
    const std::wstring text = L"\xFEFF[save]\r\n" + keys;
    std::vector<unsigned char> bytes;
    for (wchar_t unit : text) {
        bytes.push_back(static_cast<unsigned char>(unit & 0xFF));
        bytes.push_back(static_cast<unsigned char>(unit >> 8));
    }
    WriteFileBytes(path, bytes);
}

std::wstring SaveKeys(const std::wstring& directory, int savedays, int savetime, int logsize)
{
    return L"savedays=" + std::to_wstring(savedays) + L"\r\nsavetime=" + std::to_wstring(savetime) +
           L"\r\nlogsize=" + std::to_wstring(logsize) + L"\r\nsavedirectory=" + directory + L"\r\n";
}

TempDir::TempDir()
{
    wchar_t base[MAX_PATH];
    ::GetTempPathW(MAX_PATH, base);
    static unsigned counter = 0;
    for (;;) {
        path_ = std::wstring(base) + L"oriel-test-" + std::to_wstring(::GetCurrentProcessId()) +
                L"-" + std::to_wstring(++counter);
        if (::CreateDirectoryW(path_.c_str(), nullptr))
            break;
    }
}

TempDir::~TempDir()
{
    RemoveTree(path_);
}

void RemoveTree(const std::wstring& path)
{
    WIN32_FIND_DATAW found;
    HANDLE search = ::FindFirstFileW((path + L"\\*").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            std::wstring name = found.cFileName;
            if (name == L"." || name == L"..")
                continue;
            std::wstring child = path + L"\\" + name;
            if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
                RemoveTree(child);
            } else {
                ::SetFileAttributesW(child.c_str(), FILE_ATTRIBUTE_NORMAL);
                ::DeleteFileW(child.c_str());
            }
        } while (::FindNextFileW(search, &found));
        ::FindClose(search);
    }
    ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    ::RemoveDirectoryW(path.c_str());
}

void CopyTree(const std::wstring& from, const std::wstring& to)
{
    ::CreateDirectoryW(to.c_str(), nullptr);
    WIN32_FIND_DATAW found;
    HANDLE search = ::FindFirstFileW((from + L"\\*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return;
    do {
        std::wstring name = found.cFileName;
        if (name == L"." || name == L"..")
            continue;
        if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
            CopyTree(from + L"\\" + name, to + L"\\" + name);
        else
            ::CopyFileW((from + L"\\" + name).c_str(), (to + L"\\" + name).c_str(), FALSE);
    } while (::FindNextFileW(search, &found));
    ::FindClose(search);
}

void WriteFileBytes(const std::wstring& path, const std::vector<unsigned char>& bytes)
{
    HANDLE file = ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        throw std::runtime_error("cannot create test file");
    DWORD written = 0;
    if (!bytes.empty())
        ::WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    ::CloseHandle(file);
}

std::vector<unsigned char> ReadFileBytes(const std::wstring& path)
{
    std::vector<unsigned char> bytes;
    HANDLE file = ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return bytes;
    LARGE_INTEGER size;
    ::GetFileSizeEx(file, &size);
    bytes.resize(static_cast<size_t>(size.QuadPart));
    DWORD read = 0;
    if (!bytes.empty())
        ::ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr);
    bytes.resize(read);
    ::CloseHandle(file);
    return bytes;
}

bool FileExists(const std::wstring& path)
{
    return ::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

DWORD RunProcess(const std::wstring& commandLine, DWORD timeoutMs)
{
    RunningProcess process(commandLine);
    return process.Wait(timeoutMs);
}

RunningProcess::RunningProcess(const std::wstring& commandLine)
{
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    // Wine has once refused to start a program copied a moment before, in a
    // new prefix; a second attempt a little later starts it.
    for (int attempt = 1;; ++attempt) {
        std::wstring line = commandLine;
        if (::CreateProcessW(nullptr, &line[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                             &startup, &info_))
            return;
        const DWORD error = ::GetLastError();
        if (attempt == 3)
            throw std::runtime_error("cannot start process, error " + std::to_string(error));
        ::Sleep(200);
    }
}

RunningProcess::~RunningProcess()
{
    if (Wait(0) == kStillRunning)
        ::TerminateProcess(info_.hProcess, kStillRunning);
    ::CloseHandle(info_.hThread);
    ::CloseHandle(info_.hProcess);
}

DWORD RunningProcess::Wait(DWORD timeoutMs)
{
    DWORD exitCode = kStillRunning;
    if (::WaitForSingleObject(info_.hProcess, timeoutMs) == WAIT_OBJECT_0)
        ::GetExitCodeProcess(info_.hProcess, &exitCode);
    return exitCode;
}

std::vector<HWND> WindowsOf(DWORD processId, const wchar_t* className)
{
    struct Search {
        DWORD processId;
        const wchar_t* className;
        std::vector<HWND> found;
    } search = {processId, className, {}};
    ::EnumWindows(
        [](HWND window, LPARAM param) {
            auto* s = reinterpret_cast<Search*>(param);
            DWORD owner = 0;
            ::GetWindowThreadProcessId(window, &owner);
            wchar_t name[128] = {};
            ::GetClassNameW(window, name, 128);
            if (owner == s->processId && std::wstring(name) == s->className)
                s->found.push_back(window);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND RunningProcess::FindWindowOfClass(const wchar_t* className, DWORD timeoutMs) const
{
    const ULONGLONG deadline = ::GetTickCount64() + timeoutMs;
    for (;;) {
        const std::vector<HWND> found = WindowsOf(info_.dwProcessId, className);
        if (!found.empty() || ::GetTickCount64() >= deadline)
            return found.empty() ? nullptr : found.front();
        if (::WaitForSingleObject(info_.hProcess, 50) == WAIT_OBJECT_0)
            return nullptr;
    }
}

} // namespace testing_support
