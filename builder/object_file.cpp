#include "builder/object_file.h"

#include <iterator>

namespace scan695::builder {

namespace {

const Bytes& Content(const ObjectFile& file, Part part) {
    return file.*PARTS[static_cast<size_t>(part)];
}

// The length of the header does not depend on these offsets, whose numbers are padded.
Bytes Header(const ObjectFile& file, const std::vector<uint32_t>& offsets) {
    if (!file.header.empty()) return file.header;
    Bytes header = Bytes{0xE0} + file.processor + file.module + Bytes{0xEC} + file.mau_bits +
                   file.mau_number + file.byte_order;
    for (size_t i = 0; i < std::size(PARTS); ++i) {
        const auto set = file.offsets.find(static_cast<Part>(i));
        header += Bytes{0xE2, 0xD7, static_cast<uint8_t>(i)} +
                  (set != file.offsets.end() ? set->second : Wide(offsets[i], 4));
    }
    return header;
}

std::vector<uint32_t> Offsets(const ObjectFile& file) {
    std::vector<uint32_t> offsets(std::size(PARTS), 0);
    size_t at = Header(file, offsets).size();
    for (const Part part : file.order) {
        const Bytes& content = Content(file, part);
        if (content.empty()) continue;
        offsets[static_cast<size_t>(part)] = static_cast<uint32_t>(at);
        at += content.size();
    }
    return offsets;
}

}  // namespace

Bytes Build(const ObjectFile& file) {
    Bytes image = Header(file, Offsets(file));
    for (const Part part : file.order) image += Content(file, part);
    return image;
}

uint32_t PartOffset(const ObjectFile& file, Part part) {
    return Offsets(file)[static_cast<size_t>(part)];
}

}  // namespace scan695::builder
