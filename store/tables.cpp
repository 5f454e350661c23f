#include "store/tables.h"

#include <algorithm>
#include <cstring>

#include "report/report.h"

namespace scan695 {

StoreState Store;

void StartStore() {
    Store = StoreState();
}

void SetBasicTypeSize(uint32_t index, uint8_t size) {
    if (index < NOF_BASIC_SIZES) Store.BasicTypeSizes[index] = size;
}

uint32_t GetBasicTypeSize(uint32_t index) {
    return index < NOF_BASIC_SIZES ? Store.BasicTypeSizes[index] : 0;
}

void ReserveFstHeader() {
    Store.Header = {};
    std::memcpy(Store.Header.magic, "FSTA", sizeof Store.Header.magic);
    AppendRecord(Store.FstImage, Store.Header);
}

uint32_t StoreInImage(const void* bytes, uint32_t length) {
    constexpr uint8_t PADDING[4] = {};
    const uint32_t stored = length & MAX_ITEM_SIZE;
    if (stored == 0) return 0;
    const uint32_t offset = Store.FstImage.Size();
    AppendRecordBytes(Store.FstImage, bytes, stored);
    AppendRecordBytes(Store.FstImage, PADDING, (4 - stored % 4) % 4);
    return offset;
}

char* CutName(char* text) {
    text[strnlen(text, MAX_NAME_LENGTH)] = '\0';
    return text;
}

uint32_t StoreName(const char* text) {
    const size_t length = strnlen(text, MAX_NAME_LENGTH);
    char name[MAX_NAME_LENGTH + 1] = {};
    std::memcpy(name, text, length);
    return StoreInImage(name, static_cast<uint32_t>(length) + 1);
}

uint32_t StoreCountedName(const char* text, int16_t& longest) {
    const auto length = static_cast<int16_t>(strnlen(text, MAX_NAME_LENGTH));
    longest = std::max(longest, length);
    return StoreName(text);
}

bool ReadRecordBytes(const ChunkFile& table, uint32_t index, void* buffer, uint32_t size) {
    return table.ReadAt(uint64_t{index} * size, buffer, size);
}

void WriteRecordBytes(ChunkFile& table, uint32_t index, const void* buffer, uint32_t size) {
    if (!table.WriteAt(uint64_t{index} * size, buffer, size)) ReportAndStop(ERROR_NO_MEMORY);
}

void AppendRecordBytes(ChunkFile& table, const void* buffer, uint32_t size) {
    if (!table.Append(buffer, size)) ReportAndStop(ERROR_NO_MEMORY);
}

void CountRecordBytes(ChunkFile& table, uint32_t& count, const void* buffer, uint32_t size) {
    if (Report.DebugMode != 0)
        AppendRecordBytes(table, buffer, size);
    else if ((uint64_t{count} + 1) * size > ChunkFile::MAX_SIZE)
        ReportAndStop(ERROR_NO_MEMORY);
    ++count;
}

}  // namespace scan695
