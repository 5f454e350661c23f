// scan695 verify: does the database keep its promises?
#pragma once

#include "cli/command.h"

namespace scan695::cli {

extern const Command VERIFY_COMMAND;

}  // namespace scan695::cli
