// Large object files for measurements, each of a size that a number tells, so that the cost of one
// can be compared with that of another twice as large.
#pragma once

#include <cstdint>

#include "builder/bytes.h"

namespace scan695::bench {

// `count` types in blocks of `per_block`, every tenth referred to before it is defined.
builder::Bytes TypesProgram(uint32_t count, uint32_t per_block);

// `count` global symbols in a module and `count` public symbols of other names.
builder::Bytes SymbolsProgram(uint32_t count);

// `count` assembler symbols, each with its public symbol.
builder::Bytes AsmSymbolsProgram(uint32_t count);

// `count` stack adjust points over half as many functions.
builder::Bytes StackPointsProgram(uint32_t count);

// `count` lines in 200 modules, whose addresses follow one another or lie mixed line by line.
builder::Bytes LinesProgram(uint32_t count, bool interleaved);

// `count` functions of 50 modules, their addresses interleaved.
builder::Bytes BlocksProgram(uint32_t count);

// A code image of `size` bytes in load records of 64 KB.
builder::Bytes CodeProgram(uint32_t size);

// `count` modules like those of a large program: types of every kind, functions with inner blocks
// and variables that live in several places, statics, globals, lines, public symbols, code.
builder::Bytes MixedProgram(uint32_t count);

}  // namespace scan695::bench
