// scan695 size: what takes how many bytes.
#pragma once

#include "cli/command.h"

namespace scan695::cli {

extern const Command SIZE_COMMAND;

}  // namespace scan695::cli
