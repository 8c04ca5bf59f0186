#include "tools/fuzz/Mutator.h"

#include <algorithm>
#include <iterator>

namespace {

// The size of a log record, so that whole records move together.
constexpr std::size_t kRecordSize = 272;

constexpr std::uint16_t kInterestingUnits[] = {
    0x0000, 0x0001, 0x007F, 0x0080, 0x00FF, 0x0100, 0x7FFF, 0x8000, 0xFFFF, 0xFFFE, 0xFEFF,
    0xD800, 0xDBFF, 0xDC00, 0xDFFF, L'\r', L'\n', L'\t', L' ', L'%', L'\\', L'/', L':', L'-',
    L'.', L',', L'"', L'0', L'1', L'2', L'9', L'7', L'a', L'-', 0x4E2D, 0x0660};

constexpr std::uint32_t kInterestingWords[] = {
    0, 1, 0x7F, 0x80, 0xFF, 0x7FFF, 0x8000, 0xFFFF, 0x10000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF,
    272, 271, 273, 5000, 4999, 5001, 128, 127, 129, 0x80000001};

// The position `offset` bytes into `bytes`.
FuzzBytes::iterator At(FuzzBytes& bytes, std::size_t offset)
{
    return bytes.begin() + static_cast<std::ptrdiff_t>(offset);
}

FuzzBytes::const_iterator At(const FuzzBytes& bytes, std::size_t offset)
{
    return bytes.begin() + static_cast<std::ptrdiff_t>(offset);
}

void PutUnit(FuzzBytes& input, std::size_t at, std::uint16_t unit)
{
    input[at] = static_cast<std::uint8_t>(unit);
    if (at + 1 < input.size())
        input[at + 1] = static_cast<std::uint8_t>(unit >> 8);
}

void MutateOnce(FuzzBytes& input, const FuzzBytes& other, FuzzRandom& random)
{
    const std::size_t size = input.size();
    const std::size_t at = random.Below(size);
    // Even offsets line up with the UTF-16 units of texts and records.
    const std::size_t unitAt = at & ~std::size_t{1};
    switch (random.Below(size == 0 ? 2 : 12)) {
    case 0:  // insert a few random bytes
        for (std::size_t n = 1 + random.Below(8); n > 0; --n)
            input.insert(At(input, random.Below(input.size() + 1)), static_cast<std::uint8_t>(random.Next()));
        break;
    case 1:  // splice: a piece of the other input
        if (!other.empty()) {
            const std::size_t from = random.Below(other.size());
            const std::size_t length = 1 + random.Below(other.size() - from);
            input.insert(At(input, random.Below(input.size() + 1)), At(other, from), At(other, from + length));
        }
        break;
    case 2:
        input[at] ^= static_cast<std::uint8_t>(1u << random.Below(8));
        break;
    case 3:
        input[at] = static_cast<std::uint8_t>(random.Next());
        break;
    case 4:
        PutUnit(input, unitAt, kInterestingUnits[random.Below(std::size(kInterestingUnits))]);
        break;
    case 5: {
        const std::uint32_t word = kInterestingWords[random.Below(std::size(kInterestingWords))];
        for (std::size_t i = 0; i < 4 && at + i < size; ++i)
            input[at + i] = static_cast<std::uint8_t>(word >> (8 * i));
        break;
    }
    case 6:  // cut the tail
        input.resize(at);
        break;
    case 7:  // drop a range
        input.erase(At(input, at), At(input, at + 1 + random.Below(std::min<std::size_t>(size - at, 64))));
        break;
    case 8: {  // repeat a chunk in place
        const std::size_t length = 1 + random.Below(std::min<std::size_t>(size - at, 64));
        const FuzzBytes chunk(At(input, at), At(input, at + length));
        input.insert(At(input, random.Below(size + 1)), chunk.begin(), chunk.end());
        break;
    }
    case 9: {  // a whole record copied, or dropped
        const std::size_t record = at / kRecordSize * kRecordSize;
        const std::size_t end = std::min(size, record + kRecordSize);
        if (random.Below(2) == 0) {
            input.erase(At(input, record), At(input, end));
        } else {
            const FuzzBytes copy(At(input, record), At(input, end));
            input.insert(input.end(), copy.begin(), copy.end());
        }
        break;
    }
    case 10:  // a run of one unit: long lines, long numbers
        for (std::size_t n = 2 * (1 + random.Below(200)); n > 0; n -= 2) {
            const std::uint16_t unit = kInterestingUnits[random.Below(std::size(kInterestingUnits))];
            const std::uint8_t bytes[] = {static_cast<std::uint8_t>(unit), static_cast<std::uint8_t>(unit >> 8)};
            input.insert(At(input, unitAt), std::begin(bytes), std::end(bytes));
        }
        break;
    default:  // an ASCII digit or letter where texts are read as numbers
        PutUnit(input, unitAt, static_cast<std::uint16_t>(random.Below(2) ? L'0' + random.Below(10)
                                                                           : L'A' + random.Below(26)));
        break;
    }
}

} // namespace

std::uint64_t FuzzRandom::Next()
{
    state_ ^= state_ >> 12;
    state_ ^= state_ << 25;
    state_ ^= state_ >> 27;
    return state_ * 0x2545F4914F6CDD1Dull;
}

void Mutate(FuzzBytes& input, const FuzzBytes& other, std::size_t maxSize, FuzzRandom& random)
{
    for (std::size_t n = 1 + random.Below(4); n > 0; --n)
        MutateOnce(input, other, random);
    if (input.size() > maxSize)
        input.resize(maxSize);
}
