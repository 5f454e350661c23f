#include "dwarf/locations.h"

#include <algorithm>

#include "dwarf/constants.h"

namespace scan695::dwarf {

namespace {

constexpr uint32_t WHOLE_REGISTER = 32;  // registers below it have operations of their own
constexpr uint32_t WORD_BYTES = 2;

// The numbers of registers in DWARF. TriCore: as the input has them. The others: words R0 to R15
// from 0, halves RL0, RH0, RL1 and so on from 16, the stack pointer of those that keep it apart
// behind them.
constexpr uint32_t FIRST_HALF = 16;
constexpr uint32_t C166_STACK_POINTER = 0;  // R0 points to the user stack
constexpr uint32_t OTHER_STACK_POINTER = 48;
constexpr uint32_t TRICORE_STACK_POINTER = 26;  // A10

void PutRegister(Bytes& out, uint32_t number) {
    if (number < WHOLE_REGISTER) {
        Put8(out, OP_REG0 + number);
    } else {
        Put8(out, OP_REGX);
        PutUleb(out, number);
    }
}

void PutPiece(Bytes& out, uint32_t number) {
    PutRegister(out, number);
    Put8(out, OP_PIECE);
    PutUleb(out, WORD_BYTES);
}

Bytes RegisterExpression(uint8_t processor, uint32_t value) {
    Bytes expression;
    const uint32_t low = value >> 1 & 15;
    const uint32_t high = value >> 5 & 15;
    const uint32_t register_class = value >> 12 & 15;
    if (processor == PROCESSOR_TRICORE) {
        PutRegister(expression, value);
    } else if (register_class == 4) {
        PutPiece(expression, low);
        PutPiece(expression, high);
    } else if (register_class == 2) {
        PutRegister(expression, FIRST_HALF + 2 * low + (value & 1));
    } else {
        PutRegister(expression, low);
    }
    return expression;
}

uint32_t StackPointer(uint8_t processor) {
    if (processor == PROCESSOR_TRICORE) return TRICORE_STACK_POINTER;
    return processor == PROCESSOR_C166 ? C166_STACK_POINTER : OTHER_STACK_POINTER;
}

}  // namespace

Bytes AddressExpression(uint32_t address) {
    Bytes expression;
    Put8(expression, OP_ADDR);
    Put32(expression, address);
    return expression;
}

Bytes PlaceExpression(uint8_t processor, uint8_t storage_class, uint32_t value) {
    Bytes expression;
    switch (storage_class) {
        case STORAGE_GLOBAL:
        case STORAGE_STATIC:
            return AddressExpression(value);
        case STORAGE_AUTO:
            Put8(expression, OP_FBREG);
            PutSleb(expression, static_cast<int32_t>(value));
            return expression;
        case STORAGE_REGISTER:
            return RegisterExpression(processor, value);
        default:
            return expression;
    }
}

Bytes FrameExpression(uint8_t processor, uint32_t adjustment) {
    Bytes expression;
    const uint32_t pointer = StackPointer(processor);
    if (pointer < WHOLE_REGISTER) {
        Put8(expression, OP_BREG0 + pointer);
    } else {
        Put8(expression, OP_BREGX);
        PutUleb(expression, pointer);
    }
    PutSleb(expression, static_cast<int32_t>(adjustment));
    return expression;
}

std::vector<LOCINFO> LocationsOf(const inspector::Fst& fst, const SYMINFO& symbol) {
    std::vector<LOCINFO> locations;
    const uint32_t count =
        symbol.locinfo_offs == 0 ? 0 : inspector::StoredElements(symbol.nof_locs);
    for (uint32_t i = 0; i < count; ++i) {
        LOCINFO location;
        const uint64_t offset = symbol.locinfo_offs + uint64_t{i} * sizeof location;
        if (!inspector::ReadAt(fst, offset, location)) break;
        locations.push_back(location);
    }
    return locations;
}

std::vector<Lifetime> VariableLifetimes(uint8_t processor, const std::vector<LOCINFO>& locations) {
    std::vector<Lifetime> lifetimes;
    for (const LOCINFO& location : locations) {
        const Bytes place = PlaceExpression(processor, location.storage_class, location.value);
        if (location.beg_address < location.end_address && !place.empty())
            lifetimes.push_back({location.beg_address, location.end_address, place});
    }
    return lifetimes;
}

std::vector<Lifetime> FrameLifetimes(uint8_t processor, std::vector<LOCINFO> adjustments,
                                     uint32_t begin, uint32_t end) {
    std::stable_sort(
        adjustments.begin(), adjustments.end(),
        [](const LOCINFO& a, const LOCINFO& b) { return a.beg_address < b.beg_address; });
    std::vector<Lifetime> lifetimes;
    uint32_t told = begin;  // up to here
    const auto fill_up_to = [&](uint32_t address) {
        if (told < address) lifetimes.push_back({told, address, FrameExpression(processor, 0)});
    };
    for (const LOCINFO& adjustment : adjustments) {
        if (adjustment.beg_address >= adjustment.end_address) continue;
        fill_up_to(std::min(adjustment.beg_address, end));
        lifetimes.push_back({adjustment.beg_address, adjustment.end_address,
                             FrameExpression(processor, adjustment.value)});
        told = std::max(told, adjustment.end_address);
    }
    fill_up_to(end);
    return lifetimes;
}

uint32_t AppendList(Bytes& loc, const std::vector<Lifetime>& lifetimes) {
    const uint32_t offset = Size32(loc);
    Put32(loc, BASE_SELECTION);
    Put32(loc, 0);
    for (const Lifetime& lifetime : lifetimes) {
        Put32(loc, lifetime.begin);
        Put32(loc, lifetime.end);
        Put16(loc, Size32(lifetime.expression));
        PutBytes(loc, lifetime.expression);
    }
    Put32(loc, 0);
    Put32(loc, 0);
    return offset;
}

}  // namespace scan695::dwarf
