// The unit of types, which all other units refer to. Every struct, union, enumeration, pointer,
// array and function type of the file has its entry there once, in the order of the records; basic
// types and what stands in for types that never came follow as they are referred to. Attributes
// have no entry: references go through them to their target.
#pragma once

#include <optional>
#include <unordered_map>
#include <vector>

#include "dwarf/entries.h"
#include "dwarf/type_loops.h"
#include "inspector/reader.h"

namespace scan695::dwarf {

class Types {
  public:
    explicit Types(const inspector::Fst& fst);

    // The entry of a type. It is asked for by that, if it is not there anyway.
    TypeId Of(uint32_t type_index);
    // The same for a reference from a type record, which may be a loop that is cut.
    TypeId At(const TypeEdge& edge, uint32_t type_index);
    // A single bit of a byte, 0 the lowest.
    TypeId OfBit(uint32_t bit);

    // The memory that the attributes of a type tell, as an FST memory type.
    std::optional<uint8_t> MemoryOf(uint32_t type_index) const;

    // Writes the unit when all other units have been written. `writer` is empty.
    void Write(EntryWriter& writer);
    // Where an entry begins in the unit, once that is written.
    uint32_t OffsetOf(TypeId type) const { return offsets_[type]; }

  private:
    // Entries beside those of records.
    enum ExtraKind : uint8_t { BASIC, BIT, BITFIELD, DECLARATION };
    struct Extra {
        ExtraKind kind;
        uint32_t number;  // type index, bit, record, type index
    };

    TypeId OfExtra(ExtraKind kind, uint32_t number);
    void WriteRecord(EntryWriter& writer, uint32_t record, const TYPEINFO& type);
    void WriteComposite(EntryWriter& writer, uint32_t record, const TYPEINFO& type);
    void WriteMember(EntryWriter& writer, const TypeEdge& edge, const FIELDINFO& field);
    void WriteEnumeration(EntryWriter& writer, const TYPEINFO& type);
    void WriteArray(EntryWriter& writer, uint32_t record, const TYPEINFO& type);
    void WriteFunction(EntryWriter& writer, uint32_t record, const TYPEINFO& type);
    void WriteExtra(EntryWriter& writer, const Extra& extra);
    void WriteBasic(EntryWriter& writer, uint32_t type_index);
    uint32_t BasicSize(uint32_t type_index) const;

    const inspector::Fst& fst_;
    TypeLoops loops_;
    uint32_t records_;
    std::vector<Extra> extras_;  // their entries are numbered behind the records
    std::unordered_map<uint64_t, TypeId> extra_ids_;
    std::vector<uint32_t> offsets_;
};

// Writes the entries of the parameters of a function type, as its children.
void WriteParameters(EntryWriter& writer, Types& types, uint32_t record,
                     const std::vector<FIELDINFO>& parameters);

}  // namespace scan695::dwarf
