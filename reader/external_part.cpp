// The external part: the public symbols of the program with their addresses.
//
//     E5 segment                                  sets the segment, for the trace only
//     E8 index name
//     F1 C9 index type attribute [memory id]
//     E2 C9 index address                         without it the group makes no symbol
#include "reader/external_part.h"

#include "input/cursor.h"
#include "reader/parts.h"
#include "report/report.h"
#include "scopes/conversions.h"
#include "scopes/scope_state.h"
#include "scopes/symbols.h"
#include "store/tables.h"
#include "types/cvt_type.h"

namespace scan695 {

namespace {

constexpr uint32_t FIRST_SYMBOL_INDEX = 32;

struct PublicSymbol {
    uint32_t index;
    uint32_t tk_ti;
    uint32_t attribute;
    uint32_t memory_id;
    uint32_t address;
};

constexpr uint32_t ATTRIBUTE_CONSTANT = 16;

constexpr struct {
    uint32_t attribute;
    StorageClass storage_class;
} ATTRIBUTES[] = {
    {8, STORAGE_STATIC},
    {ATTRIBUTE_CONSTANT, STORAGE_STATIC},
    {19, STORAGE_GLOBAL},
    {20, STORAGE_STATIC},
};

StorageClass StorageClassOf(uint32_t attribute) {
    for (const auto& entry : ATTRIBUTES)
        if (entry.attribute == attribute) return entry.storage_class;
    UnexpectedRecord();
}

void ReadSegmentRecord() {
    const uint32_t segment = RequireNumber();
    Trace("CurrSeg=%u\n", segment);
}

void AddPublicSymbol(const PublicSymbol& symbol, char* name, int8_t mem_type) {
    SYMINFO record = {};
    record.value = symbol.address;
    record.type_index = CvtTkType(symbol.tk_ti);
    record.storage_class = StorageClassOf(symbol.attribute);
    record.mem_type = symbol.attribute == ATTRIBUTE_CONSTANT ? int8_t{MEM_UNKNOWN} : mem_type;
    record.module = -1;
    record.block = -1;
    Trace("Ext symbol: \"%s\" addr=%08X mem=%d type=%u(%u), sc=%x(%u)\n", name, record.value,
          record.mem_type, record.type_index, symbol.tk_ti, uint32_t{record.storage_class},
          symbol.attribute);
    AddSymbol(record, name, 0, nullptr);
}

// An absent memory id leaves the index in its place. Bytes other than an ASI record are passed.
void ReadGroup(char* buffer) {
    PublicSymbol symbol = {};
    symbol.index = RequireNumber();
    if (symbol.index < FIRST_SYMBOL_INDEX) UnexpectedRecord();
    ReadName(buffer, SYMBOL_NAME_SIZE);
    if (ReadCode() != CODE_ATI) UnexpectedRecord();
    RequireIndex(symbol.index);
    symbol.tk_ti = RequireNumber();
    symbol.attribute = RequireNumber();
    StorageClassOf(symbol.attribute);
    symbol.memory_id = OptionalNumber(symbol.index);
    if (ReadCode() != CODE_ASI) return;
    const int8_t mem_type = CvtTkMemType(symbol.memory_id);
    RequireIndex(symbol.index);
    if (ReadNumber(symbol.address) == 0) StopAtLastOffset("Unrecognized value at %x\n");
    char* name = buffer[0] == '_' ? buffer + 1 : buffer;
    if (SymbolDefined(name))
        Trace("Ext symbol: \"%s\" already defined -- ignore\n", name);
    else
        AddPublicSymbol(symbol, name, mem_type);
}

// False for a byte that ends the part.
bool ReadExternalRecord(uint8_t byte, char* name) {
    switch (byte) {
        case BYTE_SB:
            ReadSegmentRecord();
            return true;
        case BYTE_NI:
            ReadGroup(name);
            return true;
        default:
            return false;
    }
}

}  // namespace

bool SymbolDefined(const char* name) {
    NameIndex& names = Scopes.Indexes.GlobalNames;
    if (names.Update<SYMINFO>(Store.GlobalSymbolTable, Store.Header.nof_global_symbols) == 0)
        ReportAndStop("Cannot SEEK for SymName\n");
    return names.Contains(name);
}

void ScanExternalPart(uint32_t offset) {
    Trace("Begin of External Part\n");
    const PartFrame frame(offset);
    char name[SYMBOL_NAME_SIZE] = {};
    uint32_t records = 0;
    uint8_t byte = ReadByte();
    for (; ReadExternalRecord(byte, name); byte = ReadByte()) ++records;
    if (records == 0) UnexpectedRecord();
    Trace("End of External Part, rec=%x\n", uint32_t{byte});
}

}  // namespace scan695
