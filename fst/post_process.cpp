#include "fst/post_process.h"

#include "fst/build_range_table.h"
#include "fst/filter.h"
#include "fst/sort_passes.h"
#include "report/report.h"

namespace scan695 {

// The order of the passes is that of the sections, and carries dependencies: sizes of symbols come
// from the finished type sections, ranges from the finished block, symbol and line sections, the
// modules in memory and the code before it is merged.
void PostProcess() {
    FilterGlobalSymbols();
    PrintLine("Sorting...           \b\b\b\b\b\b\b\b\b\b");
    Trace("\n");
    SortTypes();
    PrepareModules();
    SortBlocks();
    SortSymbols();
    SortLines();
    BuildRangeTable();
    SortModules();
    SortCode();
    PrintLine("done.\n");
}

}  // namespace scan695
