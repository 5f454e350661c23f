// Types as C declares them. Names stay the bytes that the file has.
#pragma once

#include <cstdint>
#include <string>

#include "inspector/reader.h"

namespace scan695::inspector {

// A declaration of `name` as the type: "struct list *next", "int (*call)(char)"; without a name the
// type alone. Bounded in length and depth, so that types which lead back to themselves do no harm.
std::string Declaration(const Fst& fst, uint32_t type_index, std::string name = {});

// "struct list"; with its type index where the type has no name: "struct <105>".
std::string TagText(const Fst& fst, const TYPEINFO& type);

}  // namespace scan695::inspector
