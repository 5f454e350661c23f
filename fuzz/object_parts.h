// An object file taken apart, for mutation: what stands in front of the offsets, the parts, and the
// records of a part. Joined again, the offsets are right, whatever has become of the parts.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace scan695::fuzz {

using Record = std::vector<uint8_t>;

constexpr size_t NOF_PARTS = 8;
enum PartNumber : size_t {
    AD_EXTENSION,
    ENVIRONMENT,
    SEGMENTS,
    EXTERNAL,
    DEBUG_INFO,
    DATA,
    TRAILER,
    MODULE_END
};

struct ObjectParts {
    std::vector<uint8_t> head;  // from MB to the byte order
    std::array<std::vector<uint8_t>, NOF_PARTS> parts;
    std::array<bool, NOF_PARTS> present = {};
    std::array<size_t, NOF_PARTS> order = {};  // in which the parts stand in the file
};

// Gives false for bytes without a sound header.
bool Split(const uint8_t* data, size_t size, ObjectParts& object);
std::vector<uint8_t> Join(const ObjectParts& object);

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
