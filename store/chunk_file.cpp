#include "store/chunk_file.h"

#include <algorithm>
#include <cstring>

namespace scan695 {

namespace {

// Calls move(chunk, byte in the chunk, bytes done, length) for the piece of each chunk that
// `length` bytes at an offset touch.
template <class Move>
void ForEachPiece(uint32_t offset, uint32_t length, Move move) {
    for (uint32_t done = 0; done < length;) {
        const uint32_t in_chunk = (offset + done) % ChunkFile::CHUNK_SIZE;
        const uint32_t piece = std::min(length - done, ChunkFile::CHUNK_SIZE - in_chunk);
        move((offset + done) / ChunkFile::CHUNK_SIZE, in_chunk, done, piece);
        done += piece;
    }
}

}  // namespace

bool ChunkFile::Resize(uint32_t size) {
    if (size > MAX_SIZE) return false;
    const uint32_t needed = (size + CHUNK_SIZE - 1) / CHUNK_SIZE;
    if (needed < chunks_.size()) chunks_.resize(needed);
    while (chunks_.size() < needed)
        chunks_.push_back(std::make_unique_for_overwrite<uint8_t[]>(CHUNK_SIZE));
    size_ = size;
    return true;
}

void ChunkFile::FreeInFrontOf(uint32_t offset) {
    const uint32_t end = std::min(offset / CHUNK_SIZE, ChunkCount());
    for (uint32_t i = end; i > 0 && chunks_[i - 1] != nullptr; --i) chunks_[i - 1].reset();
}

bool ChunkFile::ReadAt(uint64_t offset, void* buffer, uint32_t length) const {
    if (offset > size_) return false;
    const auto start = static_cast<uint32_t>(offset);
    auto* bytes = static_cast<uint8_t*>(buffer);
    ForEachPiece(start, std::min(length, size_ - start),
                 [&](uint32_t chunk, uint32_t in_chunk, uint32_t done, uint32_t piece) {
                     std::memcpy(bytes + done, chunks_[chunk].get() + in_chunk, piece);
                 });
    return true;
}

bool ChunkFile::WriteAt(uint64_t offset, const void* bytes, uint32_t length) {
    if (offset > size_ || offset + length > MAX_SIZE) return false;
    const auto start = static_cast<uint32_t>(offset);
    if (start + length > size_ && !Resize(start + length)) return false;
    const auto* source = static_cast<const uint8_t*>(bytes);
    ForEachPiece(start, length,
                 [&](uint32_t chunk, uint32_t in_chunk, uint32_t done, uint32_t piece) {
                     std::memcpy(chunks_[chunk].get() + in_chunk, source + done, piece);
                 });
    return true;
}

const uint8_t* ChunkFile::CopyWithZeros(uint32_t offset, uint32_t length, uint8_t* buffer) const {
    std::memset(buffer, 0, length);
    ReadAt(offset, buffer, length);
    return buffer;
}

// The chunks go to the stream as they stand: writes of 65,536 bytes, and the remainder.
bool ChunkFile::Save(std::FILE* stream) const {
    if (std::fseek(stream, 0, SEEK_SET) != 0) return false;
    uint32_t rest = size_;
    for (const auto& chunk : chunks_) {
        const uint32_t piece = std::min(CHUNK_SIZE, rest);
        if (std::fwrite(chunk.get(), piece, 1, stream) != 1) return false;
        rest -= piece;
    }
    return true;
}

bool ChunkFile::SaveAndFree(std::FILE* stream) {
    const bool saved = Save(stream);
    Free();
    return saved;
}

}  // namespace scan695
