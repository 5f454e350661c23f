// The rows of the tables, one function for each table.
#pragma once

#include "inspector/table.h"

namespace scan695::inspector {

void ModuleRows(const Fst& fst, const RowSink& sink);
void SymbolRows(const Fst& fst, const RowSink& sink);
void TypeRows(const Fst& fst, const RowSink& sink);
void BlockRows(const Fst& fst, const RowSink& sink);
void LineRows(const Fst& fst, const RowSink& sink);
void RangeRows(const Fst& fst, const RowSink& sink);
void CodeRows(const Fst& fst, const RowSink& sink);

// One row by the number of its record.
Row SymbolRow(const Fst& fst, uint32_t number, const SYMINFO& symbol);
Row BlockRow(const Fst& fst, uint32_t number, const BLOCKINFO& block);
Row LineRow(const Fst& fst, uint32_t number, const LINEINFO& line);
Row TypeRow(const Fst& fst, uint32_t number, const TYPEINFO& type);

// Nothing for an offset of 0 and where there is no name.
Cell NameCell(const Fst& fst, uint32_t offset);
// Where a symbol or location of a storage class is kept: an address, an offset in the stack frame,
// which has a sign, or a register; and the register's name.
Cell ValueCell(uint8_t storage_class, uint32_t value);
Cell RegisterCell(const Fst& fst, uint8_t storage_class, uint32_t value);
// The cells of a location: begin, end, storage, memory, value, register.
Cells LocationCells(const Fst& fst, const LOCINFO& location);
// The name of a module; nothing for -1.
Cell ModuleNameCell(const Fst& fst, int64_t number);

// Calls `use(number, record)` for the records of a table in the order of an index. Entries that
// name no record are left out.
template <class Record, class Use>
void InOrder(const Fst& fst, SectionId index, SectionId table, Use use) {
    for (uint64_t i = 0; i < UsableEntries(fst, index); ++i) {
        const uint32_t number = *ReadEntry<uint32_t>(fst, index, i);
        if (const auto record = ReadEntry<Record>(fst, table, number)) use(number, *record);
    }
}

}  // namespace scan695::inspector
