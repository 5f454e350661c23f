#include "cli/output.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>

#include "cli/cleanup.h"
#include "cli/host.h"
#include "cli/places.h"
#include "cli/staging.h"

namespace scan695::cli {

namespace fs = std::filesystem;

namespace {

constexpr size_t COPY_BYTES = size_t{256} * 1024;
constexpr char INCOMPLETE[] = "the file is incomplete";

std::string ShownName(const std::string& name) {
    return name == "-" ? "standard output" : name;
}

std::string LastFailure(const std::string& name) {
    return WriteFailure(name, ErrorText(errno));
}

std::optional<std::string> OpenStream(const std::string& name, Output& output) {
    output.descriptor = name == "-" ? STANDARD_OUTPUT : OpenForAppending(name);
    if (output.descriptor == -1) return LastFailure(name);
    MakeBinary(output.descriptor);
    return {};
}

std::optional<std::string> CopyBytes(const std::string& path, int target, const std::string& name) {
    const int source = OpenForReading(path);
    if (source == -1) return LastFailure(name);
    std::vector<char> buffer(COPY_BYTES);
    std::optional<std::string> cause;
    while (!cause) {
        const long count = ReadSome(source, buffer.data(), buffer.size());
        if (count == 0) break;
        if (count < 0 || !WriteAll(target, buffer.data(), static_cast<size_t>(count))) {
            cause = LastFailure(name);
        }
    }
    CloseDescriptor(source);
    return cause;
}

std::optional<std::string> CopyToStream(Output& output) {
    auto cause = CopyBytes(output.staged, output.descriptor, output.name);
    if (!cause && !CanBeClosed(output.descriptor)) cause = LastFailure(output.name);
    return cause;
}

// A file that was made on another file system gets a copy beside its place.
std::optional<std::string> StageBeside(Output& output) {
    const std::string copy = ToText(ToPath(FolderOf(output)) / HiddenName());
    Guard(copy);
    const int target = CreateNew(copy);
    std::optional<std::string> cause;
    if (target == -1) {
        cause = LastFailure(output.name);
    } else {
        cause = CopyBytes(output.staged, target, output.name);
        if (!CloseDescriptor(target) && !cause) cause = LastFailure(output.name);
    }
    output.staged = copy;
    return cause;
}

std::optional<std::string> Prepare(Output& output) {
    if (output.final_path.empty()) return {};
    if (StatusOf(output.staged).device != StatusOf(FolderOf(output)).device) {
        if (auto cause = StageBeside(output)) return cause;
    }
    std::error_code error;
    const fs::file_status old = fs::status(ToPath(output.final_path), error);
    output.is_new = !fs::exists(old);
    if (!output.is_new) fs::permissions(ToPath(output.staged), old.permissions(), error);
    return {};
}

// Gives the older file a second name, under which it can come back.
bool KeepOlder(Output& output) {
    if (output.is_new) return true;
    output.second_name = ToText(ToPath(FolderOf(output)) / HiddenName());
    std::error_code error;
    fs::create_hard_link(ToPath(output.final_path), ToPath(output.second_name), error);
    if (error) fs::rename(ToPath(output.final_path), ToPath(output.second_name), error);
    if (error) output.second_name.clear();
    return !error;
}

void BringBack(const Output& output) {
    std::error_code error;
    if (output.is_new) fs::remove(ToPath(output.final_path), error);
    if (output.second_name.empty()) return;
    fs::rename(ToPath(output.second_name), ToPath(output.final_path), error);
    if (!error) RemoveFile(output.second_name.c_str());  // two names of one file are left alone
}

// What is moved last never has to come back.
std::error_code MoveOne(Output& output, bool is_last) {
    std::error_code error;
    if (!is_last && !KeepOlder(output)) return {EACCES, std::generic_category()};
    fs::rename(ToPath(output.staged), ToPath(output.final_path), error);
    if (error && !output.second_name.empty()) BringBack(output);
    return error;
}

// The steps that must not be left half done: a signal waits for their end.
std::optional<std::string> MoveAll(const std::vector<Output*>& outputs) {
    const HoldSignals hold;
    for (size_t i = 0; i < outputs.size(); ++i) {
        const std::error_code error = MoveOne(*outputs[i], i + 1 == outputs.size());
        if (!error) continue;
        for (size_t moved = 0; moved < i; ++moved) BringBack(*outputs[moved]);
        return WriteFailure(outputs[i]->name, error.default_error_condition().message());
    }
    for (const Output* output : outputs) {
        if (!output->second_name.empty()) RemoveFile(output->second_name.c_str());
    }
    return {};
}

// A complete STF file ends with the last line of a record. Only comment lines can follow it.
bool HasEnd(const std::string& path) {
    std::ifstream file(ToPath(path), std::ios::binary | std::ios::ate);
    auto end = static_cast<std::streamoff>(file.tellg());
    std::string tail;
    while (file && end > 0) {
        const std::streamoff begin = std::max<std::streamoff>(0, end - 4096);
        std::string piece(static_cast<size_t>(end - begin), '\0');
        file.seekg(begin);
        file.read(piece.data(), static_cast<std::streamsize>(piece.size()));
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
// 0 or an error number.
int ErrorOfMore(const std::string& path, size_t size) {
    const int descriptor = OpenForAppending(path);
    if (descriptor == -1) return errno;
    const uint64_t old_size = StatusOf(descriptor).size;
    int error = WriteAll(descriptor, std::string(size, '\n').data(), size) ? 0 : errno;
    if (!CloseDescriptor(descriptor) && error == 0) error = errno;
    std::error_code failure;
    fs::resize_file(ToPath(path), old_size, failure);
    return error == 0 ? failure.value() : error;
}

}  // namespace

std::string WriteFailure(const std::string& name, const std::string& reason) {
    return "cannot write " + ShownName(name) + ": " + reason;
}

std::optional<std::string> OpenOutput(const std::string& name, Output& output) {
    output = {};
    output.name = name;
    if (name == "-") return OpenStream(name, output);
    if (IsDeviceName(name)) return WriteFailure(name, DEVICE_NAME);
    const FileStatus status = StatusOf(name);
    switch (status.kind) {
        case FileKind::DIRECTORY:
            return WriteFailure(name, ErrorText(EISDIR));
        case FileKind::DEVICE:
        case FileKind::OTHER:
            return OpenStream(name, output);
        case FileKind::MISSING:
            if (errno != ENOENT) return LastFailure(name);
            break;
        case FileKind::REGULAR:
            if (!CanWrite(name)) return LastFailure(name);
            break;
    }
    output.final_path = EndOfLinks(name);
    if (ToPath(output.final_path).filename().empty()) return WriteFailure(name, ErrorText(EISDIR));
    if (!CanWrite(FolderOf(output))) return LastFailure(name);
    return {};
}

std::string FolderOf(const Output& output) {
    const fs::path folder = ToPath(output.final_path).parent_path();
    return folder.empty() ? "." : ToText(folder);
}

void CloseOutput(Output& output) {
    if (output.descriptor > STANDARD_ERROR) CloseDescriptor(output.descriptor);
    output.descriptor = -1;
    if (output.staged.empty()) return;
    RemoveFile(output.staged.c_str());
    Release(output.staged);
}

std::optional<std::string> CheckStf(const std::string& path, const std::string& name) {
    if (const int error = ErrorOfMore(path, 1)) return WriteFailure(name, ErrorText(error));
    if (!HasEnd(path)) return WriteFailure(name, INCOMPLETE);
    return {};
}

std::string WhyNoRoom(const std::string& folder) {
    constexpr size_t PROBE_BYTES = size_t{16} << 20;  // what failed has given its room back
    const std::string path = ToText(ToPath(folder) / "probe");
    Guard(path);
    const int descriptor = CreateNew(path);
    int error = errno;
    if (descriptor != -1) {
        CloseDescriptor(descriptor);
        error = ErrorOfMore(path, PROBE_BYTES);
    }
    RemoveFile(path.c_str());
    Release(path);
    return error == 0 ? INCOMPLETE : ErrorText(error);
}

std::optional<std::string> Deliver(std::vector<Output>& outputs) {
    std::vector<Output*> regular;
    for (Output& output : outputs) {
        if (auto cause = Prepare(output)) return cause;
        if (!output.final_path.empty()) regular.push_back(&output);
    }
    // What is copied cannot be taken back, and what is moved can.
    for (Output& output : outputs) {
        if (!output.final_path.empty()) continue;
        if (auto cause = CopyToStream(output)) return cause;
    }
    return MoveAll(regular);
}

}  // namespace scan695::cli
