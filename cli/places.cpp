#include "cli/places.h"

#include <filesystem>

#include "cli/host.h"

namespace scan695::cli {

namespace fs = std::filesystem;

namespace {

constexpr int MAX_LINKS = 40;

std::string Placed(const std::string& file, const std::string& folder, const std::string& name) {
    const fs::path parent = folder.empty() ? ToPath(file).parent_path() : ToPath(folder);
    if (folder.empty() && parent.empty()) return name;
    return ToText(parent / ToPath(name));
}

std::string WithExtension(const std::string& file, const char* extension) {
    return ToText(ToPath(file).filename().replace_extension(extension));
}

}  // namespace

std::string EndOfLinks(const std::string& name) {
    fs::path path = ToPath(name);
    std::error_code error;
    for (int i = 0; i < MAX_LINKS; ++i) {
        if (!fs::is_symlink(fs::symlink_status(path, error))) return ToText(path);
        const fs::path target = fs::read_symlink(path, error);
        if (error) break;
        path = path.parent_path() / target;  // an absolute target stands alone
    }
    return name;
}

std::string KeyOf(const std::string& name) {
    const FileStatus status = StatusOf(name);
    if (status.kind == FileKind::DEVICE) return {};
    if (status.kind != FileKind::MISSING) return status.identity;
    const fs::path path = ToPath(EndOfLinks(name));
    const fs::path parent = path.has_parent_path() ? path.parent_path() : fs::path(".");
    if (parent == path) return name;
    return KeyOf(ToText(parent)) + '/' + FoldedName(ToText(path.filename()));
}

std::string KeyOf(int descriptor) {
    const FileStatus status = StatusOf(descriptor);
    const bool is_shared = status.kind == FileKind::DEVICE || status.kind == FileKind::MISSING;
    return is_shared ? "stream " + std::to_string(descriptor) : status.identity;
}

std::string StfNameOf(const std::string& file, const std::string& folder) {
    return Placed(file, folder, WithExtension(file, ".stf"));
}

std::string TraceNameOf(const std::string& file, const std::string& folder) {
    return Placed(file, folder, WithExtension(file, ".trace"));
}

std::string FstNameOf(const std::string& file, const std::string& folder) {
    return Placed(file, folder, UpperCase(WithExtension(file, ".FST")));
}

std::string UpperCase(std::string text) {
    for (char& c : text) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return text;
}

}  // namespace scan695::cli
