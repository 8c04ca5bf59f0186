#pragma once

// Where a line that a client hands in goes: the main window's AddMessage.
// Start-up connects it; the component knows nothing else of the window.
class LineSink {
public:
    virtual int AddMessage(const wchar_t* text) = 0;

protected:
    ~LineSink() = default;
};
