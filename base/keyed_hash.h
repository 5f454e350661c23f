// Hashes with a key of the process, so that no input can be made whose numbers or names all meet in
// one place of a table. What comes out of a run never depends on the key: nobody walks over a
// table.
#pragma once

#include <cstdint>
#include <string_view>

namespace scan695 {

// Random words, drawn at the first call in the process.
struct HashKeys {
    uint64_t offset;
    uint64_t first_factor;   // odd
    uint64_t second_factor;  // odd
};
const HashKeys& ProcessHashKeys();

// Spreads a number over 64 bits, of which the high ones are the best. The first product carries
// every bit upwards by an unknown pattern; the second spreads what the high half has got.
inline uint64_t MixNumber(const HashKeys& keys, uint32_t number) {
    uint64_t mixed = (number ^ keys.offset) * keys.first_factor;
    mixed = (mixed ^ mixed >> 32) * keys.second_factor;
    return mixed;
}

// A number for a text or any other bytes (SipHash-1-3: texts can be chosen so that plain products
// cancel out, whatever the factors).
uint32_t HashBytes(std::string_view bytes);

}  // namespace scan695
