// scan695 type: layouts.
#pragma once

#include "cli/command.h"

namespace scan695::cli {

extern const Command TYPE_COMMAND;

}  // namespace scan695::cli
