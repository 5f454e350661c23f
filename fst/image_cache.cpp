#include "fst/image_cache.h"

#include <cstdlib>
#include <cstring>

#include "store/tables.h"

namespace scan695 {

namespace {

constexpr uint32_t BLOCK_SIZE = 32;
constexpr uint32_t NOF_CACHED = 255;  // slot 255 is the stop mark of the search
constexpr uint32_t FREE_SLOT = 0xFFFFFFFF;

struct CacheSlot {
    uint32_t offset;
    alignas(4) uint8_t data[BLOCK_SIZE];
};

struct ImageCache {
    CacheSlot* slots = nullptr;
    uint32_t* order = nullptr;                   // slot numbers, the most recently used first
    alignas(4) uint8_t block[BLOCK_SIZE] = {};   // serves ReadImageBlock while the cache is closed
    alignas(4) uint8_t result[BLOCK_SIZE] = {};  // serves ReadImage without a buffer
};
ImageCache Cache;

void ReadBytesAt(uint32_t offset, void* buffer, uint32_t length) {
    std::memset(buffer, 0, length);
    if (Store.FstImage.Seek(offset, ChunkFile::FROM_START) != 0)
        Store.FstImage.Read(buffer, static_cast<int32_t>(length));
}

// Finds or loads the slot of an offset and moves it to the front of the order.
CacheSlot& UseSlot(uint32_t offset) {
    Cache.slots[NOF_CACHED].offset = offset;
    Cache.order[NOF_CACHED] = NOF_CACHED;
    uint32_t place = 0;
    while (Cache.slots[Cache.order[place]].offset != offset) ++place;
    const bool hit = place < NOF_CACHED;
    if (!hit) place = NOF_CACHED - 1;
    const uint32_t number = Cache.order[place];
    CacheSlot& slot = Cache.slots[number];
    if (!hit) {
        slot.offset = offset;
        ReadBytesAt(offset, slot.data, BLOCK_SIZE);
    }
    std::memmove(Cache.order + 1, Cache.order, place * sizeof(uint32_t));
    Cache.order[0] = number;
    return slot;
}

template <class Record>
const Record* GetRecord(uint32_t section, uint32_t number, uint32_t count, Record* buffer) {
    if (number >= count) return nullptr;
    const uint8_t* bytes = ReadImageBlock(section + number * static_cast<uint32_t>(sizeof(Record)));
    if (buffer == nullptr) return reinterpret_cast<const Record*>(bytes);
    std::memcpy(buffer, bytes, sizeof(Record));
    return buffer;
}

}  // namespace

int OpenImageCache() {
    CloseImageCache();
    Cache.slots = static_cast<CacheSlot*>(std::calloc(NOF_CACHED + 1, sizeof(CacheSlot)));
    if (Cache.slots == nullptr) return 0;
    Cache.order = static_cast<uint32_t*>(std::calloc(NOF_CACHED + 1, sizeof(uint32_t)));
    if (Cache.order == nullptr) {
        CloseImageCache();
        return 0;
    }
    for (uint32_t i = 0; i < NOF_CACHED; ++i) {
        Cache.slots[i].offset = FREE_SLOT;
        Cache.order[i] = i;
    }
    return 1;
}

void CloseImageCache() {
    std::free(Cache.slots);
    std::free(Cache.order);
    Cache.slots = nullptr;
    Cache.order = nullptr;
}

const uint8_t* ReadImageBlock(uint32_t offset) {
    if (Cache.slots != nullptr) return UseSlot(offset).data;
    ReadBytesAt(offset, Cache.block, BLOCK_SIZE);
    return Cache.block;
}

const void* ReadImage(uint32_t offset, void* buffer, uint32_t length) {
    if (length > BLOCK_SIZE) {
        if (buffer != nullptr) ReadBytesAt(offset, buffer, length);
        return buffer;
    }
    void* target = buffer != nullptr ? buffer : Cache.result;
    std::memcpy(target, ReadImageBlock(offset), length);
    return target;
}

const BLOCKINFO* GetBlockRecord(uint32_t number, BLOCKINFO* buffer) {
    return GetRecord(Store.Header.blocks_offs, number, Store.Header.nof_blocks, buffer);
}

const TYPEINFO* GetTypeRecord(uint32_t number, TYPEINFO* buffer) {
    return GetRecord(Store.Header.types_offs, number, Store.Header.nof_types, buffer);
}

uint32_t GetIndexEntry(uint32_t offset, uint32_t number) {
    uint32_t entry;
    std::memcpy(&entry, ReadImageBlock(offset + number * 4), sizeof entry);
    return entry;
}

const TYPEINFO* GetSortedTypeRecord(uint32_t entry, TYPEINFO* buffer) {
    return GetTypeRecord(GetIndexEntry(Store.Header.type_index_offs, entry), buffer);
}

int32_t FindType(uint32_t type_index, TYPEINFO* buffer) {
    if (Store.Header.nof_types == 0) return -1;
    const uint32_t wanted = type_index & 0xFFFF;
    auto lo = 0;
    auto hi = static_cast<int32_t>(Store.Header.nof_types) - 1;
    while (lo <= hi) {
        const int32_t mid = lo + (hi - lo) / 2;
        const TYPEINFO* type = GetSortedTypeRecord(static_cast<uint32_t>(mid), nullptr);
        if (type == nullptr) return -1;
        const uint32_t found = type->here_type_index;
        if (wanted > found) {
            lo = mid + 1;
        } else if (wanted < found) {
            hi = mid - 1;
        } else {
            if (buffer != nullptr) *buffer = *type;
            return static_cast<int32_t>(
                GetIndexEntry(Store.Header.type_index_offs, static_cast<uint32_t>(mid)));
        }
    }
    return -1;
}

}  // namespace scan695
