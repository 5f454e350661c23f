// scan695 check: are these files for this scanner?
#pragma once

#include "cli/command.h"

namespace scan695::cli {

extern const Command CHECK_COMMAND;

}  // namespace scan695::cli
