#include "support/ResourceText.h"

#include "winlayer/Resources.h"

namespace testing_support {

std::wstring ResourceText(UINT id)
{
    wchar_t text[512];
    winlayer::LoadText(id, text, 512);
    return text;
}

} // namespace testing_support
