#include "dwarf/lines.h"

#include "dwarf/constants.h"

namespace scan695::dwarf {

namespace {

// Special operations advance the line by LINE_BASE and up to LINE_RANGE - 1 more, and the address
// with each LINE_RANGE of the number by one byte.
constexpr int LINE_BASE = -5;
constexpr int LINE_RANGE = 14;
constexpr int FIRST_SPECIAL = 13;
constexpr uint8_t STANDARD_OPERANDS[FIRST_SPECIAL - 1] = {0, 1, 1, 1, 1, 0, 0, 0, 1, 0, 0, 1};

void PutHeader(Bytes& out, std::string_view file) {
    const size_t header = out.size();
    Put32(out, 0);
    const size_t begin = out.size();
    Put8(out, 1);  // bytes of the smallest instruction: addresses advance by bytes
    Put8(out, 1);  // operations in an instruction
    Put8(out, 1);  // every row begins a statement
    Put8(out, static_cast<uint8_t>(LINE_BASE));
    Put8(out, LINE_RANGE);
    Put8(out, FIRST_SPECIAL);
    for (const uint8_t operands : STANDARD_OPERANDS) Put8(out, operands);
    Put8(out, 0);  // no directories
    PutText(out, file.empty() ? "?" : file);
    Put8(out, 0);  // of directory, time and length nothing is known
    Put8(out, 0);
    Put8(out, 0);
    Put8(out, 0);  // no more files
    Set32(out, header, static_cast<uint32_t>(out.size() - begin));
}

void PutExtended(Bytes& out, LineOperation operation, uint32_t operand_size) {
    Put8(out, 0);
    PutUleb(out, operand_size + 1);
    Put8(out, operation);
}

// The registers of the machine that runs the program.
struct Machine {
    Bytes& out;
    uint64_t address = 0;
    int line = 1;

    void Begin(uint32_t first) {
        PutExtended(out, LNE_SET_ADDRESS, ADDRESS_SIZE);
        Put32(out, first);
        address = first;
        line = 1;
    }
    void Add(const Row& row) {
        const int lines = row.line - line;
        const uint64_t bytes = row.address - address;
        const bool is_near = lines >= LINE_BASE && lines < LINE_BASE + LINE_RANGE;
        const uint64_t special = static_cast<uint64_t>(is_near ? lines - LINE_BASE : 0) +
                                 LINE_RANGE * bytes + FIRST_SPECIAL;
        if (is_near && bytes < 256 && special < 256) {
            Put8(out, static_cast<unsigned>(special));
        } else {
            Put8(out, LNS_ADVANCE_LINE);
            PutSleb(out, lines);
            Advance(row.address);
            Put8(out, LNS_COPY);
        }
        address = row.address;
        line = row.line;
    }
    void End(uint64_t end) {
        Advance(end);
        PutExtended(out, LNE_END_SEQUENCE, 0);
    }
    void Advance(uint64_t to) {
        Put8(out, LNS_ADVANCE_PC);
        PutUleb(out, to - address);
    }
};

}  // namespace

uint32_t AppendLineProgram(Bytes& out, const CodeMap& map, uint32_t unit, std::string_view file) {
    const uint32_t offset = Size32(out);
    Put32(out, 0);
    Put16(out, VERSION);
    PutHeader(out, file);
    Machine machine{out};
    const Row* before = nullptr;
    for (const uint32_t number : map.unit_rows[unit]) {
        const Row& row = map.rows[number];
        if (before == nullptr || before->end != row.address) {
            if (before != nullptr) machine.End(before->end);
            machine.Begin(row.address);
        }
        machine.Add(row);
        before = &row;
    }
    if (before != nullptr) machine.End(before->end);
    SetLength(out, offset);
    return offset;
}

}  // namespace scan695::dwarf
