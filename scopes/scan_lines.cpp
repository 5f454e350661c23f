#include "scopes/scan_lines.h"

#include "input/cursor.h"
#include "input/record_codes.h"
#include "report/report.h"
#include "scopes/add_records.h"
#include "scopes/asn.h"
#include "scopes/scope_state.h"
#include "scopes/source_names.h"
#include "scopes/stack_info.h"
#include "stf/stf_scopes.h"
#include "stf/stf_state.h"
#include "store/tables.h"

namespace scan695 {

namespace {

constexpr int NOF_DATE_NUMBERS = 6;

// Makes the file the source of the module. The language of the table follows it; that of the module
// being scanned does not.
void AssignSource(MODULEINFO& record, char* path) {
    if (IsCName(path)) record.language = LANGUAGE_C;
    char* name = BaseName(path);
    record.source_offs = StoreName(CutName(name));
    WriteRecord(Store.ModuleTable, static_cast<uint32_t>(Scopes.CurrentModule), record);
    Trace(" assigning source file \"%s\" to module %x\n", name,
          static_cast<uint32_t>(Scopes.CurrentModule));
    outSource(name, Scopes.CurrentModule, record.language);
}

// True when the file belongs to a module.
bool TieToModule(char* path) {
    if (Scopes.CurrentModule == -1) {
        PrintLine("Source file \"%s\" does not belong to any module\n", path);
        return false;
    }
    const auto module = static_cast<uint32_t>(Scopes.CurrentModule);
    MODULEINFO record = {};
    ReadRecord(Store.ModuleTable, module, record);
    if (record.source_offs == 0)
        AssignSource(record, path);
    else
        Trace(" another source file is already assigned to module %x, ignoring file \"%s\"\n",
              module, path);
    return true;
}

void ReadLineGroup(char* name) {
    const uint32_t idx = RequireNumber();
    ReadName(name, PART_NAME_SIZE);
    Trace("TK_NN: idx=%u, name=%s\n", idx, name);
}

void ReadLine(uint32_t idx) {
    const uint32_t number = RequireNumber();
    RequireNumber();
    OptionalNumber();
    AddLine(ReadAsn(idx), number);
}

void ReadStackAdjust(uint32_t idx) {
    const uint32_t code = RequireNumber();
    const uint32_t num = RequireNumber();
    if (code != MISC_STACK_ADJUST)
        ReportAndStop("Unexpected misc record=%x, num=%u at %x\n", code, num, LastOffset());
    const uint32_t pc = ReadAsn(idx);
    const uint32_t adjust_value = ReadAsn(idx);
    const uint32_t stk_type = num == 3 ? ReadAsn(idx) : 0;
    Trace("Stack Pointer Adjust info: PC=%x, adjust_value=%x, stk_type=%x\n", pc, adjust_value,
          stk_type);
    SetStackAdjust(adjust_value);
    AddStackInfo(pc, adjust_value, stk_type);
}

void ReadLineAttribute() {
    if (ReadByte() != LETTER_N) UnexpectedRecord();
    const uint32_t idx = RequireNumber();
    RequireNumber();
    switch (RequireNumber()) {
        case ATN_LINE:
            return ReadLine(idx);
        case ATN_MISC_64:
            return ReadStackAdjust(idx);
        default:
            UnexpectedRecord();
    }
}

void ReadNestedFile() {
    if (ReadByte() != BB5) UnexpectedRecord();
    RequireNumber();
    Trace("Nested file, scanning lines\n");
    ScanLines();
    Trace("EOB5:End of Nested File\n");
}

void ReadSourceBody() {
    char name[PART_NAME_SIZE] = {};  // a name that does not come leaves the one before
    for (;;) {
        const uint8_t byte = ReadByte();
        switch (byte) {
            case BYTE_NN:
                ReadLineGroup(name);
                break;
            case BYTE_AT:
                ReadLineAttribute();
                break;
            case BYTE_BB:
                ReadNestedFile();
                break;
            case BYTE_BE:
                return;
            default:
                UnexpectedRecordByte(byte);
        }
    }
}

}  // namespace

void ScanLines() {
    const NestingGuard guard(Scopes.file_nesting);
    char* path = Scopes.source_path;
    *path = '\0';
    ReadName(path, sizeof Scopes.source_path);
    Trace("Source file=\"%s\"\n", path);
    const int32_t levels = TieToModule(path) ? 1 : 0;
    Stf.SourceDepth += levels;
    for (int i = 0; i < NOF_DATE_NUMBERS; ++i) OptionalNumber();
    ReadSourceBody();
    Stf.SourceDepth -= levels;
}

}  // namespace scan695
