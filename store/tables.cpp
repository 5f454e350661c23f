#include "store/tables.h"

#include <cstring>

#include "report/report.h"

namespace scan695 {

StoreState Store;

namespace {

// Moves a table to record `index`; 0 where no record of the file can stand.
int SeekRecord(ChunkFile& table, uint32_t index, uint32_t size) {
    return table.Seek(static_cast<int64_t>(index) * size, ChunkFile::FROM_START);
}

}  // namespace

void ReserveFstHeader() {
    Store.Header = {};
    std::memcpy(Store.Header.magic, "FSTA", sizeof Store.Header.magic);
    if (Store.FstImage.Write(&Store.Header, sizeof Store.Header) == 0)
        ReportAndStop(ERROR_NO_MEMORY);
}

uint32_t StoreInImage(const void* bytes, uint32_t length) {
    const auto stored = static_cast<int32_t>(length & 0xFFFF);
    if (stored == 0) return 0;
    ChunkFile& image = Store.FstImage;
    if (image.Seek(0, ChunkFile::FROM_END) == 0) ReportAndStop(ERROR_READ_TEMPORARY);
    const auto offset = static_cast<uint32_t>(image.Position());
    if (image.Write(bytes, stored) == 0) ReportAndStop(ERROR_NO_MEMORY);
    for (int32_t i = stored; i % 4 != 0; ++i) image.PutByte(0);
    return offset;
}

uint32_t StoreName(char* text) {
    const size_t length = strnlen(text, MAX_NAME_LENGTH);
    text[length] = '\0';
    return StoreInImage(text, static_cast<uint32_t>(length) + 1);
}

uint32_t StoreCountedName(char* text, int16_t& longest) {
    const auto length = static_cast<int16_t>(strnlen(text, MAX_NAME_LENGTH));
    if (length > longest) longest = length;
    return StoreName(text);
}

int ReadRecordBytes(ChunkFile& table, uint32_t index, void* buffer, uint32_t size) {
    const int32_t position = table.Position();
    const int read =
        SeekRecord(table, index, size) != 0 && table.Read(buffer, static_cast<int32_t>(size)) != 0;
    return table.Seek(position, ChunkFile::FROM_START) != 0 && read != 0 ? 1 : 0;
}

void WriteRecordBytes(ChunkFile& table, uint32_t index, const void* buffer, uint32_t size) {
    const int32_t position = table.Position();
    if (SeekRecord(table, index, size) == 0 ||
        table.Write(buffer, static_cast<int32_t>(size)) == 0 ||
        table.Seek(position, ChunkFile::FROM_START) == 0)
        ReportAndStop(ERROR_NO_MEMORY);
}

void AppendRecordBytes(ChunkFile& table, const void* buffer, uint32_t size) {
    if (table.Seek(0, ChunkFile::FROM_END) == 0 ||
        table.Write(buffer, static_cast<int32_t>(size)) == 0)
        ReportAndStop(ERROR_NO_MEMORY);
}

}  // namespace scan695
