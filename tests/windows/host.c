/*
 * A host in C that loads the library by name, on Windows and elsewhere:
 *
 *     host LIBRARY STEPS      converts t.abs; steps are p (plain), d (debug), r (free, load again)
 *     host hold FILE          keeps FILE open for itself until a line is typed
 */
#include <signal.h>
#include <stdint.h>
#include <stdio.h>
#include <string.h>
#ifdef _WIN32
#include <windows.h>
// windows.h comes first
#include <psapi.h>
#define dlopen(name, mode) ((void*)LoadLibraryA(name))
#define dlsym(library, name) ((void*)GetProcAddress((HMODULE)(library), name))
#define dlclose(library) FreeLibrary((HMODULE)(library))

static int hold(const char* name) {
    const HANDLE file = CreateFileA(name, GENERIC_READ, FILE_SHARE_READ, NULL, OPEN_EXISTING, 0, 0);
    puts(file == INVALID_HANDLE_VALUE ? "failed" : "held");
    fflush(stdout);
    return getchar() == '\n' ? 0 : 1;
}

/* Not 0 if something of a freed library is still there. What the system itself keeps of a first one
 * or two loads does not count. */
static int left_behind(const char* name) {
    static DWORD loads, slot_before;
    static SIZE_T bytes_before;
    PROCESS_MEMORY_COUNTERS memory;
    GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
    const DWORD slot = TlsAlloc();
    TlsFree(slot);
    if (++loads <= 2) slot_before = slot, bytes_before = memory.PagefileUsage;
    if (GetModuleHandleA(name) != NULL) return 1;
    if (signal(SIGINT, SIG_DFL) != SIG_DFL) return 2;
    if (slot > slot_before) return 3;
    return memory.PagefileUsage > bytes_before + 65536 ? 4 : 0;
}
#else
#include <dlfcn.h>
#define hold(name) 1
#define left_behind(name) 0
#endif

int main(int argc, char** argv) {
    if (argc != 3) return 90;
    if (strcmp(argv[1], "hold") == 0) return hold(argv[2]);
    void* library = dlopen(argv[1], RTLD_NOW);
    for (const char* step = argv[2]; *step != 0; ++step) {
        if (*step == 'r') {
            dlclose(library);
            const int kind = left_behind(argv[1]);
            if (kind != 0) return 80 + kind;
            library = dlopen(argv[1], RTLD_NOW);
            continue;
        }
        if (library == NULL) return 91;
        uint32_t (*check)(uint32_t, const char*) = dlsym(library, "Check");
        const char* (*convert)(uint32_t, const char*, const char*, uint32_t) =
            dlsym(library, "Convert");
        if (check == NULL || convert == NULL) return 92;
        printf("Check: %u\n", (unsigned)check(0, "t.abs"));
        if (convert(0, "t.abs", "t.stf", *step == 'd') != NULL) return 93;
    }
    return 0;
}
