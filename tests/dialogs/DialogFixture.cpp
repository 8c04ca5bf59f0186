#include "DialogFixture.h"

#include <objbase.h>

#include "winlayer/Resources.h"

HMODULE DialogFixture::english = nullptr;

void DialogFixture::SetUpTestSuite()
{
    ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    english = ::LoadLibraryW((testing_support::InstallDir() + L"\\Lang\\EN\\OrielEN.dll").c_str());
    ASSERT_NE(nullptr, english);
    winlayer::SetResourceModule(english);
}

void DialogFixture::TearDownTestSuite()
{
    winlayer::SetResourceModule(nullptr);
    ::FreeLibrary(english);
    ::CoUninitialize();
}

std::wstring DialogFixture::Text(UINT id)
{
    wchar_t text[512];
    winlayer::LoadText(id, text, 512);
    return text;
}

std::wstring DialogFixture::Text(UINT id, const std::wstring& argument)
{
    wchar_t text[1024];
    winlayer::FormatText(text, 1024, Text(id).c_str(), argument.c_str());
    return text;
}

std::wstring DialogFixture::Box(UINT captionId, const std::wstring& text, const wchar_t* icon,
                                const wchar_t* buttons)
{
    return Text(captionId) + L"|" + text + L"|" + icon + L"|" + buttons;
}

DialogScript::Step DialogFixture::ExpectBox(const std::wstring& expected, int answer)
{
    return [expected, answer](HWND box) {
        EXPECT_EQ(expected, IsMessageBox(box) ? DescribeBox(box) : L"no message box");
        Click(box, answer);
    };
}
