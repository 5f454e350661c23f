#include "scopes/scan_symbol.h"

#include <vector>

#include "input/cursor.h"
#include "input/record_codes.h"
#include "report/report.h"
#include "scopes/add_records.h"
#include "scopes/lifetimes.h"
#include "scopes/scope_state.h"
#include "scopes/symbol_kinds.h"
#include "types/cvt_type.h"

namespace scan695 {

namespace {

void ReadHead(SymbolScan& symbol) {
    symbol.idx = RequireNumber();
    ReadName(symbol.name, sizeof symbol.name);
    if (ReadCode() != CODE_ATN) UnexpectedRecord();
    RequireIndex(symbol.idx);
    symbol.tk_ti = RequireNumber();
    symbol.kind = RequireNumber();
}

// Characters that the stored name loses at its front. C compilers put an underscore there, and
// number the variables that they keep at a base.
uint32_t CountSkipped(const SymbolScan& symbol) {
    if (Scopes.module_record.language != LANGUAGE_C || symbol.name[0] != '_') return 0;
    uint32_t skip = 1;
    if (symbol.kind == ATN_BASED)
        while (symbol.name[skip] >= '0' && symbol.name[skip] <= '9') ++skip;
    return skip;
}

// The index of an NN record, behind its F0. In its short form it has 7 bits, and is compared with
// the low byte of the symbol's.
bool IsIndexOf(const SymbolScan& symbol) {
    if (PeekByte() < 0x80) return ReadByte() == (symbol.idx & 0xFF);
    return RequireNumber() == symbol.idx;
}

// Moves behind the code of the symbol's next ATN record, past NN records that repeat its index. If
// something else comes the cursor stays on it, and the result is false.
bool FindNextAttribute(const SymbolScan& symbol) {
    for (;;) {
        const uint32_t record = Input.InputCursor;
        const uint8_t byte = ReadByte();
        if (byte == BYTE_AT) {
            if (ReadByte() != LETTER_N) UnexpectedRecord();
            return true;
        }
        if (byte != BYTE_NN || !IsIndexOf(symbol)) {
            SeekInput(record);
            return false;
        }
        char ignored[SYMBOL_NAME_SIZE] = {};
        ReadName(ignored, sizeof ignored);
        if (ReadCode() == CODE_ATN) return true;
    }
}

void ReadFollowingRecords(const SymbolScan& symbol, std::vector<TkLoc>& marks) {
    while (FindNextAttribute(symbol)) {
        RequireIndex(symbol.idx);
        RequireNumber();
        if (RequireNumber() != ATN_MISC_63) UnexpectedRecord();
        const uint32_t code = RequireNumber();
        RequireNumber();
        if (code == MISC_PARAMETER)
            Trace("Variable %s is a function parameter\n", symbol.name);
        else if (code == MISC_LIFETIME)
            marks.push_back(ReadLifetimeMark(symbol.idx));
    }
}

SYMINFO MakeRecord(const SymbolScan& symbol) {
    SYMINFO record = {};
    record.value = symbol.value;
    record.type_index = CvtTkType(symbol.tk_ti);
    record.module = Scopes.CurrentModule;
    record.block = Scopes.CurrentBlock;
    record.storage_class = symbol.storage_class;
    record.mem_type = symbol.mem;
    return record;
}

}  // namespace

void ScanSymbol(uint32_t& unterminated) {
    SymbolScan symbol;
    ReadHead(symbol);
    if (!ReadSymbolKind(symbol)) return;
    SYMINFO record = MakeRecord(symbol);
    char* name = symbol.name + CountSkipped(symbol);
    std::vector<TkLoc> marks;
    ReadFollowingRecords(symbol, marks);
    const std::vector<LOCINFO> locations = MakeLocations(marks, unterminated);
    Trace("Symbol: \"%s\" addr=%08X mem=%d type=%u(%u), sc=%x(%u)\n", name, record.value,
          record.mem_type, record.type_index, symbol.tk_ti, uint32_t{record.storage_class},
          symbol.kind);
    AddSymbol(record, name, locations);
}

}  // namespace scan695
