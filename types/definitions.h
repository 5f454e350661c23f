// The readers of the single kinds of type definitions, among which ScanType chooses, and what they
// share. Each is called behind the letter, reads the fields, and gives the type index.
#pragma once

#include <cstdint>

#include "input/cursor.h"
#include "types/definition.h"
#include "types/type_state.h"
#include "types/type_table.h"
#include "types/update_types.h"

namespace scan695 {

struct Definition {
    uint32_t letter;
    uint32_t tk_idx;
    int32_t level;
    char* name;

    // Takes the definition's number. Only a definition at level 0 can be referred to by its tk_idx.
    uint32_t TakeNumber() const { return TakeTypeNumber(level == 0 ? tk_idx : 0); }
    // Reads a <type> field.
    uint32_t ScanNested() const {
        char no_name[1] = "";
        return ScanType(0, level + 1, no_name);
    }
};

// Ends the run with `message`, whose argument is the offset of the last byte read, when no number
// comes.
inline uint32_t NumberOrStop(const char* message) {
    uint32_t value = 0;
    if (ReadNumber(value) == 0) StopAtLastOffset(message);
    return value;
}

uint32_t ScanFunctionType(const Definition& definition);
uint32_t ScanArray(const Definition& definition);
uint32_t ScanPointerAttribute(const Definition& definition);
uint32_t ScanQualifier(const Definition& definition);
uint32_t ScanPointer(const Definition& definition);
uint32_t ScanStructUnion(const Definition& definition);
uint32_t ScanEnumeration(const Definition& definition);
uint32_t ScanTypedef(const Definition& definition);
uint32_t ScanBitfield(const Definition& definition);
uint32_t ScanReference(const Definition& definition);

}  // namespace scan695
