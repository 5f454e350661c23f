// An FST file taken apart, for tests of the inspector: the parts as tables that a test can change
// before they are put together again, with nothing of the writer's code.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "store/records.h"

namespace scan695::test {

struct FstParts {
    FstHeader header = {};  // counts of tables and offsets are filled by Assemble
    std::string stored;
    std::vector<TYPEINFO> types;
    std::vector<uint32_t> type_index;
    std::vector<BLOCKINFO> blocks;
    std::vector<uint32_t> block_index;
    std::vector<SYMINFO> symbols;
    std::vector<uint32_t> symbol_addresses, symbol_names;
    std::vector<LINEINFO> lines;
    std::vector<uint32_t> line_addresses, line_numbers, global_lines;
    std::vector<RANGEINFO> ranges;
    std::vector<MODULEINFO> modules;
    std::vector<uint32_t> module_names;
    std::vector<CODEINFO> code;  // the bytes of a block count up from 0
    std::array<uint8_t, 16> basic_sizes = {};

    std::vector<uint8_t> Assemble();
};

// Those of golden/sound.fst, which golden/listing.txt shows: two modules with everything that a
// file can hold, in which nothing is amiss.
FstParts SoundParts();

}  // namespace scan695::test
