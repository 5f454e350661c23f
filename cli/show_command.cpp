#include "cli/show_command.h"

#include <CLI/CLI.hpp>
#include <array>
#include <iostream>
#include <memory>
#include <vector>

#include "cli/complain.h"
#include "cli/database.h"
#include "inspector/json.h"
#include "inspector/tables.h"
#include "inspector/text.h"
#include "inspector/verify.h"

namespace scan695::cli {

namespace {

constexpr char HELP[] = R"(scan695 show - the tables of a program

Usage:
  scan695 show FILE [--modules] [--symbols] [--types] [--blocks] [--lines]
               [--ranges] [--code] [--json]

FILE is an object file or an FST file; "-" is standard input. Without options a
summary is printed: processor, model, start address, counts, and the sections of
the database with their offsets and sizes.

  --modules  modules, by name
  --symbols  symbols with their locations: the global ones, those of each
             module, those of each block; by name within each group
  --types    types with their members, items and parameters, by type index
  --blocks   functions and inner blocks, by address
  --lines    source lines, by address
  --ranges   stretches of code memory and the modules that own them, by address
  --code     blocks of the memory image, in the order of the file
  --json     one JSON document: the summary and the tables that were asked for,
             or all of them

The first column is the record number, which other records refer to. "-" stands
for nothing. Of a damaged file, what can be read is printed.

Exit status: 0 success, 1 FILE is damaged or cannot be read, 2 wrong usage.
)";

// The tables in the order in which they are printed.
constexpr std::array TABLES = {"modules", "symbols", "types", "blocks", "lines", "ranges", "code"};

struct Options {
    std::string file;
    std::array<bool, TABLES.size()> tables = {};
    bool json = false;
};

void PrintTables(const inspector::Fst& fst, const std::vector<const inspector::Table*>& tables) {
    for (size_t i = 0; i < tables.size(); ++i) {
        if (tables.size() > 1) std::cout << (i == 0 ? "" : "\n") << tables[i]->name << ":\n";
        inspector::PrintTable(fst, *tables[i], std::cout);
    }
}

int Run(const Options& options) {
    const auto fst = OpenDatabase(options.file);
    if (!fst) return FAILED;
    std::vector<const inspector::Table*> chosen;
    std::vector<const inspector::Table*> all;
    for (size_t i = 0; i < TABLES.size(); ++i) {
        all.push_back(inspector::FindTable(TABLES[i]));
        if (options.tables[i]) chosen.push_back(all.back());
    }
    if (options.json) {
        inspector::PrintJson(*fst, chosen.empty() ? all : chosen, std::cout);
    } else if (chosen.empty()) {
        inspector::PrintSummary(*fst, std::cout);
    } else {
        PrintTables(*fst, chosen);
    }
    const int status = FlushOutput(DONE);
    const std::vector<std::string> violations = inspector::Verify(*fst);
    if (violations.empty()) return status;
    Complain(options.file, "damaged, see \"scan695 verify\"; the first of " +
                               std::to_string(violations.size()) +
                               " violations: " + violations.front());
    return FAILED;
}

Action Declare(CLI::App& app) {
    const auto options = std::make_shared<Options>();
    app.add_option("FILE", options->file)->required();
    for (size_t i = 0; i < TABLES.size(); ++i) {
        app.add_flag(std::string("--") + TABLES[i], options->tables[i]);
    }
    app.add_flag("--json", options->json);
    return [options] { return Run(*options); };
}

}  // namespace

const Command SHOW_COMMAND = {"show", "FILE [--symbols ...] [--json]",
                              "prints the tables of a program: an object file or an FST file", HELP,
                              Declare};

}  // namespace scan695::cli
