#include "tests/support/object_file.h"

namespace scan695::test {

namespace {

constexpr size_t kParts = 8;

const Bytes& Content(const ObjectFile& file, Part part) {
    const Bytes* const contents[kParts] = {&file.ad_extension, &file.environment, &file.segments,
                                           &file.external,     &file.debug,       &file.data,
                                           &file.trailer,      &file.module_end};
    return *contents[static_cast<size_t>(part)];
}

// The length of the header does not depend on these offsets, whose numbers are padded.
Bytes Header(const ObjectFile& file, const std::vector<uint32_t>& offsets) {
    if (!file.header.empty()) return file.header;
    Bytes header = Bytes{0xE0} + file.processor + file.module + Bytes{0xEC} + file.mau_bits +
                   file.mau_number + file.byte_order;
    for (size_t i = 0; i < kParts; ++i) {
        const Part part = static_cast<Part>(i);
        const auto set = file.offsets.find(part);
        header += Asw(part, set != file.offsets.end() ? set->second : Wide(offsets[i], 4));
    }
    return header;
}

std::vector<uint32_t> Offsets(const ObjectFile& file) {
    std::vector<uint32_t> offsets(kParts, 0);
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

Bytes Asw(Part part, const Num& offset) {
    return Bytes{0xE2, 0xD7, static_cast<uint8_t>(part)} + offset;
}

Bytes Build(const ObjectFile& file) {
    Bytes image = Header(file, Offsets(file));
    for (const Part part : file.order) image += Content(file, part);
    return image;
}

uint32_t PartOffset(const ObjectFile& file, Part part) {
    return Offsets(file)[static_cast<size_t>(part)];
}

}  // namespace scan695::test
