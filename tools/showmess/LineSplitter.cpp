#include "tools/showmess/LineSplitter.h"

#include <windows.h>

std::vector<std::wstring> LineSplitter::Feed(const char* bytes, size_t size)
{
    std::vector<std::wstring> lines;
    for (size_t i = 0; i < size; ++i) {
        if (bytes[i] == '\n') {
            lines.push_back(Decode(partial_));
            partial_.clear();
        } else {
            partial_ += bytes[i];
        }
    }
    return lines;
}

bool LineSplitter::Finish(std::wstring& line)
{
    if (partial_.empty())
        return false;
    line = Decode(partial_);
    partial_.clear();
    return true;
}

std::wstring LineSplitter::Decode(std::string bytes)
{
    if (!bytes.empty() && bytes.back() == '\r')
        bytes.pop_back();
    std::wstring text;
    const int size = static_cast<int>(bytes.size());
    const int units = ::MultiByteToWideChar(CP_UTF8, 0, bytes.data(), size, nullptr, 0);
    if (units > 0) {
        text.resize(static_cast<size_t>(units));
        ::MultiByteToWideChar(CP_UTF8, 0, bytes.data(), size, &text[0], units);
    }
    return text;
}
