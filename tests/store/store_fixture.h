// A fresh store for each test, the console text of what is called, and fatal stops.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "report/report.h"
#include "store/tables.h"
#include "store/working_arrays.h"

namespace scan695::test {

class StoreTest : public testing::Test {
  protected:
    StoreTest() { Reset(); }
    ~StoreTest() override { Reset(); }

    static void Reset() {
        FreePostProcessWork();
        Store = StoreState();
        Report = ReportState();
        Report.FreeWorkHook = FreePostProcessWork;
        AbortRequested = 0;
    }

    template <class Action>
    static std::string ConsoleOf(Action action) {
        testing::internal::CaptureStdout();
        action();
        std::fflush(stdout);
        return testing::internal::GetCapturedStdout();
    }

    static uint32_t AddName(const std::string& text) {
        std::vector<char> buffer(text.c_str(), text.c_str() + text.size() + 1);
        return StoreName(buffer.data());
    }

    template <class Record>
    static std::vector<Record> ReadSection(uint32_t offset, uint32_t count) {
        std::vector<Record> records(count);
        if (count == 0) return records;
        EXPECT_EQ(Store.FstImage.Seek(offset, ChunkFile::FROM_START), 1);
        Store.FstImage.Read(records.data(), static_cast<int32_t>(count * sizeof(Record)));
        return records;
    }
    static std::vector<uint32_t> ReadIndex(uint32_t offset, uint32_t count) {
        return ReadSection<uint32_t>(offset, count);
    }
};

// The same numbers in every run.
class Random {
  public:
    explicit Random(uint32_t seed) : engine_(seed) {}
    uint32_t operator()() { return static_cast<uint32_t>(engine_()); }

  private:
    std::mt19937 engine_;
};

// In the child of a death test: the console goes where the test looks, and nobody answers.
inline void PrepareToStop() {
    dup2(2, 1);
    if (std::freopen("/dev/null", "r", stdin) == nullptr) std::abort();
}

#define EXPECT_STOP(statement, message)       \
    EXPECT_EXIT(                              \
        {                                     \
            ::scan695::test::PrepareToStop(); \
            statement;                        \
        },                                    \
        testing::ExitedWithCode(1), message)

}  // namespace scan695::test
