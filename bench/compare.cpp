// Compares conversions with tools that do work of the same kind, and with a plain copy of what is
// written, which is the floor:
//
//     compare [ROUNDS]                        all tools in turn, ROUNDS times (9), and a table
//     compare --write code BYTES FILE         the object files that it makes: an image of code,
//     compare --write mixed MODULES FILE      a program with all that compilers tell
//     compare --convert INPUT STF DEBUG       one conversion, to count its instructions
//
// Objcopy and srec_cat turn an image of the same size into S-records; readelf prints the debug
// information of a program that the C compiler has made for it. Each figure is the processor time
// (user and system) of a whole process: the median of all rounds, and the median of the ratios to
// the copy of the same round. What is not installed is told and left out.
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "bench/programs.h"
#include "include/scan695.h"

namespace scan695::bench {
namespace {

namespace fs = std::filesystem;

constexpr uint32_t CODE_BYTES = 64U << 20;
constexpr uint32_t MODULES = 3200;     // of the mixed program
constexpr uint32_t C_FUNCTIONS = 500;  // of a unit that readelf reads
constexpr uint32_t C_UNITS = 50;

struct Tool {
    std::string name;
    std::vector<std::string> command;
    fs::path output;        // whose size is told
    fs::path console = {};  // where standard output goes; nowhere without one
    std::vector<double> seconds = {};
};

// The processor time of a command; nothing when it fails or is not there.
std::optional<double> Run(const std::vector<std::string>& command, const fs::path& console) {
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        const int in = open("/dev/null", O_RDONLY);
        const char* out_path = console.empty() ? "/dev/null" : console.c_str();
        const int out = open(out_path, O_WRONLY | O_CREAT | O_TRUNC, 0644);
        const int quiet = open("/dev/null", O_WRONLY);
        if (dup2(in, 0) < 0 || dup2(out, 1) < 0 || dup2(quiet, 2) < 0) std::_Exit(126);
        std::vector<char*> arguments;
        for (const std::string& argument : command)
            arguments.push_back(const_cast<char*>(argument.c_str()));
        arguments.push_back(nullptr);
        execvp(arguments[0], arguments.data());
        std::_Exit(127);
    }
    int status = 0;
    rusage usage = {};
    if (child < 0 || wait4(child, &status, 0, &usage) != child || status != 0) return {};
    const auto seconds = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double Median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

// The first tool is the floor. A tool that fails leaves the table.
void Compare(std::vector<Tool> tools, int rounds) {
    for (int round = 0; round < rounds; ++round)
        std::erase_if(tools, [](Tool& tool) {
            const std::optional<double> seconds = Run(tool.command, tool.console);
            if (seconds)
                tool.seconds.push_back(*seconds);
            else
                std::printf("could not run %s\n", tool.command[0].c_str());
            return !seconds;
        });
    std::printf("| | Output | CPU | Ratio |\n|---|---|---|---|\n");
    for (const Tool& tool : tools) {
        std::vector<double> ratios;
        for (size_t i = 0; i < tool.seconds.size(); ++i)
            ratios.push_back(tool.seconds[i] / tools[0].seconds[i]);
        double megabytes = static_cast<double>(fs::file_size(tool.output)) / 1e6;
        if (!tool.console.empty() && tool.console != tool.output)
            megabytes += static_cast<double>(fs::file_size(tool.console)) / 1e6;
        std::printf("| %s | %.0f MB | %.3f s | %.2f |\n", tool.name.c_str(), megabytes,
                    Median(tool.seconds), Median(ratios));
    }
    std::fflush(stdout);
}

void WriteFile(const fs::path& path, const builder::Bytes& bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

// A unit of functions with a structure, an enumeration and a few variables each.
void WriteUnit(const fs::path& path) {
    std::ofstream file(path);
    for (uint32_t i = 0; i < C_FUNCTIONS; ++i) {
        const std::string n = std::to_string(i);
        file << "struct sensor_" << n << " { int raw, filtered, limit; };\n"
             << "enum gear_" << n << " { park_" << n << ", drive_" << n << " };\n"
             << "static struct sensor_" << n << " state_" << n << ";\n"
             << "__attribute__((used)) static int function_" << n << "(int channel) {\n"
             << "  int result = channel;\n  enum gear_" << n << " gear = park_" << n << ";\n";
        for (int line = 0; line < 8; ++line) file << "  state_" << n << ".raw += result;\n";
        file << "  return result + (int)gear;\n}\n";
    }
}

// False when there is no compiler.
bool WriteElf(const fs::path& directory, const fs::path& elf) {
    WriteUnit(directory / "unit.c");
    const std::string object = directory / "unit.o";
    if (!Run({"cc", "-g", "-O0", "-c", "-o", object, directory / "unit.c"}, {})) return false;
    std::vector<std::string> link = {"ld", "-e", "0", "-o", elf};
    link.insert(link.end(), C_UNITS, object);
    return Run(link, {}).has_value();
}

void CompareCode(const fs::path& directory, const std::string& self, int rounds) {
    const std::string input = directory / "code.abs";
    const std::string image = directory / "code.bin";
    const std::string stf = directory / "code.stf";
    const std::string records = directory / "code.srec";
    WriteFile(input, CodeProgram(CODE_BYTES));
    fs::copy_file(input, image);
    fs::resize_file(image, CODE_BYTES);
    const std::vector<std::string> convert = {self, "--convert", input, stf, "0"};
    if (!Run(convert, {})) return;
    std::printf("\nA code image of %u MiB:\n\n", CODE_BYTES >> 20);
    Compare(
        {{"cp of the STF file", {"cp", stf, directory / "copy"}, directory / "copy"},
         {"scan695", convert, stf},
         {"objcopy -O srec", {"objcopy", "-I", "binary", "-O", "srec", image, records}, records},
         {"srec_cat", {"srec_cat", image, "-binary", "-o", records}, records}},
        rounds);
}

void CompareMixed(const fs::path& directory, const std::string& self, int rounds) {
    const std::string input = directory / "mixed.abs";
    const std::string stf = directory / "mixed.stf";
    const std::string debug_stf = directory / "debug.stf";
    const fs::path console = directory / "console";
    const std::string elf = directory / "mixed.elf";
    const fs::path dump = directory / "dump";
    WriteFile(input, MixedProgram(MODULES));
    const std::vector<std::string> convert = {self, "--convert", input, stf, "0"};
    if (!Run(convert, {})) return;
    std::printf("\nA program of %.0f MB:\n\n", static_cast<double>(fs::file_size(input)) / 1e6);
    std::vector<Tool> tools = {
        {"cp of the STF file", {"cp", stf, directory / "copy"}, directory / "copy"},
        {"scan695", convert, stf},
        {"scan695 with DebugMode, STF and console",
         {self, "--convert", input, debug_stf, "1"},
         debug_stf,
         console}};
    if (WriteElf(directory, elf))
        tools.push_back({"readelf --debug-dump=info,decodedline",
                         {"readelf", "--debug-dump=info,decodedline", elf},
                         dump,
                         dump});
    else
        std::printf("could not run cc and ld, which make the file for readelf\n");
    Compare(std::move(tools), rounds);
}

int Write(const std::string& kind, uint32_t size, const fs::path& path) {
    if (kind != "code" && kind != "mixed") return 2;
    WriteFile(path, kind == "code" ? CodeProgram(size) : MixedProgram(size));
    return 0;
}

}  // namespace
}  // namespace scan695::bench

int main(int argc, char** argv) {
    using namespace scan695::bench;
    const std::string mode = argc > 1 ? argv[1] : "";
    if (mode == "--convert" && argc == 5)
        return Convert(0, argv[2], argv[3], std::strcmp(argv[4], "0") != 0) == nullptr ? 0 : 1;
    if (mode == "--write" && argc == 5)
        return Write(argv[2], static_cast<uint32_t>(std::strtoul(argv[3], nullptr, 0)), argv[4]);
    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 9;
    std::string directory = fs::temp_directory_path() / "scan695-compare-XXXXXX";
    if (mkdtemp(directory.data()) == nullptr) return 2;
    const std::string self = fs::read_symlink("/proc/self/exe");
    CompareCode(directory, self, rounds);
    CompareMixed(directory, self, rounds);
    fs::remove_all(directory);
    return 0;
}
