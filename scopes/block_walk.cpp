#include "scopes/block_walk.h"

#include "input/cursor.h"
#include "input/record_codes.h"
#include "report/report.h"
#include "scopes/add_records.h"
#include "scopes/lifetime_fixup.h"
#include "scopes/scan_symbol.h"
#include "scopes/scope_state.h"
#include "stf/stf_scopes.h"
#include "stf/stf_state.h"
#include "store/tables.h"
#include "types/cvt_type.h"

namespace scan695 {

namespace {

struct BlockHead {
    char name[SYMBOL_NAME_SIZE] = {};
    uint32_t stack = 0;
    uint32_t tk_ti = 0;
    uint32_t address = 0;

    bool IsFunction() const { return name[0] != '\0'; }
    const char* Kind() const { return IsFunction() ? "Function" : "Block"; }
};

void ReadBlockHead(BlockHead& head) {
    ReadName(head.name, sizeof head.name);
    if (ReadNumber(head.stack) == 0) UnexpectedRecordByte(0);
    SetStackAdjust(head.stack);
    head.tk_ti = RequireNumber();
    head.address = RequireNumber();
    OptionalNumber();
}

void AddFunctionSymbol(BlockHead& head, uint32_t fst_ti, bool is_global) {
    SYMINFO record = {};
    record.value = head.address;
    record.module = Scopes.CurrentModule;
    record.block = -1;
    record.type_index = fst_ti;
    record.storage_class = is_global ? STORAGE_GLOBAL : STORAGE_STATIC;
    record.mem_type = MEM_CODE;
    AddSymbol(record, head.name, {});
}

// The function's symbol is tied to its block by the address alone.
void OpenBlock(BlockHead& head, bool is_global) {
    Scopes.OuterBlocks.push_back(Scopes.CurrentBlockRecord);
    BLOCKINFO& record = Scopes.CurrentBlockRecord;
    record = {};
    record.address = head.address;
    record.parent = Scopes.CurrentBlock;
    record.module = Scopes.CurrentModule;
    record.is_function = head.IsFunction() ? 1 : 0;
    const uint32_t fst_ti = CvtTkType(head.tk_ti);
    Trace("%s %s \"%s\" begin: addr=%X, idx=%u(%u), stack=%u\n", is_global ? "Global" : "Static",
          head.Kind(), head.name, head.address, fst_ti, head.tk_ti, head.stack);
    Scopes.CurrentBlock = AddBlock(record);
    if (head.IsFunction()) AddFunctionSymbol(head, fst_ti, is_global);
}

void CloseBlock(const BlockHead& head, uint32_t unterminated) {
    const uint32_t end_address = RequireNumber();
    BLOCKINFO& record = Scopes.CurrentBlockRecord;
    record.size = end_address - head.address + 1;
    Trace("%s end: addr=%X, size=%X, nof_symbols=%u\n", head.Kind(), end_address, record.size,
          Store.Header.nof_block_symbols - record.first_symbol);
    outBlockEnd(Scopes.CurrentBlock, head.address, end_address);
    FinishBlock(Scopes.CurrentBlock, record);
    if (unterminated != 0) CloseLifetimes(record.first_symbol, end_address);
    Scopes.CurrentBlock = record.parent;
    record = Scopes.OuterBlocks.back();
    Scopes.OuterBlocks.pop_back();
    SetStackAdjust(0);
}

void ScanFunctionBlock(uint32_t length, bool is_global);

// A nested block, behind the F8. Inside a block only BB6 may stand, in a module BB4 as well.
void ScanNestedBlock(bool in_module) {
    const uint8_t kind = ReadByte();
    if (kind != BB6 && !(in_module && kind == BB4)) UnexpectedRecord();
    const uint32_t length = RequireNumber();
    ScanFunctionBlock(length, kind == BB4);
}

void ScanBlockBody(uint32_t& unterminated) {
    for (;;) {
        switch (ReadByte()) {
            case BYTE_NN:
                ScanSymbol(unterminated);
                break;
            case BYTE_BB:
                ScanNestedBlock(false);
                break;
            case BYTE_BE:
                return;
            default:
                UnexpectedRecord();
        }
    }
}

// `length` is for the trace only: the F9 ends the block.
void ScanFunctionBlock(uint32_t length, bool is_global) {
    const NestingGuard guard(Scopes.block_nesting);
    Trace("Begin ScanFunctionBlock( %x, %u )\n", length, is_global ? 1U : 0U);
    BlockHead head;
    ReadBlockHead(head);
    OpenBlock(head, is_global);
    uint32_t unterminated = 0;
    ScanBlockBody(unterminated);
    CloseBlock(head, unterminated);
    Trace("End ScanFunctionBlock(...)\n");
}

}  // namespace

void ScanModuleScope() {
    uint32_t unterminated = 0;  // nothing ends the lifetimes of a module's own variables
    for (;;) {
        const uint8_t byte = ReadByte();
        switch (byte) {
            case BYTE_NN:
                ScanSymbol(unterminated);
                break;
            case BYTE_BB:
                ScanNestedBlock(true);
                break;
            case BYTE_BE:
                return;
            default:
                UnexpectedRecordByte(byte);
        }
    }
}

}  // namespace scan695
