// The external part: the public symbols of the program with their addresses. Its records, SB and
// the groups of NI, ATI and ASI, stand in input/external_group.h; a group without ASI makes no
// symbol.
#include "input/cursor.h"
#include "input/external_group.h"
#include "input/record_codes.h"
#include "reader/parts.h"
#include "report/report.h"
#include "scopes/add_records.h"
#include "scopes/conversions.h"
#include "types/cvt_type.h"

namespace scan695 {

namespace {

void AddPublicSymbol(const ExternalGroup& group, uint32_t address, int8_t mem_type, char* name) {
    SYMINFO record = {};
    record.value = address;
    record.type_index = CvtTkType(group.tk_ti);
    record.storage_class = *PublicStorageClass(group.attribute);
    record.mem_type = group.attribute == ATI_CONSTANT ? int8_t{MEM_UNKNOWN} : mem_type;
    record.module = -1;
    record.block = -1;
    Trace("Ext symbol: \"%s\" addr=%08X mem=%d type=%u(%u), sc=%x(%u)\n", name, record.value,
          record.mem_type, record.type_index, group.tk_ti, uint32_t{record.storage_class},
          group.attribute);
    AddSymbol(record, name, {});
}

// Bytes in the place of the ASI code are passed.
void ReadGroup(char* buffer) {
    const ExternalGroup group = ReadExternalGroup(buffer, true);
    if (!group.has_address) return;
    const int8_t mem_type = CvtTkMemType(group.memory_id);
    const uint32_t address = ReadExternalAddress(group);
    char* name = buffer[0] == '_' ? buffer + 1 : buffer;
    if (SymbolDefined(name))
        Trace("Ext symbol: \"%s\" already defined -- ignore\n", name);
    else
        AddPublicSymbol(group, address, mem_type, name);
}

// False for a byte that ends the part.
bool ReadExternalRecord(uint8_t byte, char* name) {
    switch (byte) {
        case BYTE_SB:
            ReadExternalSegment();
            return true;
        case BYTE_NI:
            ReadGroup(name);
            return true;
        default:
            return false;
    }
}

}  // namespace

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
