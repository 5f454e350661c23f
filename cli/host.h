// What the command needs of the system and what differs between systems: descriptors, signals,
// removal of open files. One implementation for each kind of system (host_posix.cpp,
// host_windows.cpp); everything else in cli/ is portable.
//
// Descriptors are those of the C runtime. A result of -1 or false means failure, with errno set.
#pragma once

#include <cstddef>
#include <string>

namespace scan695::cli {

inline constexpr int STANDARD_INPUT = 0;
inline constexpr int STANDARD_OUTPUT = 1;
inline constexpr int STANDARD_ERROR = 2;

// Occupies descriptors 0 to 2 where the parent process left one closed, so that no file of ours
// gets such a number. Reading and writing the occupied ones fails.
void ClaimStandardStreams();

int OpenForReading(const char* path);
// Opens an existing file or device without truncating it.
int OpenForWriting(const char* path);
int OpenNull();
// Creates a file that must not exist yet. `is_private`: readable by the owner alone.
int CreateNew(const char* path, bool is_private);
bool MakePipe(int ends[2]);
int Duplicate(int descriptor);
// Makes `target` another name of `descriptor`.
bool Redirect(int descriptor, int target);
// Switches off the translation of line ends.
void MakeBinary(int descriptor);
// Gives the number of bytes read, 0 at the end.
long ReadSome(int descriptor, char* buffer, size_t size);
bool WriteAll(int descriptor, const char* bytes, size_t size);
bool CloseDescriptor(int descriptor);

bool CanRead(const char* path);
bool CanWrite(const char* path);
bool IsOpenAs(int descriptor, const char* path);

// Installs `handler` for every signal that ends a process from outside, except those that the
// parent process has set to be ignored. May be called again to win back a signal. A write beyond
// a limit on file sizes becomes a failed write.
void CatchTermination(void (*handler)(int));
bool IsInterruptRequest(int signal_number);  // a request to stop that may be answered in a moment
// Ends the process the way the signal would have ended it. To be called from a handler.
void DieOfSignal(int signal_number);

// Removes a file; can be called from a signal handler.
void RemoveFile(const char* path);
// Closes files that the ended conversion has left open, where an open file cannot be removed.
void CloseStrayStreams();

std::string ErrorText(int error_number);

}  // namespace scan695::cli
