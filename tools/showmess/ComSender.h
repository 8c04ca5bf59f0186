#pragma once
#include <windows.h>

#include "Oriel.h"
#include "tools/showmess/LineSender.h"

// The component road: one ShowMess object of the local server, created by
// its program identifier (which starts the server when it is not running).
class ComSender : public LineSender {
public:
    ComSender() = default;
    ~ComSender() override;
    ComSender(const ComSender&) = delete;
    ComSender& operator=(const ComSender&) = delete;

    // False, with `error` set, when the server cannot be reached.
    bool Connect(std::string& error);
    bool Send(const std::wstring& line, std::string& error) override;

private:
    bool initialized_ = false;
    IShowMess* showMess_ = nullptr;
};
