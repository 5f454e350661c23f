// An object file with a type of every kind in its first block of types and forward references in
// the second.
#pragma once

#include "tests/support/object_builder.h"

namespace scan695::test {

ObjectFile TypeZoo(const char* processor);

}  // namespace scan695::test
