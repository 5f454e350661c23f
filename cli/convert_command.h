// scan695 convert: object files into STF files, databases and traces.
#pragma once

#include "cli/command.h"

namespace scan695::cli {

extern const Command CONVERT_COMMAND;

}  // namespace scan695::cli
