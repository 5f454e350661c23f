#include "types/definitions.h"

#include "report/report.h"

namespace scan695 {

namespace {

struct DefinitionReader {
    char letter;
    uint32_t (*scan)(const Definition&);
};
constexpr DefinitionReader DEFINITION_READERS[] = {
    {'x', ScanFunctionType}, {'Z', ScanArray},       {'n', ScanPointerAttribute},
    {'O', ScanPointer},      {'P', ScanPointer},     {'S', ScanStructUnion},
    {'U', ScanStructUnion},  {'N', ScanEnumeration}, {'T', ScanTypedef},
    {'t', ScanTypedef},      {'g', ScanBitfield},    {'Q', ScanQualifier},
};

}  // namespace

// NOLINTNEXTLINE(readability-non-const-parameter): storing the name may cut it
uint32_t ScanType(uint32_t tk_idx, int32_t level, char* name) {
    const NestingGuard guard(Types.nesting);
    Types.BitfieldsPending = false;
    const uint32_t letter = NumberOrStop("Cannot scan type index at %X\n");
    Trace("ScanType(tk_idx=%u, level=%d) type_idx=%#x (%c)\n", tk_idx, level, letter,
          letter >= 0x20 && letter <= 0x7E ? static_cast<int>(letter) : '.');
    const Definition definition = {letter, tk_idx, level, name};
    for (const DefinitionReader& reader : DEFINITION_READERS)
        if (static_cast<uint32_t>(reader.letter) == letter) return reader.scan(definition);
    return ScanReference(definition);
}

}  // namespace scan695
