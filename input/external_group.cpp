#include "input/external_group.h"

#include "input/cursor.h"
#include "input/record_codes.h"
#include "report/report.h"

namespace scan695 {

namespace {

constexpr uint32_t FIRST_SYMBOL_INDEX = 32;

constexpr struct {
    PublicCode attribute;
    StorageClass storage_class;
} ATTRIBUTES[] = {
    {ATI_VARIABLE, STORAGE_STATIC},
    {ATI_CONSTANT, STORAGE_STATIC},
    {ATI_ASM_SYMBOL, STORAGE_GLOBAL},
    {ATI_STATIC, STORAGE_STATIC},
};

}  // namespace

uint32_t ReadExternalSegment() {
    const uint32_t segment = RequireNumber();
    Trace("CurrSeg=%u\n", segment);
    return segment;
}

ExternalGroup ReadExternalGroup(char* name, bool known_attribute) {
    ExternalGroup group = {};
    group.index = RequireNumber();
    if (group.index < FIRST_SYMBOL_INDEX) UnexpectedRecord();
    group.name_at = Input.InputCursor;
    ReadName(name, SYMBOL_NAME_SIZE);
    if (ReadCode() != CODE_ATI) UnexpectedRecord();
    RequireIndex(group.index);
    group.tk_ti = RequireNumber();
    group.attribute = RequireNumber();
    if (known_attribute && !PublicStorageClass(group.attribute)) UnexpectedRecord();
    group.memory_id = OptionalNumber(group.index);
    group.has_address = ReadCode() == CODE_ASI;
    return group;
}

uint32_t ReadExternalAddress(const ExternalGroup& group) {
    RequireIndex(group.index);
    uint32_t address = 0;
    if (ReadNumber(address) == 0) StopAtLastOffset("Unrecognized value at %x\n");
    return address;
}

std::optional<StorageClass> PublicStorageClass(uint32_t attribute) {
    for (const auto& entry : ATTRIBUTES)
        if (entry.attribute == attribute) return entry.storage_class;
    return std::nullopt;
}

}  // namespace scan695
