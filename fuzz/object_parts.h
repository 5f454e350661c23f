// An object file taken apart, for mutation: its parts, and the records of a part.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "builder/object_file.h"

namespace scan695::fuzz {

using Record = std::vector<uint8_t>;

// Turns bytes into what `Build` makes a file of, with the parts in their order and offsets that
// will be right, whatever becomes of the parts. Gives false for bytes without a sound header.
bool Split(const uint8_t* data, size_t size, builder::ObjectFile& file);

// Cuts a part where a record code stands (a byte of E0 or more that is no part of a number or of
// load data); joined, the records are the part.
std::vector<Record> SplitRecords(const std::vector<uint8_t>& part);

// The fields of a record that look like numbers.
struct NumberField {
    size_t offset;
    size_t size;
    uint32_t value;
};
std::vector<NumberField> NumbersOf(const Record& record);

// True for a file with a repeat record (F7) that would make it large: a count of up to 2^31 is
// sound, and takes its time.
bool RepeatsTooMuch(const uint8_t* data, size_t size);

}  // namespace scan695::fuzz
