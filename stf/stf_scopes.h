// Writers of the Block, Module, Source and Line records. Numbers are those of the tables, but for
// Source records, which are counted here. None can fail.
#pragma once

#include <cstdint>

#include "store/records.h"

namespace scan695 {

// A block gives two records under one number: its relations when it opens, its addresses (both
// inclusive) when it closes.
void outBlockBegin(int32_t number, const BLOCKINFO& record);
void outBlockEnd(int32_t number, uint32_t begin, uint32_t end);

void outModule(int32_t number, const char* name, const MODULEINFO& record);

// The next Source record, and a second Module record with the source file's name.
void outSource(const char* name, int32_t module, int8_t language);

// Inside a source file the line names the last Source record.
void outLine(int32_t number, const LINEINFO& record);

}  // namespace scan695
