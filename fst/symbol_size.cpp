#include "fst/symbol_size.h"

#include <cstdlib>

#include "fst/image_access.h"
#include "report/report.h"
#include "store/tables.h"

namespace scan695 {

namespace {

enum Attribute : uint8_t {
    ATTRIBUTE_MASK = 0xF0,
    ATTRIBUTE_DATA = 0x10,
    ATTRIBUTE_MEMORY_3 = 0x20,
    ATTRIBUTE_MEMORY_1 = 0x30,
    ATTRIBUTE_BIT = 0x40,
    ATTRIBUTE_MEMORY_5 = 0x50,
    ATTRIBUTE_CODE = 0x60,
};

constexpr uint32_t FIRST_HIGH_BIT_ADDRESS = 0x80;

TypeEnd EndAtBasicType(uint32_t type_index) {
    if (type_index <= TYPE_BIT) return {type_index, GetBasicTypeSize(type_index)};
    if (type_index == TYPE_POINTER) return {type_index, Store.PointerSize};
    if (type_index == TYPE_LABEL) return {TYPE_VOID};
    return {type_index};
}

TypeEnd EndAtRecord(const TYPEINFO& type, uint32_t type_index) {
    switch (type.type_tag) {
        case TAG_POINTER:
            return {type_index, type.u.pointer.ptr_size};
        case TAG_ARRAY:
            return {type_index, type.u.array.size};
        case TAG_STRUCT:
        case TAG_UNION:
            return {type_index, type.u.structunion.size};
        case TAG_NONE:
        case TAG_BITFIELD:
        case TAG_FUNCTION:
        case TAG_ATTRIBUTE:
        case TAG_ENUMERATION:
            break;
    }
    return {type_index};
}

// What an attribute does to a symbol by itself; the chain goes on at the type index.
TypeEnd ThroughAttribute(const TYPEINFO& type) {
    const auto set = [&type](int8_t mem_type) {
        return TypeEnd{type.u.pointer.type_index, 0, mem_type, TypeEnd::SET};
    };
    switch (type.u.pointer.spec & ATTRIBUTE_MASK) {
        case ATTRIBUTE_DATA:
            return set(MEM_DATA);
        case ATTRIBUTE_MEMORY_3:
            return set(3);
        case ATTRIBUTE_MEMORY_1:
            return set(1);
        case ATTRIBUTE_BIT:
            return {TYPE_BIT, 0, 0, TypeEnd::BY_ADDRESS};
        case ATTRIBUTE_MEMORY_5:
            return set(MEM_BIT_HIGH);
        case ATTRIBUTE_CODE:
            return set(MEM_CODE);
        default:
            return {type.u.pointer.type_index};
    }
}

// A later link of the chain overrules an earlier one.
TypeEnd Joined(const TypeEnd& earlier, const TypeEnd& later) {
    if (later.memory != TypeEnd::KEPT) return later;
    return {later.type_index, later.size, earlier.mem_type, earlier.memory};
}

}  // namespace

void TypeEnds::FreeMemory::operator()(void* memory) const {
    std::free(memory);
}

TypeEnds::Link* TypeEnds::LinkOf(uint32_t type_index) {
    if (links_ == nullptr)
        links_.reset(static_cast<Link*>(std::calloc(TYPE_LOOKUP_MASK + 1, sizeof(Link))));
    return links_ != nullptr ? &links_[type_index & TYPE_LOOKUP_MASK] : nullptr;
}

// Goes back over the links of a walk and gives each its end.
void TypeEnds::EndWalk(TypeEnd end, uint32_t nof_links, uint32_t last) {
    for (; links_ != nullptr && nof_links > 0; --nof_links) {
        Link& link = links_[last];
        end = Joined(link.end, end);
        last = link.previous;
        link = {end, 0, true, false};
    }
}

bool TypeEnds::LookAt(uint32_t type_index, uint32_t last, TypeEnd& end) {
    if (type_index < FIRST_TYPE_INDEX) {
        end = EndAtBasicType(type_index);
        return true;
    }
    Link* const link = LinkOf(type_index);
    if (link != nullptr && link->known) {
        end = link->end;
        if (link->is_end) end.type_index = type_index;
        return true;
    }
    const std::optional<TYPEINFO> type = FindType(type_index);
    if (!type) ReportAndStop(ERROR_READ_TEMPORARY);
    const bool is_end = type->type_tag != TAG_ATTRIBUTE;
    end = is_end ? EndAtRecord(*type, type_index) : ThroughAttribute(*type);
    if (link != nullptr) *link = {end, static_cast<uint16_t>(last), is_end, is_end};
    return is_end;
}

TypeEnd TypeEnds::Find(uint32_t type_index) {
    TypeEnd walked;
    uint32_t last = 0;
    // A chain with more links than there are types has come back to one of them.
    for (uint32_t nof_links = 0; nof_links <= Store.Header.nof_types; ++nof_links) {
        ProgressTick();
        TypeEnd next;
        if (LookAt(type_index, last, next)) {
            EndWalk(next, nof_links, last);
            return Joined(walked, next);
        }
        walked = Joined(walked, next);
        last = type_index & TYPE_LOOKUP_MASK;
        type_index = next.type_index;
    }
    ReportAndStop(ERROR_READ_TEMPORARY);
}

uint32_t SymbolSize(TypeEnds& ends, uint32_t value, uint32_t& type_index, int8_t& mem_type) {
    const TypeEnd end = ends.Find(type_index);
    type_index = end.type_index;
    if (end.memory == TypeEnd::SET) mem_type = end.mem_type;
    if (end.memory == TypeEnd::BY_ADDRESS)
        mem_type = value < FIRST_HIGH_BIT_ADDRESS ? MEM_BIT_LOW : MEM_BIT_HIGH;
    return end.size;
}

}  // namespace scan695
