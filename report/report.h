// The one way of reporting and stopping, and the console trace: the floor under every room. A fatal
// condition is one call of ReportAndStop, which never comes back; there are no error codes between
// the functions of a run and no function unwinds.
#pragma once

#include <csignal>
#include <cstdint>
#include <type_traits>

#include "report/console.h"

#if defined(__MINGW32__)
#define SCAN695_PRINTF(text, first) __attribute__((format(gnu_printf, text, first)))
#elif defined(__GNUC__)
#define SCAN695_PRINTF(text, first) __attribute__((format(printf, text, first)))
#else
#define SCAN695_PRINTF(text, first)
#endif

namespace scan695 {

// What a report does besides printing.
struct ReportState {
    uint32_t DebugMode = 0;  // last argument of Convert; other than 0 switches the trace on

    // Called first of all by every report: frees the objects of the scan.
    void (*CleanupHook)() = nullptr;
    // Called by a fatal report behind its message: closes and removes the FST file.
    void (*RemoveFstHook)() = nullptr;
    // Called by every report: frees the working arrays of the post-processing.
    void (*FreeWorkHook)() = nullptr;
};
extern ReportState Report;

// Set by OnInterrupt, read by ProgressTick; apart from Report since the handler writes it.
extern volatile std::sig_atomic_t AbortRequested;

// Starts a run: no hooks, an interrupt of an earlier run is forgotten, lines are collected.
void StartReport(uint32_t debug_mode);

enum ErrorMessage : uint32_t {
    ERROR_OPEN_INPUT = 0,
    ERROR_OPEN_HEX,
    ERROR_OPEN_OUTPUT,
    ERROR_OPEN_MAP,
    ERROR_READ_TEMPORARY,
    ERROR_READ_INPUT,
    ERROR_READ_MAP,
    ERROR_WRITE_OUTPUT,
    ERROR_NO_MEMORY,
    ERROR_INTERNAL,
    NOF_ERROR_MESSAGES
};
extern const char* const ErrorMessageTable[NOF_ERROR_MESSAGES];

// Prints the message (its first 255 bytes), a BEL and a newline, removes the FST file, frees what
// is left of the run, waits for ENTER and ends the process through exit() with status 1.
[[noreturn]] void ReportAndStop(const char* format, ...) SCAN695_PRINTF(1, 2);
[[noreturn]] void ReportAndStop(ErrorMessage message);

// The report of status 0: prints the message and a newline, cleans up and comes back.
void ReportAndGoOn(const char* format, ...) SCAN695_PRINTF(1, 2);

// Prints a line of the trace on standard output; does nothing without DebugMode.
template <class... Values>
inline void Trace(LineForm<std::type_identity_t<Values>...> form, Values... values) {
    if (Report.DebugMode != 0) [[unlikely]]
        AppendLineOf(form.Text(), values...);
}

// Prints a console line of every run on standard output.
template <class... Values>
inline void PrintLine(LineForm<std::type_identity_t<Values>...> form, Values... values) {
    AppendLineOf(form.Text(), values...);
    FlushLines();
}

// The handler of SIGINT: notes the wish to stop and installs itself again.
void OnInterrupt(int signal_number);

// Stops the run with "--- Aborted ---" if an interrupt has come. Called at each step of the loops
// of the post-processing.
void StopAborted();
inline void ProgressTick() {
    if (AbortRequested != 0) [[unlikely]]
        StopAborted();
}

}  // namespace scan695
