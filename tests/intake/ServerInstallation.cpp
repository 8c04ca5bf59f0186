#include "msgwnd/MessAtom.h"
#include "ServerInstallation.h"

#include <stdexcept>

using testing_support::kStillRunning;

namespace {

// Set up once for the program: copying the folder and registering take a
// second or two, and every case uses the same registered server.
std::unique_ptr<testing_support::TempDir> installation;
std::unique_ptr<testing_support::TempDir> saveDirectory;

void Require(bool condition, const char* what)
{
    if (!condition)
        throw std::runtime_error(what);
}

void WriteSettings(const std::wstring& directory)
{
    std::wstring text = L"[save]\r\nsavedays=10\r\nsavetime=600\r\nlogsize=10\r\nsavedirectory=" +
                        directory + L"\r\n";
    std::string bytes(text.begin(), text.end());
    testing_support::WriteFileBytes(ServerInstallation::Dir() + L"\\config\\ShowMess.ini",
                                    std::vector<unsigned char>(bytes.begin(), bytes.end()));
}

} // namespace

void ServerInstallation::Register()
{
    installation = std::make_unique<testing_support::TempDir>();
    testing_support::CopyTree(testing_support::InstallDir(), Dir());
    Require(testing_support::RunProcess(Quoted(Program()) + L" /RegServer", 20000) == 0,
            "Oriel.exe /RegServer failed");
    Require(testing_support::RunProcess(L"regsvr32 /s " + Quoted(Dir() + L"\\OrielPS.dll"), 20000) == 0,
            "regsvr32 OrielPS.dll failed");
}

void ServerInstallation::Unregister()
{
    testing_support::RunProcess(Quoted(Program()) + L" /UnregServer", 20000);
    testing_support::RunProcess(L"regsvr32 /s /u " + Quoted(Dir() + L"\\OrielPS.dll"), 20000);
    saveDirectory.reset();
    installation.reset();
}

std::wstring ServerInstallation::Dir()
{
    return installation->Path();
}

void ServerInstallation::UseFreshSaveDirectory()
{
    saveDirectory = std::make_unique<testing_support::TempDir>();
    WriteSettings(saveDirectory->Path());
}

DecodedLog ServerInstallation::NewestLog()
{
    // Names are minutes, YYMMDDHHmm.qxl: the greatest name is the newest.
    std::wstring newest;
    WIN32_FIND_DATAW found;
    HANDLE search = ::FindFirstFileW((saveDirectory->Path() + L"\\*.qxl").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            if (newest < found.cFileName)
                newest = found.cFileName;
        } while (::FindNextFileW(search, &found));
        ::FindClose(search);
    }
    Require(!newest.empty(), "no log file in the save directory");
    return DecodeLog(testing_support::ReadFileBytes(saveDirectory->Path() + L"\\" + newest));
}

HWND FindMessageWindow(DWORD timeoutMs)
{
    const DWORD start = ::GetTickCount();
    for (;;) {
        HWND window = ::FindWindowW(L"OrielMessWnd", nullptr);
        if (window != nullptr || ::GetTickCount() - start >= timeoutMs)
            return window;
        ::Sleep(20);
    }
}

HANDLE OpenServerProcess(HWND window)
{
    DWORD processId = 0;
    ::GetWindowThreadProcessId(window, &processId);
    return ::OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, processId);
}

DWORD WaitForExit(HANDLE process, DWORD timeoutMs)
{
    DWORD exitCode = kStillRunning;
    if (::WaitForSingleObject(process, timeoutMs) == WAIT_OBJECT_0)
        ::GetExitCodeProcess(process, &exitCode);
    return exitCode;
}

LRESULT SendAtomLine(HWND window, const std::wstring& text)
{
    ATOM atom = ::GlobalAddAtomW(text.c_str());
    LRESULT result = ::SendMessageW(window, WM_MESSATOM, atom, 0);
    ::GlobalDeleteAtom(atom);
    return result;
}
