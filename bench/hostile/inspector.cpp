// FST files for the inspector and those who answer questions by it: records that share what they
// point to, as many as the file has room for.
#include <cstring>

#include "bench/hostile/hostile.h"
#include "store/records.h"

namespace scan695::bench {

namespace {

using builder::Bytes;

constexpr uint32_t LIST = 4095;      // elements, the most that are stored
constexpr uint32_t CODE = 0x40000;   // bytes of an image
constexpr uint32_t CODE_BLOCK = 16;  // bytes of one of its blocks

class FstFile {
  public:
    FstFile() {
        std::memcpy(header.magic, "FSTA", sizeof header.magic);
        Add(header);
    }

    // Gives the offset.
    template <class Record>
    uint32_t Add(const Record& record) {
        const auto offset = static_cast<uint32_t>(bytes_.size());
        bytes_.Append(reinterpret_cast<const uint8_t*>(&record), sizeof record);
        return offset;
    }
    // An index of records that stand in order.
    uint32_t AddIndex(uint32_t count) {
        const auto offset = static_cast<uint32_t>(bytes_.size());
        for (uint32_t i = 0; i < count; ++i) Add(i);
        return offset;
    }
    Bytes Finish() {
        Bytes whole;
        whole.Append(reinterpret_cast<const uint8_t*>(&header), sizeof header);
        whole.Append(bytes_.data() + sizeof header, bytes_.size() - sizeof header);
        return whole;
    }

    FstHeader header = {};

  private:
    Bytes bytes_;
};

// Structs without a tag whose members are structs of the same kind; list `i` begins `step` bytes
// behind the one before.
Bytes Structs(uint32_t count, uint32_t step) {
    FstFile file;
    const uint32_t no_name = file.Add(uint32_t{0});
    const uint32_t name = file.Add(uint32_t{'m'});
    const uint32_t lists = name + uint32_t{sizeof name};
    const uint32_t elements = LIST + count * step / uint32_t{sizeof(FIELDINFO)};
    for (uint32_t i = 0; i <= elements; ++i)
        file.Add(FIELDINFO{i, name, FIRST_TYPE_INDEX + i % count, 0});
    for (uint32_t i = 0; i < count; ++i) {
        TYPEINFO type = {FIRST_TYPE_INDEX + i, TAG_STRUCT, {}, {}};
        type.u.structunion = {no_name, 16, lists + i * step, LIST, 0};
        const uint32_t offset = file.Add(type);
        if (i == 0) file.header.types_offs = offset;
    }
    file.header.nof_types = count;
    file.header.type_index_offs = file.AddIndex(count);
    return file.Finish();
}
Bytes StructsWithOneList(uint32_t count) {
    return Structs(count, 0);
}
Bytes StructsWithListsOverOneAnother(uint32_t count) {
    return Structs(count, 16);
}

// Global symbols of one name and with the same locations, each of them as large as the image, which
// is made of small blocks.
Bytes SymbolsOverOneAnother(uint32_t count) {
    FstFile file;
    const uint32_t name = file.Add(uint32_t{'s'});
    const uint32_t locations = name + uint32_t{sizeof name};
    for (uint32_t i = 0; i < LIST; ++i) file.Add(LOCINFO{i, STORAGE_AUTO, MEM_DATA, 0, 1, 0, i});
    for (uint32_t i = 0; i < count; ++i) {
        const uint32_t offset = file.Add(SYMINFO{.name_offs = name,
                                                 .value = i,
                                                 .size = CODE,
                                                 .module = -1,
                                                 .block = -1,
                                                 .type_index = TYPE_INT,
                                                 .access_mode = ACCESS_HAS_LOCATIONS,
                                                 .storage_class = STORAGE_GLOBAL,
                                                 .mem_type = MEM_DATA,
                                                 .nof_locs = LIST,
                                                 .reserved = 0,
                                                 .locinfo_offs = locations});
        if (i == 0) file.header.symbols_offs = offset;
    }
    file.header.nof_all_symbols = count;
    file.header.nof_global_symbols = count;
    file.header.symbol_addr_index_offs = file.AddIndex(count);
    file.header.symbol_name_index_offs = file.AddIndex(count);
    for (uint32_t i = 0; i < CODE / CODE_BLOCK; ++i) {
        const uint32_t offset =
            file.Add(CODEINFO{2 * i * CODE_BLOCK, CODE_BLOCK, -1, MEM_DATA, {}});
        for (uint32_t j = 0; j < CODE_BLOCK; ++j) file.Add(static_cast<uint8_t>(i * j));
        if (i == 0) file.header.code_offs = offset;
    }
    file.header.nof_code = CODE / CODE_BLOCK;
    return file.Finish();
}

constexpr HostileCase CASES[] = {
    {"FST: structs with one list", StructsWithOneList, 30000, false, true},
    {"FST: structs, lists over lists", StructsWithListsOverOneAnother, 20000, false, true},
    {"FST: symbols over one another", SymbolsOverOneAnother, 10000, false, true},
};

}  // namespace

std::span<const HostileCase> HostileFst() {
    return CASES;
}

}  // namespace scan695::bench
