// What nearly every test is made of: GoogleTest, the builder of object files, and the harness.
#pragma once

#include <gtest/gtest.h>

#include "builder/object_builder.h"
#include "harness/convert.h"

namespace scan695::test {

using namespace builder;
using namespace harness;

}  // namespace scan695::test
