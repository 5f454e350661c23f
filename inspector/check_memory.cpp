#include <algorithm>
#include <optional>
#include <tuple>

#include "inspector/checks.h"

namespace scan695::inspector {

namespace {

constexpr uint64_t ADDRESS_SPACE = uint64_t{1} << 32;
constexpr uint32_t PAGE = 0x10000;
constexpr uint32_t LARGEST_PIECE = 256;  // of the image, as the input reader delivers it

bool HasCode(const Fst& fst) {
    return std::any_of(fst.code.begin(), fst.code.end(),
                       [](const CodeBlock& block) { return block.head.mem_type == MEM_CODE; });
}

// Global and module-level symbols and lines are points in the range table. When there are any,
// ranges of less than two bytes have been removed from it.
bool HasPoints(const Fst& fst) {
    if (!LineSlices(fst).empty()) return true;
    const uint64_t count =
        std::min<uint64_t>(UsableEntries(fst, SYMBOLS),
                           uint64_t{fst.header.nof_global_symbols} + fst.header.nof_module_symbols);
    for (uint64_t i = 0; i < count; ++i) {
        if (ReadEntry<SYMINFO>(fst, SYMBOLS, i)->mem_type == MEM_CODE) return true;
    }
    return false;
}

// Addresses are 32 bits wide and wrap. Where something reaches the end of the address space, the
// order of the ranges is not promised.
bool ReachesEndOfMemory(const Fst& fst) {
    for (uint64_t i = 0; i < UsableEntries(fst, BLOCKS); ++i) {
        const auto block = *ReadEntry<BLOCKINFO>(fst, BLOCKS, i);
        if (block.size != 0 && uint64_t{block.address} + block.size >= ADDRESS_SPACE) return true;
    }
    for (uint64_t i = 0; i < UsableEntries(fst, LINES); ++i) {
        if (ReadEntry<LINEINFO>(fst, LINES, i)->address == 0xFFFFFFFF) return true;
    }
    for (uint64_t i = 0; i < UsableEntries(fst, SYMBOLS); ++i) {
        const auto symbol = *ReadEntry<SYMINFO>(fst, SYMBOLS, i);
        if (symbol.mem_type == MEM_CODE && symbol.value == 0xFFFFFFFF) return true;
    }
    return false;
}

bool IsMemoryOfSegment(uint8_t mem_type) {
    return mem_type == MEM_CODE || mem_type == MEM_DATA || mem_type == MEM_UNKNOWN;
}

void CheckCodeBlock(size_t number, const CODEINFO& head, Findings& findings) {
    if (head.length == 0) findings.Add("code block %llu: empty", Wide(number));
    if (head.module != -1) findings.Add("code block %llu: module is %d", Wide(number), head.module);
    if (!IsMemoryOfSegment(head.mem_type)) {
        findings.Add("code block %llu: memory is %u", Wide(number), head.mem_type);
    }
    if (head.reserved[0] != 0 || head.reserved[1] != 0 || head.reserved[2] != 0) {
        findings.Add("code block %llu: reserved bytes are not zero", Wide(number));
    }
    // Every piece of a block begins in the block's own 64 KB page.
    if (uint64_t{head.address % PAGE} + head.length >= PAGE + LARGEST_PIECE) {
        findings.Add("code block %llu: 0x%x bytes from 0x%x on cross the page", Wide(number),
                     head.length, head.address);
    }
}

bool CodeInOrder(const CodeBlock& a, const CodeBlock& b) {
    return std::tie(a.head.mem_type, a.head.address) < std::tie(b.head.mem_type, b.head.address);
}

bool HasOverlap(std::vector<CodeBlock> code) {
    std::stable_sort(code.begin(), code.end(), CodeInOrder);
    for (size_t i = 1; i < code.size(); ++i) {
        const CODEINFO& a = code[i - 1].head;
        const CODEINFO& b = code[i].head;
        if (a.mem_type == b.mem_type && a.address + a.length > b.address) return true;
    }
    return false;
}

}  // namespace

void CheckRanges(const Fst& fst, Findings& findings) {
    const uint64_t usable = UsableEntries(fst, RANGES);
    if (usable != 0 && !HasCode(fst)) findings.Add("ranges: present without code");
    const bool has_points = HasPoints(fst);
    const bool is_ordered = !ReachesEndOfMemory(fst);
    std::optional<uint32_t> module_before;
    uint64_t end_before = 0;
    for (uint64_t i = 0; i < usable; ++i) {
        const auto range = *ReadEntry<RANGEINFO>(fst, RANGES, i);
        if (range.module >= fst.header.nof_modules) {
            findings.Add("range %llu: no module %u", Wide(i), range.module);
        }
        if (module_before == range.module) {
            findings.Add("range %llu: of the same module as the one before", Wide(i));
        }
        module_before = range.module;
        if (!is_ordered) continue;
        if (has_points && range.length < 2) {
            findings.Add("range %llu: length is %u", Wide(i), range.length);
        }
        const uint64_t end = uint64_t{range.address} + range.length;
        if (end > ADDRESS_SPACE) findings.Add("range %llu: ends outside the memory", Wide(i));
        if (range.length == 0) continue;  // what is left of a stretch that others overruled
        if (range.address < end_before) {
            findings.Add("range %llu: begins at 0x%x, inside or below the one before", Wide(i),
                         range.address);
        }
        end_before = end;
    }
}

void CheckCode(const Fst& fst, Findings& findings) {
    bool is_sorted = true;
    for (size_t i = 0; i < fst.code.size(); ++i) {
        const CODEINFO& head = fst.code[i].head;
        CheckCodeBlock(i, head, findings);
        if (i == 0) continue;
        const CODEINFO& before = fst.code[i - 1].head;
        is_sorted = is_sorted && !CodeInOrder(fst.code[i], fst.code[i - 1]);
        if (before.mem_type == head.mem_type && before.address + before.length == head.address &&
            before.address / PAGE == head.address / PAGE) {
            findings.Add("code block %llu: continues the one before", Wide(i));
        }
    }
    if (!is_sorted && !HasOverlap(fst.code)) findings.Add("code: not sorted, and nothing overlaps");
}

}  // namespace scan695::inspector
