#if __has_include(<stdio_ext.h>)
#include <stdio_ext.h>
#endif
#include <sys/stat.h>
#include <unistd.h>

#include "platform/files.h"

namespace scan695 {

int64_t FileLength(std::FILE* file) {
    struct stat status;
    return fstat(fileno(file), &status) == 0 ? static_cast<int64_t>(status.st_size) : -1;
}

bool IsBlockBuffered(std::FILE* file) {
#if __has_include(<stdio_ext.h>)
    return __flbf(file) == 0 && __fbufsize(file) > 1;
#else
    return static_cast<void>(file), false;
#endif
}

bool IsSameFile(const std::string& a, const std::string& b) {
    struct stat x;
    struct stat y;
    return stat(a.c_str(), &x) == 0 && stat(b.c_str(), &y) == 0 && x.st_dev == y.st_dev &&
           x.st_ino == y.st_ino;
}

void RemoveFile(const std::string& path) {
    unlink(path.c_str());
}

std::string PlaceOfFstFile(const std::string& input_path, const std::string& fst_path) {
    // npos + 1 is 0: without a slash the directory is empty and the base name is all.
    const std::string directory = input_path.substr(0, input_path.rfind('/') + 1);
    return directory + fst_path.substr(fst_path.rfind('/') + 1);
}

}  // namespace scan695
