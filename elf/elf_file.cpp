#include "elf/elf_file.h"

#include <libelf.h>

#include <algorithm>
#include <cstdio>
#include <memory>

#include "dwarf/emit.h"
#include "dwarf/program.h"
#include "dwarf/strings.h"
#include "elf/image.h"
#include "elf/symbols.h"

namespace scan695::elf {

namespace {

constexpr Elf32_Half MACHINE_TRICORE = 44;
constexpr Elf32_Half MACHINE_C166 = 116;
// Section numbers from SHN_LORESERVE on have a meaning of their own; some are left for other uses.
constexpr size_t MAX_STRETCHES = SHN_LORESERVE - 256;

// libelf failed; its own words tell why.
struct ElfFailure {};

template <class T>
T* Must(T* pointer) {
    if (pointer == nullptr) throw ElfFailure();
    return pointer;
}

// What is written must stay in memory until the end, since libelf refers to it.
struct Contents {
    std::vector<Stretch> image;
    std::vector<Symbol> symbols;
    std::vector<dwarf::Section> debug;
    std::vector<Elf32_Sym> symbol_table;
    dwarf::StringTable symbol_names;
    dwarf::StringTable section_names;
};

struct MemoryLook {
    uint8_t memory;
    const char* name;
    Elf32_Word section_flags;
    Elf32_Word segment_flags;
};

constexpr MemoryLook MEMORIES[] = {
    {MEM_CODE, ".text", SHF_ALLOC | SHF_EXECINSTR, PF_R | PF_X},
    {MEM_DATA, ".data", SHF_ALLOC | SHF_WRITE, PF_R | PF_W},
};
constexpr MemoryLook OTHER_MEMORY = {MEM_UNKNOWN, ".memory", SHF_ALLOC, PF_R};

const MemoryLook& LookOf(uint8_t memory) {
    for (const MemoryLook& look : MEMORIES) {
        if (look.memory == memory) return look;
    }
    return OTHER_MEMORY;
}

// As in ".text.00000200", or ".memory6.00002018" for a memory that has no name.
std::string SectionName(const Stretch& stretch) {
    const MemoryLook& look = LookOf(stretch.memory);
    const bool is_other = look.memory != stretch.memory || &look == &OTHER_MEMORY;
    char text[32];
    std::snprintf(text, sizeof text, "%s%s.%08x", look.name,
                  is_other ? std::to_string(stretch.memory).c_str() : "", stretch.address);
    return text;
}

void AddData(Elf_Scn* section, const void* bytes, size_t size, Elf_Type type) {
    Elf_Data* data = Must(elf_newdata(section));
    data->d_buf = const_cast<void*>(bytes);
    data->d_size = size;
    data->d_type = type;
    data->d_align = type == ELF_T_SYM ? 4 : 1;
    data->d_version = EV_CURRENT;
}

// Gives the number of the section, whose header starts as `header`.
size_t AddSection(Elf* elf, Contents& contents, const std::string& name, Elf32_Shdr header) {
    Elf_Scn* section = Must(elf_newscn(elf));
    header.sh_name = contents.section_names.Offset(name);
    *Must(elf32_getshdr(section)) = header;
    return elf_ndxscn(section);
}

void AddBytes(Elf* elf, Contents& contents, const std::string& name, Elf32_Shdr header,
              const dwarf::Bytes& bytes) {
    header.sh_addralign = 1;
    const size_t number = AddSection(elf, contents, name, header);
    AddData(Must(elf_getscn(elf, number)), bytes.data(), bytes.size(), ELF_T_BYTE);
}

void AddImage(Elf* elf, Contents& contents, const inspector::Fst& fst) {
    for (const Stretch& stretch : contents.image) {
        Elf32_Shdr header = {};
        header.sh_type = SHT_PROGBITS;
        header.sh_flags = LookOf(stretch.memory).section_flags;
        header.sh_addr = stretch.address;
        header.sh_addralign = 1;
        const size_t number = AddSection(elf, contents, SectionName(stretch), header);
        for (const Piece& piece : stretch.pieces) {
            AddData(Must(elf_getscn(elf, number)), fst.bytes.data() + piece.offset, piece.size,
                    ELF_T_BYTE);
        }
    }
}

void AddDebugSections(Elf* elf, Contents& contents) {
    for (const dwarf::Section& debug : contents.debug) {
        Elf32_Shdr header = {};
        header.sh_type = SHT_PROGBITS;
        if (debug.is_text) {
            header.sh_flags = SHF_MERGE | SHF_STRINGS;
            header.sh_entsize = 1;
        }
        AddBytes(elf, contents, debug.name, header, debug.bytes);
    }
}

Elf32_Sym EncodeSymbol(Contents& contents, const Symbol& symbol) {
    constexpr unsigned char TYPES[] = {STT_NOTYPE, STT_OBJECT, STT_FUNC, STT_FILE};
    const unsigned char binding = symbol.is_global ? STB_GLOBAL : STB_LOCAL;
    Elf32_Sym encoded = {};
    encoded.st_name = contents.symbol_names.Offset(symbol.name);
    encoded.st_value = symbol.value;
    encoded.st_size = symbol.size;
    encoded.st_info =
        static_cast<unsigned char>(ELF32_ST_INFO(binding, TYPES[static_cast<size_t>(symbol.type)]));
    // The stretches are the first sections, from 1 on.
    encoded.st_shndx = symbol.stretch == NO_STRETCH
                           ? static_cast<Elf32_Section>(SHN_ABS)
                           : static_cast<Elf32_Section>(symbol.stretch + 1);
    return encoded;
}

void AddSymbols(Elf* elf, Contents& contents) {
    Elf32_Shdr header = {};
    header.sh_type = SHT_SYMTAB;
    header.sh_entsize = sizeof(Elf32_Sym);
    header.sh_addralign = 4;
    contents.symbol_table.push_back({});
    for (const Symbol& symbol : contents.symbols) {
        contents.symbol_table.push_back(EncodeSymbol(contents, symbol));
        if (!symbol.is_global)
            header.sh_info = static_cast<Elf32_Word>(contents.symbol_table.size());
    }
    if (header.sh_info == 0) header.sh_info = 1;  // the first symbol is none
    const size_t number = AddSection(elf, contents, ".symtab", header);
    Elf_Scn* section = Must(elf_getscn(elf, number));
    AddData(section, contents.symbol_table.data(), contents.symbol_table.size() * sizeof(Elf32_Sym),
            ELF_T_SYM);
    Must(elf32_getshdr(section))->sh_link = static_cast<Elf32_Word>(number + 1);

    Elf32_Shdr strings = {};
    strings.sh_type = SHT_STRTAB;
    AddBytes(elf, contents, ".strtab", strings, contents.symbol_names.bytes());
}

// Last of all, when the names of all sections are known.
void AddSectionNames(Elf* elf, Contents& contents) {
    contents.section_names.Offset(".shstrtab");
    Elf32_Shdr strings = {};
    strings.sh_type = SHT_STRTAB;
    AddBytes(elf, contents, ".shstrtab", strings, contents.section_names.bytes());
    Elf32_Ehdr* header = Must(elf32_getehdr(elf));
    size_t count = 0;
    if (elf_getshdrnum(elf, &count) != 0) throw ElfFailure();
    header->e_shstrndx = static_cast<Elf32_Half>(count - 1);
}

void AddHeader(Elf* elf, const dwarf::Program& program) {
    Elf32_Ehdr* header = Must(elf32_newehdr(elf));
    header->e_ident[EI_DATA] = ELFDATA2LSB;
    header->e_type = ET_EXEC;
    header->e_machine =
        program.fst.header.processor == PROCESSOR_TRICORE ? MACHINE_TRICORE : MACHINE_C166;
    header->e_version = EV_CURRENT;
    header->e_entry = EntryAddress(program);
}

// Places in the file are known behind the first update.
void FillProgramHeaders(Elf* elf, const Contents& contents, Elf32_Phdr* headers) {
    for (size_t i = 0; i < contents.image.size(); ++i) {
        const Elf32_Shdr* section = Must(elf32_getshdr(Must(elf_getscn(elf, i + 1))));
        Elf32_Phdr& header = headers[i];
        header.p_type = PT_LOAD;
        header.p_offset = section->sh_offset;
        header.p_vaddr = header.p_paddr = section->sh_addr;
        header.p_filesz = header.p_memsz = section->sh_size;
        header.p_flags = LookOf(contents.image[i].memory).segment_flags;
        header.p_align = 1;
    }
}

void WriteElf(Elf* elf, const dwarf::Program& program, Contents& contents) {
    AddHeader(elf, program);
    // Without a segment it would be no sound executable: one of an empty image says nothing.
    Elf32_Phdr* segments = Must(elf32_newphdr(elf, std::max<size_t>(contents.image.size(), 1)));
    AddImage(elf, contents, program.fst);
    AddDebugSections(elf, contents);
    AddSymbols(elf, contents);
    AddSectionNames(elf, contents);
    if (elf_update(elf, ELF_C_NULL) < 0) throw ElfFailure();
    FillProgramHeaders(elf, contents, segments);
    elf_flagphdr(elf, ELF_C_SET, ELF_F_DIRTY);
    if (elf_update(elf, ELF_C_WRITE) < 0) throw ElfFailure();
}

}  // namespace

const char* WhyNot() {
    return nullptr;
}

bool Write(const inspector::Fst& fst, int descriptor, std::string& error) {
    const dwarf::Program program = dwarf::ReadProgram(fst);
    Contents contents;
    contents.image = BuildImage(fst);
    if (contents.image.size() > MAX_STRETCHES) {
        error = "more stretches of code and data than an ELF file has sections for";
        return false;
    }
    contents.symbols = BuildSymbols(program, contents.image);
    contents.debug = dwarf::Emit(program);

    elf_version(EV_CURRENT);
    const std::unique_ptr<Elf, int (*)(Elf*)> elf(elf_begin(descriptor, ELF_C_WRITE, nullptr),
                                                  elf_end);
    try {
        WriteElf(Must(elf.get()), program, contents);
        return true;
    } catch (const ElfFailure&) {
        error = elf_errmsg(-1);
        return false;
    }
}

}  // namespace scan695::elf
