#include <io.h>
#include <windows.h>

#include "platform/files.h"

namespace scan695 {

namespace {

// Identity of a file on disk; false when it cannot be opened.
bool FileIdentity(const std::string& path, BY_HANDLE_FILE_INFORMATION& information) {
    const HANDLE file =
        CreateFileA(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    const bool known = GetFileInformationByHandle(file, &information) != 0;
    CloseHandle(file);
    return known;
}

}  // namespace

int64_t FileLength(std::FILE* file) {
    return _filelengthi64(_fileno(file));
}

bool IsBlockBuffered(std::FILE* file) {
    return _isatty(_fileno(file)) == 0;  // there is no line buffering
}

bool IsSameFile(const std::string& a, const std::string& b) {
    BY_HANDLE_FILE_INFORMATION x;
    BY_HANDLE_FILE_INFORMATION y;
    return FileIdentity(a, x) && FileIdentity(b, y) &&
           x.dwVolumeSerialNumber == y.dwVolumeSerialNumber &&
           x.nFileIndexHigh == y.nFileIndexHigh && x.nFileIndexLow == y.nFileIndexLow;
}

void RemoveFile(const std::string& path) {
    DeleteFileA(path.c_str());
}

std::string PlaceOfFstFile(const std::string&, const std::string& fst_path) {
    return fst_path;
}

}  // namespace scan695
