#include "tests/support/golden.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

namespace scan695::test {

namespace {

namespace fs = std::filesystem;

constexpr int LINES_TO_SHOW = 6;
constexpr size_t BYTES_TO_SHOW = 24;
constexpr size_t WIDTH = 100;

// False for a difference, whose new file then lies in the build folder.
bool IsGolden(const std::string& text, const std::string& name) {
    const std::vector<uint8_t> bytes(text.begin(), text.end());
    if (std::getenv("SCAN695_RENEW_GOLDEN") != nullptr) WriteWholeFile(TESTS / name, bytes);
    if (text == ReadWholeFile(TESTS / name)) return true;
    const fs::path now = fs::path(SCAN695_BINARY_DIR "/golden") / name;
    fs::create_directories(now.parent_path());
    WriteWholeFile(now, bytes);
    ADD_FAILURE() << "tests/" << name << " is another one than " << now.string();
    return false;
}

std::string HexFrom(const std::string& bytes, size_t at) {
    std::ostringstream hex;
    hex << std::hex << std::uppercase;
    for (const char c : bytes.substr(at, BYTES_TO_SHOW)) hex << (c >> 4 & 15) << (c & 15) << ' ';
    return hex.str();
}

}  // namespace

void ExpectGolden(const std::string& text, const std::string& name) {
    if (IsGolden(text, name)) return;
    std::istringstream was(ReadWholeFile(TESTS / name));
    std::istringstream now(text);
    std::string a;
    std::string b;
    int line = 1;
    while (std::getline(was, a) && std::getline(now, b) && a == b) ++line;
    ADD_FAILURE() << "from line " << line << " on, which was\n" << a << "\nit is";
    for (int i = 0; i < LINES_TO_SHOW && !b.empty(); ++i, std::getline(now, b))
        ADD_FAILURE() << b.substr(0, 2 * WIDTH);
}

void ExpectGoldenBytes(const std::string& bytes, const std::string& name) {
    if (IsGolden(bytes, name)) return;
    const std::string was = ReadWholeFile(TESTS / name);
    const auto [at, end] = std::mismatch(was.begin(), was.end(), bytes.begin(), bytes.end());
    const auto place = static_cast<size_t>(at - was.begin());
    ADD_FAILURE() << was.size() << " bytes became " << bytes.size() << "; from byte " << place
                  << " on\n"
                  << HexFrom(was, place) << "became\n"
                  << HexFrom(bytes, place);
}

std::string Folded(const std::string& stf) {
    std::string folded;
    size_t lines = 0;
    size_t column = 0;
    bool comment = false;  // what the line before is
    for (size_t at = 0; at < stf.size(); ++lines) {
        const size_t end = std::min(stf.find("\r\n", at), stf.size());
        std::string line = stf.substr(at, end - at);
        const bool new_record = folded.ends_with('}') || comment != line.starts_with("//");
        comment = line.starts_with("//");
        const std::string structure = line.substr(0, line.find("->") + 2);
        if (!new_record && (structure == "// si->" || structure == "// ti->"))
            line.erase(0, structure.size());
        if (at == 0 || new_record || column + 1 + line.size() > WIDTH) {
            folded += at == 0 ? "" : new_record ? "\n" : "\n    ";
            column = new_record ? 0 : 4;
        } else {
            folded += ' ';
            ++column;
        }
        folded += line;
        column += line.size();
        at = end + 2;
    }
    return folded + "\n" + std::to_string(lines) +
           (stf.ends_with("\r\n") ? " lines\n" : " lines, the last one cut\n");
}

}  // namespace scan695::test
