// Who owns which code: the stretches of each unit, and what each source line covers. A unit has the
// module ranges of its module and its blocks, but for what lines of other modules cover in them,
// and what its own lines cover.
#pragma once

#include <cstdint>
#include <vector>

#include "dwarf/program.h"
#include "dwarf/stretches.h"

namespace scan695::dwarf {

// A line of the program: it holds from its address up to `end`, the next line or the end of the
// stretch it lies in. Of several lines at one address only the last one covers anything.
struct Row {
    uint32_t address;
    uint16_t line;
    uint32_t unit;  // less Program::FirstUnit
    uint64_t end;
};

struct CodeMap {
    std::vector<Row> rows;                        // by address and line number
    Groups unit_rows;                             // by unit
    std::vector<std::vector<Stretch>> stretches;  // by unit; ascending, apart from one another
};

CodeMap BuildCodeMap(const Program& program);

}  // namespace scan695::dwarf
