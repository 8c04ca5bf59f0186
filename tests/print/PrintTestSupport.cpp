#include "PrintTestSupport.h"

#include <cstdlib>
#include <fstream>
#include <regex>
#include <sstream>

#include "support/LogFileDecoder.h"
#include "support/TestFiles.h"
#include "winlayer/Resources.h"

HMODULE PrintFixture::english = nullptr;
HWND PrintFixture::owner = nullptr;
DWORD PrintFixture::uiThread = 0;
int PrintFixture::printouts = 0;

namespace {

struct DialogSearch {
    HWND except;
    HWND found;
};

BOOL CALLBACK FindDialog(HWND window, LPARAM param)
{
    auto* search = reinterpret_cast<DialogSearch*>(param);
    wchar_t className[16] = {};
    ::GetClassNameW(window, className, 16);
    if (window != search->except && std::wstring(className) == L"#32770" &&
        ::IsWindowVisible(window) && ::GetDlgItem(window, 0xFFFF) == nullptr) {
        search->found = window;
        return FALSE;
    }
    return TRUE;
}

BOOL CALLBACK FindNameEdit(HWND child, LPARAM param)
{
    wchar_t className[16] = {};
    ::GetClassNameW(child, className, 16);
    if (std::wstring(className) == L"Edit" &&
        ::GetDlgCtrlID(::GetParent(child)) == 0x47C) {
        *reinterpret_cast<HWND*>(param) = child;
        return FALSE;
    }
    return TRUE;
}

// The Windows name of a Unix path (Wine maps / to Z:).
std::wstring WindowsPath(const std::string& unixPath)
{
    std::wstring path = L"Z:";
    for (char c : unixPath)
        path += c == '/' ? L'\\' : static_cast<wchar_t>(c);
    return path;
}

std::wstring Widen(const std::string& text)
{
    return std::wstring(text.begin(), text.end());
}

std::vector<std::vector<PrintedWord>> ParseWords(const std::wstring& htmlPath)
{
    std::vector<std::vector<PrintedWord>> pages;
    std::ifstream html(htmlPath.c_str());
    const std::regex word(
        R"re(<word xMin="([-0-9.]+)" yMin="([-0-9.]+)" xMax="([-0-9.]+)" yMax="([-0-9.]+)">(.*)</word>)re");
    std::string line;
    while (std::getline(html, line)) {
        std::smatch match;
        if (line.find("<page ") != std::string::npos)
            pages.emplace_back();
        else if (std::regex_search(line, match, word) && !pages.empty())
            pages.back().push_back({std::stod(match[1]), std::stod(match[2]), std::stod(match[3]),
                                    std::stod(match[4]), Widen(match[5])});
    }
    return pages;
}

} // namespace

HWND WaitForDialog(DWORD threadId, HWND except, DWORD timeoutMs)
{
    const DWORD start = ::GetTickCount();
    do {
        DialogSearch search{except, nullptr};
        ::EnumThreadWindows(threadId, &FindDialog, reinterpret_cast<LPARAM>(&search));
        if (search.found != nullptr)
            return search.found;
        ::Sleep(20);
    } while (::GetTickCount() - start < timeoutMs);
    return nullptr;
}

void PostClick(HWND dialog, int id)
{
    ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                   reinterpret_cast<LPARAM>(::GetDlgItem(dialog, id)));
}

void AnswerFileDialog(HWND dialog, const std::wstring& name)
{
    HWND edit = nullptr;
    ::EnumChildWindows(dialog, &FindNameEdit, reinterpret_cast<LPARAM>(&edit));
    ASSERT_NE(nullptr, edit);
    ::SendMessageW(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name.c_str()));
    PostClick(dialog, IDOK);
}

SYSTEMTIME TestStamp(int seconds, int milliseconds)
{
    SYSTEMTIME stamp = {2026, 3, 2, 3, 10, 0, 0, 0};
    stamp.wHour = static_cast<WORD>(10 + seconds / 3600);
    stamp.wMinute = static_cast<WORD>(seconds / 60 % 60);
    stamp.wSecond = static_cast<WORD>(seconds % 60);
    stamp.wMilliseconds = static_cast<WORD>(milliseconds);
    return stamp;
}

void PrintFixture::SetUpTestSuite()
{
    english = ::LoadLibraryW((testing_support::InstallDir() + L"\\Lang\\EN\\OrielEN.dll").c_str());
    ASSERT_NE(nullptr, english);
    winlayer::SetResourceModule(english);
    owner = ::CreateWindowExW(0, L"STATIC", L"Oriel print test", WS_OVERLAPPEDWINDOW, 0, 0, 400,
                              300, nullptr, nullptr, ::GetModuleHandleW(nullptr), nullptr);
    ASSERT_NE(nullptr, owner);
    uiThread = ::GetCurrentThreadId();
}

void PrintFixture::TearDownTestSuite()
{
    ::DestroyWindow(owner);
    winlayer::SetResourceModule(nullptr);
    ::FreeLibrary(english);
}

void PrintFixture::SetUp()
{
    wchar_t base[MAX_PATH];
    ::GetTempPathW(MAX_PATH, base);
    for (int i = 0;; ++i) {
        tempDir_ = std::wstring(base) + L"oriel-print-" + std::to_wstring(::GetCurrentProcessId()) +
                   L"-" + std::to_wstring(i);
        if (::CreateDirectoryW(tempDir_.c_str(), nullptr))
            break;
    }
    dir = tempDir_;
}

void PrintFixture::TearDown()
{
    testing_support::RemoveTree(tempDir_);
}

std::wstring PrintFixture::WriteLog(const std::wstring& name, size_t count, size_t tail)
{
    std::vector<unsigned char> image = MakeLogImage(L"7.000000", count, tail);
    for (size_t i = 0; i < count; ++i)
        PutLogRecord(image, i, L"record " + std::to_wstring(i), TestStamp(static_cast<int>(i)));
    const std::wstring path = dir + L"\\" + name;
    testing_support::WriteFileBytes(path, image);
    return path;
}

bool PrintFixture::HavePrinter()
{
    return std::getenv("ORIEL_PRINT_OUT") != nullptr && std::getenv("ORIEL_PRINT_COLLECT") != nullptr;
}

Printout PrintFixture::CollectPrintout(bool expectJob)
{
    const std::string out = std::getenv("ORIEL_PRINT_OUT");
    const std::string name = "printout" + std::to_string(++printouts);
    std::wstring command = L"/bin/sh " + Widen(std::getenv("ORIEL_PRINT_COLLECT")) + L" " +
                           Widen(out) + L" " + Widen(name) + (expectJob ? L" 1" : L" 0");
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process = {};
    Printout printout;
    if (!::CreateProcessW(nullptr, &command[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                          &startup, &process)) {
        ADD_FAILURE() << "cannot start the collecting script";
        return printout;
    }
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
    const std::wstring base = WindowsPath(out + "/" + name);
    for (int i = 0; i < 400 && !testing_support::FileExists(base + L".done"); ++i)
        ::Sleep(100);
    if (!testing_support::FileExists(base + L".done")) {
        ADD_FAILURE() << "the printer did not finish within 40 s";
        return printout;
    }
    printout.exists = testing_support::FileExists(base + L".pdf");
    if (!printout.exists)
        return printout;
    std::ifstream info((base + L".info").c_str());
    std::string line;
    while (std::getline(info, line))
        if (line.rfind("Pages:", 0) == 0)
            printout.pages = std::stoi(line.substr(6));
    printout.words = ParseWords(base + L".html");
    return printout;
}
