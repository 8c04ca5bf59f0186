#pragma once
#include <string>
#include <vector>

// Cuts UTF-8 bytes, as they arrive, into UTF-16 lines: one line per LF, a
// CR before the LF dropped, and a last line without LF given by Finish.
class LineSplitter {
public:
    // The lines completed by these bytes.
    std::vector<std::wstring> Feed(const char* bytes, size_t size);
    // The unterminated rest, if there is one.
    bool Finish(std::wstring& line);

private:
    static std::wstring Decode(std::string bytes);

    std::string partial_;
};
