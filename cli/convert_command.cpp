#include "cli/convert_command.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <vector>

#include "cli/convert.h"
#include "cli/output.h"

namespace scan695::cli {

namespace {

constexpr char HELP[] = R"(scan695 convert - converts object files into STF files

Usage:
  scan695 [convert] FILE [-o OUT] [--debug] [-q]

  -o, --output OUT  Write the STF file to OUT. Without it OUT is FILE with the
                    extension .stf. "-" is standard output.
  --debug           Print a trace of all records and write an FST file beside
                    FILE, under its name in upper case with the extension FST.
  -q, --quiet       Print nothing but errors.
)";

struct Options {
    ConvertOptions conversion;
    std::vector<std::string> files;
};

int Run(Options& options, bool has_output) {
    ConvertOptions& conversion = options.conversion;
    for (const std::string& file : options.files) {
        if (file.empty()) throw UsageError{"FILE is empty"};
    }
    if (options.files.size() > 1) throw UsageError{"more than one FILE"};
    conversion.file = options.files[0];
    if (!has_output) conversion.out = DefaultOutput(conversion.file);
    if (conversion.debug && conversion.file == "-") {
        throw UsageError{"--debug needs a named FILE: the FST file lies beside it"};
    }
    return RunConversion(conversion);
}

Action Declare(CLI::App& app) {
    const auto options = std::make_shared<Options>();
    app.add_option("FILE", options->files)->required();
    const CLI::Option* out = app.add_option("-o,--output", options->conversion.out);
    app.add_flag("--debug", options->conversion.debug);
    app.add_flag("-q,--quiet", options->conversion.quiet);
    return [options, out] { return Run(*options, out->count() > 0); };
}

}  // namespace

const Command CONVERT_COMMAND = {"convert", "FILE... [-o OUT] [--debug] [-q]",
                                 "converts FILEs into STF files", HELP, Declare};

}  // namespace scan695::cli
