#include "driver/paths.h"

namespace scan695 {

namespace {

constexpr size_t LONGEST_WITH_EXTENSION = 115;

}  // namespace

bool StripExtension(std::string& path) {
    if (path.empty()) return false;
    size_t i = path.size() - 1;
    while (i > 0 && path[i] != '.' && path[i] != '\\' && path[i] != ':') --i;
    if (path[i] != '.') return false;
    path.resize(i);
    return true;
}

std::string ReplaceExtension(const std::string& path, const char* extension) {
    if (path.size() > LONGEST_WITH_EXTENSION) return path;
    std::string result = path;
    StripExtension(result);
    return result + '.' + extension;
}

std::string MakeFstPath(const std::string& input_path) {
    const std::string path = ReplaceExtension(input_path, "FST");
    return path == input_path ? path + ".FST" : path;
}

}  // namespace scan695
