#include "DialogFixture.h"

#include <objbase.h>

#include "lang/ResourceIds.h"
#include "support/ResourceText.h"
#include "winlayer/Resources.h"

namespace {

class EnglishDialogs : public ::testing::Environment {
public:
    void SetUp() override
    {
        ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        testing_support::UseEnglishModule();
    }
    void TearDown() override { ::CoUninitialize(); }
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

DialogScript::Step ExpectBox(UINT captionId, const std::wstring& text, const wchar_t* icon,
                             int answer)
{
    // Questions offer Cancel; the rest only report.
    const std::wstring buttons = icon == std::wstring(L"question") ? L"|ok cancel" : L"|ok";
    const std::wstring expected =
        (captionId != 0 ? Text(captionId) : L"") + L"|" + text + L"|" + icon + buttons;
    return [expected, answer](HWND box) {
        EXPECT_EQ(expected, testing_support::IsMessageBox(box) ? testing_support::DescribeBox(box)
                                                               : L"no message box");
        Click(box, answer);
    };
}

DialogScript::Step ExpectCreateQuestion(const std::wstring& path, int answer)
{
    return ExpectBox(IDS_SAVEPATH_CREATE_CAPTION, Text(IDS_SAVEPATH_CREATE_ASK, path), L"question",
                     answer);
}

DialogScript::Step TypeAndOk(int id, const std::wstring& text)
{
    return [id, text](HWND dialog) {
        Type(dialog, id, text);
        Click(dialog, IDOK);
    };
}
