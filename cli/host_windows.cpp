#include <fcntl.h>
#include <io.h>
#include <stdio.h>
#include <sys/stat.h>

#include <algorithm>
#include <csignal>
#include <system_error>

#include "cli/host.h"

namespace scan695::cli {

namespace {

constexpr size_t LARGEST_TRANSFER = 1 << 30;

unsigned TransferSize(size_t size) {
    return static_cast<unsigned>(std::min(size, LARGEST_TRANSFER));
}

}  // namespace

void ClaimStandardStreams() {}  // the C runtime opens all three

int OpenForReading(const char* path) {
    return _open(path, _O_RDONLY | _O_BINARY | _O_NOINHERIT);
}

int OpenForWriting(const char* path) {
    return _open(path, _O_WRONLY | _O_BINARY | _O_NOINHERIT);
}

int OpenNull() {
    return _open("NUL", _O_RDONLY);
}

int CreateNew(const char* path, bool) {
    return _open(path, _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT,
                 _S_IREAD | _S_IWRITE);
}

bool MakePipe(int ends[2]) {
    return _pipe(ends, 65536, _O_BINARY | _O_NOINHERIT) == 0;
}

int Duplicate(int descriptor) {
    return _dup(descriptor);
}

bool Redirect(int descriptor, int target) {
    return _dup2(descriptor, target) == 0;
}

void MakeBinary(int descriptor) {
    _setmode(descriptor, _O_BINARY);
}

long ReadSome(int descriptor, char* buffer, size_t size) {
    return _read(descriptor, buffer, TransferSize(size));
}

bool WriteAll(int descriptor, const char* bytes, size_t size) {
    while (size > 0) {
        const int count = _write(descriptor, bytes, TransferSize(size));
        if (count < 0) return false;
        bytes += count;
        size -= static_cast<size_t>(count);
    }
    return true;
}

bool CloseDescriptor(int descriptor) {
    return _close(descriptor) == 0;
}

bool CanRead(const char* path) {
    return _access(path, 4) == 0;
}

bool CanWrite(const char* path) {
    return _access(path, 2) == 0;
}

bool IsOpenAs(int, const char*) {
    return false;
}  // the runtime knows no identity of open files

void CatchTermination(void (*handler)(int)) {
    signal(SIGINT, handler);
    signal(SIGTERM, handler);
    signal(SIGBREAK, handler);
}

bool IsInterruptRequest(int signal_number) {
    return signal_number != SIGINT;
}

void DieOfSignal(int signal_number) {
    signal(signal_number, SIG_DFL);
    raise(signal_number);
}

void RemoveFile(const char* path) {
    _unlink(path);
}

void CloseStrayStreams() {
    _fcloseall();
}

std::string ErrorText(int error_number) {
    return std::error_code(error_number, std::generic_category()).message();
}

}  // namespace scan695::cli
