// Converts a file with a debug part and an external part, and gives what its scopes come to.
#pragma once

#include <string>

#include "harness/in_process.h"
#include "tests/support/test.h"

namespace scan695::test {

struct ScopeCase {
    Bytes debug;
    Bytes external = {};
    Text processor = "80166";
    Bytes segments = {};
    Bytes data = {};
};

Converted ConvertScopes(const ScopeCase& scopes, bool debug_mode = false);

// The records of the STF file behind the Attribs of its head, each line followed by a blank, with
// single quotes.
std::string Records(const Converted& result);
// The same, or the message that the run stopped with.
std::string Outcome(const ScopeCase& scopes);

// The lines of the console that begin with one of the texts.
std::string LinesThatBegin(const std::string& console, const std::vector<std::string>& beginnings);

// BB1 and BB3 of a C module "m", with and without types.
Bytes CModule(const Bytes& scope, const Bytes& types = {});
// BB10 of an assembled module "m".
Bytes AsmModule(const Bytes& body);

// The Module record of either.
inline const std::string C_MODULE = "Module.0{ name='m'; language=c; } ";
inline const std::string ASM_MODULE = "Module.0{ name='m'; language=asm; } ";

}  // namespace scan695::test
