// Damaged files: every truncation of the samples, every change of a byte near their start. Each run
// ends well or with a message, and never with anything else.

#include <iterator>
#include <numeric>
#include <string_view>

#include "harness/in_process.h"
#include "tests/support/samples.h"
#include "tests/support/test.h"

namespace scan695::test {
namespace {

// The checked build is many times slower and tries a part of the cases; the release tries all.
#ifdef SCAN695_SANITIZED
constexpr size_t LENGTH_STEP = 7;
constexpr size_t VALUE_STEP = 37;
#else
constexpr size_t LENGTH_STEP = 1;
constexpr size_t VALUE_STEP = 1;
#endif

class Damage : public testing::TestWithParam<const char*> {
  protected:
    // Converts the bytes; false if the run neither succeeds nor stops as it should.
    bool EndsClearly(const std::vector<uint8_t>& bytes, bool debug) {
        WriteWholeFile(directory_ / "t.abs", bytes);
        std::filesystem::remove(FstFileOf(directory_ / "t.abs"));
        const Converted result =
            ConvertInProcess(directory_ / "t.abs", directory_ / "t.stf", debug);
        if (result.status == 0)
            return result.stf.ends_with("}\r\n") && debug == !result.fst.empty();
        return StoppedWith(result, "");
    }
    std::filesystem::path directory_ = ScratchDirectory();
};

TEST_P(Damage, EveryTruncation) {
    const std::vector<uint8_t> whole = SampleBytes(GetParam());
    ASSERT_FALSE(whole.empty());
    ASSERT_TRUE(EndsClearly(whole, true));
    for (size_t length = 0; length < whole.size(); length += LENGTH_STEP) {
        const std::vector<uint8_t> bytes(whole.begin(), whole.begin() + static_cast<long>(length));
        ASSERT_TRUE(EndsClearly(bytes, length % 2 == 1)) << length;
    }
}

// The values at which the readers part ways: ends of numbers, lengths and record codes, and the
// neighbours of what stands there.
std::vector<uint8_t> TellingValues(uint8_t old) {
    static constexpr uint8_t FIXED[] = {0x00, 0x01, 0x7F, 0x80, 0x84, 0x85, 0x88, 0x89, 0xF9, 0xFF};
    std::vector<uint8_t> values(std::begin(FIXED), std::end(FIXED));
    values.push_back(old ^ 1);
    values.push_back(static_cast<uint8_t>(old + 1));
    return values;
}

std::vector<uint8_t> AllValues() {
    std::vector<uint8_t> values(256);
    std::iota(values.begin(), values.end(), uint8_t{0});
    return values;
}

constexpr size_t MODULE_HEADER = 70;

TEST_P(Damage, EveryByteOfTheHead) {
    const std::vector<uint8_t> whole = SampleBytes(GetParam());
    const bool all = VALUE_STEP == 1 && GetParam() == std::string_view("296sa.abs");
    for (size_t at = 0; at < 200; ++at) {
        std::vector<uint8_t> bytes = whole;
        for (const uint8_t value :
             all&& at < MODULE_HEADER ? AllValues() : TellingValues(whole[at])) {
            bytes[at] = value;
            ASSERT_TRUE(EndsClearly(bytes, value % 2 == 1)) << at << ": " << int{value};
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Samples, Damage, testing::ValuesIn(SAMPLES));

}  // namespace
}  // namespace scan695::test
