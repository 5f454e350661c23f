// scan695 fst: the inspector of FST files as a command.
#pragma once

#include <string>

namespace scan695::cli {

struct FstOptions {
    std::string file;
    bool modules = false;
    bool symbols = false;
    bool types = false;
    bool blocks = false;
    bool lines = false;
    bool ranges = false;
    bool code = false;
    bool json = false;
    bool verify = false;
};

struct FstTableOption {
    const char* option;
    bool FstOptions::*field;
};

// In the order in which tables are printed; the name of a table is its option without the dashes.
inline constexpr FstTableOption FST_TABLE_OPTIONS[] = {
    {"--modules", &FstOptions::modules}, {"--symbols", &FstOptions::symbols},
    {"--types", &FstOptions::types},     {"--blocks", &FstOptions::blocks},
    {"--lines", &FstOptions::lines},     {"--ranges", &FstOptions::ranges},
    {"--code", &FstOptions::code},
};

// Gives the exit status.
int RunFstCommand(const FstOptions& options);

}  // namespace scan695::cli
