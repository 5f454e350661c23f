/* convert FILE OUT: the library from C. */
#include <scan695.h>
#include <stdio.h>

int main(int argc, char** argv) {
    if (argc != 3 || !Check(0, argv[1])) return 2;
    const char* error = Convert(0, argv[1], argv[2], 0);
    if (error != NULL) fprintf(stderr, "%s\n", error);
    return error != NULL;
}
