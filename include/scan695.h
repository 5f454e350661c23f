/*
 * scan695: converts absolute object files of the TASKING tool chain (IEEE-695 dialect; C166 family
 * and TriCore) into STF, a structured text file, and in debug mode also into FST, a binary symbol
 * database. This header is the whole public interface: two functions, exported by name.
 *
 * Paths are NUL-terminated 8-bit strings in the encoding of the system's file calls (on Windows,
 * the system's code page; there lines of standard output end with CR LF in its text mode). Neither
 * function keeps a pointer that it was given. Neither function throws. A null path is a file that
 * cannot be opened.
 *
 * Not re-entrant: one conversion at a time in a process, in the thread of the caller. Conversions
 * may follow one another; each starts fresh.
 *
 * Stack: types that nest as deep as is allowed, 1,000 times, need up to 224 KB in an optimised
 * build; a thread with 256 KB is enough.
 */
#ifndef SCAN695_H
#define SCAN695_H

#include <stdint.h>

/*
 * The version of this package, by the rules of semantic versioning over this header and the formats
 * of the two files. The system's own version, which STF files name in their first record, is
 * another number (1.44) and changes only with what the system writes.
 */
#define SCAN695_VERSION_MAJOR 1
#define SCAN695_VERSION_MINOR 0
#define SCAN695_VERSION_PATCH 0
#define SCAN695_VERSION_STRING "1.0.0"

#if defined(_WIN32)
#if defined(SCAN695_BUILD)
#define SCAN695_API __declspec(dllexport)
#else
#define SCAN695_API __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define SCAN695_API __attribute__((visibility("default")))
#else
#define SCAN695_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Tells whether a file is meant for this scanner: 1 if the first seven bytes of the file at `path`
 * begin an IEEE-695 module of processor "80166" or "TRI", else 0 (also when it cannot be read).
 * The first argument is ignored. Touches no state; can be called at any time.
 *
 * The test is narrow on purpose: Convert accepts more names ("tricore", "296sa_e") than Check.
 */
SCAN695_API uint32_t Check(uint32_t word, const char* path);

/*
 * Converts the object file at `input_path` and writes the STF file to `stf_path`, which is created
 * or overwritten and may not be the input, which never changes. The first argument is ignored. With
 * `debug` other than 0 a record-by-record trace goes to standard output, and an FST file is written
 * beside the input: the same directory, the base name in upper case, the extension FST.
 *
 * Result: a null pointer for success, or a pointer to a static text.
 *
 * A fatal condition (an unreadable, damaged or unsuitable input, no memory, an output that cannot
 * be opened) does not return: the message, a BEL and "Press ENTER to terminate" go to standard
 * output, one line is read from standard input, and the process ends through exit() with status 1.
 * The STF file then holds what had been flushed, and the FST file is removed.
 *
 * While a conversion runs SIGINT is caught; the handler stays installed. An interrupt is honoured
 * in the post-processing of a debug run only and then is a fatal condition.
 *
 * A failed write of the STF file is not noticed: a complete file ends with the line "}", behind
 * which comment lines may follow.
 */
SCAN695_API const char* Convert(uint32_t word, const char* input_path, const char* stf_path,
                                uint32_t debug);

#ifdef __cplusplus
}
#endif

#endif
