// scan695: the command over the library. A host like any other: what it knows of conversions is
// include/scan695.h.

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "cli/convert.h"
#include "cli/fst_command.h"
#include "cli/help.h"
#include "cli/host.h"
#include "cli/output.h"
#include "cli/temp_files.h"

namespace scan695::cli {

namespace {

struct CommandLine {
    ConvertOptions conversion;
    std::vector<std::string> files;
    bool is_check = false;
};

int Print(const char* text) {
    std::fputs(text, stdout);
    return DONE;
}

int RefuseUsage(const std::string& what, const char* command) {
    std::fprintf(stderr, "scan695: %s\nTry \"%s --help\".\n", what.c_str(), command);
    return WRONG_USAGE;
}

// Output that is lost must not count as a success.
int FlushOutput(int status) {
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return status;
    Complain("standard output", ErrorText(errno));
    return status == DONE ? FAILED : status;
}

// Parses the arguments; the texts of help and version are this project's own. Gives true when
// there is something to do, else false and the exit status.
bool Parse(CLI::App& app, int argc, char** argv, const char* help, int& status) {
    const std::string command = app.get_name();
    app.allow_windows_style_options(false);
    try {
        app.parse(argc, argv);
        return true;
    } catch (const CLI::CallForHelp&) {
        status = Print(help);
    } catch (const CLI::CallForVersion&) {
        status = Print(VERSION_TEXT);
    } catch (const CLI::ParseError& error) {
        status = RefuseUsage(error.what(), command.c_str());
    }
    return false;
}

int RunMain(int argc, char** argv) {
    CommandLine line;
    ConvertOptions& conversion = line.conversion;
    CLI::App app("", "scan695");
    app.set_version_flag("--version", VERSION_TEXT);
    app.add_option("FILE", line.files);
    auto* out = app.add_option("-o,--output", conversion.out);
    auto* debug = app.add_flag("--debug", conversion.debug);
    auto* quiet = app.add_flag("--quiet", conversion.quiet);
    auto* prompt = app.add_flag("--prompt", conversion.prompt)->excludes(quiet);
    app.add_flag("--check", line.is_check)
        ->excludes(out)
        ->excludes(debug)
        ->excludes(quiet)
        ->excludes(prompt);

    int status = DONE;
    if (!Parse(app, argc, argv, COMMAND_HELP, status)) return FlushOutput(status);
    if (line.files.empty()) return RefuseUsage("FILE is missing", "scan695");
    for (const std::string& file : line.files) {
        if (file.empty()) return RefuseUsage("FILE is empty", "scan695");
    }
    if (line.is_check) return FlushOutput(RunCheck(line.files));
    if (line.files.size() > 1) return RefuseUsage("more than one FILE", "scan695");

    conversion.file = line.files[0];
    if (out->count() == 0) conversion.out = DefaultOutput(conversion.file);
    if (conversion.debug && conversion.file == "-") {
        return RefuseUsage("--debug needs a named FILE: the FST file lies beside it", "scan695");
    }
    return RunConversion(conversion);
}

int RunFst(int argc, char** argv) {
    FstOptions options;
    CLI::App app("", "scan695 fst");
    app.add_option("FILE.FST", options.file)->required();
    for (const FstTableOption& table : FST_TABLE_OPTIONS) {
        app.add_flag(table.option, options.*table.field);
    }
    auto* json = app.add_flag("--json", options.json);
    auto* verify = app.add_flag("--verify", options.verify)->excludes(json);
    for (const FstTableOption& table : FST_TABLE_OPTIONS) verify->excludes(table.option);

    int status = DONE;
    if (!Parse(app, argc, argv, INSPECTOR_HELP, status)) return FlushOutput(status);
    return FlushOutput(RunFstCommand(options));
}

}  // namespace

}  // namespace scan695::cli

int main(int argc, char** argv) {
    using namespace scan695::cli;
    ClaimStandardStreams();
    try {
        const bool is_fst = argc > 1 && std::string(argv[1]) == "fst";
        return is_fst ? RunFst(argc - 1, argv + 1) : RunMain(argc, argv);
    } catch (const std::exception& error) {  // no memory, say
        RemoveTempFiles();
        std::fprintf(stderr, "scan695: %s\n", error.what());
        return FAILED;
    }
}
