// The top level of the debug information part: a sequence of blocks, each with a head and a body
// that another room reads up to and including its F9.
//
//     F8 01 length name        BB1, types of a module
//     F8 02 length name        BB2, types of the program
//     F8 03 length name        BB3, scopes of a compiled module, whose BB1 stands in front
//     F8 05 length             BB5, lines of a source file
//     F8 0A length name name number name 6 numbers    BB10, an assembled module
#include <cstring>

#include "input/cursor.h"
#include "input/record_codes.h"
#include "reader/parts.h"
#include "report/report.h"
#include "scopes/add_records.h"
#include "scopes/asm_module.h"
#include "scopes/block_walk.h"
#include "scopes/scan_lines.h"
#include "scopes/scope_state.h"
#include "scopes/source_names.h"
#include "scopes/stack_info.h"
#include "types/types_block.h"

namespace scan695 {

namespace {

// Names that do not come leave what the block before has left.
struct DebugWalk {
    char module_name[BLOCK_NAME_SIZE] = {};  // of the last BB1, BB2 or BB10 block
    char second_name[BLOCK_NAME_SIZE] = {};  // of a BB3 block; scratch for BB10
};

void CloseStackInfo() {
    AddStackInfo(0, 0, STACK_INFO_CLOSE);
}

void ReadTypesBlock(DebugWalk& walk) {
    RequireNumber();
    ReadName(walk.module_name, BLOCK_NAME_SIZE);
    Trace("Module=%s, scanning unique types\n", walk.module_name);
    ScanTypes();
    Trace("EOB1:End of Types\n");
}

void ReadScopeBlock(DebugWalk& walk) {
    RequireNumber();
    ReadName(walk.second_name, BLOCK_NAME_SIZE);
    if (std::strcmp(walk.second_name, walk.module_name) != 0) UnexpectedRecord();
    Scopes.module_record = {};
    Scopes.module_record.language = IsCName(walk.second_name) ? LANGUAGE_C : LANGUAGE_ASM;
    char* name = ModuleNameOf(walk.second_name);
    CloseStackInfo();
    Scopes.CurrentModule = AddModule(Scopes.module_record, name);
    Trace("Module %d = \"%s\", scanning scope info\n", Scopes.CurrentModule, name);
    ScanModuleScope();
    Trace("EOB3:End of Module\n");
}

void ReadLinesBlock(DebugWalk& walk) {
    RequireNumber();
    Trace("Module=%s, scanning lines\n", walk.module_name);
    ScanLines();
    Trace("EOB5:End of Module\n");
}

// Of the head the first name counts.
void ReadAsmHead(DebugWalk& walk) {
    RequireNumber();
    ReadName(walk.module_name, BLOCK_NAME_SIZE);
    ReadName(walk.second_name, BLOCK_NAME_SIZE);
    OptionalNumber();
    ReadName(walk.second_name, BLOCK_NAME_SIZE);
    for (int i = 0; i < 6; ++i) OptionalNumber();
    Trace("BB10:%s\n", walk.module_name);
}

// A module that is known already gets no second record; what the block holds goes to the module
// added last.
void ReadAsmBlock(DebugWalk& walk) {
    ReadAsmHead(walk);
    Scopes.module_record = {};
    Scopes.module_record.language = LANGUAGE_ASM;
    char* name = ModuleNameOf(walk.module_name);
    if (ModuleExists(name))
        Trace("Module \"%s\" already added, now ignoring\n", name);
    else
        Scopes.CurrentModule = AddModule(Scopes.module_record, name);
    Trace("AsmModule %d = \"%s\"\n", Scopes.CurrentModule, name);
    ScanAsmModule();
    Trace("EOB10:End of AsmModule\n");
}

constexpr struct {
    BlockKind kind;
    void (*read)(DebugWalk& walk);
} BLOCKS[] = {
    {BB1, ReadTypesBlock}, {BB2, ReadTypesBlock}, {BB3, ReadScopeBlock},
    {BB5, ReadLinesBlock}, {BB10, ReadAsmBlock},
};

// False for a code that is no block.
bool ReadBlock(DebugWalk& walk, uint16_t code) {
    for (const auto& block : BLOCKS) {
        if (CodeOf(BYTE_BB, block.kind) != code) continue;
        block.read(walk);
        return true;
    }
    return false;
}

}  // namespace

void ScanDebugInfoPart(uint32_t offset) {
    Trace("Begin of Debug Info, fpos=%x\n", offset);
    const PartFrame frame(offset);
    DebugWalk walk;
    uint32_t blocks = 0;
    uint16_t code = ReadCode();
    for (; ReadBlock(walk, code); code = ReadCode()) ++blocks;
    if (blocks == 0) UnexpectedRecord();
    CloseStackInfo();
    FreeWalkIndexes();
    Trace("End of Debug Info part, rec=%x\n", uint32_t{code});
}

}  // namespace scan695
