// The attach hook of the library: it has no per-thread state and asks for no thread notifications.
// A library that is freed must not stay the handler of SIGINT, which Convert has made it.
#include <windows.h>

#include <csignal>

#include "report/report.h"

// Of the C++ runtime: gives back the memory that it keeps for exceptions.
namespace __gnu_cxx {
void __freeres();
}

// Of the C runtime: without this hook for thread-local data the file has no table of callbacks, and
// the system none to call for each thread of the host. The library has no such data.
extern "C" const PIMAGE_TLS_CALLBACK __dyn_tls_init_callback;
const PIMAGE_TLS_CALLBACK __dyn_tls_init_callback = nullptr;

extern "C" BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, LPVOID is_process_end) {
    if (reason == DLL_PROCESS_ATTACH) DisableThreadLibraryCalls(library);
    if (reason == DLL_PROCESS_DETACH && is_process_end == nullptr) {
        const auto handler = std::signal(SIGINT, SIG_DFL);
        if (handler != scan695::OnInterrupt) std::signal(SIGINT, handler);
        __gnu_cxx::__freeres();
    }
    return TRUE;
}
