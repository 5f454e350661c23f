#include "scopes/symbol_kinds.h"

#include <cstring>

#include "input/record_codes.h"
#include "report/report.h"
#include "scopes/add_records.h"
#include "scopes/asn.h"
#include "scopes/conversions.h"
#include "scopes/external_value.h"
#include "scopes/function_peek.h"
#include "scopes/scope_state.h"
#include "store/tables.h"
#include "types/cvt_type.h"

namespace scan695 {

namespace {

void SetPlace(SymbolScan& symbol, uint32_t value, StorageClass storage_class, int8_t mem) {
    symbol.value = value;
    symbol.storage_class = storage_class;
    symbol.mem = mem;
}

bool ReadAuto(SymbolScan& symbol) {
    SetPlace(symbol, RequireNumber(), STORAGE_AUTO, MEM_DATA);
    Trace("     Auto Var=%s\n", symbol.name);
    return true;
}

bool ReadLivingRegister(SymbolScan& symbol) {
    SetPlace(symbol, RequireNumber(), STORAGE_REGISTER, MEM_REGISTER);
    Trace("     Living REG=%s, x1=%x\n", symbol.name, symbol.value);
    return true;
}

bool ReadLockedRegister(SymbolScan& symbol) {
    const uint32_t x1 = RequireNumber();
    const uint32_t x2 = RequireNumber();
    SetPlace(symbol, x1, STORAGE_REGISTER, MEM_REGISTER);
    Trace("     Locked REG=%s, x1=%x, x2=%x\n", symbol.name, x1, x2);
    return true;
}

// A variable at an address, with an optional memory id.
bool ReadVariable(SymbolScan& symbol, const char* what, StorageClass storage_class) {
    uint32_t x1 = 0;
    const int8_t mem = ReadNumber(x1) != 0 ? CvtTkMemType(x1) : int8_t{MEM_DATA};
    Trace("     %s Var=%s, x1=%x\n", what, symbol.name, x1);
    SetPlace(symbol, ReadAsn(symbol.idx), storage_class, mem);
    return true;
}

bool ReadStatic(SymbolScan& symbol) {
    return ReadVariable(symbol, "Static", STORAGE_STATIC);
}
bool ReadGlobal(SymbolScan& symbol) {
    return ReadVariable(symbol, "Global", STORAGE_GLOBAL);
}

bool ReadExternalFunction(SymbolScan& symbol) {
    RequireNumber();
    const uint32_t address = ReadAsn(symbol.idx);
    Trace("IGNORE Ext Func=%s at %X\n", symbol.name, address);
    return false;
}

bool ReadExternalVariable(SymbolScan& symbol) {
    const uint32_t address = ReadAsn(symbol.idx);
    Trace("IGNORE Ext Var=%s at %X\n", symbol.name, address);
    return false;
}

// A source line of an assembled module; in others lines stand in their own block.
bool ReadLine(SymbolScan& symbol) {
    if (Scopes.module_record.language != LANGUAGE_ASM) UnexpectedRecord();
    const uint32_t number = RequireNumber();
    RequireNumber();
    OptionalNumber();
    AddLine(ReadAsn(symbol.idx), number);
    return false;
}

bool ReadBased(SymbolScan& symbol) {
    uint32_t x[5] = {};
    for (uint32_t& number : x) number = RequireNumber();
    Trace("     Based Var=%s", symbol.name);
    const uint32_t offset = ReadAsn(symbol.idx);
    Trace(" offs=%X x1=%X x2=%X x3=%X x4=%X x5=%X\n", offset, x[0], x[1], x[2], x[3], x[4]);
    SetPlace(symbol, offset, x[2] == 0 ? STORAGE_STATIC : STORAGE_GLOBAL, MEM_UNKNOWN);
    return true;
}

// The last value counts, be it a number of the record or a record behind it.
bool ReadConstant(SymbolScan& symbol) {
    RequireNumber();
    const uint32_t x2 = OptionalNumber();
    uint32_t value = OptionalNumber();
    OptionalNumber();
    Trace("     Constant=%s\n", symbol.name);
    while (ReadOptionalAsn(symbol.idx, value)) {
    }
    SetPlace(symbol, value, x2 == 0 ? STORAGE_STATIC : STORAGE_GLOBAL, MEM_UNKNOWN);
    return true;
}

bool IsFunctionType(uint32_t tk_ti) {
    const uint32_t fst_ti = CvtTkType(tk_ti);
    if (!IsRecordType(fst_ti)) return false;
    TYPEINFO type = {};
    ReadRecord(Store.TypeTable, fst_ti - FIRST_TYPE_INDEX, type);
    return type.type_tag == TAG_FUNCTION;
}

// The linked address stands in the external part, or in the function's block behind the symbol.
void FindAsmAddress(SymbolScan& symbol) {
    if (FindExternalValue(symbol.name, symbol.value)) return;
    if (IsFunctionType(symbol.tk_ti)) PeekFunctionAddress(symbol.name, symbol.value);
}

bool ReadAsmSymbol(SymbolScan& symbol) {
    uint32_t x1 = 0;
    uint32_t x2 = 0;
    if (ReadNumber(x1) != 0) {
        symbol.mem = CvtTkMemType(x1);
        ReadNumber(x2);
    }
    symbol.storage_class = x2 == 0 ? STORAGE_STATIC : STORAGE_GLOBAL;
    Trace("     Asm Var=%s, x1=%X, x2=%X\n", symbol.name, x1, x2);
    symbol.value = ReadAsn(symbol.idx);
    if (symbol.name[0] == '\0') return false;
    FindAsmAddress(symbol);
    if (symbol.storage_class == STORAGE_GLOBAL && symbol.name[0] == '_')
        std::memmove(symbol.name, symbol.name + 1, std::strlen(symbol.name));
    return true;
}

[[noreturn]] void StopAtMissingAsn() {
    const uint32_t byte = ReadByte();
    ReportAndStop("Not ASN record = %x at %x\n", byte, Input.InputCursor);
}

// In spite of the word in the trace, these make symbols.
bool ReadMiscellaneous(SymbolScan& symbol) {
    Trace("Record=%#x, ignore\n", symbol.kind);
    RequireNumber();
    for (uint32_t rest = RequireNumber(); rest > 0; --rest)
        if (!ReadOptionalAsn(symbol.idx, symbol.value)) StopAtMissingAsn();
    return true;
}

bool ReadMiscellaneousNumber(SymbolScan& symbol) {
    Trace("Record=%#x, ignore\n", symbol.kind);
    OptionalNumber();
    return true;
}

constexpr struct {
    AttributeCode kind;
    bool (*read)(SymbolScan& symbol);
} SYMBOL_KINDS[] = {
    {ATN_AUTO, ReadAuto},
    {ATN_LIVING_REGISTER, ReadLivingRegister},
    {ATN_STATIC, ReadStatic},
    {ATN_EXTERNAL_FUNCTION, ReadExternalFunction},
    {ATN_EXTERNAL_VARIABLE, ReadExternalVariable},
    {ATN_LINE, ReadLine},
    {ATN_GLOBAL, ReadGlobal},
    {ATN_LOCKED_REGISTER, ReadLockedRegister},
    {ATN_BASED, ReadBased},
    {ATN_CONSTANT, ReadConstant},
    {ATN_ASM_SYMBOL, ReadAsmSymbol},
    {ATN_MISC_62, ReadMiscellaneous},
    {ATN_MISC_63, ReadMiscellaneous},
    {ATN_MISC_64, ReadMiscellaneous},
    {ATN_MISC_65, ReadMiscellaneousNumber},
};

}  // namespace

bool ReadSymbolKind(SymbolScan& symbol) {
    for (const auto& entry : SYMBOL_KINDS)
        if (entry.kind == symbol.kind) return entry.read(symbol);
    UnexpectedRecord();
}

}  // namespace scan695
