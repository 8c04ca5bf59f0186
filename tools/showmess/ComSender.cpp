#include "tools/showmess/ComSender.h"

#include <cstdio>

namespace {

std::string Describe(const char* what, HRESULT result)
{
    char text[160];
    std::snprintf(text, sizeof text, "%s (0x%08lX)", what, static_cast<unsigned long>(result));
    return text;
}

} // namespace

ComSender::~ComSender()
{
    if (showMess_ != nullptr)
        showMess_->Release();
    if (initialized_)
        ::CoUninitialize();
}

bool ComSender::Connect(std::string& error)
{
    initialized_ = SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
    CLSID classId;
    HRESULT result = ::CLSIDFromProgID(L"Oriel.ShowMess", &classId);
    if (FAILED(result)) {
        error = Describe("Oriel.ShowMess is not registered (run Oriel.exe /RegServer)", result);
        return false;
    }
    result = ::CoCreateInstance(classId, nullptr, CLSCTX_LOCAL_SERVER, IID_IShowMess,
                                reinterpret_cast<void**>(&showMess_));
    if (FAILED(result)) {
        error = Describe(result == E_NOINTERFACE
                             ? "the message window cannot be reached: IShowMess has no proxy "
                               "(register OrielPS.dll with regsvr32)"
                             : "the message window cannot be reached through COM",
                         result);
        return false;
    }
    return true;
}

bool ComSender::Send(const std::wstring& line, std::string& error)
{
    // The interface takes the text as 16-bit units.
    auto* text = reinterpret_cast<unsigned short*>(const_cast<wchar_t*>(line.c_str()));
    HRESULT result = showMess_->ShowMessage(text);
    if (FAILED(result)) {
        error = Describe("ShowMessage failed; the message window has gone", result);
        return false;
    }
    return true;
}
