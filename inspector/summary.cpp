#include "inspector/summary.h"

#include "inspector/c_text.h"
#include "inspector/names.h"

namespace scan695::inspector {

namespace {

constexpr int ADDRESS_BITS_C166 = 24;
constexpr int ADDRESS_BITS_TRICORE = 32;

}  // namespace

std::string BasicSizesText(const Fst& fst) {
    std::string text;
    for (uint32_t type = 0; type < BASIC_SIZES_COUNT; ++type) {
        const auto size = ReadEntry<uint8_t>(fst, BASIC_SIZES, type);
        if (!size) break;
        text += (text.empty() ? "" : ", ") + Declaration(fst, type) + " " + std::to_string(*size);
    }
    return text;
}

std::vector<HeaderItem> HeaderItems(const Fst& fst) {
    const FstHeader& header = fst.header;
    const bool is_tricore = header.processor == PROCESSOR_TRICORE;
    return {
        {"file_size", NumberCell(static_cast<int64_t>(fst.bytes.size()))},
        {"processor", TextCell(ProcessorWord(header.processor))},
        {"processor_code", NumberCell(header.processor)},
        {"address_bits", NumberCell(is_tricore ? ADDRESS_BITS_TRICORE : ADDRESS_BITS_C166)},
        {"model_flags", HexCell(header.model_flags)},
        {"start_address", header.has_start_address != 0 ? HexCell(header.start_address) : Cell{}},
        {"source_format", NumberCell(header.source_format)},
        {"format_version", NumberCell(header.format_version)},
        {"nof_modules", NumberCell(header.nof_modules)},
        {"nof_symbols", NumberCell(header.nof_all_symbols)},
        {"nof_global_symbols", NumberCell(header.nof_global_symbols)},
        {"nof_module_symbols", NumberCell(header.nof_module_symbols)},
        {"nof_block_symbols", NumberCell(header.nof_block_symbols)},
        {"nof_types", NumberCell(header.nof_types)},
        {"nof_blocks", NumberCell(header.nof_blocks)},
        {"nof_lines", NumberCell(header.nof_lines)},
        {"nof_ranges", NumberCell(header.nof_ranges)},
        {"nof_code", NumberCell(header.nof_code)},
        {"max_module_name", NumberCell(header.max_module_name)},
        {"max_symbol_name", NumberCell(header.max_symbol_name)},
        {"max_block_symbols", NumberCell(header.max_block_symbols)},
    };
}

std::vector<SectionItem> SectionItems(const Fst& fst) {
    std::vector<SectionItem> items = {{"header", 0, 1, sizeof(FstHeader)}};
    const uint64_t begin = sizeof(FstHeader);
    items.push_back({"stored area", begin, 0, fst.stored_end > begin ? fst.stored_end - begin : 0});
    for (const Section& section : fst.sections) {
        if (!section.is_written) continue;
        items.push_back({section.name, section.offset, section.entries, section.size});
    }
    return items;
}

}  // namespace scan695::inspector
