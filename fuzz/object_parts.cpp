#include "fuzz/object_parts.h"

#include <algorithm>
#include <array>

namespace scan695::fuzz {

using namespace scan695::builder;

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

    Bytes Take(size_t count) {
        sound = sound && count != 0 && count <= size - at;
        if (!sound) return {};
        at += count;
        return Bytes({data + at - count, data + at});
    }
    void Expect(const Bytes& bytes) { sound = Take(bytes.size()) == bytes && sound; }
    Text Name() { return Text(Take(at < size && data[at] < 0x80 ? data[at] + 1U : 0)); }
    uint32_t Number() {
        const size_t width = NumberSize(data, size, at);
        Take(width);
        return sound ? NumberAt(data, at - width, width) : 0;
    }
};

}  // namespace

bool Split(const uint8_t* data, size_t size, ObjectFile& file) {
    HeaderReader header = {data, size};
    header.Expect({0xE0});
    file.processor = header.Name();
    file.module = header.Name();
    header.Expect({0xEC});
    file.mau_bits = header.Number();
    file.mau_number = header.Number();
    const bool has_order = header.at < size && (data[header.at] & 0xFE) == 0xCC;
    file.byte_order = has_order ? header.Take(1) : Bytes{};
    std::array<size_t, std::size(PARTS)> offsets = {};
    for (uint8_t i = 0; i < offsets.size(); ++i) {
        header.Expect({0xE2, 0xD7, i});
        offsets[i] = std::min<size_t>(header.Number(), size);
    }
    std::stable_sort(file.order.begin(), file.order.end(), [&](Part a, Part b) {
        return offsets[static_cast<size_t>(a)] < offsets[static_cast<size_t>(b)];
    });
    size_t end = size;
    for (size_t i = offsets.size(); i-- > 0;) {
        const auto part = static_cast<size_t>(file.order[i]);
        const size_t begin = offsets[part];
        file.*PARTS[part] = begin == 0 ? Bytes{} : Bytes({data + begin, data + end});
        end = begin;
    }
    return header.sound;
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
