#pragma once
#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "support/LogFileDecoder.h"
#include "support/TestFiles.h"

// The installed program (the registered copy of ServerInstallation) run on
// a save directory of the test's choosing, with its settings written first.
class FaultServer {
public:
    FaultServer(const std::wstring& saveDirectory, int saveTime, int logSize);
    ~FaultServer();

    // Starts the program; false when its window did not appear in time.
    bool Start(DWORD windowTimeoutMs = 10000);
    DWORD Id() const { return process_->Id(); }
    HWND Window() const { return window_; }
    testing_support::RunningProcess& Process() { return *process_; }
    // Closes the window, answering every box on the way; the exit code and
    // the texts of the boxes answered.
    DWORD Close(std::vector<std::wstring>* boxTexts = nullptr);

    // The one log file of the save directory whose name is not `except`.
    std::wstring LogFile(const std::wstring& except = L"") const;

private:
    std::wstring saveDirectory_;
    std::unique_ptr<testing_support::RunningProcess> process_;
    HWND window_ = nullptr;
};

// Text `id` of the language module the program uses here (no language file:
// the Chinese one), as its boxes show it.
std::wstring LanguageText(UINT id);
// The platform's text for an error code, as the program's boxes show it.
std::wstring SystemText(DWORD code);
// Without trailing line breaks and blanks, as a static control may keep them.
std::wstring Trimmed(std::wstring text);

// Waits until the file is `size` bytes long; false after the time.
bool WaitForFileSize(const std::wstring& path, size_t size, DWORD timeoutMs);
std::vector<std::wstring> TextsOf(const DecodedLog& log);
