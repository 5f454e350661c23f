#include "stf/register_names.h"

#include <algorithm>
#include <cstring>

#include "base/number_text.h"

namespace scan695 {

namespace {

// A register value: bit 0 the high byte of a byte register, bits 1 to 4 the register, bits 5 to 8
// the other one of a pair, bits 12 to 15 what kind of register it is.
constexpr uint32_t REGISTER_PAIR = 4;
constexpr uint32_t REGISTER_BYTE = 2;

char* NumberedName(char* out, const char* letters, uint32_t number) {
    out = std::copy_n(letters, std::strlen(letters), out);
    return DecimalText(out, static_cast<int32_t>(number));
}

}  // namespace

uint32_t outRegName(uint32_t value, char (&text)[REGISTER_NAME_SIZE]) {
    const uint32_t low = value >> 1 & 15;
    const uint32_t high = value >> 5 & 15;
    const uint32_t kind = value >> 12 & 15;
    char* end = text;
    uint32_t code = 0x80000000U | low;
    if (kind == REGISTER_PAIR) {
        end = NumberedName(end, "R", high);
        end = NumberedName(end, ",R", low);
        code = 0x84000000U | high << 20 | low;
    } else if (kind == REGISTER_BYTE) {
        const bool high_byte = (value & 1) != 0;
        end = NumberedName(end, high_byte ? "RH" : "RL", low);
        code = (high_byte ? 0x82000000U : 0x81000000U) + low;
    } else {
        end = NumberedName(end, "R", low);
    }
    *end = '\0';
    return code;
}

}  // namespace scan695
