// The FstImage during the post-processing: sections are appended at its end, and finished ones are
// read back where they stand. Bytes that the image does not have are zero.
#pragma once

#include <cstdint>
#include <cstring>
#include <optional>

#include "store/records.h"
#include "store/tables.h"

namespace scan695 {

// Where the next section begins.
inline uint32_t ImageEnd() {
    return Store.FstImage.Size();
}
// Appends to the image; no memory ends the run.
inline void WriteToImage(const void* bytes, uint32_t size) {
    AppendRecordBytes(Store.FstImage, bytes, size);
}

// The record at an image offset.
template <class Record>
Record RecordAt(uint32_t offset) {
    uint8_t buffer[sizeof(Record)];
    Record record;
    std::memcpy(&record, Store.FstImage.View(offset, sizeof record, buffer), sizeof record);
    return record;
}

// Ends the run for an offset outside the image.
void RequireInImage(uint64_t offset);

// Calls `action` for `count` records of a section, from record `first` on, which must begin in the
// image.
template <class Record, class Action>
void ForEachRecord(uint32_t section, uint32_t first, uint32_t count, Action action) {
    if (count == 0) return;
    RequireInImage(section + uint64_t{first} * sizeof(Record));
    uint32_t offset = section + first * uint32_t{sizeof(Record)};
    for (uint32_t i = 0; i < count; ++i, offset += sizeof(Record)) action(RecordAt<Record>(offset));
}

// Records of the finished sections by number, which must be below nof_blocks or nof_types.
inline BLOCKINFO GetBlockRecord(uint32_t number) {
    return RecordAt<BLOCKINFO>(Store.Header.blocks_offs + number * uint32_t{sizeof(BLOCKINFO)});
}
inline TYPEINFO GetTypeRecord(uint32_t number) {
    return RecordAt<TYPEINFO>(Store.Header.types_offs + number * uint32_t{sizeof(TYPEINFO)});
}
// Entry `number` of the index section at image offset `offset`.
inline uint32_t GetIndexEntry(uint32_t offset, uint32_t number) {
    return RecordAt<uint32_t>(offset + number * uint32_t{sizeof(uint32_t)});
}
// The record that an entry of the type index names.
inline TYPEINFO GetSortedTypeRecord(uint32_t entry) {
    return GetTypeRecord(GetIndexEntry(Store.Header.type_index_offs, entry));
}

// A look-up of a type goes by these bits of its index.
inline constexpr uint32_t TYPE_LOOKUP_MASK = 0xFFFF;

// The type whose here_type_index equals the looked-up bits of `type_index`. Where several do, the
// steps of a binary search over the type index decide.
std::optional<TYPEINFO> FindType(uint32_t type_index);

}  // namespace scan695
