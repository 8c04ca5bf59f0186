#include "DialogFixture.h"

#include "support/ResourceText.h"

#include <objbase.h>

#include "winlayer/Resources.h"

namespace {

class EnglishDialogs : public ::testing::Environment {
public:
    void SetUp() override
    {
        ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        module_ = ::LoadLibraryW((testing_support::InstallDir() + L"\\Lang\\EN\\OrielEN.dll").c_str());
        ASSERT_NE(nullptr, module_);
        winlayer::SetResourceModule(module_);
    }
    void TearDown() override
    {
        winlayer::SetResourceModule(nullptr);
        ::FreeLibrary(module_);
        ::CoUninitialize();
    }

private:
    HMODULE module_ = nullptr;
};

const auto* const environment = ::testing::AddGlobalTestEnvironment(new EnglishDialogs);

} // namespace

std::wstring Text(UINT id)
{
    return testing_support::ResourceText(id);
}

std::wstring Text(UINT id, const std::wstring& argument)
{
    wchar_t text[1024];
    winlayer::FormatText(text, 1024, Text(id).c_str(), argument.c_str());
    return text;
}

std::wstring Box(UINT captionId, const std::wstring& text, const wchar_t* icon,
                 const wchar_t* buttons)
{
    return Text(captionId) + L"|" + text + L"|" + icon + L"|" + buttons;
}

DialogScript::Step ExpectBox(const std::wstring& expected, int answer)
{
    return [expected, answer](HWND box) {
        EXPECT_EQ(expected, IsMessageBox(box) ? DescribeBox(box) : L"no message box");
        Click(box, answer);
    };
}
