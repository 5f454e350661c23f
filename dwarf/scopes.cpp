#include "dwarf/scopes.h"

#include <algorithm>

#include "dwarf/locations.h"
#include "dwarf/type_fields.h"
#include "inspector/lookup.h"

namespace scan695::dwarf {

namespace {

constexpr uint32_t BITS_OF_BYTE = 8;

class ScopeWriter {
  public:
    ScopeWriter(const Program& program, const BlockCode& code, uint32_t base, Types& types,
                UnitSections& sections, EntryWriter& writer)
        : program_(program),
          processor_(program.fst.header.processor),
          code_(code),
          base_(base),
          types_(types),
          sections_(sections),
          writer_(writer) {}

    // Blocks nest as deep as the file says, so there is no recursion.
    void Write(uint32_t scope) {
        std::vector<Level> levels;
        EnterScope(scope, levels);
        while (!levels.empty()) {
            Level& level = levels.back();
            if (level.next == level.blocks.size()) {
                writer_.EndList();
                levels.pop_back();
                continue;
            }
            const uint32_t block = level.blocks[level.next++];
            if (WriteBlock(block)) EnterScope(block, levels);
        }
    }

  private:
    struct Level {
        std::span<const uint32_t> blocks;
        size_t next = 0;
    };

    void EnterScope(uint32_t scope, std::vector<Level>& levels) {
        for (const uint32_t symbol : program_.scope_symbols[scope]) WriteSymbol(symbol);
        levels.push_back({program_.scope_blocks[scope]});
    }

    // Gives true if the block has children, of which the parameters are written then.
    bool WriteBlock(uint32_t number) {
        const BLOCKINFO& block = program_.blocks[number];
        const uint32_t symbol = program_.block_function[number];
        const bool has_children =
            !program_.scope_symbols[number].empty() || !program_.scope_blocks[number].empty();
        if (block.is_function == 0) {
            writer_.Begin(TAG_LEXICAL_BLOCK);
            AddCode(writer_, sections_.ranges, code_[number], base_);
            writer_.End(has_children);
            return has_children;
        }
        const Signature signature =
            symbol == NONE ? Signature{} : SignatureOf(program_.symbols[symbol].type_index);
        const bool has_list = has_children || !signature.parameters.empty();
        writer_.Begin(TAG_SUBPROGRAM);
        if (symbol != NONE) AddFunction(program_.symbols[symbol], signature);
        AddCode(writer_, sections_.ranges, code_[number], base_);
        AddFrameBase(block, symbol);
        writer_.End(has_list);
        WriteParameters(writer_, types_, signature.record, signature.parameters);
        return has_list;
    }

    // The type of a function: its record and what it says.
    struct Signature {
        uint32_t record = 0;
        uint32_t result = TYPE_VOID;
        std::vector<FIELDINFO> parameters;
    };

    Signature SignatureOf(uint32_t type_index) const {
        const auto found = inspector::FindType(program_.fst, type_index);
        if (!found || found->type.type_tag != TAG_FUNCTION) return {};
        return {found->record, found->type.u.function.type_index,
                FieldsOf(program_.fst, found->type)};
    }

    void AddFunction(const SYMINFO& symbol, const Signature& signature) {
        AddName(symbol);
        writer_.Type(types_.At({signature.record, 0}, signature.result));
        if (!signature.parameters.empty()) writer_.Flag(AT_PROTOTYPED);
    }

    void AddName(const SYMINFO& symbol) {
        writer_.Name(NameOf(program_.fst, symbol.name_offs));
        if (symbol.storage_class == STORAGE_GLOBAL) writer_.Flag(AT_EXTERNAL);
    }

    void AddFrameBase(const BLOCKINFO& block, uint32_t symbol) {
        std::vector<LOCINFO> adjustments;
        if (symbol != NONE) adjustments = LocationsOf(program_.fst, program_.symbols[symbol]);
        if (adjustments.empty() || block.size == 0) {
            writer_.Expression(AT_FRAME_BASE, FrameExpression(processor_, 0));
            return;
        }
        const uint64_t end = std::min<uint64_t>(uint64_t{block.address} + block.size, OPEN_END);
        writer_.Offset(
            AT_FRAME_BASE,
            AppendList(sections_.loc, FrameLifetimes(processor_, adjustments, block.address,
                                                     static_cast<uint32_t>(end))));
    }

    void WriteSymbol(uint32_t number) {
        const SYMINFO& symbol = program_.symbols[number];
        switch (program_.kinds[number]) {
            case SymbolKind::FUNCTION:
                return WriteBareFunction(symbol);
            case SymbolKind::LABEL:
                writer_.Begin(TAG_LABEL);
                AddName(symbol);
                writer_.Address(AT_LOW_PC, symbol.value);
                return writer_.End(false);
            default:
                return WriteVariable(symbol, program_.kinds[number]);
        }
    }

    // One that has no block.
    void WriteBareFunction(const SYMINFO& symbol) {
        const Signature signature = SignatureOf(symbol.type_index);
        const bool has_list = !signature.parameters.empty();
        writer_.Begin(TAG_SUBPROGRAM);
        AddFunction(symbol, signature);
        writer_.Address(AT_LOW_PC, symbol.value);
        writer_.End(has_list);
        WriteParameters(writer_, types_, signature.record, signature.parameters);
        if (has_list) writer_.EndList();
    }

    void WriteVariable(const SYMINFO& symbol, SymbolKind kind) {
        const bool is_bit = kind == SymbolKind::BIT;
        writer_.Begin(TAG_VARIABLE);
        AddName(symbol);
        writer_.Type(is_bit ? types_.OfBit(symbol.value % BITS_OF_BYTE)
                            : types_.Of(symbol.type_index));
        if (symbol.mem_type != MEM_CODE && symbol.mem_type != MEM_DATA &&
            symbol.mem_type != MEM_UNKNOWN && symbol.mem_type != MEM_REGISTER)
            writer_.Byte(AT_ADDRESS_CLASS, static_cast<uint8_t>(symbol.mem_type));
        AddLocation(symbol, kind);
        writer_.End(false);
    }

    void AddLocation(const SYMINFO& symbol, SymbolKind kind) {
        const std::vector<LOCINFO> locations = LocationsOf(program_.fst, symbol);
        if (!locations.empty()) {
            const std::vector<Lifetime> lifetimes = VariableLifetimes(processor_, locations);
            if (!lifetimes.empty())
                writer_.Offset(AT_LOCATION, AppendList(sections_.loc, lifetimes));
            return;
        }
        const bool is_register = kind == SymbolKind::REGISTER;
        const uint8_t storage = is_register ? uint8_t{STORAGE_REGISTER} : symbol.storage_class;
        const Bytes place = kind == SymbolKind::BIT
                                ? AddressExpression(symbol.value / BITS_OF_BYTE)
                                : PlaceExpression(processor_, storage, symbol.value);
        if (!place.empty()) writer_.Expression(AT_LOCATION, place);
    }

    const Program& program_;
    uint8_t processor_;
    const BlockCode& code_;
    uint32_t base_;
    Types& types_;
    UnitSections& sections_;
    EntryWriter& writer_;
};

}  // namespace

void WriteScope(const Program& program, const BlockCode& code, uint32_t scope, uint32_t base,
                Types& types, UnitSections& sections, EntryWriter& writer) {
    ScopeWriter(program, code, base, types, sections, writer).Write(scope);
}

}  // namespace scan695::dwarf
