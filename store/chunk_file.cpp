#include "store/chunk_file.h"

#include <algorithm>
#include <cassert>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace scan695 {

ChunkFile& ChunkFile::operator=(ChunkFile&& other) noexcept {
    if (this == &other) return *this;
    Free();
    chunks_ = std::exchange(other.chunks_, nullptr);
    chunk_count_ = std::exchange(other.chunk_count_, 0);
    chunk_capacity_ = std::exchange(other.chunk_capacity_, 0);
    position_ = std::exchange(other.position_, 0);
    size_ = std::exchange(other.size_, 0);
    return *this;
}

int ChunkFile::Allocate(uint32_t size) {
    Free();
    return size == 0 ? 1 : Resize(size);
}

// The array of pointers grows by doubling, so that a large file costs few copies of it.
bool ChunkFile::GrowChunkArray(uint32_t needed) {
    if (needed <= chunk_capacity_) return true;
    const uint32_t capacity = std::max(needed, std::max(4U, 2 * chunk_capacity_));
    void* array = std::realloc(chunks_, capacity * sizeof(uint8_t*));
    if (array == nullptr) return false;
    chunks_ = static_cast<uint8_t**>(array);
    chunk_capacity_ = capacity;
    return true;
}

void ChunkFile::FreeChunksFrom(uint32_t first) {
    for (uint32_t i = first; i < chunk_count_; ++i) std::free(chunks_[i]);
    chunk_count_ = std::min(chunk_count_, first);
}

int ChunkFile::Resize(uint32_t size) {
    if (size == 0) {
        Free();
        return 1;
    }
    if (size > MAX_SIZE) return 0;
    const uint32_t needed = ChunksFor(size);
    if (!GrowChunkArray(needed)) return 0;
    const uint32_t before = chunk_count_;
    while (chunk_count_ < needed) {
        void* chunk = std::malloc(CHUNK_SIZE);
        if (chunk == nullptr) {
            FreeChunksFrom(before);
            return 0;
        }
        chunks_[chunk_count_++] = static_cast<uint8_t*>(chunk);
    }
    FreeChunksFrom(needed);
    size_ = size;
    position_ = std::min(position_, size_);
    return 1;
}

void ChunkFile::Free() {
    FreeChunksFrom(0);
    std::free(chunks_);
    chunks_ = nullptr;
    chunk_capacity_ = 0;
    position_ = 0;
    size_ = 0;
}

int ChunkFile::Seek(int64_t offset, Origin origin) {
    if (origin > FROM_END) return 0;
    const int64_t base = origin == FROM_START ? 0 : origin == FROM_CURRENT ? position_ : size_;
    const int64_t target = base + offset;
    const int64_t clamped = std::clamp<int64_t>(target, 0, size_);
    position_ = static_cast<uint32_t>(clamped);
    return target == clamped ? 1 : 0;
}

int ChunkFile::Transfer(Direction direction, void* buffer, int32_t length, int32_t position) {
    if (length <= 0) return length == 0 ? 1 : 0;
    if (buffer == nullptr || position < 0 || static_cast<uint32_t>(position) > size_) return 0;
    uint32_t here = static_cast<uint32_t>(position);
    uint32_t rest = static_cast<uint32_t>(length);
    if (rest > size_ - here) {
        if (direction == READ)
            rest = size_ - here;
        else if (Resize(here + rest) == 0)
            return 0;
    }
    auto* bytes = static_cast<uint8_t*>(buffer);
    while (rest > 0) {
        assert(chunks_ != nullptr);
        uint8_t* chunk = chunks_[here / CHUNK_SIZE] + here % CHUNK_SIZE;
        const uint32_t piece = std::min(rest, CHUNK_SIZE - here % CHUNK_SIZE);
        if (direction == READ)
            std::memcpy(bytes, chunk, piece);
        else
            std::memcpy(chunk, bytes, piece);
        bytes += piece;
        here += piece;
        rest -= piece;
    }
    position_ = here;
    return 1;
}

const uint8_t* ChunkFile::View(uint32_t offset, uint32_t length, uint8_t* buffer) const {
    const uint32_t in_chunk = offset % CHUNK_SIZE;
    if (length <= CHUNK_SIZE - in_chunk && offset < size_ && length <= size_ - offset)
        return chunks_[offset / CHUNK_SIZE] + in_chunk;
    for (uint32_t i = 0; i < length; ++i) {
        const uint32_t at = offset + i;
        buffer[i] = at >= offset && at < size_ ? chunks_[at / CHUNK_SIZE][at % CHUNK_SIZE] : 0;
    }
    return buffer;
}

int ChunkFile::GetByte() {
    if (position_ >= size_) return -1;
    const uint8_t byte = chunks_[position_ / CHUNK_SIZE][position_ % CHUNK_SIZE];
    ++position_;
    return byte;
}

int ChunkFile::PutByte(uint8_t byte) {
    return Write(&byte, 1) != 0 ? byte : -1;
}

// The chunks go to the stream as they stand: writes of 65,536 bytes, and the remainder.
int ChunkFile::Save(std::FILE* stream) {
    if (std::fseek(stream, 0, SEEK_SET) != 0) return 0;
    for (uint32_t done = 0; done < size_; done += CHUNK_SIZE) {
        const uint32_t piece = std::min(CHUNK_SIZE, size_ - done);
        if (std::fwrite(chunks_[done / CHUNK_SIZE], piece, 1, stream) != 1) return 0;
    }
    position_ = size_;
    return 1;
}

int ChunkFile::SaveAndFree(std::FILE* stream) {
    const int saved = Save(stream);
    Free();
    return saved;
}

}  // namespace scan695
