#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// What a fuzz driver provides and what the engine offers it.  A driver is
// one program: it defines LLVMFuzzerTestOneInput (libFuzzer's entry point,
// so a driver reads like any other) and links the engine, which brings the
// program's entry, the mutations, the corpus and the reports.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// A property of the reader under test that the input broke: the engine
// saves the input as a finding and ends the run with `what`.
[[noreturn]] void FuzzPropertyFailed(const char* what, const char* file, int line);

#define FUZZ_CHECK(condition) \
    ((condition) ? (void)0 : FuzzPropertyFailed(#condition, __FILE__, __LINE__))

// The message boxes the current input raised, by their texts, in order.
// Each is answered the moment it opens, so that none waits for a user.
const std::vector<std::wstring>& FuzzBoxes();

// A path in this run's own scratch folder (made at start, removed at the end).
std::wstring FuzzScratchPath(const wchar_t* name);

// Writes `size` bytes to `path`, replacing it; false when that fails.
bool WriteWholeFile(const std::wstring& path, const void* bytes, std::size_t size);
// The whole file, or an empty string when it cannot be read.
std::string ReadWholeFile(const std::wstring& path);

// Takes an input apart: each call hands out the next field, so one input
// can carry a few numbers and texts before the bytes of a file.
class FuzzInput {
public:
    FuzzInput(const std::uint8_t* data, std::size_t size) : data_(data), left_(size) {}
    std::uint32_t Number(std::uint32_t limit);  // 0 .. limit - 1 (0 when limit is 0)
    // Up to `maxUnits` UTF-16 units, ending at a zero unit or the input's end.
    std::wstring Text(std::size_t maxUnits);
    const std::uint8_t* Rest() const { return data_; }
    std::size_t RestSize() const { return left_; }

private:
    const std::uint8_t* data_;
    std::size_t left_;
};
