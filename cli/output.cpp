#include "cli/output.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <vector>

#include "cli/host.h"
#include "cli/temp_files.h"

namespace scan695::cli {

namespace fs = std::filesystem;

namespace {

constexpr int MAX_LINKS = 40;
constexpr size_t COPY_BYTES = size_t{256} * 1024;

Problem LastError(const std::string& task) {
    return {task + ": " + ErrorText(errno)};
}

Problem Failure(const std::string& task, const std::error_code& error) {
    return {task + ": " + error.message()};
}

// Follows a chain of links to the name of the file at its end, which need not exist.
std::error_code FollowLinks(fs::path& path) {
    std::error_code error;
    for (int i = 0; i < MAX_LINKS; ++i) {
        if (!fs::is_symlink(fs::symlink_status(path, error))) return {};
        const fs::path target = fs::read_symlink(path, error);
        if (error) return error;
        path = target.is_absolute() ? target : path.parent_path() / target;
    }
    return std::make_error_code(std::errc::too_many_symbolic_link_levels);
}

std::optional<Problem> OpenRegular(const std::string& out, bool exists, Output& output) {
    fs::path path = out;
    if (const std::error_code error = FollowLinks(path)) return Failure("cannot create", error);
    if (path.filename().empty()) return Problem{"cannot create: not the name of a file"};
    output.final_path = path.string();
    if (exists && !CanWrite(output.final_path.c_str())) return LastError("cannot write");

    const int descriptor = CreateTempFile(path.parent_path().string(), false, output.library_path);
    if (descriptor == -1) return LastError("cannot create");
    CloseDescriptor(descriptor);
    return {};
}

std::optional<Problem> OpenCopy(const std::string& out, Output& output) {
    output.descriptor = out == "-" ? Duplicate(STANDARD_OUTPUT) : OpenForWriting(out.c_str());
    if (output.descriptor == -1) return LastError("cannot write");
    MakeBinary(output.descriptor);
    const int descriptor = CreateTempFile(output.library_path);
    if (descriptor == -1) return LastError("cannot create a temporary file");
    CloseDescriptor(descriptor);
    return {};
}

// A complete STF file ends with the last line of a record. Only comment lines can follow it.
bool IsComplete(const std::string& path) {
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    auto end = static_cast<std::streamoff>(file.tellg());
    std::string tail;
    while (file && end > 0) {
        const std::streamoff begin = std::max<std::streamoff>(0, end - 4096);
        std::string piece(static_cast<size_t>(end - begin), '\0');
        file.seekg(begin);
        file.read(piece.data(), end - begin);
        tail.insert(0, piece);
        end = begin;

        if (!tail.ends_with("\r\n")) return false;
        // Whole lines, from the last one up; the first line of the tail may be cut.
        for (size_t line_end = tail.size(); line_end >= 2;) {
            const size_t before = tail.rfind('\n', line_end - 2);
            if (before == std::string::npos && end > 0) break;
            const size_t line = before == std::string::npos ? 0 : before + 1;
            const std::string text = tail.substr(line, line_end - line);
            if (text == "}\r\n") return true;
            if (!text.starts_with("//") || line == 0) return false;
            line_end = line;
        }
    }
    return false;
}

// A file that was cut off ends with a whole record once in a while. Then the disk is still full.
bool HasRoom(const std::string& path) {
    std::error_code error;
    const std::uintmax_t size = fs::file_size(path, error);
    std::FILE* file = std::fopen(path.c_str(), "ab");
    if (error || file == nullptr) return false;
    const bool is_written = std::fputc('\n', file) != EOF;
    const bool is_closed = std::fclose(file) == 0;
    fs::resize_file(path, size, error);
    return is_written && is_closed && !error;
}

std::optional<Problem> CopyOut(const Output& output) {
    const int source = OpenForReading(output.library_path.c_str());
    if (source == -1) return LastError("cannot read the temporary file");
    std::vector<char> buffer(COPY_BYTES);
    std::optional<Problem> problem;
    for (;;) {
        const long count = ReadSome(source, buffer.data(), buffer.size());
        if (count < 0) problem = LastError("cannot read the temporary file");
        if (count <= 0) break;
        if (!WriteAll(output.descriptor, buffer.data(), static_cast<size_t>(count))) {
            problem = LastError("cannot write the output");
            break;
        }
    }
    CloseDescriptor(source);
    if (!CloseDescriptor(output.descriptor) && !problem) {
        problem = LastError("cannot write the output");
    }
    RemoveTempFile(output.library_path);
    return problem;
}

std::optional<Problem> MoveOut(const Output& output) {
    std::error_code error;
    const fs::file_status old = fs::status(output.final_path, error);
    if (fs::is_regular_file(old)) {
        fs::permissions(output.library_path, old.permissions(), error);
    }
    fs::rename(output.library_path, output.final_path, error);
    if (error) return Failure("cannot replace the output", error);
    KeepTempFile(output.library_path);
    return {};
}

}  // namespace

std::optional<Problem> OpenOutput(const std::string& out, const std::string& input,
                                  Output& output) {
    std::error_code error;
    const bool is_input = out == "-" ? IsOpenAs(STANDARD_OUTPUT, input.c_str())
                                     : fs::equivalent(out, input, error) && !error;
    if (is_input) return Problem{"the output is the input file itself", true};
    if (out == "-") return OpenCopy(out, output);

    const fs::file_status status = fs::status(out, error);
    switch (status.type()) {
        case fs::file_type::not_found:
            return OpenRegular(out, false, output);
        case fs::file_type::regular:
            return OpenRegular(out, true, output);
        case fs::file_type::none:
            return Failure("cannot create", error);
        case fs::file_type::directory:
            return Failure("cannot create", std::make_error_code(std::errc::is_a_directory));
        default:
            return OpenCopy(out, output);
    }
}

std::optional<Problem> FinishOutput(const Output& output) {
    if (!IsComplete(output.library_path) || !HasRoom(output.library_path)) {
        return Problem{"the output is incomplete (is the disk full?)"};
    }
    return output.descriptor == -1 ? MoveOut(output) : CopyOut(output);
}

std::string DefaultOutput(const std::string& input) {
    return input == "-" ? "-" : fs::path(input).replace_extension(".stf").string();
}

bool IsFstFileOf(const std::string& input, const std::string& out) {
    const fs::path source = input;
    const fs::path target = out;
    std::string name = source.stem().string();
    for (char& c : name) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    const auto directory = [](const fs::path& path) {
        return path.has_parent_path() ? path.parent_path() : fs::path(".");
    };
    std::error_code error;
    return target.filename() == name + ".FST" &&
           fs::equivalent(directory(source), directory(target), error);
}

}  // namespace scan695::cli
