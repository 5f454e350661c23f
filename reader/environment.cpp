// The environment part: the tools that made the file, for the trace only, and one gate: a file that
// was not linked successfully is refused.
#include "input/attribute_part.h"
#include "input/cursor.h"
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
        case 50:
            return ReadDate();
        case 51:
            return ReadText("Cmd line text", text);
        case 52:
            return ReadLinkStatus();
        case 53:
            return Trace("     Host environment=%u\n", RequireNumber());
        case 54:
            return ReadToolInfo();
        case 55:
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
