#include "cli/temp_files.h"

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <forward_list>
#include <random>

#include "cli/host.h"

namespace scan695::cli {

namespace {

// A signal handler walks this list, so entries change by single stores, and the text of an entry
// lives as long as the process.
constexpr size_t MAX_TEMP_FILES = 4;
std::atomic<const char*> temp_files[MAX_TEMP_FILES];

bool Remember(const std::string& path) {
    for (auto& entry : temp_files) {
        if (entry.load() != nullptr) continue;
        static auto& texts = *new std::forward_list<std::string>;
        entry.store(texts.emplace_front(path).c_str());
        return true;
    }
    return false;
}

std::string RandomName() {
    std::random_device random;
    char name[40];
    std::snprintf(name, sizeof name, ".scan695-%08x%08x.tmp", random(), random());
    return name;
}

}  // namespace

int CreateTempFile(const std::string& directory, bool is_private, std::string& path) {
    for (int attempt = 0; attempt < 100; ++attempt) {
        path = (std::filesystem::path(directory) / RandomName()).string();
        // Remembered first: an interrupt between the two steps must not leave the file behind.
        if (!Remember(path)) {
            errno = EMFILE;
            break;
        }
        const int descriptor = CreateNew(path.c_str(), is_private);
        if (descriptor != -1) return descriptor;
        KeepTempFile(path);
        if (errno != EEXIST) break;
    }
    path.clear();
    return -1;
}

int CreateTempFile(std::string& path) {
    std::error_code error;
    const auto directory = std::filesystem::temp_directory_path(error);
    if (error) {
        path.clear();
        errno = error.value();
        return -1;
    }
    return CreateTempFile(directory.string(), true, path);
}

void KeepTempFile(const std::string& path) {
    for (auto& entry : temp_files) {
        const char* text = entry.load();
        if (text != nullptr && path == text) entry.store(nullptr);
    }
}

void RemoveTempFile(const std::string& path) {
    RemoveFile(path.c_str());
    KeepTempFile(path);
}

void RemoveTempFiles() {
    for (auto& entry : temp_files) {
        const char* text = entry.exchange(nullptr);
        if (text != nullptr) RemoveFile(text);
    }
}

}  // namespace scan695::cli
