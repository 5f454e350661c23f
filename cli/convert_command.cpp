#include "cli/convert_command.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <thread>
#include <unordered_set>
#include <vector>

#include "cli/complain.h"
#include "cli/places.h"
#include "cli/run.h"

namespace scan695::cli {

namespace {

constexpr int MAX_JOBS = 64;

constexpr char HELP[] = R"(scan695 convert - converts object files into STF files

Usage:
  scan695 [convert] FILE... [-o OUT] [--fst OUT] [--trace OUT] [--debug] [-j N] [-q]

  -o, --output OUT  Write the STF file to OUT. Without it OUT is FILE with the
                    extension .stf.
  --fst OUT         Write the FST file, the symbol database, to OUT.
  --trace OUT       Write a trace of all records to OUT.
  --debug           The same as --trace - and --fst with FILE's own name in upper
                    case and the extension FST, beside FILE.
  -j, --jobs N      Convert N files at a time; without it, as many as there are
                    cores.
  -q, --quiet       Print nothing but errors.

"-" as FILE is standard input, as OUT standard output; the STF file of "-" goes
there if -o does not tell otherwise. With several FILEs each OUT is a folder,
which is made if it is missing, and each FILE's outcome is told on standard error.

A run gives all of its outputs or none: they take their places, and those of older
files, when everything has succeeded. Links are followed; devices and pipes are
written to. Two outputs that are one file, or an output that is an input, are
refused. The folder for temporary files (TMPDIR) is used if no output is a file,
and for FILEs that are pipes.

Exit status: 0 success, 1 a conversion failed, 2 wrong usage.
)";

struct Options {
    std::vector<std::string> files;
    std::string stf;
    std::string fst;
    std::string trace;
    bool has_stf = false;
    bool has_fst = false;
    bool has_trace = false;
    bool debug = false;
    bool quiet = false;
    int jobs = 0;
};

void RefuseWrongArguments(const Options& options) {
    const bool is_single = options.files.size() == 1;
    const auto refuse_if = [](bool is_wrong, const std::string& what) {
        if (is_wrong) throw UsageError{what};
    };
    for (const std::string& file : options.files) {
        refuse_if(file.empty(), "FILE is empty");
        refuse_if(file == "-" && !is_single, "-: standard input has to be the only FILE");
    }
    refuse_if(options.has_stf && options.stf.empty(), "-o: OUT is empty");
    refuse_if(options.has_fst && options.fst.empty(), "--fst: OUT is empty");
    refuse_if(options.has_trace && options.trace.empty(), "--trace: OUT is empty");
    refuse_if(options.stf == "-" && !is_single, "-o -: standard output takes one FILE");
    refuse_if(options.fst == "-" && !is_single, "--fst -: standard output takes one FILE");
    refuse_if(options.debug && !options.has_fst && options.files[0] == "-",
              "--debug: the FST file lies beside FILE, so standard input needs --fst");
}

Request RequestOf(const Options& options, const std::string& file) {
    const bool is_single = options.files.size() == 1;
    Request request;
    request.file = file;
    request.stf = file == "-" ? "-" : StfNameOf(file, "");
    if (options.has_stf) request.stf = is_single ? options.stf : StfNameOf(file, options.stf);
    if (options.debug) {
        request.fst = FstNameOf(file, "");
        request.trace = "-";
    }
    if (options.has_fst) request.fst = is_single ? options.fst : FstNameOf(file, options.fst);
    if (options.has_trace) {
        const bool is_name = is_single || options.trace == "-";
        request.trace = is_name ? options.trace : TraceNameOf(file, options.trace);
    }
    return request;
}

// An output that is an input, or two outputs that are one file, by whatever names.
void RefuseSharedFiles(const std::vector<Request>& requests) {
    std::unordered_set<std::string> inputs;
    for (const Request& request : requests) {
        inputs.insert(request.file == "-" ? KeyOf(STANDARD_INPUT) : KeyOf(request.file));
    }
    std::unordered_set<std::string> outputs;
    const auto claim = [&](const std::string& name) {
        const std::string key = name == "-" ? KeyOf(STANDARD_OUTPUT) : KeyOf(name);
        if (key.empty()) return;
        if (inputs.contains(key)) throw UsageError{name + ": this output is an input"};
        if (!outputs.insert(key).second) throw UsageError{name + ": two outputs are this file"};
    };
    for (const Request& request : requests) {
        claim(request.stf);
        if (!request.fst.empty()) claim(request.fst);
        // A trace on standard output is one stream for all FILEs.
        const bool is_claimed = request.trace == "-" && &request != &requests.front();
        if (!request.trace.empty() && !is_claimed) claim(request.trace);
    }
}

bool MakeFolder(const std::string& name) {
    std::error_code error;
    std::filesystem::create_directories(ToPath(name), error);
    if (!error && StatusOf(name).kind != FileKind::DIRECTORY) {
        error = std::make_error_code(std::errc::not_a_directory);
    }
    if (error) Complain("cannot make the folder " + name + ": " + error.message());
    return !error;
}

bool MakeFolders(const Options& options) {
    if (options.files.size() == 1) return true;
    return (!options.has_stf || MakeFolder(options.stf)) &&
           (!options.has_fst || MakeFolder(options.fst)) &&
           (!options.has_trace || options.trace == "-" || MakeFolder(options.trace));
}

size_t NumberOfJobs(const Options& options, const std::vector<Request>& requests) {
    if (requests[0].trace == "-") return 1;  // one after another on one stream
    const int cores = static_cast<int>(std::thread::hardware_concurrency());
    return static_cast<size_t>(std::clamp(options.jobs == 0 ? cores : options.jobs, 1, MAX_JOBS));
}

int Run(const Options& options) {
    RefuseWrongArguments(options);
    std::vector<Request> requests;
    for (const std::string& file : options.files) requests.push_back(RequestOf(options, file));
    RefuseSharedFiles(requests);
    if (!MakeFolders(options)) return FAILED;

    bool is_good = true;
    RunConversions(requests, {NumberOfJobs(options, requests), options.quiet},
                   [&](const Conversion& conversion) {
                       const bool is_done = TellOutcome(conversion, options.quiet);
                       if (is_done && requests.size() > 1 && !options.quiet) {
                           Complain(conversion.request.file, "converted");
                       }
                       is_good = is_done && is_good;
                   });
    return is_good ? DONE : FAILED;
}

Action Declare(CLI::App& app) {
    const auto options = std::make_shared<Options>();
    app.add_option("FILE", options->files)->required();
    const CLI::Option* stf = app.add_option("-o,--output", options->stf)->type_name("OUT");
    const CLI::Option* fst = app.add_option("--fst", options->fst)->type_name("OUT");
    const CLI::Option* trace = app.add_option("--trace", options->trace)->type_name("OUT");
    app.add_flag("--debug", options->debug);
    app.add_option("-j,--jobs", options->jobs)->type_name("N")->check(CLI::Range(1, 1 << 20));
    app.add_flag("-q,--quiet", options->quiet);
    return [=] {
        options->has_stf = stf->count() > 0;
        options->has_fst = fst->count() > 0;
        options->has_trace = trace->count() > 0;
        return Run(*options);
    };
}

}  // namespace

const Command CONVERT_COMMAND = {"convert",
                                 "FILE... [-o OUT] [--fst OUT] [--trace OUT] [--debug] [-j N] [-q]",
                                 "converts FILEs into STF files", HELP, Declare};

}  // namespace scan695::cli
