#include "cli/staging.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <random>
#include <utility>
#include <vector>

#include "cli/cleanup.h"
#include "cli/file_head.h"
#include "cli/host.h"

namespace scan695::cli {

namespace fs = std::filesystem;

namespace {

constexpr uint64_t LARGEST_INPUT = 0x7FFFFFFF;  // what the library takes
constexpr size_t COPY_BYTES = size_t{256} * 1024;
constexpr int ATTEMPTS = 100;

std::vector<Staging> kept;  // empty ones of one parent

// Gives the cause of a failure.
std::optional<std::string> CopyBytes(int source, int target) {
    std::vector<char> buffer(COPY_BYTES);
    uint64_t size = 0;
    for (;;) {
        const long count = ReadSome(source, buffer.data(), buffer.size());
        if (count < 0) return "cannot be read: " + ErrorText(errno);
        if (count == 0) break;
        const bool is_of_use = size > 0 || BeginsObject(buffer[0]) || BeginsDatabase(buffer[0]);
        size += static_cast<uint64_t>(count);
        if (size > LARGEST_INPUT) return "is too large";
        if (!WriteAll(target, buffer.data(), static_cast<size_t>(count))) {
            return "cannot write a temporary file: " + ErrorText(errno);
        }
        if (!is_of_use) break;
    }
    if (size == 0) return "is empty";
    return {};
}

std::optional<std::string> CopyInput(int source, const std::string& path) {
    const int target = CreateNew(path);
    if (target == -1) return "cannot write a temporary file: " + ErrorText(errno);
    MakeBinary(source);
    auto cause = CopyBytes(source, target);
    if (!CloseDescriptor(target) && !cause) {
        cause = "cannot write a temporary file: " + ErrorText(errno);
    }
    return cause;
}

// The file by a name that holds in the child as well: /dev/stdin, say, is another file there.
std::string LastingName(const std::string& file, const FileStatus& status) {
    std::error_code error;
    const std::string name = ToText(fs::canonical(ToPath(file), error));
    return !error && StatusOf(name).identity == status.identity ? name : std::string();
}

// All that can be in the folder, and the folder.
std::vector<std::string> PathsOf(const Staging& staging) {
    return {staging.PathOf(staging.input), staging.PathOf(staging.fst),
            staging.PathOf(Staging::STF), staging.PathOf(Staging::TRACE), staging.folder};
}

}  // namespace

std::string Staging::PathOf(const std::string& name) const {
    return ToText(ToPath(folder) / name);
}

std::string HiddenName() {
    static std::random_device random;
    char name[40];
    std::snprintf(name, sizeof name, ".scan695-%08x%08x", random(), random());
    return name;
}

bool MakeStaging(const std::string& parent, Staging& staging) {
    if (!kept.empty() && kept.back().parent == parent) {
        staging = std::move(kept.back());
        kept.pop_back();
        for (const std::string& path : PathsOf(staging)) Guard(path);
        return true;
    }
    RemoveKeptStagings();
    std::error_code error;
    const bool is_near = !parent.empty() && CanBeWorkedIn(parent);
    const fs::path place = is_near ? ToPath(parent) : fs::temp_directory_path(error);
    if (error) {
        errno = error.value();
        return false;
    }
    for (int attempt = 0; attempt < ATTEMPTS; ++attempt) {
        const std::string name = HiddenName();
        staging.parent = parent;
        staging.folder = ToText(place / name);
        staging.input = '~' + name.substr(1) + ".abs";
        staging.fst = staging.input;
        for (char& c : staging.fst) {
            if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
        }
        staging.fst.replace(staging.fst.size() - 3, 3, "FST");
        for (const std::string& path : PathsOf(staging)) Guard(path);
        if (CreatePrivateFolder(staging.folder)) return true;
        const int cause = errno;
        for (const std::string& path : PathsOf(staging)) Release(path);
        staging = {};
        errno = cause;
        if (cause != EEXIST) break;
    }
    return false;
}

void RemoveStaging(Staging& staging) {
    if (staging.folder.empty()) return;
    std::error_code ignored;
    fs::remove_all(ToPath(staging.folder), ignored);
    for (const std::string& path : PathsOf(staging)) Release(path);
    staging = {};
}

void KeepStaging(Staging& staging) {
    if (staging.folder.empty()) return;
    for (const std::string& path : PathsOf(staging)) {
        if (path != staging.folder) RemoveFile(path.c_str());
    }
    kept.push_back(std::exchange(staging, {}));
}

void RemoveKeptStagings() {
    for (Staging& staging : kept) RemoveStaging(staging);
    kept.clear();
}

std::optional<std::string> ExamineInput(const std::string& file) {
    if (file == "-") return {};
    if (IsDeviceName(file)) return DEVICE_NAME;
    const FileStatus status = StatusOf(file);
    if (status.kind == FileKind::MISSING) return ErrorText(errno);
    if (status.kind == FileKind::DIRECTORY) return ErrorText(EISDIR);
    if (status.kind != FileKind::REGULAR) return {};
    const int descriptor = OpenForReading(file);
    if (descriptor == -1) return ErrorText(errno);
    CloseDescriptor(descriptor);
    if (status.size == 0) return "is empty";
    return {};
}

std::optional<std::string> StageInput(const std::string& file, const Staging& staging,
                                      bool waits_for_writer) {
    const std::string place = staging.PathOf(staging.input);
    if (file == "-") return CopyInput(STANDARD_INPUT, place);
    const FileStatus status = StatusOf(file);
    const bool is_regular = status.kind == FileKind::REGULAR;
    if (is_regular) {
        const std::string name = LastingName(file, status);
        if (!name.empty() && MakeLink(name, place)) return {};
    }
    const int source =
        is_regular || waits_for_writer ? OpenForReading(file) : OpenPipeForReading(file);
    if (source == -1) return ErrorText(errno);
    auto cause = CopyInput(source, place);
    CloseDescriptor(source);
    return cause;
}

}  // namespace scan695::cli
