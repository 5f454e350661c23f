// The attach hook of the library: it has no per-thread state and asks for no thread notifications.
#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) DisableThreadLibraryCalls(library);
    return TRUE;
}
