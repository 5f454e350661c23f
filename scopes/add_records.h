// The way of a block, module, line or symbol into its table and into the STF file, both at once;
// and the searches by name through what has been added. No memory ends the run.
#pragma once

#include <cstdint>
#include <span>

#include "store/records.h"

namespace scan695 {

// Stores a block, opens it in the STF file and gives its index. Notes in the record where the
// symbols of the block begin.
int32_t AddBlock(BLOCKINFO& record);
// Tells that the block has come to its end and has its size.
void FinishBlock(int32_t number, const BLOCKINFO& record);

// Stores a module and gives its index. The record comes with `language` filled and all else 0; the
// name is cut to 31 characters in the caller's buffer.
int32_t AddModule(MODULEINFO& record, char* name);

// Stores a line of the current module. Of the line number the low 16 bits count. Both kinds of line
// record, those of source files and those of assembled modules, come here.
void AddLine(uint32_t address, uint32_t number);

// Stores a symbol. The record comes with value, module, block, type_index, storage_class and
// mem_type filled and all else 0; the rest is filled here. The name is cut to 31 characters in the
// caller's buffer. The locations are copied.
void AddSymbol(SYMINFO& record, char* name, std::span<const LOCINFO> locations);

// True when any module has exactly this name.
[[nodiscard]] bool ModuleExists(const char* name);

// True when a global symbol has exactly this name. Symbols of modules and blocks do not count.
[[nodiscard]] bool SymbolDefined(const char* name);

}  // namespace scan695
