// scan695 find: where is it, what is there.
#pragma once

#include "cli/command.h"

namespace scan695::cli {

extern const Command FIND_COMMAND;

}  // namespace scan695::cli
