/* A host in C: converts the samples through the two exported functions. */
#include <scan695.h>
#include <stdio.h>
#include <string.h>

static int convert(const char* directory, const char* name, uint32_t checked, const char* stf) {
    char path[1024];
    snprintf(path, sizeof path, "%s/%s", directory, name);
    if (Check(7, path) != checked) return printf("Check of %s\n", path);
    const char* result = Convert(7, path, stf, 0);
    if (result != NULL) return printf("%s: %s\n", path, result);
    FILE* file = fopen(stf, "rb");
    char line[64] = "";
    if (file == NULL || fgets(line, sizeof line, file) == NULL) return printf("no %s\n", stf);
    fclose(file);
    return strcmp(line, "Attrib.0{\r\n") == 0 ? 0 : printf("%s begins: %s\n", stf, line);
}

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    return convert(argv[1], "c166.abs", 1, argv[2]) != 0 ||
           convert(argv[1], "tricore.abs", 1, argv[2]) != 0 ||
           convert(argv[1], "296sa.abs", 0, argv[2]) != 0 || Check(0, "no such file") != 0 ||
           Check(0, NULL) != 0;
}
