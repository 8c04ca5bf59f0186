#include "PrintTestSupport.h"

#include <cstdlib>
#include <fstream>
#include <regex>

#include "support/LogFileDecoder.h"

namespace {

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
    return SYSTEMTIME{2026, 3, 2, 3, static_cast<WORD>(10 + seconds / 3600),
                      static_cast<WORD>(seconds / 60 % 60), static_cast<WORD>(seconds % 60),
                      static_cast<WORD>(milliseconds)};
}

std::wstring PrintFixture::WriteLog(const std::wstring& name, size_t count)
{
    testing_support::WriteFileBytes(dir / name, LogImage(NumberedLines(count)));
    return dir / name;
}

bool HavePrinter()
{
    return std::getenv("ORIEL_PRINT_OUT") != nullptr && std::getenv("ORIEL_PRINT_COLLECT") != nullptr;
}

Printout CollectPrintout(bool expectJob)
{
    static int printouts = 0;
    const std::string out = std::getenv("ORIEL_PRINT_OUT");
    const std::string name = "printout" + std::to_string(++printouts);
    const std::wstring command = L"/bin/sh " + Widen(std::getenv("ORIEL_PRINT_COLLECT")) + L" " +
                           Widen(out) + L" " + Widen(name) + (expectJob ? L" 1" : L" 0");
    // Wine cannot wait for a Unix program: the script's end shows as a file.
    const testing_support::RunningProcess collector(command);
    Printout printout;
    const std::wstring base = testing_support::WindowsPath(out + "/" + name);
    for (int i = 0; i < 400 && !testing_support::FileExists(base + L".done"); ++i)
        ::Sleep(100);
    if (!testing_support::FileExists(base + L".done")) {
        ADD_FAILURE() << "the printer did not finish within 40 s";
        return printout;
    }
    printout.exists = testing_support::FileExists(base + L".pdf");
    if (printout.exists)
        printout.words = ParseWords(base + L".html");
    return printout;
}
