// A builder of object files: records in, bytes out. One include for all of it; namespace
// scan695::builder, library target object_builder. In short:
//
//   Build({.processor = "TRI",
//          .segments = Segment(1, Memory::CODE, "TEXT", base, size),
//          .debug = Bb1("M", NamedType(0x46, "pair", 0x100, def::Struct(4, {{"a", 16, 0}}))) +
//                   Bb3("M", Bb4({.name = "main", .begin = 0x200, .end = 0x21F,
//                                 .body = AutoVariable(0x47, "x", 16, -2)})),
//          .data = Hex("E5 01 F7 05 # a comment")})
//
// Numbers take their shortest form, lengths and offsets are filled in. Indexes that run on belong
// in variables of their own, since the order in which a call's arguments are evaluated is open.
#pragma once

#include "builder/memory_records.h"
#include "builder/object_file.h"
#include "builder/scope_records.h"
#include "builder/type_records.h"
