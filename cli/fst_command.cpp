#include "cli/fst_command.h"

#include <iostream>
#include <vector>

#include "cli/convert.h"
#include "inspector/json.h"
#include "inspector/reader.h"
#include "inspector/tables.h"
#include "inspector/text.h"
#include "inspector/verify.h"

namespace scan695::cli {

namespace {

std::vector<const inspector::Table*> ChosenTables(const FstOptions& options) {
    std::vector<const inspector::Table*> tables;
    for (const FstTableOption& choice : FST_TABLE_OPTIONS) {
        if (options.*choice.field) tables.push_back(inspector::FindTable(choice.option + 2));
    }
    return tables;
}

std::vector<const inspector::Table*> AllTables() {
    std::vector<const inspector::Table*> tables;
    for (const FstTableOption& choice : FST_TABLE_OPTIONS) {
        tables.push_back(inspector::FindTable(choice.option + 2));
    }
    return tables;
}

}  // namespace

int RunFstCommand(const FstOptions& options) {
    inspector::Fst fst;
    std::string error;
    if (!inspector::Load(options.file, fst, error)) {
        Complain(options.file, error);
        return FAILED;
    }
    const std::vector<std::string> violations = inspector::Verify(fst);
    if (options.verify) {
        for (const std::string& line : violations) {
            std::cout << options.file << ": " << line << '\n';
        }
        std::cout.flush();
        return violations.empty() ? DONE : FAILED;
    }

    std::vector<const inspector::Table*> tables = ChosenTables(options);
    if (options.json) {
        inspector::PrintJson(fst, tables.empty() ? AllTables() : tables, std::cout);
    } else if (tables.empty()) {
        inspector::PrintSummary(fst, std::cout);
    }
    for (size_t i = 0; !options.json && i < tables.size(); ++i) {
        if (tables.size() > 1) std::cout << (i == 0 ? "" : "\n") << tables[i]->name << ":\n";
        inspector::PrintTable(fst, *tables[i], std::cout);
    }
    std::cout.flush();
    if (violations.empty()) return DONE;
    Complain(options.file, "damaged, see --verify; the first of " +
                               std::to_string(violations.size()) +
                               " violations: " + violations.front());
    return FAILED;
}

}  // namespace scan695::cli
