#include "fuzz/mutations.h"

#include <algorithm>

#include "fuzz/object_parts.h"

namespace scan695::fuzz {
namespace {

using builder::Bytes;
using builder::Num;
using builder::ObjectFile;
using builder::Part;
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

void ChangeBytes(Random& random, Records& records, const ByteMutation& change) {
    Record& record = records[Below(random, records.size())];
    const size_t size = record.size();
    record.resize(size + 16);
    record.resize(change(record.data(), size, record.size()));
}

void PutNumber(Record& record, const NumberField& field, const Bytes& number) {
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
    if (choice == 1) return PutNumber(record, field, Num(field.value + 1));
    if (choice == 2) return PutNumber(record, field, Num(field.value - 1));
    if (choice == 3) return PutNumber(record, field, Grow(random, "V"));
    if (others.empty()) return;
    PutNumber(record, field, Num(others[Below(random, others.size())].value));
}

Bytes Joined(const Records& records) {
    Bytes bytes;
    for (const Record& record : records) bytes.Append(record.data(), record.size());
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
void AddRecords(Random& random, Part part, Records& records) {
    constexpr const char* BY_PART[] = {"K", "K", "G", "P", "M", "Q", "K", "K"};
    constexpr const char* BY_BLOCK[] = {"M", "R", "R", "X", "S", "F0 i 00 l",
                                        "S", "S", "S", "S", "Z", "Z"};
    const size_t place = Below(random, records.size() + 1);
    const size_t block =
        Below(random, 16) == 0 ? Below(random, std::size(BY_BLOCK)) : BlockAround(records, place);
    const char* pattern = BY_PART[static_cast<size_t>(part)];
    if (part == Part::DEBUG) pattern = block < std::size(BY_BLOCK) ? BY_BLOCK[block] : "S";
    uint32_t index = Below(random, 2) == 0 ? 0x46 + Below(random, 4) : IndexBefore(records, place);
    if (part == Part::SEGMENTS) index = 1 + Below(random, 4);
    if (part == Part::EXTERNAL) index = 32 + Below(random, 8);
    records.insert(records.begin() + static_cast<Place>(place), Grow(random, pattern, index));
}

void WrapInBlock(Random& random, Records& records) {
    const auto [begin, end] = RandomRange(random, records);
    records.insert(records.begin() + end, Grow(random, "T"));
    records.insert(records.begin() + begin, Grow(random, Below(random, 4) == 0 ? "H" : "h"));
}

void MutateRecords(Random& random, Part part, Records& records, const ByteMutation& change) {
    const uint32_t choice = Below(random, 16);
    if (records.empty() || choice < 5) return AddRecords(random, part, records);
    if (choice < 8) return Insert(random, records, records);
    if (choice < 9) return Delete(random, records);
    if (choice < 10) return ChangeBytes(random, records, change);
    if (choice < 15) return ChangeNumber(random, records);
    return WrapInBlock(random, records);
}

Part RandomPart(Random& random) {
    constexpr Part PARTS_TO_CHANGE[] = {Part::DEBUG, Part::DEBUG,    Part::DEBUG,
                                        Part::DATA,  Part::EXTERNAL, Part::SEGMENTS};
    return Below(random, 40) == 0 ? static_cast<Part>(Below(random, std::size(builder::PARTS)))
                                  : PARTS_TO_CHANGE[Below(random, std::size(PARTS_TO_CHANGE))];
}

template <typename File>
auto& Content(File& file, Part part) {
    return file.*builder::PARTS[static_cast<size_t>(part)];
}

}  // namespace

void Mutate(Random& random, ObjectFile& file, const ByteMutation& change_bytes) {
    constexpr const char* PROCESSORS[] = {"80166", "tri", "296sa_e", "296sa_c", "TRICORE"};
    if (Below(random, 50) == 0) file.processor = PROCESSORS[Below(random, std::size(PROCESSORS))];
    const Part part = RandomPart(random);
    if (Below(random, 60) == 0) {
        file.offsets.insert({part, 0});
        return;
    }
    Records records = SplitRecords(Content(file, part));
    for (uint32_t n = 1 + Below(random, 3); n > 0; --n)
        MutateRecords(random, part, records, change_bytes);
    Content(file, part) = Joined(records);
}

bool MixIn(Random& random, ObjectFile& file, const ObjectFile& other) {
    const Part part = RandomPart(random);
    const Records more = SplitRecords(Content(other, part));
    if (more.empty()) return false;
    Records records = SplitRecords(Content(file, part));
    if (Below(random, 4) == 0) records.clear();
    Insert(random, records, more);
    Content(file, part) = Joined(records);
    return true;
}

}  // namespace scan695::fuzz
