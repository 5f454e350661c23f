// The attach hook of the library: it has no per-thread state and asks for no thread notifications.
// A library that is freed must not stay the handler of SIGINT, which Convert has made it.
#include <windows.h>

#include <csignal>

#include "report/report.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, LPVOID is_process_end) {
    if (reason == DLL_PROCESS_ATTACH) DisableThreadLibraryCalls(library);
    if (reason == DLL_PROCESS_DETACH && is_process_end == nullptr) {
        const auto handler = std::signal(SIGINT, SIG_DFL);
        if (handler != scan695::OnInterrupt) std::signal(SIGINT, handler);
    }
    return TRUE;
}
