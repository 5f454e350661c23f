// A growable file in memory, made of chunks of 65,536 bytes: tables of unknown final size grow
// without moving what is stored and without one large allocation. No operation reports by itself;
// the caller decides. No memory for a chunk is std::bad_alloc.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <vector>

namespace scan695 {

class ChunkFile {
  public:
    static constexpr uint32_t CHUNK_SIZE = 0x10000;
    static constexpr uint32_t MAX_SIZE = 0x7FFFFFFF;  // a position in the FST file is signed 32-bit

    // Changes the size; stored bytes never move, new ones have no defined value. False, and the
    // file as it was, above MAX_SIZE.
    [[nodiscard]] bool Resize(uint32_t size);
    // Gives up all memory; can be called on an empty file.
    void Free() { *this = ChunkFile(); }
    // Gives up the chunks that lie wholly in front of an offset: nobody reads there any more.
    void FreeInFrontOf(uint32_t offset);

    // Copies what the file has of the `length` bytes at an offset; the rest of the buffer stays as
    // it was. False for an offset above the size.
    bool ReadAt(uint64_t offset, void* buffer, uint32_t length) const;
    // Overwrites `length` bytes at an offset; behind the end the file grows. False, and nothing
    // done, for an offset above the size and for a file that would exceed MAX_SIZE.
    [[nodiscard]] bool WriteAt(uint64_t offset, const void* bytes, uint32_t length);
    [[nodiscard]] bool Append(const void* bytes, uint32_t length) {
        return WriteAt(size_, bytes, length);
    }

    // The bytes at an offset without a copy where they stand in one chunk, else copied to the
    // buffer; bytes behind the end are zero. Valid until the file is freed or overwritten there.
    const uint8_t* View(uint32_t offset, uint32_t length, uint8_t* buffer) const {
        const uint32_t in_chunk = offset % CHUNK_SIZE;
        if (length <= CHUNK_SIZE - in_chunk && offset < size_ && length <= size_ - offset)
            return chunks_[offset / CHUNK_SIZE].get() + in_chunk;
        return CopyWithZeros(offset, length, buffer);
    }

    // Write the whole file to a stream from its start: false for a failed write.
    [[nodiscard]] bool Save(std::FILE* stream) const;
    [[nodiscard]] bool SaveAndFree(std::FILE* stream);

    uint32_t Size() const { return size_; }
    uint32_t ChunkCount() const { return static_cast<uint32_t>(chunks_.size()); }

  private:
    const uint8_t* CopyWithZeros(uint32_t offset, uint32_t length, uint8_t* buffer) const;

    std::vector<std::unique_ptr<uint8_t[]>> chunks_;
    uint32_t size_ = 0;
};

}  // namespace scan695
