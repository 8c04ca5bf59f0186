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

// The class of the program's main window.
constexpr wchar_t kMessWndClass[] = L"OrielMessWnd";

// The newest log file in `directory` by the minute in its name; empty when
// there is none.
std::wstring NewestLogFile(const std::wstring& directory);
std::vector<std::wstring> LogTexts(const std::wstring& path);

// The atom road as a sender uses it: the atom is deleted once the window has
// answered; the window's result.
LRESULT SendAtomLine(HWND window, const std::wstring& text);

// A ShowMess object of the local server, released by the object.
class ShowMessClient {
public:
    ShowMessClient()
        : created_(::CoCreateInstance(CLSID_ShowMess, nullptr, CLSCTX_LOCAL_SERVER, IID_IShowMess,
                                      reinterpret_cast<void**>(&object_)))
    {
    }
    ~ShowMessClient()
    {
        if (object_ != nullptr)
            object_->Release();
    }
    ShowMessClient(const ShowMessClient&) = delete;
    ShowMessClient& operator=(const ShowMessClient&) = delete;

    HRESULT created() const { return created_; }
    HRESULT Show(const std::wstring& text)
    {
        return object_->ShowMessage(reinterpret_cast<unsigned short*>(const_cast<wchar_t*>(text.c_str())));
    }

private:
    IShowMess* object_ = nullptr;  // before created_: the creation fills it
    HRESULT created_;
};
