// scan695 show: the tables of a program.
#pragma once

#include "cli/command.h"

namespace scan695::cli {

extern const Command SHOW_COMMAND;

}  // namespace scan695::cli
