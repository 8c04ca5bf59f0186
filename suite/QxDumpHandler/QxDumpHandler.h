#pragma once
// The suite's crash-dump handler library.
extern "C" int __stdcall InitHandler();
