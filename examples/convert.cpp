// convert FILE OUT: the library from C++.
#include <scan695.h>

#include <iostream>

int main(int argc, char** argv) {
    if (argc != 3 || Check(0, argv[1]) == 0) return 2;
    const char* error = Convert(0, argv[1], argv[2], 0);
    if (error != nullptr) std::cerr << error << '\n';
    return error != nullptr ? 1 : 0;
}
