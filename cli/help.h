// The texts of --help, --version and of a wrong use.
#pragma once

namespace scan695::cli {

extern const char* const COMMAND_HELP;
extern const char* const INSPECTOR_HELP;
extern const char* const VERSION_TEXT;

}  // namespace scan695::cli
