#include "inspector/checks.h"

namespace scan695::inspector {

namespace {

constexpr uint8_t SOURCE_FORMAT = 20;
constexpr uint8_t SIZES[2][BASIC_SIZES_COUNT] = {{0, 1, 1, 2, 2, 2, 2, 4, 4, 4, 4, 4, 1},
                                                 {0, 1, 1, 2, 2, 4, 4, 4, 4, 4, 8, 8, 1}};

void CheckHeader(const FstHeader& header, Findings& findings) {
    const struct {
        const char* name;
        uint32_t value;
        bool is_good;
    } fields[] = {
        {"source_format", header.source_format, header.source_format == SOURCE_FORMAT},
        {"processor", header.processor,
         header.processor == PROCESSOR_C166_FAMILY || header.processor == PROCESSOR_TRICORE ||
             header.processor == PROCESSOR_C166},
        {"model_flags", header.model_flags, header.model_flags == 1 || header.model_flags == 3},
        {"has_start_address", header.has_start_address, header.has_start_address <= 1},
        {"start_address", header.start_address,
         header.has_start_address != 0 || header.start_address == 0},
        {"reserved word 60", header.reserved_60, header.reserved_60 == 0},
        {"reserved byte 123", header.reserved_123, header.reserved_123 == 0},
        {"reserved word 128", header.reserved_128, header.reserved_128 == 0},
        {"reserved word 132", header.reserved_132, header.reserved_132 == 0},
    };
    for (const auto& field : fields) {
        if (!field.is_good) findings.Add("header: %s is 0x%x", field.name, field.value);
    }
    const uint64_t parts =
        uint64_t{header.nof_global_symbols} + header.nof_module_symbols + header.nof_block_symbols;
    if (parts != header.nof_all_symbols) {
        findings.Add("header: %u symbols, but %llu in its parts", header.nof_all_symbols,
                     Wide(parts));
    }
}

// Gives where the section ends.
uint64_t CheckSection(const Fst& fst, SectionId id, uint64_t begin, Findings& findings) {
    const Section& section = fst.sections[id];
    if (!section.is_written) {
        if (section.offset != 0) {
            findings.Add("section %s: empty, but at offset 0x%llx", section.name,
                         Wide(section.offset));
        }
        return begin;
    }
    if (section.offset != begin) {
        findings.Add("section %s: at offset 0x%llx, expected at 0x%llx", section.name,
                     Wide(section.offset), Wide(begin));
    }
    // Code has no alignment, so what stands behind it has none either.
    if (id != BASIC_SIZES && section.offset % 4 != 0) {
        findings.Add("section %s: offset 0x%llx is not a multiple of 4", section.name,
                     Wide(section.offset));
    }
    const uint64_t end = section.offset + section.size;
    const bool is_cut = id == CODE && fst.code.size() < section.entries;
    if (is_cut || end > fst.bytes.size()) {
        findings.Add("section %s: runs beyond the end of the file", section.name);
    }
    return end;
}

void CheckBasicSizes(const Fst& fst, Findings& findings) {
    const auto& expected = SIZES[fst.header.processor == PROCESSOR_TRICORE ? 1 : 0];
    for (uint32_t i = 0; i < BASIC_SIZES_BYTES; ++i) {
        const auto size = ReadEntry<uint8_t>(fst, BASIC_SIZES, i);
        const uint8_t wanted = i < BASIC_SIZES_COUNT ? expected[i] : 0;
        if (size && *size != wanted) {
            findings.Add("basic sizes: byte %u is %u, expected %u", i, *size, wanted);
        }
    }
}

}  // namespace

void CheckLayout(const Fst& fst, Findings& findings) {
    CheckHeader(fst.header, findings);

    uint64_t end = fst.stored_end;
    if (end < sizeof(FstHeader) || end % 4 != 0) {
        findings.Add("stored area: ends at offset 0x%llx", Wide(end));
    }
    for (int id = 0; id < SECTION_COUNT; ++id) {
        end = CheckSection(fst, static_cast<SectionId>(id), end, findings);
    }
    if (end < fst.bytes.size()) {
        findings.Add("file: %llu bytes behind the last section", Wide(fst.bytes.size() - end));
    }
    CheckBasicSizes(fst, findings);
}

}  // namespace scan695::inspector
