#include "tools/qxltool/TextFilter.h"

#include <algorithm>

bool TextFilter::Set(const std::wstring& grep, const std::wstring& regex, std::wstring& error)
{
    grep_ = grep;
    regex_.reset();
    if (regex.empty())
        return true;
    try {
        regex_ = std::make_unique<std::wregex>(regex, std::regex::ECMAScript);
    } catch (const std::regex_error&) {
        error = L"'" + regex + L"' is not a valid regular expression";
        return false;
    }
    return true;
}

bool TextFilter::Matches(const wchar_t* text, std::size_t length) const
{
    const wchar_t* end = text + length;
    if (!grep_.empty() && std::search(text, end, grep_.begin(), grep_.end()) == end)
        return false;
    return regex_ == nullptr || std::regex_search(text, end, *regex_);
}
