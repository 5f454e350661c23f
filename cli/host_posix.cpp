#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <system_error>

#include "cli/host.h"

namespace scan695::cli {

void ClaimStandardStreams() {
    for (int descriptor = STANDARD_INPUT; descriptor <= STANDARD_ERROR; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) != -1 || errno != EBADF) continue;
        open("/dev/null", descriptor == STANDARD_INPUT ? O_WRONLY : O_RDONLY);
    }
}

int OpenForReading(const char* path) {
    return open(path, O_RDONLY | O_CLOEXEC);
}

int OpenForWriting(const char* path) {
    return open(path, O_WRONLY | O_CLOEXEC);
}

int OpenNull() {
    return open("/dev/null", O_RDONLY | O_CLOEXEC);
}

int CreateNew(const char* path, bool is_private) {
    return open(path, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, is_private ? 0600 : 0666);
}

bool MakePipe(int ends[2]) {
    return pipe(ends) == 0;
}

int Duplicate(int descriptor) {
    return dup(descriptor);
}

bool Redirect(int descriptor, int target) {
    return dup2(descriptor, target) != -1;
}

void MakeBinary(int) {}

long ReadSome(int descriptor, char* buffer, size_t size) {
    for (;;) {
        const ssize_t count = read(descriptor, buffer, size);
        if (count >= 0 || errno != EINTR) return count;
    }
}

bool WriteAll(int descriptor, const char* bytes, size_t size) {
    while (size > 0) {
        const ssize_t count = write(descriptor, bytes, size);
        if (count < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        bytes += count;
        size -= static_cast<size_t>(count);
    }
    return true;
}

bool CloseDescriptor(int descriptor) {
    return close(descriptor) == 0;
}

bool CanRead(const char* path) {
    return access(path, R_OK) == 0;
}

bool CanWrite(const char* path) {
    return access(path, W_OK) == 0;
}

bool IsOpenAs(int descriptor, const char* path) {
    struct stat open_file;
    struct stat named_file;
    return fstat(descriptor, &open_file) == 0 && stat(path, &named_file) == 0 &&
           open_file.st_dev == named_file.st_dev && open_file.st_ino == named_file.st_ino;
}

void CatchTermination(void (*handler)(int)) {
    static constexpr int SIGNALS[] = {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGXCPU};
    static constexpr size_t COUNT = sizeof SIGNALS / sizeof SIGNALS[0];
    static bool is_first_call = true;
    static bool is_ignored[COUNT];

    for (size_t i = 0; i < COUNT; ++i) {
        if (is_first_call) {
            struct sigaction inherited;
            sigaction(SIGNALS[i], nullptr, &inherited);
            is_ignored[i] = inherited.sa_handler == SIG_IGN;
        }
        struct sigaction action = {};
        action.sa_handler = is_ignored[i] ? SIG_IGN : handler;
        action.sa_flags = SA_RESTART;
        sigemptyset(&action.sa_mask);
        sigaction(SIGNALS[i], &action, nullptr);
    }
    signal(SIGXFSZ, SIG_IGN);
    is_first_call = false;
}

bool IsInterruptRequest(int signal_number) {
    return signal_number == SIGTERM || signal_number == SIGHUP || signal_number == SIGQUIT;
}

void DieOfSignal(int signal_number) {
    signal(signal_number, SIG_DFL);
    raise(signal_number);
}

void RemoveFile(const char* path) {
    unlink(path);
}

void CloseStrayStreams() {}

std::string ErrorText(int error_number) {
    return std::error_code(error_number, std::generic_category()).message();
}

}  // namespace scan695::cli
