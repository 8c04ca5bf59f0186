#pragma once
#include <windows.h>

#include <string>

// Standard output or standard error as UTF-8.  Lines are gathered and
// written in large blocks; a console gets them as UTF-16 through the
// console's own call, so that it shows them whatever its code page.
class OutputStream {
public:
    explicit OutputStream(DWORD standardHandle);
    ~OutputStream();
    OutputStream(const OutputStream&) = delete;
    OutputStream& operator=(const OutputStream&) = delete;

    // The buffer to append whole lines to.
    std::string& Buffer() { return buffer_; }
    // Writes the buffer once it holds a block's worth.
    bool FlushIfFull() { return buffer_.size() < kBlockBytes || Flush(); }
    // Writes what the buffer holds.  False once the output is gone (a
    // closed pipe); everything after that is dropped.
    bool Flush();

private:
    static constexpr std::size_t kBlockBytes = 256 * 1024;
    HANDLE handle_;
    bool console_ = false;
    bool broken_ = false;
    std::string buffer_;
};

// "qxltool: <message>" on standard error.
void ReportError(const std::wstring& message);
// The platform's text for an error code, without its line end.
std::wstring SystemErrorText(DWORD code);
