#include "cli/diff_command.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <string>

#include "ask/diff.h"
#include "cli/complain.h"
#include "cli/database.h"

namespace scan695::cli {

namespace {

constexpr char HELP[] = R"(scan695 diff - what changed between two programs

Usage:
  scan695 diff OLD NEW [--json]

OLD and NEW are object files or FST files; one of them may be "-". Prints the
symbols that have come (+), are gone (-), or have moved, grown, changed their type
or their bytes (~), with how many bytes of a function or variable differ; layouts
that changed, with their lines; the sizes of modules that changed.

Things are matched by name, so two builds that differ in the order of modules or
types only are equal. Variables in registers and on the stack are not compared.

  --json  one JSON document

Exit status: 0 nothing changed, 1 something did, 2 an error.
)";

constexpr int EQUAL = 0;
constexpr int DIFFERENT = 1;
constexpr int TROUBLE = 2;

struct Options {
    std::string before;
    std::string after;
    bool json = false;
};

int Run(const Options& options) {
    if (options.before == "-" && options.after == "-")
        throw UsageError{"OLD and NEW cannot both be \"-\""};
    const auto before = OpenDatabase(options.before);
    if (!before) return TROUBLE;
    const auto after = OpenDatabase(options.after);
    if (!after) return TROUBLE;
    const ask::Diff diff = ask::Compare(*before, *after);
    if (options.json) {
        inspector::JsonWriter json(std::cout);
        inspector::BeginDocument(json, "diff", before->path);
        json.Key("new_file").Path(after->path);
        WriteDiff(*before, *after, diff, json);
        json.End();
    } else {
        PrintDiff(*before, *after, diff, std::cout);
    }
    if (FlushOutput(DONE) != DONE) return TROUBLE;
    return diff.IsEmpty() ? EQUAL : DIFFERENT;
}

Action Declare(CLI::App& app) {
    const auto options = std::make_shared<Options>();
    app.add_option("OLD", options->before)->required();
    app.add_option("NEW", options->after)->required();
    app.add_flag("--json", options->json);
    return [options] { return Run(*options); };
}

}  // namespace

const Command DIFF_COMMAND = {"diff", "OLD NEW [--json]", "tells what changed between two programs",
                              HELP, Declare};

}  // namespace scan695::cli
