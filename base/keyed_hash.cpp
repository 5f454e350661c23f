#include "base/keyed_hash.h"

#include <bit>
#include <chrono>
#include <cstring>
#include <exception>
#include <random>

namespace scan695 {

namespace {

uint64_t RandomWord(std::random_device& device) {
    return uint64_t{device()} << 32 | device();
}

// Where the system has no source of random numbers, the time and the place of the stack are hard
// enough to guess.
HashKeys KeysOfTime() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
    const uint64_t seed =
        static_cast<uint64_t>(now) * 0x9E3779B97F4A7C15 ^ reinterpret_cast<uintptr_t>(&now);
    return {seed, std::rotl(seed, 21) * 0xBF58476D1CE4E5B9 | 1,
            std::rotl(seed, 42) * 0x94D049BB133111EB | 1};
}

HashKeys DrawKeys() {
    try {
        std::random_device device;
        return {RandomWord(device), RandomWord(device) | 1, RandomWord(device) | 1};
    } catch (const std::exception&) {
        return KeysOfTime();
    }
}

// The state of SipHash.
struct Sip {
    uint64_t a, b, c, d;

    void Round() {
        a += b;
        b = std::rotl(b, 13) ^ a;
        a = std::rotl(a, 32);
        c += d;
        d = std::rotl(d, 16) ^ c;
        a += d;
        d = std::rotl(d, 21) ^ a;
        c += b;
        b = std::rotl(b, 17) ^ c;
        c = std::rotl(c, 32);
    }
    void Take(uint64_t word) {
        d ^= word;
        Round();
        a ^= word;
    }
};

// Up to eight bytes as a word; zeros where there are less.
uint64_t WordOf(std::string_view bytes) {
    uint64_t word = 0;
    std::memcpy(&word, bytes.data(), bytes.size());
    return word;
}

}  // namespace

const HashKeys& ProcessHashKeys() {
    static const HashKeys keys = DrawKeys();
    return keys;
}

uint32_t HashBytes(std::string_view bytes) {
    const HashKeys& keys = ProcessHashKeys();
    Sip sip = {keys.offset ^ 0x736F6D6570736575, keys.second_factor ^ 0x646F72616E646F6D,
               keys.offset ^ 0x6C7967656E657261, keys.second_factor ^ 0x7465646279746573};
    const uint64_t length = bytes.size();
    for (; bytes.size() >= sizeof(uint64_t); bytes.remove_prefix(sizeof(uint64_t)))
        sip.Take(WordOf(bytes.substr(0, sizeof(uint64_t))));
    sip.Take(WordOf(bytes) | length << 56);
    sip.c ^= 0xFF;
    for (int i = 0; i < 3; ++i) sip.Round();
    return static_cast<uint32_t>(sip.a ^ sip.b ^ sip.c ^ sip.d);
}

}  // namespace scan695
