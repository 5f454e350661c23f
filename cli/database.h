// The way of every subcommand that asks a program something: from the FILE on the command line to
// its symbol database, whatever FILE is.
#pragma once

#include <optional>
#include <string>

#include "inspector/reader.h"

namespace scan695::cli {

// Opens the symbol database of FILE: an FST file, or an object file, which is converted on the way
// in a process of its own to a private FST file that is gone again when this returns. Which of the
// two FILE is, is told by its content; "-" is standard input, and a pipe will do as well. What
// stands in the way is reported on standard error, "scan695: FILE: cause"; the exit status then is
// FAILED. The database is not verified: every read of it is bounded, but what it says may be
// damaged.
std::optional<inspector::Fst> OpenDatabase(const std::string& file);

}  // namespace scan695::cli
