#pragma once
#include <windows.h>
#include <string>
#include <vector>

namespace testing_support {

// The installation folder the build produced, as a Windows path.
std::wstring InstallDir();

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

// Starts a program and waits for it; returns its exit code, or a negative
// sentinel (0x7fffffff) when it did not end within the time.
DWORD RunProcess(const std::wstring& commandLine, DWORD timeoutMs);

} // namespace testing_support
