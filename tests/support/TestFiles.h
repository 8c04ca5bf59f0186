#pragma once
#include <windows.h>
#include <functional>
#include <string>
#include <vector>

namespace testing_support {

// A Unix path as Wine shows it: the Unix root is drive Z:.
std::wstring WindowsPath(const std::string& unixPath);

// The Windows form of the Unix path in an environment variable; empty when
// the variable is unset or empty.
std::wstring PathFromEnvironment(const char* variable);

// The installation folder the build produced, as a Windows path.
std::wstring InstallDir();

// Polls `done` until it holds, for `timeoutMs` at most, dispatching this
// thread's messages meanwhile (timers of windows under test keep running);
// whether it held.
bool WaitUntil(const std::function<bool()>& done, DWORD timeoutMs);

// A settings file holding the section [save] with `keys` ("name=value"
// lines), in UTF-16 so that any save directory can be named in it.
void WriteSaveSettings(const std::wstring& path, const std::wstring& keys);
// The four "save" keys as WriteSaveSettings takes them.
std::wstring SaveKeys(const std::wstring& directory, int savedays, int savetime, int logsize);

// A fresh directory below the temporary folder, removed with its contents
// when the object goes away.
class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    const std::wstring& Path() const { return path_; }
    std::wstring operator/(const std::wstring& name) const { return path_ + L"\\" + name; }

private:
    std::wstring path_;
};

void RemoveTree(const std::wstring& path);
// Copies a whole directory tree.
void CopyTree(const std::wstring& from, const std::wstring& to);
void WriteFileBytes(const std::wstring& path, const std::vector<unsigned char>& bytes);
std::vector<unsigned char> ReadFileBytes(const std::wstring& path);
bool FileExists(const std::wstring& path);

// The top-level windows of a process with this class, visible or not.
std::vector<HWND> WindowsOf(DWORD processId, const wchar_t* className);

// Exit code RunProcess reports for a program that did not end in time.
constexpr DWORD kStillRunning = 0x7fffffff;

// Starts a program and waits for it; returns its exit code, or kStillRunning
// (after ending it) when it did not end within the time.
DWORD RunProcess(const std::wstring& commandLine, DWORD timeoutMs);

// A program started and left running; ended by the object if still running.
class RunningProcess {
public:
    explicit RunningProcess(const std::wstring& commandLine);
    ~RunningProcess();
    RunningProcess(const RunningProcess&) = delete;
    RunningProcess& operator=(const RunningProcess&) = delete;

    DWORD Id() const { return info_.dwProcessId; }
    // Its exit code, or kStillRunning when it did not end within the time.
    DWORD Wait(DWORD timeoutMs);
    // The first visible or hidden top-level window of the process with this
    // class, waited for up to `timeoutMs`; null when none appeared.
    HWND FindWindowOfClass(const wchar_t* className, DWORD timeoutMs) const;

private:
    PROCESS_INFORMATION info_ = {};
};

} // namespace testing_support
