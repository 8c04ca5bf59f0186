#include "support/ResourceText.h"

#include "support/TestFiles.h"
#include "winlayer/Resources.h"

namespace testing_support {

HMODULE UseEnglishModule()
{
    static const HMODULE english = ::LoadLibraryW((InstallDir() + L"\\Lang\\EN\\OrielEN.dll").c_str());
    winlayer::SetResourceModule(english);
    return english;
}

std::wstring ResourceText(UINT id)
{
    wchar_t text[512];
    winlayer::LoadText(id, text, 512);
    return text;
}

} // namespace testing_support
