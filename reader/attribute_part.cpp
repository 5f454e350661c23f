#include "reader/attribute_part.h"

#include "input/cursor.h"
#include "input/record_codes.h"

namespace scan695 {

void ReadAttributePart(uint32_t offset, bool same_index,
                       void (*read_attribute)(uint32_t code, char* text)) {
    const PartFrame frame(offset);
    if (ReadByte() != BYTE_NN) UnexpectedRecord();
    const uint32_t index = RequireNumber();
    char text[PART_NAME_SIZE] = {};
    ReadName(text, sizeof text);
    for (uint32_t attributes = 0;; ++attributes) {
        if (ReadCode() != CODE_ATN) {
            if (attributes == 0) UnexpectedRecord();
            return;
        }
        const uint32_t attribute_index = RequireNumber();
        if (same_index && attribute_index != index) UnexpectedRecord();
        OptionalNumber();
        read_attribute(RequireNumber(), text);
    }
}

}  // namespace scan695
