#include "fuzz/random_program.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "builder/object_builder.h"

namespace scan695::fuzz {
namespace {

using namespace builder;

constexpr uint32_t FIRST_USER_TYPE = 0x100;

struct PublicName {
    std::string name;
    uint32_t address;
    bool is_code;
};

struct Function {
    std::string name;
    uint32_t begin;
    uint32_t size;
    std::vector<uint32_t> steps;  // addresses of its lines
};

// One program in the making. Modules of code and data follow one another in memory.
class Maker {
  public:
    explicit Maker(Random& random) : random_(random) {
        constexpr const char* PROCESSORS[] = {"80166", "80166", "296sa_e", "296sa_c",
                                              "TRI",   "TRI",   "tricore"};
        file_.processor = PROCESSORS[Pick(std::size(PROCESSORS))];
        const uint32_t bases[] = {0, 0x200, 0x1000, 0x18000, 0xA0000000, 0xFFFF8000};
        code_ = code_base_ = bases[Pick(std::size(bases))];
        data_ = data_base_ = Pick(3) == 0 ? 0xD0000000 : 0x4000 + Pick(64) * 0x100;
    }

    ObjectFile Make();

  private:
    uint32_t Pick(size_t limit) { return Below(random_, limit); }
    bool OneIn(uint32_t count) { return Pick(count) == 0; }
    template <typename T>
    T OneOf(std::initializer_list<T> values) {
        return values.begin()[Pick(values.size())];
    }

    std::string Name(const char* stem);
    uint32_t Type();
    uint32_t Known();
    uint32_t Register();

    TypeDef Nested(int depth);
    std::vector<Member> Members(int depth);
    std::vector<Member> Bitfields();
    TypeDef Bits();
    TypeDef EnumType();
    TypeDef FunctionTypeOf(int depth);
    TypeDef Definition(int depth);
    Bytes Types();

    Bytes Lifetimes(uint32_t idx, const Function& function);
    Bytes Local(const Function& function);
    Bytes Locals(const Function& function, int depth);
    Bytes Variable();
    Bytes FunctionScope();
    Bytes LinesOf(const std::string& name);
    Bytes Sections();
    Bytes AsmSymbols();
    void CompiledModule(const std::string& name);
    void AssembledModule(const std::string& name);

    Bytes Loads(uint32_t segment, uint32_t base, uint32_t end);
    Bytes RandomBytes(uint32_t count);
    void MemoryParts();
    void ExternalPart();
    void Attributes();

    Random& random_;
    ObjectFile file_;
    uint32_t code_base_;
    uint32_t data_base_;
    uint32_t code_;
    uint32_t data_;
    Indexes index_;
    uint32_t types_begin_ = FIRST_USER_TYPE;  // of the module
    uint32_t types_end_ = FIRST_USER_TYPE;
    std::vector<uint32_t> known_;      // types of the module so far
    std::vector<Function> functions_;  // of the module
    std::vector<PublicName> publics_;
};

// Some names repeat, some are long, some are no ASCII.
std::string Maker::Name(const char* stem) {
    std::string name = stem + std::to_string(Pick(OneIn(4) ? 4 : 1000));
    if (OneIn(20)) name.append(Pick(100), 'x');
    if (OneIn(40)) name += OneOf({"\xE4", "\\", "\"", "_", " ", "\x01"});
    if (OneIn(20)) name = "_" + name;
    return name;
}

uint32_t Maker::Type() {
    const uint32_t user = types_end_ - types_begin_;
    if (user == 0 || OneIn(3)) return Pick(OneIn(10) ? 75 : 28);
    return types_begin_ + Pick(user + (OneIn(500) ? 2 : 0));
}

// What other names and attributes need: a type that has come already, now and then any.
uint32_t Maker::Known() {
    if (OneIn(200)) return Type();
    return known_.empty() || OneIn(4) ? Pick(28) : known_[Pick(known_.size())];
}

uint32_t Maker::Register() {
    return OneOf({0x1000U, 0x2000U, 0x4000U}) + Pick(0x200);
}

TypeDef Maker::Nested(int depth) {
    if (depth > 2 || !OneIn(5)) return Type();
    return Definition(depth + 1);
}

std::vector<Member> Maker::Members(int depth) {
    std::vector<Member> members;
    uint32_t offset = 0;
    for (uint32_t count = Pick(OneIn(50) ? 300 : 8); count > 0; --count) {
        members.push_back({Name("m"), Nested(depth), offset});
        offset += OneIn(8) ? 0 : 1 + Pick(4);
    }
    return members;
}

std::vector<Member> Maker::Bitfields() {
    std::vector<Member> members;
    uint32_t bit = 0;
    for (uint32_t count = 1 + Pick(10); count > 0; --count) {
        const uint32_t width = 1 + Pick(OneIn(4) ? 32 : 8);
        const TypeDef type = OneIn(6) ? TypeDef(Type()) : def::Bitfield(Pick(2), width);
        members.push_back({Name("b"), type, bit});
        bit += OneIn(10) ? Pick(40) : width;
    }
    return members;
}

TypeDef Maker::EnumType() {
    std::vector<EnumItem> items;
    for (uint32_t count = 1 + Pick(6); count > 0; --count)
        items.push_back({Name("E"), OneIn(4) ? Pick(0x10000) : Pick(9)});
    return def::Enum(items, EnumSize(static_cast<uint8_t>(OneOf({0, 1, 1, 2, 4}))));
}

TypeDef Maker::FunctionTypeOf(int depth) {
    FunctionType function = {.returns = Nested(depth), .attributes = OneOf({8, 0x48, 2, 0x22})};
    for (uint32_t count = OneIn(2) ? 0 : Pick(4); count > 0; --count)
        function.parameters.push_back(Nested(depth));
    function.push_mask = Pick(0x340);
    if (depth > 0) function.father = 0;  // the number behind would be taken for it
    return def::Function(function);
}

TypeDef Maker::Definition(int depth) {
    switch (Pick(14)) {
        case 0:
        case 1:
            return def::Struct(Pick(40), Members(depth));
        case 2:
            return def::Struct(1 + Pick(8), Bitfields());
        case 3:
            return def::Union(Pick(12), Members(depth));
        case 4:
            return EnumType();
        case 5:
            return def::Array(Nested(depth), OneIn(10) ? Pick(70000) : Pick(20));
        case 6:
            return def::SmallPointer(Nested(depth));
        case 7:
            return def::LargePointer(Nested(depth));
        case 8:
            return def::PointerAttribute(3, Known(), Pick(3));
        case 9:
            return def::Qualified(Pick(5), Known());
        case 10:
            return def::Typedef(Known());
        case 11:
            return def::OtherTypedef(Known());
        case 12:
            return def::Bitfield(Pick(2), 1 + Pick(16));
        default:
            return FunctionTypeOf(depth);
    }
}

// The numbers of types run on, or begin anew in each module; many are referred to before they come.
Bytes Maker::Types() {
    types_begin_ = OneIn(2) ? types_end_ : FIRST_USER_TYPE;
    const uint32_t count = Pick(OneIn(10) ? 120 : 20);
    types_end_ = types_begin_ + count;
    std::vector<uint32_t> numbers;
    for (uint32_t i = 0; i < count; ++i) numbers.push_back(types_begin_ + i);
    if (OneIn(4)) std::shuffle(numbers.begin(), numbers.end(), random_);
    Bytes body;
    if (OneIn(2)) body += NamedType(index_(), "bit", types_end_++, def::Bitfield(0, 1));
    known_.clear();
    for (const uint32_t number : numbers) {
        body += NamedType(index_(), OneIn(4) ? "" : Name("t"), number, Definition(0));
        known_.push_back(number);
    }
    return body;
}

Bytes Maker::Lifetimes(uint32_t idx, const Function& function) {
    Bytes marks;
    uint32_t end = function.begin + function.size;
    for (uint32_t count = OneIn(3) ? 0 : 1 + Pick(3); count > 0 && end > function.begin; --count) {
        const uint32_t storage = 1 + Pick(OneIn(8) ? 3 : 2);
        const uint32_t begin = function.begin + Pick(end - function.begin);
        const Num place = storage == 1 ? Num(-2 * static_cast<int>(Pick(9))) : Num(Register());
        if (OneIn(12))
            marks += LifetimeMark(idx, begin, storage, place);
        else if (OneIn(12))
            marks += LifetimeMark(idx, begin, storage | END_MARK, place);
        else
            marks += Lifetime(idx, begin, end, storage, place);
        end = OneIn(4) ? begin + Pick(3) : begin;
    }
    return marks;
}

Bytes Maker::Local(const Function& function) {
    const uint32_t idx = index_();
    const std::string name = OneIn(30) ? "" : Name("v");
    Bytes local;
    switch (Pick(6)) {
        case 0:
        case 1:
            local = AutoVariable(idx, name, Type(), -static_cast<int>(Pick(40)));
            break;
        case 2:
            local = LivingRegister(idx, name, Type(), Register());
            break;
        case 3:
            local = StaticVariable(idx, name, Type(), data_ + Pick(100), Pick(9));
            break;
        default:
            local = LockedRegister(idx, name, Type(), Register(), Pick(2));
    }
    if (OneIn(4)) local += ParameterMark(idx);
    return local + Lifetimes(idx, function);
}

Bytes Maker::Locals(const Function& function, int depth) {
    Bytes body;
    for (uint32_t count = depth < 3 && function.size > 4 ? Pick(3) : 0; count > 0; --count) {
        Function inner = function;
        inner.begin += Pick(function.size / 2);
        inner.size = Pick(function.size / 2);
        inner.name = OneIn(4) ? Name("f") : "";
        body += Bb6({.name = inner.name,
                     .stack = Pick(6),
                     .type = Type(),
                     .begin = inner.begin,
                     .end = inner.begin + inner.size,
                     .body = Locals(inner, depth + 1)});
    }
    for (uint32_t count = Pick(OneIn(10) ? 30 : 5); count > 0; --count) body += Local(function);
    return body;
}

Bytes Maker::Variable() {
    const uint32_t idx = index_();
    const std::string name = Name(OneIn(2) ? "count" : "buffer");
    data_ += Pick(8);
    if (OneIn(2)) publics_.push_back({name, data_, false});
    switch (Pick(8)) {
        case 0:
            return StaticVariable(idx, name, Type(), data_, OneIn(2) ? Absent() : Num(Pick(16)));
        case 1:
            return ExternalVariable(idx, name, Type(), data_);
        case 2:
            return BasedVariable(idx, name, Type(), {1, 2, Pick(2), 4, 5}, data_);
        case 3:
            return Constant(idx, name, Type(), {0, Pick(2)}, {Pick(100)});
        case 4:
            return ExternalFunction(idx, name, Type(), 0, code_);
        case 5:
            return StaticVariable(idx, name, Type(), data_) +
                   Lifetime(idx, code_base_, code_, 3, data_);
        default:
            return GlobalVariable(idx, name, Type(), data_);
    }
}

Bytes Maker::FunctionScope() {
    Function function = {Name("f"), code_, 1 + Pick(OneIn(10) ? 600 : 60), {}};
    for (uint32_t at = 0; at < function.size; at += OneIn(6) ? 0 : 1 + Pick(9))
        function.steps.push_back(function.begin + at);
    code_ += function.size + (OneIn(6) ? Pick(8) : 0);
    functions_.push_back(function);
    const bool is_static = OneIn(4);
    if (!is_static) publics_.push_back({function.name, function.begin, true});
    const FunctionBlock block = {.name = function.name,
                                 .stack = Pick(20),
                                 .type = Type(),
                                 .begin = function.begin,
                                 .end = function.begin + function.size - 1,
                                 .body = Locals(function, 0)};
    return is_static ? Bb6(block) : Bb4(block);
}

// Headers first; then all lines and stack points under one index.
Bytes Maker::LinesOf(const std::string& name) {
    Bytes body;
    for (uint32_t count = Pick(3); count > 0; --count) body += Bb5(Name("inc/h") + ".h", {});
    const uint32_t idx = index_();
    body += Nn(idx, "");
    uint32_t line = 1;
    for (const Function& function : functions_) {
        for (const uint32_t step : function.steps) {
            line = OneIn(7) ? 1 + Pick(line) : line + 1 + Pick(3);
            body += Line(idx, OneIn(200) ? 65535 + Pick(3) : line, step);
            if (OneIn(5)) body += StackPoint(idx, step, 2 * Pick(6));
        }
        if (OneIn(2)) body += StackPoint(idx, function.begin + function.size, 0);
    }
    return Bb5(OneOf({"", "src/", "C:\\work\\"}) + name + OneOf({".c", ".c", ".C", ".asm"}), body);
}

Bytes Maker::Sections() {
    Bytes body;
    for (uint32_t count = Pick(4); count > 0; --count)
        body +=
            Bb11({.name = Name("SEC"), .kind = Pick(7), .segment = 1 + Pick(4), .size = Pick(99)});
    return body;
}

Bytes Maker::AsmSymbols() {
    Bytes body;
    for (uint32_t count = Pick(8); count > 0; --count) {
        const bool known = !publics_.empty() && OneIn(2);
        const std::string name = known ? "_" + publics_[Pick(publics_.size())].name : Name("L");
        const uint32_t idx = index_();
        body += OneIn(3) ? AsmSymbol(idx, name, Type(), code_ + Pick(30), 1 + Pick(6), Pick(2))
                         : AsmSymbol(idx, OneIn(9) ? "" : name, 15, code_ + Pick(30));
        if (OneIn(2)) body += AsmLine(index_(), 1 + Pick(500), code_ + Pick(30));
    }
    return body;
}

void Maker::CompiledModule(const std::string& name) {
    functions_.clear();
    const std::string head = OneIn(3) ? name + ".c" : name;
    file_.debug += OneIn(8) ? Bb2(head, Types()) : Bb1(head, Types());
    Bytes scopes = OneIn(2) ? Misc(index_(), "", 64, 50, {408, 1, 4}) : Bytes{};
    for (uint32_t count = Pick(6); count > 0; --count) scopes += FunctionScope();
    for (uint32_t count = Pick(8); count > 0; --count) scopes += Variable();
    file_.debug += Bb3(head, scopes);
    if (!OneIn(8)) file_.debug += LinesOf(name);
    if (OneIn(2)) file_.debug += Bb10(head, Sections());
}

void Maker::AssembledModule(const std::string& name) {
    file_.debug += Bb10(name, Sections() + AsmSymbols() + Sections());
    code_ += Pick(60);
}

Bytes Maker::RandomBytes(uint32_t count) {
    Bytes bytes;
    for (uint32_t i = 0; i < count; ++i) bytes += Bytes{static_cast<uint8_t>(Pick(256))};
    return bytes;
}

// The memory from `base` to `end` in pieces, some left out, some twice, some repeated.
Bytes Maker::Loads(uint32_t segment, uint32_t base, uint32_t end) {
    Bytes loads = UseSegment(segment);
    for (uint32_t at = base; at - base < end - base;) {
        const uint32_t size = std::min(end - at, 1 + Pick(OneIn(5) ? 400 : 100));
        if (OneIn(6)) {
            at = OneIn(3) ? base + Pick(end - base) / 2 : at + Pick(30);
            loads += LoadAt(segment, at);
        }
        if (OneIn(12)) {
            const uint32_t count = Pick(20);
            loads += Repeat(count) + Load(RandomBytes(1 + Pick(6)));
        }
        loads += Load(RandomBytes(size));
        at += size;
    }
    return loads;
}

// The order of the file is not the order of addresses.
void Maker::MemoryParts() {
    struct Stretch {
        Memory memory;
        uint32_t base;
        uint32_t end;
    };
    const uint32_t half = (code_ - code_base_) / 2;
    std::vector<Stretch> stretches = {{Memory::CODE, code_base_, code_base_ + half},
                                      {Memory::CODE, code_base_ + half, code_},
                                      {Memory::DATA, data_base_, data_ + 1}};
    if (OneIn(2)) stretches.push_back({Memory::CONSTANTS, data_ + 1, data_ + 1 + Pick(300)});
    if (OneIn(3)) stretches.push_back({Memory::NONE, code_, code_ + Pick(50)});
    if (OneIn(4)) std::shuffle(stretches.begin(), stretches.end(), random_);
    for (uint32_t i = 0; i < stretches.size(); ++i) {
        const auto& [memory, base, end] = stretches[i];
        file_.segments += Segment(i + 1, memory, Name("SEG"), base, end - base);
        if (OneIn(10) || end - base > 0x4000) continue;
        file_.data += Loads(i + 1, base, end);
    }
    if (file_.data.empty()) file_.data = UseSegment(1);
    const Num end = OneIn(2) ? Num(1) : Absent();
    file_.trailer = OneIn(3) ? Trailer(code_base_, end) : BracketTrailer(code_base_, end);
}

void Maker::ExternalPart() {
    uint32_t idx = 32;
    for (uint32_t count = Pick(6); count > 0; --count)
        publics_.push_back({Name("ext"), code_base_ + Pick(0x300), OneIn(2)});
    for (const PublicName& symbol : publics_) {
        if (OneIn(6)) continue;
        if (OneIn(20)) file_.external += UseSegment(1);
        file_.external += symbol.is_code
                              ? PublicSymbol(idx++, "_" + symbol.name, 15, 19, symbol.address, 1)
                              : PublicSymbol(idx++, (OneIn(4) ? "" : "_") + symbol.name, Type(),
                                             OneOf({19, 19, 8, 16, 20}), symbol.address,
                                             OneIn(3) ? Num(Pick(17)) : Absent());
    }
    if (!file_.external.empty()) file_.external += Bytes{0xE1};
}

void Maker::Attributes() {
    Bytes ad = AdAttribute(FILE_FORMAT, 1) + AdAttribute(CASE_SENSE, Pick(3));
    if (OneIn(3)) ad += AdAttribute(FORMAT_VERSION, Pick(3), Pick(9));
    if (OneIn(3)) ad += AdAttribute(MEMORY_MODEL, Pick(8));
    file_.ad_extension = AdExtension(ad);
    Bytes environment = EnvAttribute(HOST, Pick(4)) + EnvAttribute(TOOL_INFO, 408, 8, 7);
    if (OneIn(3)) environment += EnvAttribute(DATE_TIME, 2009, 3, 31, 12, 30, Pick(60));
    if (OneIn(3)) environment += EnvAttribute(COMMAND_LINE) + Text(Name("link "));
    if (OneIn(3)) environment += EnvAttribute(LINK_STATUS, Pick(2));
    if (OneIn(3)) environment += EnvAttribute(COMMENT) + Text(Name("made "));
    file_.environment = Environment(environment);
}

ObjectFile Maker::Make() {
    if (OneIn(2)) file_.debug += Bb10("PROG", {});
    for (uint32_t count = 1 + Pick(OneIn(20) ? 20 : 4); count > 0; --count) {
        const std::string name = Name("MOD");
        if (OneIn(4))
            AssembledModule(name);
        else
            CompiledModule(name);
    }
    MemoryParts();
    ExternalPart();
    Attributes();
    return file_;
}

}  // namespace

ObjectFile RandomProgram(Random& random) {
    return Maker(random).Make();
}

}  // namespace scan695::fuzz
