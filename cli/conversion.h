// One conversion, from the names on the command line to the files in their places. The library does
// its part in a child process; nothing that the user named changes before it has succeeded.
#pragma once

#include <string>
#include <vector>

#include "cli/console.h"
#include "cli/host.h"
#include "cli/output.h"
#include "cli/staging.h"

namespace scan695::cli {

struct Request {
    std::string file;  // "-" is standard input
    // Outputs: empty for none, "-" for standard output.
    std::string stf;
    std::string fst;
    std::string trace;
    bool debug = false;  // make a database even if it is no output
};

struct Conversion {
    explicit Conversion(Request what) : request(std::move(what)) {}

    Request request;
    std::string cause;  // of the failure; empty for success

    // The part of this file.
    Staging staging;
    Child child;
    Console console;
    std::vector<Output> outputs;  // files to deliver in the end
    Output trace;  // what is printed goes here as it comes, if `trace.descriptor` is open
};

// Starts the child. False with a cause if it does not come to that.
bool StartConversion(Conversion& conversion);

// Takes in what the child has printed. False when that is all.
bool ReadConversion(Conversion& conversion);

// Waits for the end of the child, judges it, and delivers the outputs. False with a cause.
bool FinishConversion(Conversion& conversion);

// Where the database lies between the end and the drop of a conversion that made one.
std::string DatabaseOf(const Conversion& conversion);

// Gives back everything that the conversion holds, at whatever stage, but for the empty folder that
// the next one may use.
void DropConversion(Conversion& conversion);

}  // namespace scan695::cli
