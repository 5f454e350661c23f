#include "cli/type_command.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "ask/layouts.h"
#include "cli/complain.h"
#include "cli/database.h"

namespace scan695::cli {

namespace {

constexpr char HELP[] = R"(scan695 type - layouts of structs, unions and enumerations

Usage:
  scan695 type FILE [NAME...] [--json]

FILE is an object file or an FST file; "-" is standard input. Prints the layout
of every type of that name as C text, with the offset and size of each member in
bytes, of bitfields as byte:bit, and with the holes; then those of the types that
its members lead to, nested and through pointers. Equal layouts come once. All
of them without a NAME.

A NAME is a tag or "struct tag": as it is written; if there is none, without
regard to case; then, with "*" in it, as a pattern. A number is a type index.

  --json  one JSON document

Exit status: 0 success, 1 some NAME has no type or FILE cannot be read, 2 wrong
usage.
)";

struct Options {
    std::string file;
    std::vector<std::string> names;
    bool json = false;
};

int Run(const Options& options) {
    const auto fst = OpenDatabase(options.file);
    if (!fst) return FAILED;
    int status = DONE;
    std::vector<ask::Layout> layouts;
    if (options.names.empty()) layouts = ask::AllLayouts(*fst);
    for (const std::string& name : options.names) {
        std::vector<ask::Layout> named = ask::NamedLayouts(*fst, name);
        if (named.empty()) {
            Complain(options.file, name + ": no such type");
            status = FAILED;
        }
        for (ask::Layout& layout : named) layouts.push_back(std::move(layout));
    }
    if (options.json) {
        inspector::JsonWriter json(std::cout);
        inspector::BeginDocument(json, "type", fst->path);
        json.Key("layouts").BeginArray();
        for (const ask::Layout& layout : layouts) WriteLayout(*fst, layout, json);
        json.End();
        json.End();
    } else {
        const char* separator = "";
        for (const ask::Layout& layout : layouts) {
            std::cout << separator;
            PrintLayout(layout, std::cout);
            separator = "\n";
        }
    }
    return FlushOutput(status);
}

Action Declare(CLI::App& app) {
    const auto options = std::make_shared<Options>();
    app.add_option("FILE", options->file)->required();
    app.add_option("NAME", options->names);
    app.add_flag("--json", options->json);
    return [options] { return Run(*options); };
}

}  // namespace

const Command TYPE_COMMAND = {"type", "FILE [NAME...] [--json]",
                              "prints the layouts of structs, unions and enumerations", HELP,
                              Declare};

}  // namespace scan695::cli
