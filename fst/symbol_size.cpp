#include "fst/symbol_size.h"

#include <cstdlib>

#include "fst/image_cache.h"
#include "fst/working_arrays.h"
#include "report/report.h"
#include "store/basic_types.h"
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

uint32_t SizeOfBasicType(uint32_t* type_index) {
    if (*type_index <= TYPE_BIT) return GetBasicTypeSize(*type_index);
    if (*type_index == TYPE_POINTER) return BasicTypes.PointerSize;
    if (*type_index == TYPE_LABEL) *type_index = TYPE_VOID;
    return 0;
}

// FindType with a memory: symbols ask for the same types again and again. It knows them by the 16
// bits that FindType looks at, as record numbers + 1.
TYPEINFO FindTypeRecord(uint32_t type_index) {
    constexpr uint32_t NOF_NUMBERS = 0x10000;
    if (Work.FoundTypes == nullptr)
        Work.FoundTypes.reset(static_cast<uint32_t*>(std::calloc(NOF_NUMBERS, sizeof(uint32_t))));
    const auto position = static_cast<uint32_t>(Store.FstImage.Position());
    uint32_t* const known =
        Work.FoundTypes != nullptr ? &Work.FoundTypes[type_index % NOF_NUMBERS] : nullptr;
    TYPEINFO type;
    if (known != nullptr && *known != 0) {
        GetTypeRecord(*known - 1, &type);
    } else {
        const int32_t record = FindType(type_index, &type);
        if (record < 0) ReportAndStop(ERROR_READ_TEMPORARY);
        if (known != nullptr) *known = static_cast<uint32_t>(record) + 1;
    }
    SeekImage(position);
    return type;
}

void ApplyAttribute(const TYPEINFO& type, uint32_t value, uint32_t* type_index, int8_t* mem_type) {
    *type_index = type.u.pointer.type_index;
    switch (type.u.pointer.spec & ATTRIBUTE_MASK) {
        case ATTRIBUTE_DATA:
            *mem_type = MEM_DATA;
            break;
        case ATTRIBUTE_MEMORY_3:
            *mem_type = 3;
            break;
        case ATTRIBUTE_MEMORY_1:
            *mem_type = 1;
            break;
        case ATTRIBUTE_BIT:
            *mem_type = value < FIRST_HIGH_BIT_ADDRESS ? MEM_BIT_LOW : MEM_BIT_HIGH;
            *type_index = TYPE_BIT;
            break;
        case ATTRIBUTE_MEMORY_5:
            *mem_type = MEM_BIT_HIGH;
            break;
        case ATTRIBUTE_CODE:
            *mem_type = MEM_CODE;
            break;
        default:
            break;
    }
}

}  // namespace

uint32_t SymbolSize(const uint32_t* value, uint32_t* type_index, int8_t* mem_type) {
    // A chain with more links than there are types has come back to one of them.
    for (uint32_t links = 0; links <= Store.Header.nof_types; ++links) {
        ProgressTick();
        if (*type_index < FIRST_TYPE_INDEX) return SizeOfBasicType(type_index);
        const TYPEINFO type = FindTypeRecord(*type_index);
        switch (type.type_tag) {
            case TAG_POINTER:
                return type.u.pointer.ptr_size;
            case TAG_ARRAY:
                return type.u.array.size;
            case TAG_STRUCT:
            case TAG_UNION:
                return type.u.structunion.size;
            case TAG_ATTRIBUTE:
                ApplyAttribute(type, *value, type_index, mem_type);
                break;
            default:
                return 0;
        }
    }
    ReportAndStop(ERROR_READ_TEMPORARY);
}

}  // namespace scan695
