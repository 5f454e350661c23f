// All run state of the STF writers: the file and its text buffer, the numbers of the records, and
// what the scan tells the writers of records to come.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace scan695 {

// What a load record lays down: the same bytes `repeats` times, one behind the other. Neither
// number is 0. Chunks that would start at or behind the end of the address space are a stretch of
// their own.
struct CodeStretch {
    uint32_t address;
    uint32_t size;
    uint32_t repeats;
    uint32_t offset;  // of the bytes, in the image of the input
    int8_t mem_type;
};

// A type record's ordinal and the type index that stands in for it in type references.
struct TypeAlias {
    uint32_t number;
    uint32_t target;
};

struct StfState {
    static constexpr uint32_t PAYLOAD = 0x40000;  // bytes of a full block
    static constexpr uint32_t SPARE = 500;        // no line is longer than this

    std::string FileName = "test.stf";
    std::FILE* file = nullptr;
    uint32_t position = 0;  // next free byte of StfText

    // 1 behind the CPU Attrib of a C166: registers have codes of their own, enumerations are small,
    // and the start-up code has another name.
    uint32_t C166Flag = 0;

    int32_t AttribCounter = 0;   // number of the next Attrib record
    int32_t SymbolCounter = 0;   // of the next Symbol record
    int32_t RangeCounter = 0;    // of the next Range record
    int32_t SourceCounter = -1;  // of the last Source record
    int32_t MemberCounter = 0;   // of the next Member record, over the whole file

    int32_t SourceDepth = 0;  // open source files of a known module
    int32_t StackAdjust = 0;  // added to the stack offset of every auto that is written

    std::vector<TypeAlias> TypeAliasTable;  // in the order of the numbers
    std::vector<CodeStretch> code;          // in the order of the input, then sorted
};
extern StfState Stf;

// The text buffer. What stands behind Stf.position means nothing.
extern char StfText[StfState::PAYLOAD + StfState::SPARE];

inline void SetStackAdjust(uint32_t value) {
    Stf.StackAdjust = static_cast<int32_t>(value);
}

// Starts a run, which writes to the file at `path`. Closes what a run that stopped has left open.
void StartStf(const char* path);

}  // namespace scan695
