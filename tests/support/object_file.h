// The frame of an object file: module header, parts in any order, offsets.
#pragma once

#include <map>
#include <vector>

#include "tests/support/bytes.h"

namespace scan695::test {

// The eight parts by the number of their ASW record.
enum class Part {
    kAdExtension,
    kEnvironment,
    kSegments,
    kExternal,
    kDebug,
    kData,
    kTrailer,
    kModuleEnd
};

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
    std::vector<Part> order = {Part::kAdExtension, Part::kEnvironment, Part::kSegments,
                               Part::kExternal,    Part::kDebug,       Part::kData,
                               Part::kTrailer,     Part::kModuleEnd};
    // Numbers to stand in ASW records in place of the true offsets.
    std::map<Part, Num> offsets = {};
    // If not empty, these bytes take the place of everything in front of the parts.
    Bytes header = {};
};

Bytes Build(const ObjectFile& file);
// Where the part begins in the built file; 0 when it is absent.
uint32_t PartOffset(const ObjectFile& file, Part part);
// E2 D7 and the part's number, then the offset.
Bytes Asw(Part part, const Num& offset);

}  // namespace scan695::test
