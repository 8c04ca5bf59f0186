#pragma once
#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "Oriel.h"
#include "support/LogFileDecoder.h"
#include "support/OutsideBoxes.h"
#include "support/TestFiles.h"

// A copy of the installation folder, in a folder whose name is not ASCII
// (plants install below localised folders), that a case may change freely.
class ProgramCopy {
public:
    ProgramCopy();
    ~ProgramCopy();
    ProgramCopy(const ProgramCopy&) = delete;
    ProgramCopy& operator=(const ProgramCopy&) = delete;

    const std::wstring& Dir() const { return dir_; }
    std::wstring operator/(const std::wstring& name) const { return dir_ + L"\\" + name; }
    // The quoted program file, ready for a command line.
    std::wstring Command(const std::wstring& exeName = L"Oriel.exe") const;
    // Runs the program with `arguments` and waits for it; its exit code.
    DWORD Run(const std::wstring& arguments) const;
    // Registers this copy as the ShowMess server with its proxy/stub, as an
    // administrator does by hand; unregistered when the copy goes.
    void Register();
    // The settings file: lines go to `saveDirectory`, no retention sweep.
    void UseSaveDirectory(const std::wstring& saveDirectory, int savetime = 600, int logsize = 10) const;

private:
    testing_support::TempDir base_;
    std::wstring dir_;
    bool registered_ = false;
};

// The copy of the installation folder that this test program registers
// before its first case and unregisters after its last.
ProgramCopy& RegisteredCopy();

// The program started by hand, as the suite's runtime starts it.
class RunningProgram {
public:
    explicit RunningProgram(const ProgramCopy& copy, const std::wstring& exeName = L"Oriel.exe");
    DWORD Id() const { return process_.Id(); }
    testing_support::RunningProcess& Process() { return process_; }
    // Its main window, waited for; null when none appeared.
    HWND Window(DWORD timeoutMs = 10000);
    // Closes the window as a user does, answering every box on the way; the
    // exit code, and the boxes answered when asked.
    DWORD Close(std::vector<ProcessBox>* boxes = nullptr);

private:
    testing_support::RunningProcess process_;
    HWND window_ = nullptr;
};

// The newest log file in `directory` by the minute in its name, other than
// `except`; empty when there is none.
std::wstring NewestLogFile(const std::wstring& directory, const std::wstring& except = L"");
std::vector<std::wstring> TextsOf(const DecodedLog& log);
std::vector<std::wstring> LogTexts(const std::wstring& path);

// The atom road as a sender uses it; the window's result.
LRESULT SendAtomLine(HWND window, const std::wstring& text);

// Text `id` of the Chinese module, the one a copy without a language file uses.
std::wstring ChineseText(UINT id);

// A ShowMess object of the local server, released by the object.
class ShowMessClient {
public:
    ShowMessClient()
        : created_(::CoCreateInstance(CLSID_ShowMess, nullptr, CLSCTX_LOCAL_SERVER, IID_IShowMess,
                                      reinterpret_cast<void**>(&object_)))
    {
    }
    ~ShowMessClient() { Release(); }
    ShowMessClient(const ShowMessClient&) = delete;
    ShowMessClient& operator=(const ShowMessClient&) = delete;

    HRESULT created() const { return created_; }
    HRESULT Show(const std::wstring& text)
    {
        return object_->ShowMessage(reinterpret_cast<unsigned short*>(const_cast<wchar_t*>(text.c_str())));
    }
    IShowMess* get() const { return object_; }
    void Release()
    {
        if (object_ != nullptr)
            object_->Release();
        object_ = nullptr;
    }

private:
    IShowMess* object_ = nullptr;  // before created_: the creation fills it
    HRESULT created_;
};
