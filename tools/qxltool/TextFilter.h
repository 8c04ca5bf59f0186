#pragma once
#include <cstddef>
#include <memory>
#include <regex>
#include <string>

// The text filters of the command line: a plain substring (--grep) and an
// ECMAScript regular expression searched anywhere in the text (--regex).
// A record passes when it matches every filter given; with none, all pass.
class TextFilter {
public:
    // False, with the reason in `error`, when `regex` does not compile.
    bool Set(const std::wstring& grep, const std::wstring& regex, std::wstring& error);
    bool Matches(const wchar_t* text, std::size_t length) const;

private:
    std::wstring grep_;
    std::unique_ptr<std::wregex> regex_;
};
