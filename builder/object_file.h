// The frame of an object file: module header, parts in any order, offsets.
#pragma once

#include <map>
#include <vector>

#include "builder/bytes.h"

namespace scan695::builder {

// The eight parts by the number of their ASW record.
enum class Part { AD_EXTENSION, ENVIRONMENT, SEGMENTS, EXTERNAL, DEBUG, DATA, TRAILER, MODULE_END };

// An empty part is absent: its offset is 0.
struct ObjectFile {
    Text processor = "80166";
    Text module = "prog";
    Num mau_bits = 8;
    Num mau_number = 4;
    Bytes byte_order = {0xCC};

    Bytes ad_extension = {};
    Bytes environment = {};
    Bytes segments = {};
    Bytes external = {};
    Bytes debug = {};
    Bytes data = {};
    Bytes trailer = {};
    Bytes module_end = {0xE1};

    // Parts stand in this order in the file; one that is left out of it isn't written.
    std::vector<Part> order = {Part::AD_EXTENSION, Part::ENVIRONMENT, Part::SEGMENTS,
                               Part::EXTERNAL,     Part::DEBUG,       Part::DATA,
                               Part::TRAILER,      Part::MODULE_END};
    // Numbers to stand in ASW records in place of the true offsets.
    std::map<Part, Num> offsets = {};
    // If not empty, these bytes take the place of everything in front of the parts.
    Bytes header = {};
};

// By the number of the part.
inline constexpr Bytes ObjectFile::*PARTS[] = {&ObjectFile::ad_extension, &ObjectFile::environment,
                                               &ObjectFile::segments,     &ObjectFile::external,
                                               &ObjectFile::debug,        &ObjectFile::data,
                                               &ObjectFile::trailer,      &ObjectFile::module_end};

Bytes Build(const ObjectFile& file);
// Where the part begins in the built file; 0 when it is absent.
uint32_t PartOffset(const ObjectFile& file, Part part);

}  // namespace scan695::builder
