// A fresh store for each test, records as a scan leaves them, the console text of what is called,
// and fatal stops.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "fst/working_arrays.h"
#include "report/report.h"
#include "store/tables.h"

namespace scan695::test {

class StoreTest : public testing::Test {
  protected:
    StoreTest() { Reset(); }
    ~StoreTest() override { Reset(); }

    static void Reset() {
        FreePostProcessWork();
        Store = StoreState();
        Report = ReportState();
        ReserveFstHeader();
    }

    template <class Action>
    static std::string ConsoleOf(Action action) {
        testing::internal::CaptureStdout();
        action();
        return testing::internal::GetCapturedStdout();
    }

    static uint32_t AddName(const std::string& text) { return StoreName(text.c_str()); }

    template <class Record>
    static void Add(ChunkFile& table, uint32_t& counter, const Record& record) {
        AppendRecord(table, record);
        ++counter;
    }
    static void AddModule(const std::string& name) {
        Add(Store.ModuleTable, header.nof_modules,
            MODULEINFO{AddName(name), 0, header.nof_module_symbols, 0, header.nof_lines, 0, 0, 0});
    }
    static void AddBlock(uint32_t address, uint32_t size, int32_t parent, int32_t module) {
        Add(Store.BlockTable, header.nof_blocks,
            BLOCKINFO{address, size, parent, module, header.nof_block_symbols, 0, 1, 0});
    }
    static void AddLine(uint32_t address, uint16_t number, int32_t module) {
        Add(Store.LineTable, header.nof_lines, LINEINFO{address, module, number, 0});
    }
    static void AddCode(uint32_t address, const std::string& bytes, uint8_t mem_type = MEM_CODE) {
        const auto length = static_cast<uint32_t>(bytes.size());
        Add(Store.CodeTable, header.nof_code, CODEINFO{address, length, -1, mem_type, {}});
        AppendRecordBytes(Store.CodeTable, bytes.data(), length);
    }
    static SYMINFO NewSymbol(const std::string& name, uint32_t value, int8_t mem_type = MEM_DATA,
                             uint32_t type_index = 6) {
        ++header.nof_all_symbols;
        return {AddName(name), value, 0, -1, -1, type_index, 0, 0, mem_type, 0, 0, 0};
    }
    static void AddGlobal(const SYMINFO& symbol) {
        Add(Store.GlobalSymbolTable, header.nof_global_symbols, symbol);
    }
    static void AddOfModule(const SYMINFO& symbol) {
        Add(Store.ModuleSymbolTable, header.nof_module_symbols, symbol);
    }
    static void AddOfBlock(const SYMINFO& symbol) {
        Add(Store.BlockSymbolTable, header.nof_block_symbols, symbol);
    }

    template <class Record>
    static std::vector<Record> ReadSection(uint32_t offset, uint32_t count) {
        std::vector<Record> records(count);
        EXPECT_TRUE(Store.FstImage.ReadAt(offset, records.data(),
                                          static_cast<uint32_t>(count * sizeof(Record))));
        return records;
    }

    static inline FstHeader& header = Store.Header;
};

// The same numbers in every run.
using Random = std::independent_bits_engine<std::mt19937, 32, uint32_t>;

// In the child, the console goes where the test looks, and nobody answers.
#define EXPECT_STOP(statement, message) \
    EXPECT_EXIT((dup2(2, 1), close(0), statement), testing::ExitedWithCode(1), message)

}  // namespace scan695::test
