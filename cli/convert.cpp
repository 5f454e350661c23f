#include "cli/convert.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>

#include "cli/commands.h"
#include "cli/complain.h"
#include "cli/console.h"
#include "cli/host.h"
#include "cli/output.h"
#include "cli/temp_files.h"
#include "scan695.h"

namespace scan695::cli {

namespace {

// What the exit handler and the signal handlers have to know about the conversion under way.
struct Conversion {
    std::atomic<bool> is_running = false;  // the library has control
    std::atomic<bool> is_debug = false;
    std::atomic<bool> is_interrupted = false;
    std::string file;
};
Conversion conversion;

// A fatal stop ends the process inside the library.
void OnExit() {
    if (!conversion.is_running) return;
    conversion.is_running = false;
    CloseConsole();
    const std::string message = FatalMessage();
    Complain(conversion.file, message.empty() ? "conversion failed" : message);
    CloseStrayStreams();
    RemoveTempFiles();
}

void OnTermination(int signal_number) {
    // A debug conversion may be writing its FST file. The library knows how to leave none behind:
    // the first request to stop becomes the interrupt that it listens for.
    if (conversion.is_running && conversion.is_debug && IsInterruptRequest(signal_number) &&
        !conversion.is_interrupted.exchange(true)) {
        std::raise(SIGINT);
        return;
    }
    RemoveTempFiles();
    DieOfSignal(signal_number);
}

std::optional<std::string> CopyStandardInput(std::string& path) {
    MakeBinary(STANDARD_INPUT);
    const int descriptor = CreateTempFile(path);
    if (descriptor == -1) return "cannot create a temporary file: " + ErrorText(errno);
    std::optional<std::string> problem;
    char buffer[65536];
    for (;;) {
        const long count = ReadSome(STANDARD_INPUT, buffer, sizeof buffer);
        if (count < 0) problem = "cannot read standard input: " + ErrorText(errno);
        if (count <= 0) break;
        if (!WriteAll(descriptor, buffer, static_cast<size_t>(count))) {
            problem = "cannot write a temporary file: " + ErrorText(errno);
            break;
        }
    }
    if (!CloseDescriptor(descriptor) && !problem) {
        problem = "cannot write a temporary file: " + ErrorText(errno);
    }
    return problem;
}

// The library reports a file that it cannot open; it takes anything else for a regular file.
std::optional<std::string> CheckInput(const std::string& file) {
    std::error_code error;
    switch (std::filesystem::status(file, error).type()) {
        case std::filesystem::file_type::regular:
        case std::filesystem::file_type::not_found:
        case std::filesystem::file_type::none:
            return {};
        case std::filesystem::file_type::directory:
            return "is a directory";
        default:
            return "is not a regular file (\"-\" reads standard input)";
    }
}

int Fail(const std::string& file, const std::string& what) {
    Complain(file, what);
    RemoveTempFiles();
    return FAILED;
}

const char* CallLibrary(const ConvertOptions& options, const std::string& input,
                        const Output& output) {
    static bool is_registered = false;
    if (!is_registered) std::atexit(OnExit);
    is_registered = true;

    conversion.file = options.file;
    conversion.is_debug = options.debug;
    conversion.is_interrupted = false;
    conversion.is_running = true;
    const char* error =
        Convert(0, input.c_str(), output.library_path.c_str(), options.debug ? 1 : 0);
    conversion.is_running = false;
    CatchTermination(OnTermination);  // the library has left its own handler installed
    CloseConsole();
    return error;
}

}  // namespace

int RunConversion(const ConvertOptions& options) {
    CatchTermination(OnTermination);
    std::string input = options.file;
    if (options.file == "-") {
        if (const auto problem = CopyStandardInput(input)) return Fail("-", *problem);
    } else if (const auto problem = CheckInput(options.file)) {
        return Fail(options.file, *problem);
    }
    if (options.debug && IsFstFileOf(options.file, options.out)) {
        Complain(options.out, "the output would take the place of the FST file");
        return WRONG_USAGE;
    }

    Output output;
    if (const auto problem = OpenOutput(options.out, input, output)) {
        Fail(options.out, problem->what);
        return problem->is_usage ? WRONG_USAGE : FAILED;
    }
    const ConsoleTarget target = options.quiet        ? ConsoleTarget::NOWHERE
                                 : options.out == "-" ? ConsoleTarget::STDERR
                                                      : ConsoleTarget::STDOUT;
    if (!OpenConsole(target)) return Fail("standard output", ErrorText(errno));
    if (!SilencePrompt()) {
        CloseConsole();
        return Fail("standard input", ErrorText(errno));
    }

    if (const char* error = CallLibrary(options, input, output)) return Fail(options.file, error);
    if (const auto problem = FinishOutput(output)) return Fail(options.out, problem->what);
    RemoveTempFiles();
    return DONE;
}

int RunCheck(const std::vector<std::string>& files) {
    CatchTermination(OnTermination);
    bool all_are = true;
    for (const std::string& file : files) {
        std::string path = file;
        if (file == "-") {
            if (const auto problem = CopyStandardInput(path)) return Fail("-", *problem);
        }
        const bool is_for_us = Check(0, path.c_str()) != 0;
        if (!is_for_us && !CanRead(path.c_str())) Complain(file, ErrorText(errno));
        std::printf("%s: %sfor this scanner\n", file.c_str(), is_for_us ? "" : "not ");
        all_are = all_are && is_for_us;
        RemoveTempFiles();
    }
    return all_are ? DONE : FAILED;
}

}  // namespace scan695::cli
