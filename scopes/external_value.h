// The address of a public symbol by name, for assembler symbols, which have none of their own. The
// external part is the place to look, and is read once: what a search has passed is remembered, and
// the next one goes on behind it. A fault in the part stops the run at the first search that comes
// to it.
//
//     E5 segment                                             sets the segment, for the trace only
//     E8 index, name, F1 C9 index, 2 or 3 numbers, E2 C9 index, address
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/match_index.h"
#include "input/cursor.h"

namespace scan695 {

struct ExternalEntry {
    uint32_t name_at;  // in ExternalWalk::names
    uint32_t name_length;
    uint32_t address;
    uint32_t nof_segments;  // segment records in front of it
};

// How far the external part has been read.
struct ExternalWalk {
    enum Ending { NOT_YET, AT_OTHER_BYTE, AT_OPEN_GROUP };

    bool started = false;
    uint32_t cursor = 0;               // where to go on
    char name[SYMBOL_NAME_SIZE] = {};  // of the last group; stays where no name comes
    uint32_t nof_records = 0;
    uint32_t nof_segments = 0;
    std::vector<uint32_t> segments;  // of the segment records, for the trace
    std::vector<ExternalEntry> entries;
    std::string names;
    MatchIndex by_name;  // the first entry of each name
    Ending ending = NOT_YET;
    uint8_t end_byte = 0;
};

// True, with its address, if the external part gives the name an address in front of the first
// record that does not belong to the part. The cursor stays.
bool FindExternalValue(const char* name, uint32_t& address);

}  // namespace scan695
