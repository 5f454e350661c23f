// One type definition. It begins with a number; twelve values are letters that open a definition,
// and any other is a reference to a type. A field <type> is a definition again:
//
//     x attr frame_type push_mask <type> nof_parms <type>... level [father]    function
//     Z <type> upper_bound              array
//     n kind <type> lex_level           attribute
//     Q qualifier <type>                attribute
//     O <type>, P <type>                small and large pointer
//     S size members, U size members    struct and union
//     N items                           enumeration
//     T tk_ti, t tk_ti                  another name of a type
//     g signed width [third]            bitfield
#pragma once

#include <cstdint>

namespace scan695 {

// Reads a definition and gives its type index: the number of a record, a basic type or a marker.
// `tk_idx` is 0 for a nested definition, whose level is above 0. The name may get cut.
uint32_t ScanType(uint32_t tk_idx, int32_t level, char* name);

}  // namespace scan695
