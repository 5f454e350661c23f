#include "scopes/source_names.h"

#include <cstring>

#include "store/records.h"

namespace scan695 {

bool IsCName(const char* path) {
    return std::strstr(path, ".c") != nullptr || std::strstr(path, ".C") != nullptr;
}

char* BaseName(char* path) {
    char* name = path;
    for (; *path != '\0'; ++path)
        if (*path == '\\' || *path == '/') name = path + 1;
    return name;
}

char* ModuleNameOf(char* path) {
    path[std::strcspn(path, ".")] = '\0';
    char* name = BaseName(path);
    if (std::strlen(name) > MAX_NAME_LENGTH) name[MAX_NAME_LENGTH] = '\0';
    return name;
}

}  // namespace scan695
