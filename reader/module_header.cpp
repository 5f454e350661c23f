// The module header, from offset 0:
//
//     E0 processor name, module name        MB
//     EC bits per MAU, MAUs per address     AD, then CC or CD: byte order, may be absent
//     E2 D7 n offset                        ASW n, n from 0 to 7: where a part stands, 0 for none
#include "reader/module_header.h"

#include "input/cursor.h"
#include "input/processor.h"
#include "input/record_codes.h"
#include "reader/parts.h"
#include "report/report.h"
#include "scopes/scope_state.h"
#include "scopes/update_symbols.h"
#include "stf/stf_stream.h"
#include "stf/stf_types.h"
#include "store/tables.h"
#include "types/type_state.h"
#include "types/update_types.h"

namespace scan695 {

namespace {

constexpr uint8_t SOURCE_FORMAT = 20;
constexpr uint32_t MAX_ADDRESS_BITS = 64;
constexpr uint32_t NOF_PARTS = 8;
constexpr uint32_t EXTERNAL_PART = 3;
constexpr uint32_t DEBUG_INFO_PART = 4;

void ReadModuleBegin() {
    if (ReadByte() != BYTE_MB)
        ReportAndStop("File %s not in TASKING IEEE-695 format\n", Input.InputPath.c_str());
    char name[HEADER_NAME_SIZE] = {};
    ReadName(name, sizeof name);
    Trace("Mod begin=%s,", name);
    const ProcessorKind& processor = SetProcessor(name);
    if (processor.cpu != nullptr) outCpu(processor.cpu, processor.C166Flag);
    char module_name[HEADER_NAME_SIZE] = {};
    ReadName(module_name, sizeof module_name);
    Trace(" %s\n", module_name);
}

void ReadAddressDescriptor() {
    if (ReadByte() != BYTE_AD) UnexpectedRecord();
    const uint32_t bits = RequireNumber();
    const uint32_t units = RequireNumber();
    Trace("MAU_bits=%u, MAU_num=%u\n", bits, units);
    if (bits * units > MAX_ADDRESS_BITS) UnexpectedRecord();
    uint32_t high_first = 1;
    const uint8_t order = PeekByte();
    if (order == LETTER_L || order == LETTER_M) {
        ReadByte();
        high_first = order == LETTER_M ? 1 : 0;
    }
    Trace("Addr desc: ptr_size=%d, big_endian=%u\n", static_cast<int32_t>(Store.PointerSize),
          high_first);
}

uint32_t ReadPartOffset(uint32_t part) {
    if (ReadByte() != BYTE_AS) UnexpectedRecord();
    const uint16_t code = ReadCode();
    if (code != CodeOf(LETTER_W, static_cast<uint8_t>(part))) UnexpectedRecord();
    return RequireNumber();
}

// The external part is read behind the debug information, whatever the order of the file: public
// symbols that the debug information has described stay as it gave them.
void ScanPart(uint32_t part, uint32_t offset) {
    static void (*const readers[NOF_PARTS])(uint32_t) = {
        ScanAdExtensionPart, ScanEnvironmentPart, ScanSegmentPart, nullptr,
        ScanDebugInfoPart,   ScanDataPart,        ScanTrailerPart, ScanModuleEndPart,
    };
    if (part == EXTERNAL_PART) {
        Input.ExternalPartOffset = offset;
        Trace("Offset to External Part=%x\n", offset);
    } else if (offset != 0) {
        readers[part](offset);
    }
    if (part == DEBUG_INFO_PART && Input.ExternalPartOffset != 0)
        ScanExternalPart(Input.ExternalPartOffset);
}

void WriteTypeRecords() {
    for (uint32_t i = 0; i < Store.Header.nof_types; ++i) {
        TYPEINFO record = {};
        ReadRecord(Store.TypeTable, i, record);
        outTypeRecord(i, record);
    }
}

}  // namespace

void ScanModule() {
    Report.CleanupHook = ScannerCleanup;
    PrintLine("Compiling TASKING IEEE-695 file %s\n", Input.InputPath.c_str());
    Trace("\nBOF:\n");
    Input.InputCursor = 0;
    Store.Header.source_format = SOURCE_FORMAT;
    ReadModuleBegin();
    ReadAddressDescriptor();
    for (uint32_t part = 0; part < NOF_PARTS; ++part) ScanPart(part, ReadPartOffset(part));
    UpdateTypes();
    UpdateSymbolTypes();
    WriteTypeRecords();
    Store.Header.processor = Input.Processor->file_code;
    ScannerCleanup();
    Trace("EOF:\n\n");
}

void ScannerCleanup() {
    StartTypes();
    FreeScopeIndexes();
}

}  // namespace scan695
