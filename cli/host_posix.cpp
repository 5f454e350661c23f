#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#if defined(__linux__)
#include <sys/prctl.h>
#endif

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <system_error>

#include "cli/host.h"

namespace scan695::cli {

namespace {

constexpr int WRITER_WAIT = 1000;  // milliseconds for a writer to open its end of a pipe

constexpr int SIGNALS[] = {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGXCPU};

void (*termination_handler)(int);
volatile std::sig_atomic_t is_writing_elsewhere;  // not to standard output
sigset_t caught_signals;

void OnSignal(int signal_number) {
    if (signal_number == SIGPIPE && is_writing_elsewhere != 0) return;
    termination_handler(signal_number);
}

FileStatus StatusFrom(int result, const struct stat& status) {
    if (result != 0) return {};
    FileStatus file;
    file.kind = S_ISREG(status.st_mode)   ? FileKind::REGULAR
                : S_ISDIR(status.st_mode) ? FileKind::DIRECTORY
                : S_ISCHR(status.st_mode) ? FileKind::DEVICE
                                          : FileKind::OTHER;
    file.size = static_cast<uint64_t>(status.st_size);
    file.device = status.st_dev;
    file.identity = std::to_string(status.st_dev) + ':' + std::to_string(status.st_ino);
    return file;
}

// In the child: the signals as the parent found them. An interrupt from the keyboard goes to the
// parent as well, which ends its children; the library's own answer to it would only be in the way.
void ResetSignals() {
    for (const int number : SIGNALS) {
        struct sigaction action;
        sigaction(number, nullptr, &action);
        if (action.sa_handler == OnSignal) signal(number, SIG_DFL);
    }
    signal(SIGXFSZ, SIG_DFL);
    sigset_t interrupt;
    sigemptyset(&interrupt);
    sigaddset(&interrupt, SIGINT);
    sigprocmask(SIG_UNBLOCK, &caught_signals, nullptr);
    sigprocmask(SIG_BLOCK, &interrupt, nullptr);
}

[[noreturn]] void RunChild(const ChildTask& task, int console, pid_t parent) {
#if defined(__linux__)
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(CHILD_CANNOT_START);
#else
    static_cast<void>(parent);
#endif
    const rlimit no_core = {0, 0};  // it would lie in the private folder
    setrlimit(RLIMIT_CORE, &no_core);
    const int null = open(NULL_DEVICE, O_RDONLY | O_CLOEXEC);
    if (null == -1 || dup2(null, STANDARD_INPUT) == -1) close(STANDARD_INPUT);
    if (dup2(console, STANDARD_OUTPUT) == -1 || chdir(task.folder.c_str()) != 0)
        _exit(CHILD_CANNOT_START);
    close(console);
    ResetSignals();
    std::exit(ConvertHere(task));
}

}  // namespace

const char* const NULL_DEVICE = "/dev/null";

std::vector<std::string> ArgumentsOf(int argc, char** argv) {
    if (argc == 0) return {};
    return {argv + 1, argv + argc};
}

void ClaimStandardStreams() {
    for (int descriptor = STANDARD_INPUT; descriptor <= STANDARD_ERROR; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) != -1 || errno != EBADF) continue;
        open(NULL_DEVICE, descriptor == STANDARD_INPUT ? O_WRONLY : O_RDONLY);
    }
}

std::filesystem::path ToPath(const std::string& text) {
    return text;
}

std::string ToText(const std::filesystem::path& path) {
    return path.native();
}

FileStatus StatusOf(const std::string& path) {
    struct stat status;
    return StatusFrom(stat(path.c_str(), &status), status);
}

FileStatus StatusOf(int descriptor) {
    struct stat status;
    return StatusFrom(fstat(descriptor, &status), status);
}

std::string FoldedName(const std::string& name) {
    return name;
}

bool IsDeviceName(const std::string&) {
    return false;
}

bool IsLibraryName(const std::string&) {
    return true;
}

int OpenForReading(const std::string& path) {
    return open(path.c_str(), O_RDONLY | O_CLOEXEC);
}

int OpenPipeForReading(const std::string& path) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor == -1) return -1;
    pollfd end = {descriptor, POLLIN, 0};
    poll(&end, 1, WRITER_WAIT);
    fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) & ~O_NONBLOCK);
    return descriptor;
}

int OpenForAppending(const std::string& path) {
    return open(path.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
}

int CreateNew(const std::string& path) {
    return open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
}

bool CreatePrivateFolder(const std::string& path) {
    return mkdir(path.c_str(), 0700) == 0;
}

bool CanBeWorkedIn(const std::string&) {
    return true;
}

bool MakeLink(const std::string& target, const std::string& link) {
    return symlink(target.c_str(), link.c_str()) == 0;
}

bool CanWrite(const std::string& path) {
    return access(path.c_str(), W_OK) == 0;
}

void RemoveFile(const char* path) {
    unlink(path);
}

void RemoveEmptyFolder(const char* path) {
    rmdir(path);
}

void MakeBinary(int) {}

bool IsTerminal(int descriptor) {
    return isatty(descriptor) == 1;
}

long ReadSome(int descriptor, char* buffer, size_t size) {
    for (;;) {
        const ssize_t count = read(descriptor, buffer, size);
        if (count >= 0 || errno != EINTR) return count;
    }
}

bool WriteAll(int descriptor, const char* bytes, size_t size) {
    is_writing_elsewhere = descriptor != STANDARD_OUTPUT;
    while (size > 0) {
        const ssize_t count = write(descriptor, bytes, size);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) break;
        bytes += count;
        size -= static_cast<size_t>(count);
    }
    is_writing_elsewhere = 0;
    return size == 0;
}

bool CloseDescriptor(int descriptor) {
    return close(descriptor) == 0;
}

bool CanBeClosed(int descriptor) {
    const int copy = dup(descriptor);
    return copy != -1 && close(copy) == 0;
}

bool StartChild(const ChildTask& task, Child& child) {
    int ends[2];
    if (pipe(ends) != 0) return false;
    const pid_t parent = getpid();
    const pid_t process = fork();
    if (process == 0) {
        close(ends[0]);
        RunChild(task, ends[1], parent);
    }
    const int error = errno;
    close(ends[1]);
    if (process == -1) close(ends[0]);
    child = {process, process == -1 ? -1 : ends[0]};
    errno = error;
    return process != -1;
}

int WaitForConsole(const std::vector<int>& consoles, int milliseconds) {
    std::vector<pollfd> waiting;
    waiting.reserve(consoles.size());
    for (const int console : consoles) waiting.push_back({console, POLLIN, 0});
    if (poll(waiting.data(), waiting.size(), milliseconds) <= 0) return -1;
    for (size_t i = 0; i < waiting.size(); ++i) {
        if (waiting[i].revents != 0) return static_cast<int>(i);
    }
    return -1;
}

ChildEnd WaitForChild(const Child& child) {
    siginfo_t end = {};
    const auto process = static_cast<id_t>(child.process);
    while (waitid(P_PID, process, &end, WEXITED | WNOWAIT) == -1 && errno == EINTR) {
    }
    if (end.si_code == CLD_EXITED) return {end.si_status, 0, false};
    return {0, end.si_status, end.si_status == SIGXFSZ};
}

void CloseChild(const Child& child) {
    close(child.console);
    waitpid(static_cast<pid_t>(child.process), nullptr, 0);
}

void KillChild(intptr_t process) {
    kill(static_cast<pid_t>(process), SIGKILL);
    waitpid(static_cast<pid_t>(process), nullptr, 0);
}

int RunAsChild(const std::vector<std::string>&) {
    return -1;
}

void CatchTermination(void (*handler)(int)) {
    termination_handler = handler;
    sigemptyset(&caught_signals);
    for (const int number : SIGNALS) sigaddset(&caught_signals, number);
    for (const int number : SIGNALS) {
        struct sigaction inherited;
        sigaction(number, nullptr, &inherited);
        if (inherited.sa_handler == SIG_IGN) continue;
        struct sigaction action = {};
        action.sa_handler = OnSignal;
        action.sa_mask = caught_signals;
        action.sa_flags = SA_RESTART;
        sigaction(number, &action, nullptr);
    }
    signal(SIGXFSZ, SIG_IGN);
}

void DieOfSignal(int signal_number) {
    signal(signal_number, SIG_DFL);
    sigset_t one;
    sigemptyset(&one);
    sigaddset(&one, signal_number);
    raise(signal_number);
    sigprocmask(SIG_UNBLOCK, &one, nullptr);
}

HoldSignals::HoldSignals() {
    sigprocmask(SIG_BLOCK, &caught_signals, nullptr);
}

HoldSignals::~HoldSignals() {
    const int error = errno;
    sigprocmask(SIG_UNBLOCK, &caught_signals, nullptr);
    errno = error;
}

std::string ErrorText(int error_number) {
    return std::error_code(error_number, std::generic_category()).message();
}

std::string SignalText(int signal_number) {
    return strsignal(signal_number);
}

}  // namespace scan695::cli
