#include "inspector/summary.h"

#include "inspector/names.h"

namespace scan695::inspector {

namespace {

std::string BasicSizesText(const Fst& fst) {
    std::string text;
    for (uint32_t type = 0; type < BASIC_SIZES_COUNT; ++type) {
        const auto size = ReadEntry<uint8_t>(fst, BASIC_SIZES, type);
        if (!size) break;
        text += (text.empty() ? "" : " ") + TypeText(fst, type) + "=" + std::to_string(*size);
    }
    return text;
}

}  // namespace

std::vector<std::pair<const char*, Cell>> HeaderItems(const Fst& fst) {
    const FstHeader& header = fst.header;
    const auto number = [](int64_t value) { return Cell{Cell::NUMBER, {}, value}; };
    const auto hex = [](uint32_t value) { return Cell{Cell::HEX, {}, value}; };
    const auto text = [](std::string value) { return Cell{Cell::TEXT, std::move(value), 0}; };
    return {
        {"file_size", number(static_cast<int64_t>(fst.bytes.size()))},
        {"processor", text(ProcessorWord(header.processor))},
        {"model", hex(header.model_flags)},
        {"start_address", header.has_start_address != 0 ? hex(header.start_address) : Cell{}},
        {"source_format", number(header.source_format)},
        {"format_version", number(header.format_version)},
        {"modules", number(header.nof_modules)},
        {"symbols", number(header.nof_all_symbols)},
        {"global_symbols", number(header.nof_global_symbols)},
        {"module_symbols", number(header.nof_module_symbols)},
        {"block_symbols", number(header.nof_block_symbols)},
        {"types", number(header.nof_types)},
        {"blocks", number(header.nof_blocks)},
        {"lines", number(header.nof_lines)},
        {"ranges", number(header.nof_ranges)},
        {"code_blocks", number(header.nof_code)},
        {"max_module_name", number(header.max_module_name)},
        {"max_symbol_name", number(header.max_symbol_name)},
        {"max_block_symbols", number(header.max_block_symbols)},
        {"basic_sizes", text(BasicSizesText(fst))},
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
