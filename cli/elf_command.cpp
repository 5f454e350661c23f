#include "cli/elf_command.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "cli/complain.h"
#include "cli/database.h"
#include "cli/result_file.h"
#include "elf/elf_file.h"

namespace scan695::cli {

namespace {

constexpr char HELP[] = R"(scan695 elf - a program as an ELF file with DWARF

Usage:
  scan695 elf FILE -o OUT.elf

Writes the whole program into OUT.elf, an ELF file for today's debuggers and
tools: the memory image, the symbols, and scopes, variables, types and source
lines as DWARF 4. FILE is an object file or an FST file; "-" is standard input.
OUT.elf is replaced when the new file is complete, and not before.

  -o, --output OUT.elf  where the ELF file goes

Exit status: 0 success, 1 failure, 2 wrong usage.
)";

struct Options {
    std::string file;
    std::string out;
};

int Fail(const std::string& file, const std::string& what) {
    Complain(file, what);
    return FAILED;
}

int Run(const Options& options) {
    if (const char* why = elf::WhyNot()) return Fail(options.out, why);
    ResultFile result;
    if (const auto cause = OpenResult(options.file, options.out, result)) {
        return Fail(options.file, *cause);
    }
    const auto fst = OpenDatabase(options.file);
    if (!fst) return FAILED;
    std::string error;
    if (!elf::Write(*fst, result.descriptor, error)) return Fail(options.file, error);
    if (const auto cause = DeliverResult(result)) return Fail(options.file, *cause);
    return DONE;
}

Action Declare(CLI::App& app) {
    const auto options = std::make_shared<Options>();
    app.add_option("FILE", options->file)->required();
    app.add_option("-o,--output", options->out)->required();
    return [options] { return Run(*options); };
}

}  // namespace

const Command ELF_COMMAND = {"elf", "FILE -o OUT.elf", "writes a program as an ELF file with DWARF",
                             HELP, Declare};

}  // namespace scan695::cli
