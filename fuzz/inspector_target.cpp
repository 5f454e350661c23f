// The inspector of FST files: summary, every table as text, the JSON document, and the checks, on
// any bytes. What it prints is thrown away.
#include <sstream>
#include <string>
#include <vector>

#include "fuzz/target.h"
#include "inspector/json.h"
#include "inspector/summary.h"
#include "inspector/text.h"
#include "inspector/verify.h"

namespace {

constexpr const char* TABLES[] = {"symbols", "types",  "modules", "blocks",
                                  "lines",   "ranges", "code"};

std::vector<const scan695::inspector::Table*> AllTables() {
    std::vector<const scan695::inspector::Table*> tables;
    for (const char* name : TABLES) {
        tables.push_back(scan695::inspector::FindTable(name));
        if (tables.back() == nullptr) scan695::fuzz::Broken("a table", name);
    }
    return tables;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace scan695::inspector;
    static const std::vector<const Table*> tables = AllTables();
    std::ostringstream nowhere;
    Fst fst;
    std::string error;
    if (!Parse({data, data + size}, fst, error)) return 0;
    PrintSummary(fst, nowhere);
    for (const Table* table : tables) PrintTable(fst, *table, nowhere);
    if (size % 8 == 0) PrintJson(fst, tables, nowhere);  // as slow as all others together
    Verify(fst);
    return 0;
}
