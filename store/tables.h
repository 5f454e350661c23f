// The tables that the scan fills, the live header, and the image of the FST file. Records of fixed
// size are collected in one temporary table per kind; everything of variable size (names, member
// lists, location lists) goes straight into the FstImage and stays at the offset it was given.
//
// The scan itself reads modules, types and the image. All other tables serve the FST file, so they
// are filled with DebugMode only; without it their records are counted and nothing is kept. What
// the scan asks of symbols and blocks later, the indexes of scopes/ take from them as they come.
#pragma once

#include <cstdint>

#include "store/chunk_file.h"
#include "store/records.h"

namespace scan695 {

inline constexpr uint32_t NOF_BASIC_SIZES = 13;  // void to bit

// The number of records of each table stands in the Header, not in the table.
struct StoreState {
    FstHeader Header = {};

    // In bytes, by basic type: void, uchar, char, ushort, short, uint, int, ulong, long, float,
    // double, ldouble, bit. They follow from the processor and stand at the end of the FST file.
    uint8_t BasicTypeSizes[NOF_BASIC_SIZES] = {0, 1, 1, 2, 2, 2, 2, 4, 4, 4, 4, 4, 1};
    uint32_t PointerSize = 0;  // in bytes: 2, 3 or 4 once the processor is known

    ChunkFile ModuleTable;  // MODULEINFO, nof_modules
    ChunkFile TypeTable;    // TYPEINFO, nof_types
    ChunkFile FstImage;

    // With DebugMode only.
    ChunkFile GlobalSymbolTable;  // SYMINFO, nof_global_symbols
    ChunkFile ModuleSymbolTable;  // SYMINFO, nof_module_symbols
    ChunkFile BlockSymbolTable;   // SYMINFO, nof_block_symbols
    ChunkFile BlockTable;         // BLOCKINFO, nof_blocks
    ChunkFile LineTable;          // LINEINFO, nof_lines
    ChunkFile CodeTable;          // CODEINFO and its bytes, nof_code
    uint64_t code_bytes = 0;      // of all chunks, without their heads; in every run
    ChunkFile MergedCodeFile;     // the same, merged in the post-processing
};
extern StoreState Store;

// Starts a run: empty tables, the sizes of no processor.
void StartStore();

// An index above 12 is ignored, and has the size 0.
void SetBasicTypeSize(uint32_t index, uint8_t size);
uint32_t GetBasicTypeSize(uint32_t index);

// Zeroes the header, sets its magic and reserves its place at the head of the image.
void ReserveFstHeader();

// Only these bits of an item's length count, so an item has at most 65,535 bytes, and a longer list
// loses elements.
inline constexpr uint32_t MAX_ITEM_SIZE = 0xFFFF;

// Append an item to the image, padded with zero bytes to a multiple of 4, and give its offset.
// Where the counting bits of the length are 0 nothing is stored and the result is 0.
uint32_t StoreInImage(const void* bytes, uint32_t length);

// Cuts a text, in place, to the 31 characters that a stored name has at most, and gives it back.
char* CutName(char* text);
// Stores a text with its NUL; of a longer one the first 31 characters.
uint32_t StoreName(const char* text);
// The same, and raises `longest` where the stored name is longer: how the names of symbols and
// modules reach the image.
uint32_t StoreCountedName(const char* text, int16_t& longest);

// Reads record `index` into the buffer. False when the index is above the number of records, with
// the buffer as it was. An index equal to it reads nothing and gives true.
bool ReadRecordBytes(const ChunkFile& table, uint32_t index, void* buffer, uint32_t size);
// Overwrites record `index`. A failure ends the run.
void WriteRecordBytes(ChunkFile& table, uint32_t index, const void* buffer, uint32_t size);
// Appends a record. A failure ends the run.
void AppendRecordBytes(ChunkFile& table, const void* buffer, uint32_t size);

// Counts the next record of a table that DebugMode fills, and appends it there. A table that would
// grow too large ends the run in either mode.
void CountRecordBytes(ChunkFile& table, uint32_t& count, const void* buffer, uint32_t size);

template <class Record>
bool ReadRecord(const ChunkFile& table, uint32_t index, Record& record) {
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
template <class Record>
void CountRecord(ChunkFile& table, uint32_t& count, const Record& record) {
    CountRecordBytes(table, count, &record, sizeof(Record));
}

}  // namespace scan695
