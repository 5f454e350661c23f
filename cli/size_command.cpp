#include "cli/size_command.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <limits>
#include <memory>
#include <string>

#include "ask/sizes.h"
#include "cli/complain.h"
#include "cli/database.h"

namespace scan695::cli {

namespace {

constexpr char HELP[] = R"(scan695 size - what takes how many bytes

Usage:
  scan695 size FILE [--all | --json]

FILE is an object file or an FST file; "-" is standard input. Prints the sizes of
modules, of stretches of memory, of functions and of variables, largest first, 20
of each.

Every byte of the image is counted once: in the range of a module it is code;
elsewhere under a variable it is a constant of the variable's module; else it
belongs to nobody. Bytes of variables outside of the image are data. Where things
overlap, the one that begins first has the bytes, of two the larger.

  --all   all rows
  --json  one JSON document with all rows

Exit status: 0 success, 1 failure, 2 wrong usage.
)";

constexpr size_t FEW_ROWS = 20;

struct Options {
    std::string file;
    bool all = false;
    bool json = false;
};

int Run(const Options& options) {
    const auto fst = OpenDatabase(options.file);
    if (!fst) return FAILED;
    const ask::Sizes sizes = ask::SizesOf(*fst);
    if (options.json) {
        inspector::JsonWriter json(std::cout);
        inspector::BeginDocument(json, "size", fst->path);
        WriteSizes(*fst, sizes, json);
        json.End();
    } else {
        const size_t limit = options.all ? std::numeric_limits<size_t>::max() : FEW_ROWS;
        PrintSizes(*fst, sizes, limit, std::cout);
    }
    return FlushOutput(DONE);
}

Action Declare(CLI::App& app) {
    const auto options = std::make_shared<Options>();
    app.add_option("FILE", options->file)->required();
    auto* all = app.add_flag("--all", options->all);
    app.add_flag("--json", options->json)->excludes(all);
    return [options] { return Run(*options); };
}

}  // namespace

const Command SIZE_COMMAND = {"size", "FILE [--all | --json]",
                              "tells what takes how many bytes, by module, memory, function and "
                              "variable",
                              HELP, Declare};

}  // namespace scan695::cli
