#include "fuzz/object_parts.h"

#include <algorithm>
#include <numeric>

#include "tests/support/bytes.h"

namespace scan695::fuzz {

namespace {

constexpr uint8_t FIRST_RECORD_CODE = 0xE0;
constexpr uint8_t LOAD = 0xED;
constexpr uint8_t REPEAT = 0xF7;

// The size of the number at a place: 0 for none, also for one that the end cuts.
size_t NumberSize(const uint8_t* data, size_t size, size_t at) {
    if (at >= size || data[at] > 0x84) return 0;
    const size_t width = data[at] < 0x80 ? 1 : data[at] - 0x80U + 1;
    return width <= size - at ? width : 0;
}

uint32_t NumberAt(const uint8_t* data, size_t at, size_t width) {
    if (width == 1) return data[at] & 0x7FU;
    uint32_t value = 0;
    for (size_t i = 1; i < width; ++i) value = value << 8 | data[at + i];
    return value;
}

// Reads on as long as the header is sound.
struct HeaderReader {
    const uint8_t* data;
    size_t size;
    size_t at = 0;
    bool sound = true;

    void Byte(size_t byte) {
        sound = sound && at < size && data[at] == byte;
        if (sound) ++at;
    }
    void Name() {
        sound = sound && at < size && data[at] < 0x80 && size - at > data[at];
        if (sound) at += data[at] + 1U;
    }
    uint32_t Number() {
        const size_t width = NumberSize(data, size, at);
        sound = sound && width != 0;
        if (!sound) return 0;
        at += width;
        return NumberAt(data, at - width, width);
    }
};

}  // namespace

bool Split(const uint8_t* data, size_t size, ObjectParts& object) {
    HeaderReader header = {data, size};
    header.Byte(0xE0);
    header.Name();
    header.Name();
    header.Byte(0xEC);
    header.Number();
    header.Number();
    if (header.at < size && (data[header.at] & 0xFE) == 0xCC) ++header.at;
    object = {};
    object.head.assign(data, data + header.at);
    std::array<size_t, NOF_PARTS> offsets = {};
    for (size_t i = 0; i < NOF_PARTS; ++i) {
        for (const size_t byte : {size_t{0xE2}, size_t{0xD7}, i}) header.Byte(byte);
        offsets[i] = header.Number();
        object.present[i] = offsets[i] != 0;
    }
    if (!header.sound) return false;
    std::iota(object.order.begin(), object.order.end(), size_t{0});
    std::stable_sort(object.order.begin(), object.order.end(),
                     [&](size_t a, size_t b) { return offsets[a] < offsets[b]; });
    for (size_t i = 0; i < NOF_PARTS; ++i) {
        const size_t part = object.order[i];
        const size_t begin = std::min(offsets[part], size);
        const size_t end = i + 1 < NOF_PARTS ? std::min(offsets[object.order[i + 1]], size) : size;
        if (object.present[part]) object.parts[part].assign(data + begin, data + end);
    }
    return true;
}

std::vector<uint8_t> Join(const ObjectParts& object) {
    constexpr size_t ASW_SIZE = 8;
    std::array<size_t, NOF_PARTS> offsets = {};
    size_t next = object.head.size() + NOF_PARTS * ASW_SIZE;
    for (const size_t part : object.order) {
        if (object.present[part]) offsets[part] = next;
        next += object.parts[part].size();
    }
    std::vector<uint8_t> file = object.head;
    for (size_t i = 0; i < NOF_PARTS; ++i) {
        const test::Bytes asw = test::Bytes{0xE2, 0xD7, static_cast<uint8_t>(i)} +
                                test::Wide(static_cast<uint32_t>(offsets[i]), 4);
        file.insert(file.end(), asw.begin(), asw.end());
    }
    for (const size_t part : object.order)
        file.insert(file.end(), object.parts[part].begin(), object.parts[part].end());
    return file;
}

std::vector<Record> SplitRecords(const std::vector<uint8_t>& part) {
    std::vector<Record> records;
    size_t begin = 0;
    size_t at = 0;
    const auto cut = [&] {
        if (at > begin)
            records.emplace_back(part.begin() + static_cast<ptrdiff_t>(begin),
                                 part.begin() + static_cast<ptrdiff_t>(at));
        begin = at;
    };
    while (at < part.size()) {
        if (part[at] >= FIRST_RECORD_CODE) cut();
        const bool is_load = part[at] == LOAD;
        at += std::max<size_t>(NumberSize(part.data(), part.size(), at), 1);
        const size_t width = is_load ? NumberSize(part.data(), part.size(), at) : 0;
        if (width == 0) continue;
        const size_t count = NumberAt(part.data(), at, width);
        at = std::min(part.size(), at + width + std::min(count, part.size()));
    }
    cut();
    return records;
}

std::vector<NumberField> NumbersOf(const Record& record) {
    std::vector<NumberField> numbers;
    for (size_t at = 0; at < record.size();) {
        const size_t width = NumberSize(record.data(), record.size(), at);
        if (width != 0) numbers.push_back({at, width, NumberAt(record.data(), at, width)});
        at += std::max<size_t>(width, 1);
    }
    return numbers;
}

bool RepeatsTooMuch(const uint8_t* data, size_t size) {
    constexpr uint64_t ENOUGH_BYTES = 1 << 20;
    uint64_t bytes = 0;
    for (size_t at = 0; at + 1 < size; ++at) {
        if (data[at] != REPEAT) continue;
        const size_t width = NumberSize(data, size, at + 1);
        if (width > 1)
            bytes += uint64_t{NumberAt(data, at + 1, width) & 0x7FFFFFFF} * (size / 8 + 1);
    }
    return bytes > ENOUGH_BYTES;
}

}  // namespace scan695::fuzz
