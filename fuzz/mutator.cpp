// The mutations that libFuzzer applies to object files. Most keep the header sound and work on the
// records of one part, so that runs die deep in the readers rather than at the door; block lengths
// need no repair, since readers take the end of a block from its end record.
#include <algorithm>
#include <cstring>

#include "fuzz/object_parts.h"
#include "fuzz/random_records.h"

extern "C" size_t LLVMFuzzerMutate(uint8_t* data, size_t size, size_t max_size);

namespace scan695::fuzz {
namespace {

using Records = std::vector<Record>;
using Place = Records::difference_type;

struct Range {
    Place begin;
    Place end;
};

Range RandomRange(Random& random, const Records& records) {
    const Place begin = Below(random, records.size());
    const Place length = 1 + Below(random, Below(random, 4) == 0 ? records.size() : 4);
    return {begin, std::min(begin + length, static_cast<Place>(records.size()))};
}

// Copies a few records of another list, or of the same one, to a place of their own.
void Insert(Random& random, Records& records, const Records& others) {
    const Range range = RandomRange(random, others);
    const Records more(others.begin() + range.begin, others.begin() + range.end);
    records.insert(records.begin() + Below(random, records.size() + 1), more.begin(), more.end());
}

void Delete(Random& random, Records& records) {
    const Range range = RandomRange(random, records);
    records.erase(records.begin() + range.begin, records.begin() + range.end);
}

void ChangeBytes(Random& random, Records& records) {
    Record& record = records[Below(random, records.size())];
    const size_t size = record.size();
    record.resize(size + 16);
    record.resize(LLVMFuzzerMutate(record.data(), size, record.size()));
}

void PutNumber(Record& record, const NumberField& field, const test::Bytes& number) {
    const auto at = record.begin() + static_cast<ptrdiff_t>(field.offset);
    record.insert(record.erase(at, at + static_cast<ptrdiff_t>(field.size)), number.begin(),
                  number.end());
}

// A number becomes another one: an edge, its neighbour, one that stands elsewhere, or none.
void ChangeNumber(Random& random, Records& records) {
    Record& record = records[Below(random, records.size())];
    const auto numbers = NumbersOf(record);
    const auto others = NumbersOf(records[Below(random, records.size())]);
    if (numbers.empty()) return;
    const NumberField field = numbers[Below(random, numbers.size())];
    const uint32_t choice = Below(random, 8);
    if (choice == 0) return PutNumber(record, field, {});
    if (choice == 1) return PutNumber(record, field, test::Num(field.value + 1));
    if (choice == 2) return PutNumber(record, field, test::Num(field.value - 1));
    if (choice == 3) return PutNumber(record, field, test::Num(RandomNumber(random)));
    if (others.empty()) return;
    PutNumber(record, field, test::Num(others[Below(random, others.size())].value));
}

std::vector<uint8_t> Joined(const Records& records) {
    std::vector<uint8_t> bytes;
    for (const Record& record : records) bytes.insert(bytes.end(), record.begin(), record.end());
    return bytes;
}

// The index of the NN record that stands last in front of a place.
uint32_t IndexBefore(const Records& records, size_t place) {
    while (place-- > 0) {
        const auto numbers = NumbersOf(records[place]);
        if (!numbers.empty() && records[place][0] == 0xF0) return numbers[0].value;
    }
    return 0x46;
}

// The code of the block of the debug part that a place lies in; 0 for none.
uint8_t BlockAround(const Records& records, size_t place) {
    std::vector<uint8_t> open = {0};
    for (size_t i = 0; i < place; ++i) {
        if (records[i].size() > 1 && records[i][0] == 0xF8) open.push_back(records[i][1]);
        if (!records[i].empty() && records[i][0] == 0xF9 && open.size() > 1) open.pop_back();
    }
    return open.back();
}

// Now and then, records where they do not belong.
void AddRecords(Random& random, size_t part, Records& records) {
    const size_t place = Below(random, records.size() + 1);
    const uint32_t index = IndexBefore(records, place);
    const uint8_t block = Below(random, 16) == 0 ? static_cast<uint8_t>(Below(random, 12))
                                                 : BlockAround(records, place);
    const test::Bytes more = part == DEBUG_INFO ? RandomDebugRecords(random, block, index)
                                                : RandomRecords(random, part, index);
    records.insert(records.begin() + static_cast<Place>(place), more.vector());
}

void WrapInBlock(Random& random, Records& records) {
    const auto [begin, end] = RandomRange(random, records);
    const Records wrapped(records.begin() + begin, records.begin() + end);
    records.erase(records.begin() + begin, records.begin() + end);
    const test::Bytes block =
        RandomBlock(random, test::Bytes(Joined(wrapped)), Below(random, 4) == 0);
    records.insert(records.begin() + begin, block.vector());
}

void MutateRecords(Random& random, size_t part, Records& records) {
    const uint32_t choice = Below(random, 16);
    if (records.empty() || choice < 5) return AddRecords(random, part, records);
    if (choice < 8) return Insert(random, records, records);
    if (choice < 9) return Delete(random, records);
    if (choice < 10) return ChangeBytes(random, records);
    if (choice < 15) return ChangeNumber(random, records);
    return WrapInBlock(random, records);
}

size_t RandomPart(Random& random) {
    constexpr size_t PARTS[] = {DEBUG_INFO, DEBUG_INFO, DEBUG_INFO, DATA, EXTERNAL, SEGMENTS};
    return Below(random, 40) == 0 ? Below(random, NOF_PARTS)
                                  : PARTS[Below(random, std::size(PARTS))];
}

void MutatePart(Random& random, ObjectParts& object) {
    const size_t part = RandomPart(random);
    if (Below(random, 60) == 0) {
        object.present[part] = !object.present[part];
        return;
    }
    Records records = SplitRecords(object.parts[part]);
    for (uint32_t n = 1 + Below(random, 3); n > 0; --n) MutateRecords(random, part, records);
    object.parts[part] = Joined(records);
    object.present[part] = true;
}

void ChangeProcessor(Random& random, ObjectParts& object) {
    constexpr const char* NAMES[] = {"80166", "tri", "296sa_e", "296sa_c", "TRICORE"};
    const test::Bytes name = test::Text(NAMES[Below(random, std::size(NAMES))]);
    const auto begin = object.head.begin() + 1;
    object.head.insert(object.head.erase(begin, begin + object.head[1] + 1), name.begin(),
                       name.end());
}

// Puts the file where libFuzzer wants it; a file that has become too large is given up.
size_t Deliver(const std::vector<uint8_t>& file, uint8_t* data, size_t max_size) {
    if (file.size() > max_size) return 0;
    std::memcpy(data, file.data(), file.size());
    return file.size();
}

}  // namespace
}  // namespace scan695::fuzz

extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t max_size,
                                          unsigned seed) {
    using namespace scan695::fuzz;
    Random random(seed);
    ObjectParts object;
    if (Below(random, 25) == 0 || !Split(data, size, object))
        return LLVMFuzzerMutate(data, size, max_size);
    MutatePart(random, object);
    if (Below(random, 50) == 0) ChangeProcessor(random, object);
    const size_t delivered = Deliver(Join(object), data, max_size);
    return delivered != 0 ? delivered : LLVMFuzzerMutate(data, size, max_size);
}

// A part of the second file, whole or a few of its records, goes into the first one.
extern "C" size_t LLVMFuzzerCustomCrossOver(const uint8_t* data1, size_t size1,
                                            const uint8_t* data2, size_t size2, uint8_t* out,
                                            size_t max_out_size, unsigned seed) {
    using namespace scan695::fuzz;
    Random random(seed);
    ObjectParts object;
    ObjectParts other;
    if (!Split(data1, size1, object) || !Split(data2, size2, other)) return 0;
    const size_t part = RandomPart(random);
    const Records more = SplitRecords(other.parts[part]);
    if (more.empty()) return 0;
    Records records = SplitRecords(object.parts[part]);
    if (Below(random, 4) == 0) records.clear();
    Insert(random, records, more);
    object.parts[part] = Joined(records);
    object.present[part] = true;
    return Deliver(Join(object), out, max_out_size);
}
