#include "PrintTestSupport.h"

#include <cstdlib>
#include <fstream>
#include <regex>
#include <sstream>

#include "support/LogFileDecoder.h"
#include "winlayer/Resources.h"

HMODULE PrintFixture::english = nullptr;
int PrintFixture::printouts = 0;

namespace {

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
}

void PrintFixture::TearDownTestSuite()
{
    winlayer::SetResourceModule(nullptr);
    ::FreeLibrary(english);
}

std::wstring PrintFixture::WriteLog(const std::wstring& name, size_t count)
{
    std::vector<unsigned char> image = MakeLogImage(L"7.000000", count);
    for (size_t i = 0; i < count; ++i)
        PutLogRecord(image, i, L"record " + std::to_wstring(i), TestStamp(static_cast<int>(i)));
    testing_support::WriteFileBytes(dir / name, image);
    return dir / name;
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
