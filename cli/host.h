// What the command needs of the system and what differs between systems: files, child processes,
// signals. One implementation for each kind of system (host_posix.cpp, host_windows.cpp);
// everything else in cli/ is portable.
//
// Names of files are texts as the user wrote them: bytes on POSIX systems, UTF-8 on Windows.
// Descriptors are those of the C runtime. A result of -1 or false means failure, with errno set.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "cli/child.h"

namespace scan695::cli {

inline constexpr int STANDARD_INPUT = 0;
inline constexpr int STANDARD_OUTPUT = 1;
inline constexpr int STANDARD_ERROR = 2;

extern const char* const NULL_DEVICE;

// The arguments behind the name of the program.
std::vector<std::string> ArgumentsOf(int argc, char** argv);

// Occupies descriptors 0 to 2 where the parent process left one closed, so that no file of ours
// gets such a number. Reading and writing the occupied ones fails.
void ClaimStandardStreams();

// --- Files ---

std::filesystem::path ToPath(const std::string& text);
std::string ToText(const std::filesystem::path& path);

enum class FileKind { MISSING, REGULAR, DIRECTORY, DEVICE, OTHER };  // DEVICE: of characters
struct FileStatus {
    FileKind kind = FileKind::MISSING;  // MISSING: errno tells why
    uint64_t size = 0;
    uint64_t device = 0;   // the file system
    std::string identity;  // the same for every name of one file
};
FileStatus StatusOf(const std::string& path);  // links followed
FileStatus StatusOf(int descriptor);

// Two names in one directory that the file system takes for one are folded to the same text.
std::string FoldedName(const std::string& name);

// True for a name that the system keeps for a device, whatever the folder and the extension.
bool IsDeviceName(const std::string& path);
inline constexpr char DEVICE_NAME[] = "the name is kept for a device";
// True if the library, which takes 8-bit names, surely finds the file by this one.
bool IsLibraryName(const std::string& path);

int OpenForReading(const std::string& path);
// Opens a pipe for reading. Without a writer it soon reads as empty, instead of waiting for one.
int OpenPipeForReading(const std::string& path);
// Opens an existing file or device for writing behind its end, without truncating it.
int OpenForAppending(const std::string& path);
// Creates a file that must not exist yet, for reading and writing.
int CreateNew(const std::string& path);
// Creates a folder that only its owner can look into.
bool CreatePrivateFolder(const std::string& path);
// True if a child can be started in a new folder of this one.
bool CanBeWorkedIn(const std::string& folder);
// Makes `link` another name of the file at `target`, an absolute path. May be impossible.
bool MakeLink(const std::string& target, const std::string& link);
bool CanWrite(const std::string& path);
// Removes a file, or else an empty folder; can be called from a signal handler.
void RemoveFile(const char* path);
void RemoveEmptyFolder(const char* path);

// Switches off the translation of line ends.
void MakeBinary(int descriptor);
bool IsTerminal(int descriptor);
// Gives the number of bytes read, 0 at the end.
long ReadSome(int descriptor, char* buffer, size_t size);
// A pipe that nobody reads any more is a failed write, but that of standard output ends the process
// quietly, as the reader expects.
bool WriteAll(int descriptor, const char* bytes, size_t size);
bool CloseDescriptor(int descriptor);
// True if everything written to a descriptor that stays open has reached its file.
bool CanBeClosed(int descriptor);

// --- Child processes ---

struct Child {
    intptr_t process = -1;
    int console = -1;  // reads what the child prints
};

// Runs the task in a process of its own: without input, its console on a pipe.
bool StartChild(const ChildTask& task, Child& child);

// Waits until one of the consoles can be read or has ended; gives its position in the list, or -1
// when the time is up.
int WaitForConsole(const std::vector<int>& consoles, int milliseconds);

struct ChildEnd {
    int status = 0;
    int signal = 0;              // other than 0 if a signal ended it
    bool is_file_limit = false;  // that of a write beyond the limit on file sizes
};
// Waits for the end of a child whose console has ended.
ChildEnd WaitForChild(const Child& child);
// Gives back what the system holds of a child that has ended.
void CloseChild(const Child& child);

// Ends a child at once and waits until it is gone; can be called from a signal handler.
void KillChild(intptr_t process);

// On Windows, where the command itself is started again for a child: if these are its arguments,
// runs the task and gives the exit status. Elsewhere -1.
int RunAsChild(const std::vector<std::string>& arguments);

// --- Signals ---

// Installs `handler` for every signal that ends a process from outside, except those that the
// parent process has set to be ignored. A write beyond a limit on file sizes becomes a failed one.
void CatchTermination(void (*handler)(int));
// Ends the process the way the signal would have ended it. To be called from a handler.
void DieOfSignal(int signal_number);

// Signals that come during the life of this object are taken at its end.
class HoldSignals {
  public:
    HoldSignals();
    ~HoldSignals();
    HoldSignals(const HoldSignals&) = delete;
    HoldSignals& operator=(const HoldSignals&) = delete;
};

std::string ErrorText(int error_number);
std::string SignalText(int signal_number);

}  // namespace scan695::cli
