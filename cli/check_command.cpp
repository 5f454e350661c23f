#include "cli/check_command.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <vector>

#include "cli/complain.h"
#include "cli/file_head.h"
#include "cli/host.h"
#include "cli/local_file.h"
#include "cli/run.h"
#include "scan695.h"

namespace scan695::cli {

namespace {

constexpr char HELP[] = R"(scan695 check - are these files for this scanner?

Usage:
  scan695 check FILE...

Prints for each FILE whether hosts take it for this scanner, as the library's
function Check tells them. Check knows few names of processors; a file that it does
not know and that converts all the same is told. "-" is standard input.

Exit status: 0 every FILE is recognised by Check, 1 some FILE is not or cannot be
read, 2 wrong usage.
)";

bool Converts(const std::string& path) {
    bool converts = false;
    Request request;
    request.file = path;
    RunConversions({request}, {},
                   [&](const Conversion& conversion) { converts = conversion.cause.empty(); });
    return converts;
}

// Check reads the first bytes alone; where the name may not do, they get a plain one.
bool IsRecognised(const std::string& path) {
    if (IsLibraryName(path)) return Check(0, path.c_str()) != 0;
    Staging staging;
    if (!MakeStaging("", staging)) return false;
    const std::string head = HeadOf(path);
    const int copy = CreateNew(staging.PathOf(staging.input));
    bool is_recognised = false;
    if (copy != -1 && WriteAll(copy, head.data(), head.size()) && CloseDescriptor(copy)) {
        const std::filesystem::path back = std::filesystem::current_path();
        std::filesystem::current_path(ToPath(staging.folder));
        is_recognised = Check(0, staging.input.c_str()) != 0;
        std::filesystem::current_path(back);
    }
    RemoveStaging(staging);
    return is_recognised;
}

// True if Check recognises it.
bool CheckFile(const std::string& file) {
    const LocalFile local(file, false);
    if (!local.cause.empty()) {
        Complain(file, local.cause);
        return false;
    }
    const bool is_recognised = IsRecognised(local.path);
    const char* answer = "for this scanner";
    if (!is_recognised) {
        answer = IsObject(HeadOf(local.path)) && Converts(local.path)
                     ? "converts, but not recognised by Check"
                     : "not for this scanner";
    }
    std::printf("%s: %s\n", file.c_str(), answer);
    return is_recognised;
}

Action Declare(CLI::App& app) {
    const auto files = std::make_shared<std::vector<std::string>>();
    app.add_option("FILE", *files)->required();
    return [files] {
        bool all_are = true;
        for (const std::string& file : *files) {
            if (file.empty()) throw UsageError{"FILE is empty"};
        }
        for (const std::string& file : *files) all_are = CheckFile(file) && all_are;
        return FlushOutput(all_are ? DONE : FAILED);
    };
}

}  // namespace

const Command CHECK_COMMAND = {"check", "FILE...", "tells whether hosts take FILE for this scanner",
                               HELP, Declare};

}  // namespace scan695::cli
