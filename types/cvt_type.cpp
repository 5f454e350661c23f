#include "types/cvt_type.h"

#include "input/input_state.h"
#include "input/processor.h"
#include "report/report.h"
#include "store/records.h"
#include "types/type_state.h"

namespace scan695 {

namespace {

constexpr uint32_t TYPE_VOID_1 = 32;  // the input's type 1, a second void

// By tk_ti, the same for all processors.
constexpr uint32_t COMMON_TYPES[] = {
    TYPE_VOID,    TYPE_VOID_1,  TYPE_CHAR,          TYPE_UCHAR,   // 0
    TYPE_SHORT,   TYPE_USHORT,  TYPE_LONG,          TYPE_ULONG,   // 4
    TYPE_LONG,    TYPE_ULONG,   TYPE_FLOAT,         TYPE_DOUBLE,  // 8
    TYPE_LDOUBLE, TYPE_LDOUBLE, TYPE_STRINGLITERAL, TYPE_LABEL,   // 12
    TYPE_INT,     TYPE_UINT,    TYPE_UINT,          TYPE_CHAR,    // 16
    TYPE_LONG,    TYPE_SHORT,   TYPE_USHORT,        TYPE_SHORT,   // 20
    TYPE_SHORT,   TYPE_VOID,                                      // 24
};
constexpr uint32_t NOF_COMMON_TYPES = sizeof COMMON_TYPES / sizeof COMMON_TYPES[0];
static_assert(NOF_COMMON_TYPES == 26);

uint32_t CvtProcessorType(uint32_t tk_ti) {
    for (const ExtraType& extra : Input.Processor->extra_types)
        if (extra.tk_ti == tk_ti) return extra.type;
    PrintLine("**** UNRECOGNIZED tk_ti=%u, converted to UNDEFINED/UINT\n", tk_ti);
    return TYPE_UINT;
}

}  // namespace

uint32_t CvtTkType(uint32_t tk_ti) {
    if (tk_ti < NOF_COMMON_TYPES) return COMMON_TYPES[tk_ti];
    if (tk_ti < FIRST_USER_TYPE) return CvtProcessorType(tk_ti);
    uint32_t fst_ti;
    if (Types.Aliases.Find(tk_ti, fst_ti) != 0) return fst_ti;
    return Types.Map.Find(tk_ti);
}

}  // namespace scan695
