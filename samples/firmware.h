// A small firmware as its compiler and linker would know it: modules with types, functions and
// variables, and the segments they go to. `Link` places everything and gives the object file.
// Addresses, code bytes, lengths and indexes all follow from the description, so that a program
// stays coherent when a function grows.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "builder/object_builder.h"

namespace scan695::samples {

using builder::Bytes;
using builder::Memory;
using builder::Num;
using builder::TypeDef;

// What a machine's code looks like; the instructions fill the bytes between calls and returns.
struct Target {
    std::string processor;
    std::vector<Bytes> instructions;
    Bytes return_instruction;
    Bytes (*call)(uint32_t from, uint32_t to);
    Bytes (*jump)(uint32_t from, uint32_t to);
    uint32_t alignment;       // of functions and variables
    uint32_t code_memory_id;  // of public code symbols
    // Whether the compiler describes registers as living or as locked ones.
    bool living_registers = false;
};

// One source line's code. A line without bytes shares its address with the next one. A call stands
// at the line's begin. From the line on the stack stands adjusted by `stack`, -1 for no change.
struct Step {
    uint32_t line;
    uint32_t bytes;
    std::string call = {};
    int stack = -1;
};

enum Place { STACK = 1, REGISTER = 2, FIXED = 3 };

// Where a variable lives from the begin of one step to the begin of another. Without steps it lives
// there throughout and has no lifetime records.
struct Home {
    Place place;
    uint32_t value;  // register, or offset in the frame
    int from = THROUGHOUT;
    int to = END;

    static constexpr int THROUGHOUT = -1;
    static constexpr int END = -2;   // up to the function's end
    static constexpr int OPEN = -3;  // no end mark
};

struct Local {
    std::string name;
    uint32_t type;
    std::vector<Home> homes = {};  // none for a static variable
    bool parameter = false;
    std::string variable = {};  // the module's variable behind a static one
};

// An unnamed block inside a function, from one step up to another.
struct Inner {
    int from;
    int to;
    uint32_t stack;
    std::vector<Local> locals;
};

struct Function {
    std::string name;
    uint32_t type = 0;
    uint32_t stack = 0;
    std::vector<Step> steps = {};
    std::vector<Local> locals = {};
    std::vector<Inner> inner = {};
    bool is_static = false;
};

struct Variable {
    std::string name;
    uint32_t type;
    uint32_t size;
    std::string segment;
    Bytes contents = {};  // loaded when not empty
    bool is_static = false;
    bool in_function = false;  // its symbol is a function's Local
};

// What BB10 tells of an assembled module besides its functions, which become labels.
struct AsmLabel {
    std::string name;
    std::string function;
    int step;
    Bytes numbers;  // behind the attribute kind 19: memory id, 1 for global
};

struct Module {
    enum Kind { COMPILED, ASSEMBLED, LIBRARY };  // a library has public symbols only

    std::string name;
    std::string source;
    std::string code_segment;
    Kind kind = COMPILED;
    std::vector<std::string> headers = {};
    std::vector<std::pair<std::string, TypeDef>> types = {};
    std::vector<Function> functions = {};
    std::vector<Variable> variables = {};
    std::vector<AsmLabel> labels = {};
    bool compiler_record = false;  // a nameless record of the compiler leads BB3

    // Adds a type; the result is its number for references. Numbers run from 0x100.
    uint32_t Type(const std::string& type_name, const TypeDef& definition);
};

struct Segment {
    std::string name;
    Memory memory;
    int64_t base = BEHIND;
    Bytes fill = {};  // these bytes again and again take the place of contents
    uint32_t fill_count = 0;

    static constexpr int64_t BEHIND = -1;  // behind the segment in front
};

struct Vector {
    uint32_t first;
    uint32_t count;
    std::string handler;
};

struct PublicLabel {
    std::string name;
    std::string function;
    uint32_t type;
    uint32_t attribute;
};

struct Program {
    Target target;
    std::string name;
    std::vector<Segment> segments;
    std::vector<Module> modules;
    std::string vector_segment;
    uint32_t vector_size = 4;
    std::vector<Vector> vectors;
    std::vector<PublicLabel> labels;  // beside those that follow from the modules
    Bytes more_public = {};           // further records of the external part
    Bytes more_debug = {};            // blocks behind the one named after the program
    Bytes ad_attributes;
    Bytes environment_attributes;
    Bytes trailer;
};

// Throws std::runtime_error where the description does not hold together.
Bytes Link(const Program& program);

}  // namespace scan695::samples
