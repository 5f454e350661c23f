// A growable file in memory, made of chunks of 65,536 bytes: tables of unknown final size grow
// without moving what is stored and without one large allocation. It has the shape of a stream: a
// position, seek, read, write. No operation reports by itself; the caller decides.
#pragma once

#include <cstdint>
#include <cstdio>

namespace scan695 {

class ChunkFile {
  public:
    static constexpr uint32_t CHUNK_SIZE = 0x10000;
    static constexpr uint32_t MAX_SIZE = 0x7FFFFFFF;  // positions and sizes are signed 32-bit

    enum Origin : uint32_t { FROM_START = 0, FROM_CURRENT = 1, FROM_END = 2 };
    enum Direction : uint32_t { READ = 0, WRITE = 1 };

    ChunkFile() = default;
    ~ChunkFile() { Free(); }
    ChunkFile(const ChunkFile&) = delete;
    ChunkFile& operator=(const ChunkFile&) = delete;
    ChunkFile(ChunkFile&& other) noexcept { *this = static_cast<ChunkFile&&>(other); }
    ChunkFile& operator=(ChunkFile&& other) noexcept;

    // Makes a file of `size` bytes at position 0 in place of what there was. 1, or 0 and an empty
    // file when there is no memory.
    int Allocate(uint32_t size);
    // Changes the size; stored bytes never move. 1, or 0 and the file as it was.
    int Resize(uint32_t size);
    // Gives up all memory; can be called on an empty file.
    void Free();

    // Moves the position. A target outside the file clamps the position and gives 0; the size
    // itself is a good target.
    int Seek(int64_t offset, Origin origin);
    // Moves `length` bytes between the buffer and the file at `position` (absolute) and leaves the
    // position behind them. A read at the end is shortened and still gives 1; a write at the end
    // grows the file. 0 for a null buffer, a position above the size, or no memory.
    int Transfer(Direction direction, void* buffer, int32_t length, int32_t position);
    int Read(void* buffer, int32_t length) { return Transfer(READ, buffer, length, Position()); }
    int Write(const void* buffer, int32_t length) {
        return Transfer(WRITE, const_cast<void*>(buffer), length, Position());
    }
    // Appends at the end of the file.
    int Append(const void* buffer, int32_t length) {
        return Transfer(WRITE, const_cast<void*>(buffer), length, Size());
    }

    // The bytes at an offset without a copy where they stand in one chunk, else copied to the
    // buffer; bytes behind the end are zero. The position stays. Valid until the file changes.
    const uint8_t* View(uint32_t offset, uint32_t length, uint8_t* buffer) const;

    // The byte at the position as 0 to 255, or -1 when there is none; the position moves by one.
    int GetByte();
    // Writes one byte at the position: the byte, or -1 when there is no memory.
    int PutByte(uint8_t byte);

    // Write the whole file to a stream from its start: 1, or 0 for a failed read or write.
    int Save(std::FILE* stream);
    int SaveAndFree(std::FILE* stream);

    int32_t Position() const { return static_cast<int32_t>(position_); }
    int32_t Size() const { return static_cast<int32_t>(size_); }
    uint32_t ChunkCount() const { return chunk_count_; }

  private:
    static uint32_t ChunksFor(uint32_t size) { return (size + CHUNK_SIZE - 1) / CHUNK_SIZE; }
    bool GrowChunkArray(uint32_t needed);
    void FreeChunksFrom(uint32_t first);

    uint8_t** chunks_ = nullptr;  // owned; null when the file is empty
    uint32_t chunk_count_ = 0;
    uint32_t chunk_capacity_ = 0;  // pointers that the array has room for
    uint32_t position_ = 0;        // never above size_
    uint32_t size_ = 0;
};

}  // namespace scan695
