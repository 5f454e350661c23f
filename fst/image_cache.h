// Reads back from the FstImage: during the scan directly, during the post-processing through a
// cache of 255 blocks of 32 bytes, looked up by their exact image offset and kept in order of last
// use. Only finished sections are read through it, so it is never invalidated.
//
// A result that is not the caller's buffer is valid until the next read. A read that is not served
// by the cache moves the position of the image. Bytes that the image does not have are zero.
// Nothing here reports.
#pragma once

#include <cstdint>

#include "store/records.h"

namespace scan695 {

// 1, or 0 with the cache closed when there is no memory: everything works without it, only slower.
int OpenImageCache();
// Can be called on a closed cache.
void CloseImageCache();

// The 32 bytes at an image offset.
const uint8_t* ReadImageBlock(uint32_t offset);
// The `length` bytes at an image offset, copied to the buffer if there is one. Null for more than
// 32 bytes without a buffer.
const void* ReadImage(uint32_t offset, void* buffer, uint32_t length);

// Records of the finished sections by number; null when there is no such record. The buffer may be
// null.
const BLOCKINFO* GetBlockRecord(uint32_t number, BLOCKINFO* buffer);
const TYPEINFO* GetTypeRecord(uint32_t number, TYPEINFO* buffer);

// Entry `number` of the index section at image offset `offset`.
uint32_t GetIndexEntry(uint32_t offset, uint32_t number);
// The record that an entry of the type index names.
const TYPEINFO* GetSortedTypeRecord(uint32_t entry, TYPEINFO* buffer);

// The record number of the type whose here_type_index equals the low 16 bits of `type_index`, or
// -1.
int32_t FindType(uint32_t type_index, TYPEINFO* buffer);

}  // namespace scan695
