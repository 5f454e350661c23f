#include "stf/stf_scopes.h"

#include "stf/stf_stream.h"

namespace scan695 {

namespace {

void outModuleRecord(int32_t number, const char* name, int8_t language) {
    outBegin("Module", number);
    outStr("name", name);
    outWord("language", language == LANGUAGE_C ? "c" : "asm");
    outEnd();
}

}  // namespace

void outBlockBegin(int32_t number, const BLOCKINFO& record) {
    outBegin("Block", number);
    if (record.parent >= 0) outRef("parent", "Block", record.parent);
    if (record.module >= 0) outRef("module", "Module", record.module);
    outEnd();
}

void outBlockEnd(int32_t number, uint32_t begin, uint32_t end) {
    outBegin("Block", number);
    outHex("blkbegin", begin);
    outHex("blkend", end);
    outEnd();
}

void outModule(int32_t number, const char* name, const MODULEINFO& record) {
    outModuleRecord(number, name, record.language);
}

void outSource(const char* name, int32_t module, int8_t language) {
    ++Stf.SourceCounter;
    outBegin("Source", Stf.SourceCounter);
    outStr("path", name);
    outEnd();
    outModuleRecord(module, name, language);
}

void outLine(int32_t number, const LINEINFO& record) {
    outBegin("Line", number);
    outHex("address", record.address);
    outDec("number", record.number);
    if (Stf.SourceDepth != 0) outRef("source", "Source", Stf.SourceCounter);
    if (record.module != -1) outRef("module", "Module", record.module);
    outEnd();
}

}  // namespace scan695
