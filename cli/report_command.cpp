#include "cli/report_command.h"

#include <CLI/CLI.hpp>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <vector>

#include "cli/complain.h"
#include "cli/database.h"
#include "cli/host.h"
#include "cli/temp_files.h"
#include "inspector/json.h"
#include "inspector/tables.h"
#include "page/page.h"

namespace scan695::cli {

namespace fs = std::filesystem;

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

int Fail(const std::string& out, const std::string& what) {
    Complain(out, what);
    return FAILED;
}

// Gives false with errno set.
bool WriteFile(const std::string& path, const std::string& document) {
    errno = 0;
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    if (file) page::WritePage(document, file);
    file.close();
    return !file.fail();
}

// A regular file is replaced when the new one is complete.
int ReplaceFile(const std::string& out, const std::string& document) {
    std::error_code failure;
    const fs::path final_path = fs::weakly_canonical(out, failure);
    std::string path;
    const int descriptor = CreateTempFile(final_path.parent_path().string(), false, path);
    if (descriptor == -1) return Fail(out, "cannot create: " + ErrorText(errno));
    CloseDescriptor(descriptor);
    if (!WriteFile(path, document)) {
        const int error = errno;
        RemoveTempFile(path);
        return Fail(out, "cannot write: " + ErrorText(error));
    }
    fs::rename(path, final_path, failure);
    if (failure) {
        RemoveTempFile(path);
        return Fail(out, "cannot replace the output: " + failure.message());
    }
    KeepTempFile(path);
    return DONE;
}

int Run(const Options& options) {
    if (options.out.empty()) throw UsageError{"OUT is empty"};
    std::error_code error;
    if (fs::equivalent(options.file, options.out, error)) {
        throw UsageError{"OUT is FILE itself"};
    }
    const auto fst = OpenDatabase(options.file);
    if (!fst) return FAILED;
    const std::string document = Document(*fst);
    if (options.out == "-") {
        page::WritePage(document, std::cout);
        return FlushOutput(DONE);
    }
    const bool is_device =
        fs::exists(options.out, error) && !fs::is_regular_file(options.out, error);
    if (!is_device) return ReplaceFile(options.out, document);
    return WriteFile(options.out, document) ? DONE : Fail(options.out, ErrorText(errno));
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
