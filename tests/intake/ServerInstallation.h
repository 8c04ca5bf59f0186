#pragma once
#include <windows.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "Oriel.h"
#include "support/LogFileDecoder.h"
#include "support/TestFiles.h"

// A copy of the installation folder in a temporary directory, registered as
// the ShowMess server (with its proxy/stub) for the whole test program and
// unregistered at the end.  Each case gets a fresh save directory.
class ServerInstallation {
public:
    static void Register();
    static void Unregister();

    static std::wstring Dir();
    static std::wstring Program() { return Dir() + L"\\Oriel.exe"; }
    static std::wstring Quoted(const std::wstring& path) { return L"\"" + path + L"\""; }

    // Points "savedirectory" at a new empty folder, with no timed flush.
    static void UseFreshSaveDirectory();
    // The records of the newest log file in the current save directory.
    static DecodedLog NewestLog();
};

// Registers the installation for a whole test program, in a single-threaded
// apartment: add it with ::testing::AddGlobalTestEnvironment.
class ServerInstallationEnvironment : public ::testing::Environment {
public:
    void SetUp() override
    {
        ::CoInitialize(nullptr);
        ServerInstallation::Register();
    }
    void TearDown() override
    {
        ServerInstallation::Unregister();
        ::CoUninitialize();
    }
};

// The running message window of a server, found by its class.
HWND FindMessageWindow(DWORD timeoutMs);
// The process that owns the message window, opened for waiting.
HANDLE OpenServerProcess(HWND window);
// Waits for a process handle; its exit code, or testing_support::kStillRunning.
DWORD WaitForExit(HANDLE process, DWORD timeoutMs);

// The atom road as a sender uses it; the window's result.
LRESULT SendAtomLine(HWND window, const std::wstring& text);

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
