#pragma once
#include <windows.h>

// The class of the do-nothing ShowMess server, a class of the benchmark's own:
// {6C1D4A52-0B7E-4E8F-9A31-5D2C7B9E4F10}.
constexpr CLSID kNullShowMessClass = {
    0x6c1d4a52, 0x0b7e, 0x4e8f, {0x9a, 0x31, 0x5d, 0x2c, 0x7b, 0x9e, 0x4f, 0x10}};
