// The pieces that a conversion spends its time in: lines of the STF file, records in a table,
// numbers of the input.
#include <benchmark/benchmark.h>

#include <vector>

#include "input/cursor.h"
#include "stf/stf_stream.h"
#include "store/tables.h"

namespace scan695 {
namespace {

void OpenNowhere() {
    StartStf("/dev/null");
    Stf.file = std::fopen("/dev/null", "wb");
}

void StfLines(benchmark::State& state) {
    OpenNowhere();
    uint32_t value = 0;
    for (auto _ : state) {
        outBegin("Symbol", static_cast<int32_t>(value));
        outStr("name", "crankshaft_speed");
        outHex("address", value += 0x1234567);
        outRef("module", "Module", 7);
        outEnd();
    }
    outCloseFile();
}
BENCHMARK(StfLines);

void AppendRecords(benchmark::State& state) {
    SYMINFO record = {};
    uint32_t count = 0;
    for (auto _ : state) {
        AppendRecord(Store.GlobalSymbolTable, record);
        if (++count % 0x100000 == 0) Store.GlobalSymbolTable.Free();
    }
    Store.GlobalSymbolTable.Free();
}
BENCHMARK(AppendRecords);

void ReadRecords(benchmark::State& state) {
    constexpr uint32_t COUNT = 100000;
    SYMINFO record = {};
    for (uint32_t i = 0; i < COUNT; ++i) AppendRecord(Store.GlobalSymbolTable, record);
    uint32_t index = 0;
    for (auto _ : state) {
        ReadRecord(Store.GlobalSymbolTable, index, record);
        index = (index + 7919) % COUNT;
        benchmark::DoNotOptimize(record);
    }
    Store.GlobalSymbolTable.Free();
}
BENCHMARK(ReadRecords);

void Numbers(benchmark::State& state) {
    std::vector<uint8_t> bytes;
    for (uint32_t i = 0; i < 10000; ++i) {
        bytes.insert(bytes.end(), {0x46, 0x82, 0x12, 0x34, 0x84, 1, 2, 3, 4});
    }
    Input = InputState();
    Input.InputImage = bytes.data();
    Input.InputLength = static_cast<uint32_t>(bytes.size());
    uint32_t value = 0;
    for (auto _ : state) {
        if (BytesLeft() == 0) Input.InputCursor = 0;
        ReadNumber(value);
        benchmark::DoNotOptimize(value);
    }
    Input = InputState();
}
BENCHMARK(Numbers);

}  // namespace
}  // namespace scan695
