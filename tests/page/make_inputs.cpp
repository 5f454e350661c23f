// make_inputs FOLDER: object files for the browser test, whose programs are empty, large, and full
// of names that would be markup.

#include <filesystem>
#include <fstream>
#include <string>

#include "builder/object_builder.h"

namespace scan695 {
namespace {

using namespace builder;

constexpr uint32_t INT = 16;
constexpr uint32_t PAIR = 0x100;

void Save(const std::filesystem::path& path, const Bytes& bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

// Some code with the debug part.
Bytes Program(const Bytes& debug) {
    return Build({.segments = Segment(1, Memory::CODE, "TEXT", 0x10000, 0x40),
                  .debug = debug,
                  .data = UseSegment(1) + Load(Times(0x40, {0x90}))});
}

// 50 modules of 100 functions with a local variable and four lines each, and 800 variables, some of
// which overlap.
Bytes LargeModule(uint32_t module) {
    const std::string name = "MODULE_" + std::to_string(module);
    Indexes index;
    Bytes scopes, lines = Nn(0x46, "");
    for (uint32_t i = 0; i < 100; ++i) {
        const uint32_t begin = 0x10000 + 0x1000 * module + 32 * i;
        scopes += Bb4({.name = "function_" + std::to_string(100 * module + i),
                       .begin = begin,
                       .end = begin + 30,
                       .body = AutoVariable(index(), "local", INT, -2)});
        for (uint32_t line = 0; line < 4; ++line)
            lines += Line(0x46, 10 * i + line, begin + 4 * line);
    }
    for (uint32_t i = 0; i < 800; ++i) {
        scopes += GlobalVariable(index(), "variable_" + std::to_string(800 * module + i),
                                 i % 4 == 0 ? PAIR : INT,
                                 0x400000 + 0x2000 * module + 8 * i - (i % 100 == 99 ? 7 : 0));
    }
    return Bb1(name,
               NamedType(0x46, "pair", PAIR, def::Struct(4, {{"a", INT, 0}, {"b", INT, 2}}))) +
           Bb3(name, scopes) + Bb5(name + ".c", lines);
}

Bytes LargeProgram() {
    Bytes debug;
    for (uint32_t module = 0; module < 50; ++module) debug += LargeModule(module);
    return Program(debug);
}

Bytes MarkupProgram() {
    const char* names[] = {"</script><script>hit=1</script>", "<!--<script>",
                           "<img src=x onerror=hit=1>", "\"'&lt;\\u003c", "caf\xE9\x01"};
    Indexes index;
    Bytes scopes;
    uint32_t address = 0x2000;
    for (const char* name : names) scopes += GlobalVariable(index(), name, INT, address += 2);
    return Program(Bb1("<b>M</b>", {}) + Bb3("<b>M</b>", scopes));
}

}  // namespace
}  // namespace scan695

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    const std::filesystem::path folder = argv[1];
    scan695::Save(folder / "empty.abs", scan695::builder::Build({}));
    scan695::Save(folder / "large.abs", scan695::LargeProgram());
    scan695::Save(folder / "markup.abs", scan695::MarkupProgram());
    return 0;
}
