// The tables that the scan fills, the live header, and the image of the FST file. Records of fixed
// size are collected in one temporary table per kind; everything of variable size (names, member
// lists, location lists) goes straight into the FstImage and stays at the offset it was given.
#pragma once

#include <cstdint>

#include "store/chunk_file.h"
#include "store/records.h"

namespace scan695 {

// The number of records of each table stands in the Header, not in the table. A run starts by
// assigning a new StoreState.
struct StoreState {
    FstHeader Header = {};
    ChunkFile GlobalSymbolTable;  // SYMINFO, nof_global_symbols
    ChunkFile ModuleSymbolTable;  // SYMINFO, nof_module_symbols
    ChunkFile BlockSymbolTable;   // SYMINFO, nof_block_symbols
    ChunkFile ModuleTable;        // MODULEINFO, nof_modules
    ChunkFile BlockTable;         // BLOCKINFO, nof_blocks
    ChunkFile LineTable;          // LINEINFO, nof_lines
    ChunkFile TypeTable;          // TYPEINFO, nof_types
    ChunkFile CodeTable;          // CODEINFO and its bytes, nof_code; DebugMode only
    uint64_t code_bytes = 0;      // of all chunks, without their heads
    ChunkFile MergedCodeFile;     // the same, merged in the post-processing
    ChunkFile FstImage;
};
extern StoreState Store;

// Zeroes the header, sets its magic and reserves its place at the head of the image.
void ReserveFstHeader();

// Append an item to the image, padded with zero bytes to a multiple of 4, and give its offset. Only
// the low 16 bits of a length count: an item is at most 65,535 bytes long, and where they are 0
// nothing is stored and the result is 0.
uint32_t StoreInImage(const void* bytes, uint32_t length);

// Stores a text with its NUL. A text of 32 characters or more is cut to 31 in the caller's buffer.
uint32_t StoreName(char* text);

// Cuts a name at 31 characters in the caller's buffer, raises `longest` where the name is longer,
// and stores it: how the names of symbols and modules reach the image.
uint32_t StoreCountedName(char* text, int16_t& longest);

// Reads record `index` into the buffer; the table's position stays. 0 when the index is above the
// number of records, with the buffer as it was. An index equal to it reads nothing and gives 1.
int ReadRecordBytes(ChunkFile& table, uint32_t index, void* buffer, uint32_t size);
// Overwrites record `index`; the table's position stays. A failure ends the run.
void WriteRecordBytes(ChunkFile& table, uint32_t index, const void* buffer, uint32_t size);
// Appends a record. A failure ends the run.
void AppendRecordBytes(ChunkFile& table, const void* buffer, uint32_t size);

template <class Record>
int ReadRecord(ChunkFile& table, uint32_t index, Record& record) {
    return ReadRecordBytes(table, index, &record, sizeof(Record));
}
template <class Record>
void WriteRecord(ChunkFile& table, uint32_t index, const Record& record) {
    WriteRecordBytes(table, index, &record, sizeof(Record));
}
template <class Record>
void AppendRecord(ChunkFile& table, const Record& record) {
    AppendRecordBytes(table, &record, sizeof(Record));
}

}  // namespace scan695
