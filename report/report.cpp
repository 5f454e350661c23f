#include "report/report.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

namespace scan695 {

ReportState Report;
volatile std::sig_atomic_t AbortRequested = 0;

const char* const ErrorMessageTable[NOF_ERROR_MESSAGES] = {
    "Error: cannot open object/symbol file\n",
    "Error: cannot open hex/code file\n",
    "Error: cannot open output file\n",
    "Error: cannot open map file\n",
    "Error: cannot read temporary buffer\n",
    "Error: cannot read object/symbol file\n",
    "Error: cannot read map file\n",
    "Error: cannot write to output file\n",
    "Error: not enough memory\n",
    "Internal error: %s\nPlease contact Velmorand Technical Support\n",
};

namespace {

constexpr int BEL = 7;

void RunHook(void (*hook)()) {
    if (hook != nullptr) hook();
}

// Reads up to the end of the line or of the input; what was typed does not matter.
void WaitForEnter() {
    std::fputs("Press ENTER to terminate\n", stdout);
    std::fflush(stdout);
    int c = std::getchar();
    while (c != '\n' && c != EOF) c = std::getchar();
}

// The steps of a report; comes back for code 0 only.
void MakeReport(int32_t code, const char* format, va_list arguments) {
    StopCollectingLines();
    RunHook(Report.CleanupHook);
    char message[256];
    std::vsnprintf(message, sizeof message, format, arguments);
    std::fputs(message, stdout);
    if (code != 0) std::fputc(BEL, stdout);
    std::fputc('\n', stdout);
    if (code != 0) RunHook(Report.RemoveFstHook);
    RunHook(Report.FreeWorkHook);
    if (code > 0) WaitForEnter();
    if (code != 0) std::exit(code);
}

}  // namespace

void StartReport(uint32_t debug_mode) {
    AbortRequested = 0;
    Report = {.DebugMode = debug_mode};
    StartCollectingLines();
}

void ReportAndStop(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    MakeReport(1, format, arguments);
    std::abort();  // MakeReport has ended the process
}

void ReportAndStop(ErrorMessage message) {
    ReportAndStop("%s", ErrorMessageTable[message]);
}

void ReportAndGoOn(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    MakeReport(0, format, arguments);
    va_end(arguments);
}

void OnInterrupt(int) {
    AbortRequested = 1;
    std::signal(SIGINT, OnInterrupt);
}

void StopAborted() {
    ReportAndStop("\b\b\b\b\b\b\b\b\b\b--- Aborted ---\n");
}

}  // namespace scan695
