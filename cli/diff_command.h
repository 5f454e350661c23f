// scan695 diff: what changed between two programs.
#pragma once

#include "cli/command.h"

namespace scan695::cli {

extern const Command DIFF_COMMAND;

}  // namespace scan695::cli
