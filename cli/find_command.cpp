#include "cli/find_command.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "ask/find.h"
#include "cli/complain.h"
#include "cli/database.h"

namespace scan695::cli {

namespace {

constexpr char HELP[] = R"(scan695 find - where is it, what is there

Usage:
  scan695 find FILE QUERY... [--json]
  scan695 find FILE - [--json]

FILE is an object file or an FST file. A QUERY is
  an address   0x1F0 or 496: memory, module, function with offset, inner
               blocks, source line, and the variables alive there
  a name       every symbol of that name with address, size, type, storage,
               module, function and line: as it is written; if there is none,
               without regard to case; then, with "*" in it, as a pattern
  a line       main.c:120: the addresses of its code
With "-" instead, queries are read from standard input, a line each, and an
address is answered in one line:
  0x1f2 main+0x12 main.c:120 MAIN_C
"?" stands for what is not known.

  --json  one JSON document with the answers in the order of the queries

Exit status: 0 every query has an answer, 1 one of them has none or FILE cannot
be read, 2 wrong usage.
)";

struct Options {
    std::string file;
    std::vector<std::string> queries;
    bool json = false;
};

// Calls `use` for each query.
template <class Use>
void ForEachQuery(const Options& options, Use use) {
    if (options.queries != std::vector<std::string>{"-"}) {
        for (const std::string& text : options.queries) use(ask::ParseQuery(text));
        return;
    }
    // An answer goes out when no further query is waiting, so that another program can ask one by
    // one.
    std::ios::sync_with_stdio(false);
    std::cin.tie(nullptr);
    for (std::string line; std::getline(std::cin, line);) {
        if (line.ends_with('\r')) line.pop_back();
        if (!line.empty()) use(ask::ParseQuery(std::move(line)));
        if (std::cin.rdbuf()->in_avail() <= 0) std::cout.flush();
    }
}

int Run(const Options& options) {
    const bool is_input = options.queries == std::vector<std::string>{"-"};
    if (is_input && options.file == "-") throw UsageError{"FILE and queries cannot both be \"-\""};
    const auto fst = OpenDatabase(options.file);
    if (!fst) return FAILED;
    ask::Finder finder(*fst);
    bool has_all = true;
    if (options.json) {
        inspector::JsonWriter json(std::cout);
        inspector::BeginDocument(json, "find", fst->path);
        json.Key("answers").BeginArray();
        ForEachQuery(options, [&](const ask::Query& query) {
            has_all = finder.Write(query, json) && has_all;
        });
        json.End();
        json.End();
    } else {
        ForEachQuery(options, [&](const ask::Query& query) {
            has_all =
                (is_input ? finder.PrintBrief(query, std::cout) : finder.Print(query, std::cout)) &&
                has_all;
        });
    }
    return FlushOutput(has_all ? DONE : FAILED);
}

Action Declare(CLI::App& app) {
    const auto options = std::make_shared<Options>();
    app.add_option("FILE", options->file)->required();
    app.add_option("QUERY", options->queries)->required();
    app.add_flag("--json", options->json);
    return [options] { return Run(*options); };
}

}  // namespace

const Command FIND_COMMAND = {"find", "FILE QUERY... [--json]",
                              "tells what an address, a name or a source line stands for", HELP,
                              Declare};

}  // namespace scan695::cli
