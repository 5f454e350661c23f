// The run state of the type scanner.
#pragma once

#include <cstdint>

#include "base/hash_table.h"
#include "types/bitfield_watch.h"
#include "types/reference_index.h"
#include "types/type_map.h"

namespace scan695 {

struct TypeState {
    uint32_t nesting = 0;  // of type definitions, for the limit of 1,000
    TMAP Map;
    TkAliasMap Aliases;

    // The placement of bitfields: one set for the whole scan, so a struct inside a member list
    // overwrites it for the rest of the outer list.
    uint32_t BfParentSize = 0;  // bytes of the struct or union opened last
    uint32_t BfUnitOffset = 0;  // byte offset of the current storage unit
    uint32_t BfUnitSize = 0;    // its bytes; C166 family only
    uint32_t BfUnitType = 0;    // its basic type; 0 before the first unit

    // Set by UpdateTypes when the last member of a struct has got its type: that struct's position
    // in the TypeTable plus 100. Cleared by every ScanType.
    bool BitfieldsPending = false;
    uint32_t BitfieldsStruct = 0;

    BitfieldWatch Bitfields;         // in long lists
    ReferenceIndex References;       // where forward references stand
    HashTable<> DisplacedPositions;  // type index to position, for records not at index less 100
    HashTable<> ChainEnds;           // attribute to the far end of its chain, see TypeSize
};
extern TypeState Types;

// A run begins with this; at the end of a scan it gives the memory back.
void StartTypes();

// Forgets, at the head of a block of types, what the block before has named and waited for.
void BeginTypeBlock();

}  // namespace scan695
