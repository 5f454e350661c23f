// The AD extension part: the format of the file and its memory model. It holds two of the gates of
// the scanner: the file must be absolute, and the memory model overrules the model letter of the
// processor name. Behind the head of its ATN records stand:
//
//     37 major minor    version of the format
//     38 format         1 for an absolute file
//     39 case           1 when names are the same in any case
//     40 model          memory model
#include "input/cursor.h"
#include "input/processor.h"
#include "input/record_codes.h"
#include "reader/attribute_part.h"
#include "reader/parts.h"
#include "report/report.h"
#include "store/tables.h"

namespace scan695 {

namespace {

constexpr uint32_t ABSOLUTE_FORMAT = 1;
constexpr uint32_t NO_CASE = 1;
constexpr uint32_t EXTENDED_MEMORY_MODEL = 6;

void ReadExtensionAttribute(uint32_t code, char*) {
    switch (code) {
        case ATN_FORMAT_VERSION: {
            const uint32_t major = RequireNumber();
            const uint32_t minor = RequireNumber();
            Store.Header.format_version = static_cast<uint8_t>(major);
            Trace("     Format version=%d.%d\n", static_cast<int32_t>(major),
                  static_cast<int32_t>(minor));
            break;
        }
        case ATN_FILE_FORMAT: {
            const uint32_t format = RequireNumber();
            Trace("     File format=%u\n", format);
            if (format != ABSOLUTE_FORMAT)
                ReportAndStop("File %s is non-absolute TASKING IEEE-695 format\n",
                              Input.InputPath.c_str());
            break;
        }
        case ATN_CASE:
            Trace("     Case sens=%u\n", RequireNumber() == NO_CASE ? 0U : 1U);
            break;
        case ATN_MEMORY_MODEL: {
            const uint32_t model = RequireNumber();
            SetModelFlags(model == EXTENDED_MEMORY_MODEL);
            Trace("     Memory model=%u\n", model);
            break;
        }
        default:
            UnexpectedRecord();
    }
}

}  // namespace

void ScanAdExtensionPart(uint32_t offset) {
    Trace("AD Extension Part, fpos=%x\n", offset);
    ReadAttributePart(offset, true, ReadExtensionAttribute);
}

}  // namespace scan695
