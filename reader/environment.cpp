// The environment part: the tools that made the file, for the trace only, and one gate: a file that
// was not linked successfully is refused. Behind the head of its ATN records stand:
//
//     50 1 to 6 numbers      date and time
//     51 text                command line
//     52 status              of the link: 0 good, 1 with warnings, above failed
//     53 number              host
//     54 3 or 4 numbers      tool and its version
//     55 text                comments
#include "input/cursor.h"
#include "input/record_codes.h"
#include "reader/attribute_part.h"
#include "reader/parts.h"
#include "report/report.h"

namespace scan695 {

namespace {

constexpr uint32_t MAX_DATE_PARTS = 6;

void ReadDate() {
    uint32_t parts = 0;
    uint32_t ignored = 0;
    while (parts < MAX_DATE_PARTS && ReadNumber(ignored) != 0) ++parts;
    if (parts == 0) UnexpectedRecord();
    Trace("     Date/Time, %u parts\n", parts);
}

void ReadText(const char* line, char* text) {
    ReadName(text, PART_NAME_SIZE);
    Trace("     %s=%s\n", line, text);
}

void ReadLinkStatus() {
    const uint32_t status = RequireNumber();
    if (status >= 2)
        ReportAndStop("File %s was not linked successfully\n", Input.InputPath.c_str());
    if (status == 1) Trace("File %s was linked with warning\n", Input.InputPath.c_str());
}

void ReadToolInfo() {
    for (int i = 0; i < 3; ++i) RequireNumber();
    OptionalNumber();
    Trace("     Tool info\n");
}

void ReadEnvironmentAttribute(uint32_t code, char* text) {
    switch (code) {
        case ATN_DATE:
            return ReadDate();
        case ATN_COMMAND_LINE:
            return ReadText("Cmd line text", text);
        case ATN_LINK_STATUS:
            return ReadLinkStatus();
        case ATN_HOST:
            return Trace("     Host environment=%u\n", RequireNumber());
        case ATN_TOOL:
            return ReadToolInfo();
        case ATN_COMMENTS:
            return ReadText("Comments", text);
        default:
            UnexpectedRecord();
    }
}

}  // namespace

void ScanEnvironmentPart(uint32_t offset) {
    Trace("Environment Part, fpos=%x\n", offset);
    ReadAttributePart(offset, false, ReadEnvironmentAttribute);
}

}  // namespace scan695
