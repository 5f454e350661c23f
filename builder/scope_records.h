// Blocks of the debug part and the symbols, lifetimes and lines inside them.
#pragma once

#include <vector>

#include "builder/bytes.h"

namespace scan695::builder {

// NN indexes that run on through a debug part.
class Indexes {
  public:
    explicit Indexes(uint32_t first = 0x46) : next_(first) {}
    uint32_t operator()() { return next_++; }

  private:
    uint32_t next_;
};

// F8 code, the length from F8 to behind the block's last byte as 84 and four bytes, head, body,
// F9, tail.
Bytes Block(uint8_t code, const Bytes& head, const Bytes& body, const Bytes& tail = {});

// A block with its name and what follows it in the head.
struct NamedBlock {
    uint8_t code;
    Bytes operator()(const Text& name, const Bytes& body, const Bytes& rest = {}) const;
};
constexpr NamedBlock Bb1{0x01};   // types of a module
constexpr NamedBlock Bb2{0x02};   // types of the program
constexpr NamedBlock Bb3{0x03};   // scopes of a compiled module
constexpr NamedBlock Bb5{0x05};   // lines of a source file; a date may follow its path
constexpr NamedBlock Bb10{0x0A};  // an assembled module

struct FunctionBlock {
    Text name = "";  // none for an inner block
    Num stack = 0;
    Num type = 0;
    Num begin = 0;
    Num end = 0;  // the last address, not the one behind it
    Bytes body = {};
    Num extra = Absent();
};
Bytes Bb4(const FunctionBlock& block);  // global function
Bytes Bb6(const FunctionBlock& block);  // static function or inner block

struct SectionBlock {
    Text name = "";
    Num kind = 0;  // 0, 1, 5 code; 2, 3, 4 data
    Num segment = 1;
    Num n4 = Absent();
    Num n5 = Absent();
    Bytes body = {};
    Num size = 0;
};
Bytes Bb11(const SectionBlock& section);

// Symbols: NN, ATN and ASN of each attribute kind under one index, with the numbers that follow the
// kind in the ATN.
struct SymbolKind {
    uint8_t kind;
    Bytes operator()(const Num& index, const Text& name, const Num& type, const Num& x1,
                     const Num& x2 = Absent()) const;
};
struct AddressKind {
    uint8_t kind;
    Bytes operator()(const Num& index, const Text& name, const Num& type, const Num& address,
                     const Num& x1 = Absent(), const Num& x2 = Absent()) const;
};
constexpr SymbolKind AutoVariable{1};  // x1 its offset
constexpr SymbolKind LivingRegister{2};
constexpr AddressKind StaticVariable{3};  // x1 its memory
constexpr AddressKind ExternalVariable{5};
constexpr AddressKind GlobalVariable{8};  // x1 its memory
constexpr AddressKind AsmSymbol{19};
Bytes ExternalFunction(const Num& index, const Text& name, const Num& type, const Num& x1,
                       const Num& address);  // 4
Bytes LockedRegister(const Num& index, const Text& name, const Num& type, const Num& x1,
                     const Num& x2 = 0);  // 10
Bytes BasedVariable(const Num& index, const Text& name, const Num& type,
                    const std::vector<Num>& five, const Num& value);  // 12
// The numbers behind the kind and any count of ASN values.
Bytes Constant(const Num& index, const Text& name, const Num& type, const std::vector<Num>& numbers,
               const std::vector<Num>& values);  // 16
// Kinds 62, 63, 64: the code, the count of values, the values.
Bytes Misc(const Num& index, const Text& name, const Num& kind, const Num& code,
           const std::vector<Num>& values);

// Behind a symbol, under its index. A lifetime mark has a nameless NN in front; `storage` is 1
// auto, 2 register, 3 static, with END_MARK added at the end of a range.
constexpr uint32_t END_MARK = 8;
Bytes LifetimeMark(const Num& index, const Num& pc, const Num& storage, const Num& address,
                   const Num& memory = Absent());
// Both marks of a range, the end mark first, as linkers write them.
Bytes Lifetime(const Num& index, const Num& begin, const Num& end, uint32_t storage,
               const Num& address);
Bytes ParameterMark(const Num& index);  // code 59

// Lines: kind 7 in a BB5 or BB10 block. In a BB5 one nameless NN stands in front of all of them;
// AsmLine brings its own.
Bytes Line(const Num& index, const Num& number, const Num& address);
Bytes AsmLine(const Num& index, const Num& number, const Num& address);
// Kind 64, code 51: the stack stands adjusted by `adjust` from `pc` on.
Bytes StackPoint(const Num& index, const Num& pc, const Num& adjust);

}  // namespace scan695::builder
