#include "cli/report_command.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <sstream>
#include <vector>

#include "cli/complain.h"
#include "cli/database.h"
#include "cli/result_file.h"
#include "inspector/json.h"
#include "inspector/tables.h"
#include "page/page.h"

namespace scan695::cli {

namespace {

constexpr char HELP[] = R"(scan695 report - a program as a page for a browser

Usage:
  scan695 report FILE -o OUT.html

Writes one page that needs nothing else, neither a network nor other files: what
the header says, a memory map and the sizes of modules and symbols to zoom into,
tables of symbols, functions, types and lines to search and sort, the layout of
each struct. FILE is an object file or an FST file; "-" is standard input.
OUT.html is replaced when the new file is complete, and not before.

  -o, --output OUT.html  where the page goes; "-" is standard output

Exit status: 0 success, 1 failure, 2 wrong usage.
)";

constexpr const char* TABLES[] = {"modules", "symbols", "types", "blocks",
                                  "lines",   "ranges",  "code"};

struct Options {
    std::string file;
    std::string out;
};

std::string Document(const inspector::Fst& fst) {
    std::vector<const inspector::Table*> tables;
    for (const char* name : TABLES) tables.push_back(inspector::FindTable(name));
    std::ostringstream document;
    inspector::PrintJson(fst, tables, document);
    return std::move(document).str();
}

int Fail(const std::string& file, const std::string& what) {
    Complain(file, what);
    return FAILED;
}

int Run(const Options& options) {
    ResultFile result;
    if (const auto cause = OpenResult(options.file, options.out, result)) {
        return Fail(options.file, *cause);
    }
    const auto fst = OpenDatabase(options.file);
    if (!fst) return FAILED;
    std::ostringstream text;
    page::WritePage(Document(*fst), text);
    auto cause = WriteResult(result, text.view());
    if (!cause) cause = DeliverResult(result);
    return cause ? Fail(options.file, *cause) : DONE;
}

Action Declare(CLI::App& app) {
    const auto options = std::make_shared<Options>();
    app.add_option("FILE", options->file)->required();
    app.add_option("-o,--output", options->out)->required();
    return [options] { return Run(*options); };
}

}  // namespace

const Command REPORT_COMMAND = {"report", "FILE -o OUT.html",
                                "writes a program as a page for a browser", HELP, Declare};

}  // namespace scan695::cli
