// The lookup of functions by address against a walk over all blocks.
#include "scopes/function_map.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "report/report.h"
#include "store/tables.h"

namespace scan695 {
namespace {

int32_t FirstBlockAt(const std::vector<BLOCKINFO>& blocks, uint32_t address) {
    for (size_t i = 0; i < blocks.size(); ++i) {
        const BLOCKINFO& block = blocks[i];
        if (block.is_function != 0 && block.address <= address &&
            address < block.address + block.size)
            return static_cast<int32_t>(i);
    }
    return -1;
}

// Blocks that overlap, touch, nest, wrap around, and come between the questions.
TEST(FunctionMap, FindsTheFirstBlock) {
    std::mt19937 random(695);
    for (int round = 0; round < 300; ++round) {
        Report.DebugMode = round % 2;
        StartStore();
        FunctionMap map;
        std::vector<BLOCKINFO> blocks;
        const uint32_t base = round % 3 == 0 ? 0xFFFFFFE0U : 0x1000U;
        for (int i = 0; i < 40; ++i) {
            BLOCKINFO block = {};
            block.address = base + static_cast<uint32_t>(random() % 64);
            block.size = static_cast<uint32_t>(random() % 16);
            block.is_function = random() % 4 != 0;
            AppendRecord(Store.BlockTable, block);
            map.AddBlock();
            if (block.is_function != 0)
                map.SetSpan(static_cast<uint32_t>(i), block.address, block.size);
            blocks.push_back(block);
            if (random() % 3 != 0) continue;
            for (uint32_t at = 0; at < 84; ++at)
                ASSERT_EQ(map.Find(base + at - 2), FirstBlockAt(blocks, base + at - 2));
        }
    }
    Report.DebugMode = 0;
}

}  // namespace
}  // namespace scan695
