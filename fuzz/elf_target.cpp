// The ELF writer behind the inspector: image, symbols, entry address and debug information of any
// bytes that open as an FST file. What is made is thrown away; the bytes of the ELF file itself are
// libelf's work.
#include "dwarf/emit.h"
#include "elf/image.h"
#include "elf/symbols.h"
#include "fuzz/target.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace scan695;
    inspector::Fst fst;
    std::string error;
    if (!inspector::Parse({data, data + size}, fst, error)) return 0;
    const dwarf::Program program = dwarf::ReadProgram(fst);
    const std::vector<elf::Stretch> image = elf::BuildImage(fst);
    for (const elf::Stretch& stretch : image) {
        uint64_t sum = 0;
        for (const elf::Piece& piece : stretch.pieces) {
            sum += piece.size;
            if (piece.offset + piece.size > fst.bytes.size())
                fuzz::Broken("pieces lie in the file");
        }
        if (sum != stretch.size) fuzz::Broken("pieces make up their stretch");
    }
    elf::BuildSymbols(program, image);
    elf::EntryAddress(program);
    dwarf::Emit(program);
    return 0;
}
