#include "store/basic_types.h"

namespace scan695 {

BasicTypeState BasicTypes;

void SetBasicTypeSize(uint32_t index, uint8_t size) {
    if (index < NOF_BASIC_SIZES) BasicTypes.BasicTypeSizes[index] = size;
}

uint32_t GetBasicTypeSize(uint32_t index) {
    return index < NOF_BASIC_SIZES ? BasicTypes.BasicTypeSizes[index] : 0;
}

}  // namespace scan695
