#include "cli/cleanup.h"

#include <atomic>
#include <forward_list>

#include "cli/host.h"

namespace scan695::cli {

namespace {

// A signal handler walks these lists, so entries change by single stores, and the text of an entry
// lives as long as the process.
constexpr size_t MAX_PATHS = 1024;
constexpr size_t MAX_CHILDREN = 128;
constexpr intptr_t NOBODY = -1;

std::atomic<const char*> paths[MAX_PATHS];
std::atomic<intptr_t> children[MAX_CHILDREN];  // plus 1, so that 0 is an empty entry

void OnTermination(int signal_number) {
    CleanUp();
    DieOfSignal(signal_number);
}

}  // namespace

void CleanUpOnSignals() {
    CatchTermination(OnTermination);
}

void Guard(const std::string& path) {
    std::atomic<const char*>* place = nullptr;
    for (auto& entry : paths) {
        const char* text = entry.load();
        if (text != nullptr && path == text) return;
        if (text == nullptr && place == nullptr) place = &entry;
    }
    static auto& texts = *new std::forward_list<std::string>;
    if (place != nullptr) place->store(texts.emplace_front(path).c_str());
}

void Release(const std::string& path) {
    for (auto& entry : paths) {
        const char* text = entry.load();
        if (text != nullptr && path == text) entry.store(nullptr);
    }
}

void GuardChild(intptr_t process) {
    for (auto& entry : children) {
        intptr_t empty = 0;
        if (entry.compare_exchange_strong(empty, process - NOBODY)) return;
    }
}

void ReleaseChild(intptr_t process) {
    for (auto& entry : children) {
        if (entry.load() == process - NOBODY) entry.store(0);
    }
}

void CleanUp() {
    for (auto& entry : children) {
        const intptr_t process = entry.exchange(0) + NOBODY;
        if (process != NOBODY) KillChild(process);
    }
    for (const auto& entry : paths) {
        if (const char* path = entry.load()) RemoveFile(path);
    }
    for (auto& entry : paths) {
        if (const char* path = entry.exchange(nullptr)) RemoveEmptyFolder(path);
    }
}

}  // namespace scan695::cli
