#include "print/FieldCodes.h"

#include <algorithm>
#include <cwchar>

#include "lang/ResourceIds.h"

const wchar_t* FieldCodeForCommand(int command)
{
    switch (command) {
    case IDM_CODE_FILE: return L"&F";
    case IDM_CODE_PAGE: return L"&P";
    case IDM_CODE_DATE: return L"&D";
    case IDM_CODE_TIME: return L"&T";
    case IDM_CODE_LEFT: return L"&L";
    case IDM_CODE_CENTER: return L"&C";
    case IDM_CODE_RIGHT: return L"&R";
    default: return nullptr;
    }
}

bool InsertFieldCode(const wchar_t* text, int start, int end, const wchar_t* code,
                     wchar_t (&out)[kFieldTextUnits])
{
    if (start < 0 || end < 0 || start > end)
        return false;
    const int length = static_cast<int>(std::wcslen(text));
    const int codeLength = std::min(static_cast<int>(std::wcslen(code)), kFieldTextUnits);
    const int head = std::min(start, length);
    const int restStart = std::min(end, length);
    const int rest = std::max(0, std::min(length - restStart, kFieldTextUnits - end - 2 * codeLength));
    // Room for the whole text and a code; the result is cut at the box's size.
    wchar_t built[2 * kFieldTextUnits] = {};
    std::wmemcpy(built, text, head);
    std::wmemcpy(built + head, code, codeLength);
    std::wmemcpy(built + head + codeLength, text + restStart, rest);
    built[kFieldTextUnits - 1] = L'\0';
    std::wmemcpy(out, built, kFieldTextUnits);
    return true;
}
