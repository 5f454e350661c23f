// Stands in for elf_file.cpp where there is no libelf.
#include "elf/elf_file.h"

namespace scan695::elf {

const char* WhyNot() {
    return "this build of scan695 has no ELF writer: libelf was missing when it was built";
}

bool Write(const inspector::Fst&, int, std::string& error) {
    error = WhyNot();
    return false;
}

}  // namespace scan695::elf
