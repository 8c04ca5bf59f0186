#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

using FuzzBytes = std::vector<std::uint8_t>;

// The engine's random numbers: a fixed generator, so that a run is the same
// run again from the same seed and corpus.
class FuzzRandom {
public:
    explicit FuzzRandom(std::uint64_t seed) : state_(seed * 0x9E3779B97F4A7C15ull + 1) {}
    std::uint64_t Next();
    // 0 .. limit - 1; 0 when limit is 0.
    std::size_t Below(std::size_t limit) { return limit == 0 ? 0 : Next() % limit; }

private:
    std::uint64_t state_;
};

// Changes `input` by one to four mutations: bit flips, bytes and UTF-16
// units from the values readers stumble on (zero, extremes, surrogates,
// line ends, separators, digits), cuts, insertions, repeated chunks, whole
// 272-byte records moved, copied or dropped, and splices with `other`.  The
// result stays within `maxSize` bytes.
void Mutate(FuzzBytes& input, const FuzzBytes& other, std::size_t maxSize, FuzzRandom& random);
