#include "FaultServer.h"

#include "../intake/ServerInstallation.h"
#include "ProcessBoxes.h"

FaultServer::FaultServer(const std::wstring& saveDirectory, int saveTime, int logSize)
    : saveDirectory_(saveDirectory)
{
    // No retention sweep: nothing but the fault may touch the files.
    const std::wstring text = L"[save]\r\nsavedays=0\r\nsavetime=" + std::to_wstring(saveTime) +
                              L"\r\nlogsize=" + std::to_wstring(logSize) +
                              L"\r\nsavedirectory=" + saveDirectory + L"\r\n";
    const std::string bytes(text.begin(), text.end());
    testing_support::WriteFileBytes(ServerInstallation::Dir() + L"\\config\\ShowMess.ini",
                                    std::vector<unsigned char>(bytes.begin(), bytes.end()));
}

FaultServer::~FaultServer() = default;

bool FaultServer::Start(DWORD windowTimeoutMs)
{
    process_ = std::make_unique<testing_support::RunningProcess>(
        ServerInstallation::Quoted(ServerInstallation::Program()));
    window_ = process_->FindWindowOfClass(L"OrielMessWnd", windowTimeoutMs);
    return window_ != nullptr;
}

DWORD FaultServer::Close(std::vector<std::wstring>* boxTexts)
{
    ::PostMessageW(window_, WM_CLOSE, 0, 0);
    const std::vector<ProcessBox> boxes = AnswerBoxes(Id(), 1500);
    if (boxTexts != nullptr)
        *boxTexts = ::TextsOf(boxes);
    return process_->Wait(10000);
}

std::wstring FaultServer::LogFile(const std::wstring& except) const
{
    std::wstring name;
    WIN32_FIND_DATAW found;
    HANDLE search = ::FindFirstFileW((saveDirectory_ + L"\\*.qxl").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            if (except != found.cFileName)
                name = found.cFileName;
        } while (::FindNextFileW(search, &found));
        ::FindClose(search);
    }
    return name.empty() ? name : saveDirectory_ + L"\\" + name;
}

std::wstring LanguageText(UINT id)
{
    static HMODULE module = ::LoadLibraryExW(
        (ServerInstallation::Dir() + L"\\Lang\\CHS\\OrielCHS.dll").c_str(), nullptr,
        LOAD_LIBRARY_AS_DATAFILE);
    wchar_t text[512] = {};
    ::LoadStringW(module, id, text, 512);
    return Trimmed(text);
}

std::wstring SystemText(DWORD code)
{
    return Trimmed(SystemErrorText(code));
}

std::wstring Trimmed(std::wstring text)
{
    while (!text.empty() && (text.back() == L'\r' || text.back() == L'\n' || text.back() == L' '))
        text.pop_back();
    return text;
}

bool WaitForFileSize(const std::wstring& path, size_t size, DWORD timeoutMs)
{
    const DWORD start = ::GetTickCount();
    while (testing_support::ReadFileBytes(path).size() != size) {
        if (::GetTickCount() - start >= timeoutMs)
            return false;
        ::Sleep(50);
    }
    return true;
}

std::vector<std::wstring> TextsOf(const DecodedLog& log)
{
    std::vector<std::wstring> texts;
    for (const DecodedRecord& record : log.records)
        texts.push_back(record.text);
    return texts;
}
