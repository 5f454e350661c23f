#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>
// clang-format off
#include <shellapi.h>
// clang-format on

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <cwctype>
#include <iterator>
#include <system_error>

#include "cli/host.h"

namespace scan695::cli {

namespace {

constexpr size_t LARGEST_TRANSFER = 1 << 30;
constexpr size_t LONGEST_FOLDER = 180;  // 260 less the names of a private folder and a file in it
constexpr DWORD PIPE_BYTES = 65536;
constexpr int REMOVE_ATTEMPTS = 20;
constexpr DWORD REMOVE_PAUSE = 25;  // milliseconds
constexpr DWORD POLL_PAUSE = 2;     // milliseconds
constexpr UINT KILLED = 1;
constexpr DWORD FIRST_EXCEPTION = 0xC0000000;  // exit codes from here on are not the program's own
constexpr char CHILD_OPTION[] = "--convert-in-child";

// Names that stand for a device in every folder and with any extension.
constexpr const wchar_t* DEVICE_NAMES[] = {L"con", L"prn", L"aux", L"nul", L"conin$", L"conout$"};
constexpr wchar_t DEVICE_DIGITS[] = L"0123456789\u00B9\u00B2\u00B3";

void (*termination_handler)(int);
CRITICAL_SECTION termination_lock;  // handlers run in a thread of their own

// What is open of our own files. They are shared for removal, but their names are gone, and their
// folder empty, only when they are closed.
constexpr size_t MAX_OPEN = 256;
std::atomic<HANDLE> open_files[MAX_OPEN];

std::wstring Wide(const std::string& text) {
    return ToPath(text).wstring();
}

unsigned TransferSize(size_t size) {
    return static_cast<unsigned>(std::min(size, LARGEST_TRANSFER));
}

void SetErrno() {
    switch (GetLastError()) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_INVALID_NAME:
        case ERROR_BAD_NETPATH:
            errno = ENOENT;
            break;
        case ERROR_ACCESS_DENIED:
        case ERROR_SHARING_VIOLATION:
            errno = EACCES;
            break;
        case ERROR_ALREADY_EXISTS:
        case ERROR_FILE_EXISTS:
            errno = EEXIST;
            break;
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
            errno = ENOSPC;
            break;
        case ERROR_NOT_ENOUGH_MEMORY:
            errno = ENOMEM;
            break;
        default:
            errno = EIO;
    }
}

FileStatus StatusFrom(HANDLE file) {
    FileStatus status;
    const DWORD type = GetFileType(file);
    if (type != FILE_TYPE_DISK) {
        status.kind = type == FILE_TYPE_CHAR ? FileKind::DEVICE : FileKind::OTHER;
        status.identity = "handle " + std::to_string(reinterpret_cast<uintptr_t>(file));
        return status;
    }
    BY_HANDLE_FILE_INFORMATION information;
    if (GetFileInformationByHandle(file, &information) == 0) {
        SetErrno();
        return {};
    }
    const bool is_folder = (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    status.kind = is_folder ? FileKind::DIRECTORY : FileKind::REGULAR;
    status.size = uint64_t{information.nFileSizeHigh} << 32 | information.nFileSizeLow;
    status.device = information.dwVolumeSerialNumber;
    status.identity =
        std::to_string(status.device) + ':' +
        std::to_string(uint64_t{information.nFileIndexHigh} << 32 | information.nFileIndexLow);
    return status;
}

// A handle that the child gets.
HANDLE Inheritable(HANDLE handle) {
    HANDLE copy = INVALID_HANDLE_VALUE;
    const HANDLE self = GetCurrentProcess();
    if (DuplicateHandle(self, handle, self, &copy, 0, TRUE, DUPLICATE_SAME_ACCESS) == 0)
        return INVALID_HANDLE_VALUE;
    return copy;
}

HANDLE HandleOf(int descriptor) {
    return reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
}

std::wstring OwnProgram() {
    std::wstring name(32768, L'\0');
    name.resize(GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size())));
    return name;
}

// The names of a task are this program's own and need no quotes.
bool StartProcess(const ChildTask& task, HANDLE input, HANDLE output,
                  PROCESS_INFORMATION& process) {
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = input;
    start.hStdOutput = output;
    start.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    std::wstring command = Wide(std::string("scan695 ") + CHILD_OPTION + ' ' + task.input + ' ' +
                                task.stf + (task.debug ? " 1" : " 0"));
    // In a group of its own the child does not hear of an interrupt from the keyboard.
    return CreateProcessW(OwnProgram().c_str(), command.data(), nullptr, nullptr, TRUE,
                          CREATE_NEW_PROCESS_GROUP, nullptr,
                          std::filesystem::absolute(ToPath(task.folder)).c_str(), &start,
                          &process) != 0;
}

void OnSignal(int signal_number) {
    EnterCriticalSection(&termination_lock);
    for (auto& file : open_files) {
        const HANDLE handle = file.exchange(nullptr);
        if (handle != nullptr) CloseHandle(handle);
    }
    termination_handler(signal_number);
}

// Work that fails since a handler has closed its files waits here for the end of the process.
void WaitIfEnding() {
    const int error = errno;
    const HoldSignals hold;
    errno = error;
}

// `mode` is that of the C runtime.
int OpenFile(const std::string& path, DWORD access, DWORD creation, int mode) {
    constexpr DWORD SHARE = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file = CreateFileW(Wide(path).c_str(), access, SHARE, nullptr, creation,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        SetErrno();
        return -1;
    }
    const int descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(file), mode | _O_BINARY);
    if (descriptor == -1) CloseHandle(file);
    return descriptor;
}

// What a process had open that has just been ended may be held a moment longer.
void RemoveSoon(BOOL(WINAPI* remove)(const wchar_t*), const char* path) {
    const std::wstring name = Wide(path);
    for (int attempt = 0; attempt < REMOVE_ATTEMPTS && remove(name.c_str()) == 0; ++attempt) {
        const DWORD error = GetLastError();
        if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) return;
        const DWORD attributes = GetFileAttributesW(name.c_str());
        const bool is_folder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        if (attributes == INVALID_FILE_ATTRIBUTES || is_folder != (remove == RemoveDirectoryW))
            return;
        Sleep(REMOVE_PAUSE);
    }
}

// A process that ends takes the members of its job with it.
HANDLE JobOfChildren() {
    const HANDLE job = CreateJobObjectW(nullptr, nullptr);
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return job;
}

UINT console_encoding;  // of the console before us
void RestoreConsole() {
    SetConsoleOutputCP(console_encoding);
}

}  // namespace

const char* const NULL_DEVICE = "NUL";

std::vector<std::string> ArgumentsOf(int, char**) {
    int count = 0;
    wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) arguments.push_back(ToText(words[i]));
    LocalFree(words);
    return arguments;
}

// The C runtime opens all three. What we print is UTF-8.
void ClaimStandardStreams() {
    console_encoding = GetConsoleOutputCP();
    if (console_encoding == 0 || console_encoding == CP_UTF8) return;
    SetConsoleOutputCP(CP_UTF8);
    std::atexit(RestoreConsole);
}

std::filesystem::path ToPath(const std::string& text) {
    return std::u8string(text.begin(), text.end());
}

std::string ToText(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

FileStatus StatusOf(const std::string& path) {
    const HANDLE file =
        CreateFileW(Wide(path).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        SetErrno();
        return {};
    }
    const FileStatus status = StatusFrom(file);
    CloseHandle(file);
    return status;
}

FileStatus StatusOf(int descriptor) {
    return StatusFrom(HandleOf(descriptor));
}

std::string FoldedName(const std::string& name) {
    std::wstring folded = Wide(name);
    for (wchar_t& c : folded) c = static_cast<wchar_t>(std::towlower(c));
    return ToText(folded);
}

bool IsDeviceName(const std::string& path) {
    std::wstring name = Wide(FoldedName(ToText(ToPath(path).filename())));
    name.resize(std::min(name.find_first_of(L".:"), name.size()));
    while (name.ends_with(L' ')) name.pop_back();
    const bool is_port = name.size() == 4 && (name.starts_with(L"com") || name.starts_with(L"lpt"));
    if (is_port) return std::wcschr(DEVICE_DIGITS, name[3]) != nullptr;
    return std::find(std::begin(DEVICE_NAMES), std::end(DEVICE_NAMES), name) !=
           std::end(DEVICE_NAMES);
}

bool IsLibraryName(const std::string& path) {
    return std::all_of(path.begin(), path.end(), [](char c) { return c > 0; });
}

int OpenForReading(const std::string& path) {
    return OpenFile(path, GENERIC_READ, OPEN_EXISTING, _O_RDONLY);
}

int OpenPipeForReading(const std::string& path) {
    return OpenForReading(path);  // a named pipe without a writer cannot be opened
}

int OpenForAppending(const std::string& path) {
    return OpenFile(path, GENERIC_WRITE, OPEN_EXISTING, _O_WRONLY | _O_APPEND);
}

int CreateNew(const std::string& path) {
    const HoldSignals hold;
    const int descriptor = OpenFile(path, GENERIC_READ | GENERIC_WRITE, CREATE_NEW, _O_RDWR);
    if (descriptor >= 0 && static_cast<size_t>(descriptor) < MAX_OPEN)
        open_files[descriptor] = HandleOf(descriptor);
    return descriptor;
}

bool CreatePrivateFolder(const std::string& path) {
    if (CreateDirectoryW(Wide(path).c_str(), nullptr) != 0) return true;
    SetErrno();
    return false;
}

bool CanBeWorkedIn(const std::string& folder) {
    std::error_code ignored;
    return std::filesystem::absolute(ToPath(folder), ignored).native().size() < LONGEST_FOLDER;
}

// A symbolic link takes a privilege, and a hard link to a file that is read-only cannot be removed.
bool MakeLink(const std::string&, const std::string&) {
    errno = EPERM;
    return false;
}

// A file is replaced, and one that others have open without sharing it for removal cannot be.
bool CanWrite(const std::string& path) {
    if (_waccess(Wide(path).c_str(), 2) != 0) return false;
    if (StatusOf(path).kind != FileKind::REGULAR) return true;
    const int descriptor = OpenFile(path, DELETE, OPEN_EXISTING, _O_RDONLY);
    return descriptor != -1 && _close(descriptor) == 0;
}

void RemoveFile(const char* path) {
    RemoveSoon(DeleteFileW, path);
}

void RemoveEmptyFolder(const char* path) {
    RemoveSoon(RemoveDirectoryW, path);
}

void MakeBinary(int descriptor) {
    _setmode(descriptor, _O_BINARY);
}

bool IsTerminal(int descriptor) {
    DWORD mode = 0;  // the null device is no console, though _isatty takes it for one
    return GetConsoleMode(HandleOf(descriptor), &mode) != 0;
}

long ReadSome(int descriptor, char* buffer, size_t size) {
    const int count = _read(descriptor, buffer, TransferSize(size));
    if (count > 0) return count;
    WaitIfEnding();
    return count < 0 && errno != EPIPE ? -1 : 0;
}

bool WriteAll(int descriptor, const char* bytes, size_t size) {
    while (size > 0) {
        const int count = _write(descriptor, bytes, TransferSize(size));
        if (count < 0) {
            WaitIfEnding();
            return false;
        }
        bytes += count;
        size -= static_cast<size_t>(count);
    }
    return true;
}

bool CloseDescriptor(int descriptor) {
    const HoldSignals hold;
    if (descriptor >= 0 && static_cast<size_t>(descriptor) < MAX_OPEN)
        open_files[descriptor] = nullptr;
    return _close(descriptor) == 0;
}

bool CanBeClosed(int) {
    return true;  // writes are not put off
}

bool StartChild(const ChildTask& task, Child& child) {
    int ends[2];
    if (_pipe(ends, PIPE_BYTES, _O_BINARY | _O_NOINHERIT) != 0) return false;
    const int null = _open(NULL_DEVICE, _O_RDONLY | _O_NOINHERIT);
    const HANDLE input = Inheritable(HandleOf(null));
    const HANDLE output = Inheritable(HandleOf(ends[1]));
    PROCESS_INFORMATION process = {};
    const bool is_started = StartProcess(task, input, output, process);
    if (!is_started) SetErrno();
    const int error = errno;
    CloseHandle(input);
    CloseHandle(output);
    _close(null);
    _close(ends[1]);
    if (is_started) {
        static const HANDLE job = JobOfChildren();
        AssignProcessToJobObject(job, process.hProcess);
        CloseHandle(process.hThread);
        child = {reinterpret_cast<intptr_t>(process.hProcess), ends[0]};
    } else {
        _close(ends[0]);
    }
    errno = error;
    return is_started;
}

int WaitForConsole(const std::vector<int>& consoles, int milliseconds) {
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
    do {
        for (size_t i = 0; i < consoles.size(); ++i) {
            DWORD available = 0;
            const bool is_open =
                PeekNamedPipe(HandleOf(consoles[i]), nullptr, 0, nullptr, &available, nullptr) != 0;
            if (!is_open || available > 0) return static_cast<int>(i);
        }
        Sleep(POLL_PAUSE);
    } while (GetTickCount64() < end);
    return -1;
}

ChildEnd WaitForChild(const Child& child) {
    const auto process = reinterpret_cast<HANDLE>(child.process);
    WaitForSingleObject(process, INFINITE);
    DWORD status = 0;
    GetExitCodeProcess(process, &status);
    if (status >= FIRST_EXCEPTION) return {0, static_cast<int>(status), false};
    return {static_cast<int>(status), 0, false};
}

void CloseChild(const Child& child) {
    _close(child.console);
    CloseHandle(reinterpret_cast<HANDLE>(child.process));
}

void KillChild(intptr_t process) {
    const auto handle = reinterpret_cast<HANDLE>(process);
    TerminateProcess(handle, KILLED);
    WaitForSingleObject(handle, INFINITE);
    CloseHandle(handle);
}

int RunAsChild(const std::vector<std::string>& arguments) {
    if (arguments.size() != 4 || arguments[0] != CHILD_OPTION) return -1;
    MakeBinary(STANDARD_OUTPUT);  // the library's console is that of the C runtime, as ours is
    return ConvertHere({"", arguments[1], arguments[2], arguments[3] == "1"});
}

void CatchTermination(void (*handler)(int)) {
    termination_handler = handler;
    InitializeCriticalSection(&termination_lock);
    for (const int number : {SIGINT, SIGTERM, SIGBREAK}) signal(number, OnSignal);
}

void DieOfSignal(int) {
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(STATUS_CONTROL_C_EXIT));
}

HoldSignals::HoldSignals() {
    EnterCriticalSection(&termination_lock);
}

HoldSignals::~HoldSignals() {
    LeaveCriticalSection(&termination_lock);
}

std::string ErrorText(int error_number) {
    return std::error_code(error_number, std::generic_category()).message();
}

std::string SignalText(int signal_number) {
    char text[32];
    std::snprintf(text, sizeof text, "exception %08X", static_cast<unsigned>(signal_number));
    return text;
}

}  // namespace scan695::cli
