// What takes how many bytes: the code image and the data, by module, by stretch of memory, by
// function, by variable.
//
// Every byte of the image is counted once for each thing that is asked about. In a range it is code
// of the range's module; elsewhere under a variable it is a constant of the variable's module;
// what is left belongs to nobody and counts as code or as constants by its memory. Bytes of
// variables outside the image are data. Where variables or functions overlap, the one that begins
// first has the bytes, of two that begin together the larger.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "ask/statics.h"
#include "inspector/json_writer.h"

namespace scan695::ask {

struct Bytes {
    uint64_t code = 0;
    uint64_t constants = 0;
    uint64_t data = 0;
};

struct ModuleSize {
    std::optional<uint32_t> module;  // nothing for what belongs to nobody
    Bytes bytes;
    uint64_t range = 0;  // bytes of its ranges, whether the image has them or not
    uint64_t lines = 0;
    uint64_t functions = 0;
};

// A stretch of the image that one memory fills without a gap.
struct MemorySize {
    uint8_t memory = 0;
    uint32_t address = 0;
    uint64_t size = 0;
    uint64_t code = 0;  // of modules
    uint64_t constants = 0;
    uint64_t nobody = 0;
};

struct FunctionSize {
    uint32_t block = 0;
    BLOCKINFO record = {};
    uint64_t code = 0;  // bytes of the image that no function before it has
    uint64_t lines = 0;
};

struct VariableSize {
    Symbol symbol;
    uint64_t constants = 0;  // bytes that no variable before it has, in the image
    uint64_t data = 0;       // and outside of it
};

// All lists largest first, what belongs to nobody included.
struct Sizes {
    uint64_t image = 0;
    uint64_t range = 0;
    Bytes bytes;   // code and constants add up to the image
    Bytes nobody;  // of these
    uint64_t lines = 0;
    uint64_t code_outside_functions = 0;  // of the code of modules
    std::vector<ModuleSize> modules;
    std::vector<MemorySize> memories;
    std::vector<FunctionSize> functions;
    std::vector<VariableSize> variables;
};

Sizes SizesOf(const Fst& fst);

// Prints the lists with at most `limit` rows each and a line for the rest.
void PrintSizes(const Fst& fst, const Sizes& sizes, size_t limit, std::ostream& out);
void WriteSizes(const Fst& fst, const Sizes& sizes, inspector::JsonWriter& json);

}  // namespace scan695::ask
