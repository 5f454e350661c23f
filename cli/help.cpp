#include "cli/help.h"

namespace scan695::cli {

const char* const COMMAND_HELP =
    R"(scan695 - converts object files of the TASKING tool chain into STF

Usage:
  scan695 FILE [-o OUT] [--debug] [--quiet | --prompt]
  scan695 --check FILE...
  scan695 fst FILE.FST [OPTION...]
  scan695 --help | --version

FILE is an absolute (linked) object file in the IEEE-695 dialect of the TASKING
tool chain for the C166 family or for TriCore. The result is an STF file, and
with --debug also an FST file, a symbol database for direct access.
"scan695 fst --help" tells how to look into one.

Options:
  -o, --output OUT  Write the STF file to OUT. Without it OUT is FILE with the
                    extension .stf. "-" is standard output.
  --debug           Print a trace of all records and write an FST file beside
                    FILE, under its name in upper case with the extension FST.
  --quiet           Print nothing but errors.
  --prompt          Wait for ENTER after an error, as the prompt asks. Without
                    this option nothing is read from standard input.
  --check           Convert nothing; print for each FILE whether it is for this
                    scanner.
  -h, --help        Print this text.
  --version         Print the version.

"-" as FILE is standard input; OUT is then standard output unless -o is given.
--debug needs a named FILE. With OUT on standard output the console lines go to
standard error. A file named "fst" or "-" is reached as ./fst or ./-.

OUT is replaced in one step when the conversion has succeeded; a failed one
leaves an older OUT as it was. OUT may not be FILE itself. A link is followed,
and a device or a pipe is written to. The directory for temporary files (TMPDIR)
is used for standard input, standard output, devices and pipes only.

Exit status:
  0  success; with --check: every FILE is for this scanner
  1  the conversion failed; with --check: some FILE is not for this scanner
  2  wrong usage
Errors go to standard error as "scan695: FILE: what".

Examples:
  scan695 prog.abs                      writes prog.stf
  scan695 prog.abs -o - --quiet | less  shows the result
  scan695 --debug prog.abs > trace.txt  writes prog.stf and PROG.FST
  scan695 fst PROG.FST --symbols        lists the symbols of the database
)";

const char* const INSPECTOR_HELP =
    R"(scan695 fst - looks into FST files, the symbol databases of debug conversions

Usage:
  scan695 fst FILE.FST [--symbols] [--types] [--lines] [--modules] [--blocks]
              [--ranges] [--code] [--json]
  scan695 fst FILE.FST --verify
  scan695 fst --help

Without options a summary is printed: processor, model, start address, counts,
and the sections of the file with their offsets and sizes.

Tables:
  --modules  modules, by name
  --symbols  symbols with their locations: the global ones, those of each
             module, those of each block; by name within each group
  --types    types with their members, items and parameters, by type index
  --blocks   functions and inner blocks, by address
  --lines    source lines, by address
  --ranges   stretches of code memory and the modules that own them, by address
  --code     blocks of the memory image, in the order of the file
The first column is the record number, which other records refer to. "-" stands
for nothing.

Other options:
  --json     Print one JSON document: the summary and the tables that were asked
             for, or all of them.
  --verify   Check everything that the format promises. Prints one line for each
             violation and nothing for a sound file.
  -h, --help Print this text.

Exit status:
  0  success
  1  the file cannot be read, is no FST file, or is damaged
  2  wrong usage
Errors go to standard error as "scan695: FILE: what". Of a damaged file, what can
be read is printed.
)";

#define SCAN695_TEXT_OF(x) #x
#define SCAN695_TEXT(x) SCAN695_TEXT_OF(x)
const char* const VERSION_TEXT = "scan695 " SCAN695_TEXT(SCAN695_VERSION) "\n";

}  // namespace scan695::cli
