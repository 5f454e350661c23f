// scan695 report: the program as a page for a browser.
#pragma once

#include "cli/command.h"

namespace scan695::cli {

extern const Command REPORT_COMMAND;

}  // namespace scan695::cli
