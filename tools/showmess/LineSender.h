#pragma once
#include <string>

// One road into the message window.
class LineSender {
public:
    virtual ~LineSender() = default;
    // Hands over one line; false (with `error` set) when it did not arrive.
    virtual bool Send(const std::wstring& line, std::string& error) = 0;
};
