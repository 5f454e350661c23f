#include "scopes/function_peek.h"

#include <cstring>

#include "input/cursor.h"
#include "input/record_codes.h"

namespace scan695 {

namespace {

// F8 04 or F8 06, length, name, stack size, type, address.
bool ReadFunctionHead(const char* name, uint32_t& address) {
    if (ReadByte() != BYTE_BB) return false;
    const uint8_t kind = ReadByte();
    if (kind != BB4 && kind != BB6) return false;
    uint32_t length = 0;
    if (ReadNumber(length) == 0) return false;
    char block_name[SYMBOL_NAME_SIZE] = {};
    ReadName(block_name, sizeof block_name);
    if (std::strcmp(block_name, name) != 0) return false;
    uint32_t stack_size = 0;
    uint32_t type = 0;
    uint32_t found = 0;
    if (ReadNumber(stack_size) == 0 || ReadNumber(type) == 0 || ReadNumber(found) == 0)
        return false;
    address = found;
    return true;
}

}  // namespace

bool PeekFunctionAddress(const char* name, uint32_t& address) {
    const PartFrame frame(Input.InputCursor);
    return ReadFunctionHead(name, address);
}

}  // namespace scan695
