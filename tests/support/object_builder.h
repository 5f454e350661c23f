// A builder of object files: records in, bytes out. One include for all of it; namespace
// scan695::test, library target object_builder. In short:
//
// BYTES (bytes.h)
//   Bytes{0xF0, 0x20}   plain bytes; a + b, a += b, .First(n) to truncate, .Patched(at, bytes),
//                       .size(), .data(), [i]; turns into std::vector<uint8_t> by itself
//   Hex("F0 20 n'abc' 'raw' # comment")   pairs of digits, names with length byte, raw characters
//   Times(1000, bytes)  the same bytes over and over
//   Num: any integer in its shortest form: 5, 0x8123, -1. Other forms:
//        Wide(5, 4) = 84 00 00 00 05, Wide(0, 5) is refused by readers, Omitted() = 80,
//        Absent() = no byte
//   Numbers(1, Wide(2, 3), Omitted())   several in a row
//   Text: "name" with its length byte; Text(Bytes{}) is no name, Text(Bytes{...}) anything
//
// FILE (object_file.h)
//   Build({.processor = "TRI", .debug = ..., .data = ...})   empty parts are absent; the offsets
//        are filled in; E1 stands as module end unless it is taken away
//   .order = {Part::kData, Part::kDebug, ...}   another order, parts left out
//   .offsets = {{Part::kData, 0x7FFF}}          a number to stand in the header instead
//   .header = Hex("...")                        a header of your own
//   PartOffset(file, Part::kDebug)              for messages that name an offset
//
// PARTS (memory_records.h)
//   Nn(index, name)   Atn(index, type, kind, more numbers...)   Asn(index, value)
//   AdExtension(AdAttribute(kFileFormat, 1) + ...)   Environment(EnvAttribute(kLinkStatus, 0) +
//   ...) Segment(1, Memory::kCode, "TEXT", base, size), or SegmentType, SegmentAlign, SegmentValue
//   alone PublicSymbol(32, "_main", type, attribute, address, memory_id) UseSegment(1)  LoadAt(1,
//   address)  Repeat(5)  Load(bytes)  LoadCounted(n, bytes) Trailer(address)
//   BracketTrailer(address, segment)
//
// TYPES (type_records.h)
//   Bb1("MAIN_C", NamedType(0x46, "pair", 0x100, def::Struct(4, {{"a", 16, 0}, {"b", 16, 2}})) +
//   ...) A TypeDef is a number, for a reference, or one of def::Function({.returns = 16,
//   .parameters = {5, 0x100}}), Array(element, upper), SmallPointer, LargePointer,
//   PointerAttribute(3, 0, 1), Struct and Union(size, members), Enum({{"RED", 0}}, EnumSize(2)),
//   Typedef, OtherTypedef, Bitfield(is_signed, bits), Qualified(qualifier, base); they nest.
//
// SCOPES (scope_records.h)
//   Bb3("MAIN_C", Bb4({.name = "main", .stack = 4, .type = 0x101, .begin = 0x200, .end = 0x21F,
//                      .body = AutoVariable(0x47, "x", 16, -2) +
//                              Lifetime(0x47, 0x202, 0x210, 1, -2)}))
//   Bb6 inner or static block, Bb5(path, body), Bb10(name, body), Bb11({...}); Block(code, ...) for
//   any. Lengths count from F8 to behind the block and are filled in.
//   Symbols by attribute kind: AutoVariable 1, LivingRegister 2, StaticVariable 3, ExternalFunction
//   4, ExternalVariable 5, GlobalVariable 8, LockedRegister 10, BasedVariable 12, Constant 16,
//   AsmSymbol 19, Misc 62 to 64; anything else is Nn + Atn + Asn.
//   LifetimeMark(index, pc, storage | kEndMark, address)   ParameterMark(index)
//   Line(index, number, address)  AsmLine  StackPoint(index, pc, adjust)
//   Indexes next; next() gives 0x46, 0x47, ...: keep each in a variable, since the order in which a
//   call's arguments are evaluated is open.
#pragma once

#include "tests/support/memory_records.h"
#include "tests/support/object_file.h"
#include "tests/support/scope_records.h"
#include "tests/support/type_records.h"
