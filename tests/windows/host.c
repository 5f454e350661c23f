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
#define SYMBOL(library, name) (void*)GetProcAddress((HMODULE)(library), name)
#define OPEN(name) (void*)LoadLibraryA(name)
#define CLOSE(library) FreeLibrary((HMODULE)(library))
#else
#include <dlfcn.h>
#define SYMBOL(library, name) dlsym(library, name)
#define OPEN(name) dlopen(name, RTLD_NOW)
#define CLOSE(library) dlclose(library)
#endif

typedef uint32_t (*CheckFunction)(uint32_t, const char*);
typedef const char* (*ConvertFunction)(uint32_t, const char*, const char*, uint32_t);

#ifdef _WIN32
static int hold(const char* name) {
    const HANDLE file = CreateFileA(name, GENERIC_READ, FILE_SHARE_READ, NULL, OPEN_EXISTING, 0, 0);
    puts(file == INVALID_HANDLE_VALUE ? "failed" : "held");
    fflush(stdout);
    return getchar() == '\n' ? 0 : 1;
}

/* True if something of a freed library is still there. */
static int left_behind(const char* name) {
    return GetModuleHandleA(name) != NULL || signal(SIGINT, SIG_DFL) != SIG_DFL;
}
#else
static int left_behind(const char* name) {
    return name == NULL;
}
#endif

int main(int argc, char** argv) {
    if (argc != 3) return 90;
#ifdef _WIN32
    if (strcmp(argv[1], "hold") == 0) return hold(argv[2]);
#endif
    void* library = OPEN(argv[1]);
    for (const char* step = argv[2]; *step != 0; ++step) {
        if (*step == 'r') {
            CLOSE(library);
            if (left_behind(argv[1])) return 91;
            library = OPEN(argv[1]);
        }
        if (library == NULL) return 92;
        if (*step == 'r') continue;
        const CheckFunction check = (CheckFunction)SYMBOL(library, "Check");
        const ConvertFunction convert = (ConvertFunction)SYMBOL(library, "Convert");
        if (check == NULL || convert == NULL) return 94;
        printf("Check: %u\n", (unsigned)check(0, "t.abs"));
        if (convert(0, "t.abs", "t.stf", *step == 'd') != NULL) return 95;
    }
    return 0;
}
