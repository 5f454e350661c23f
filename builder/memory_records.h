// Records of the parts without nesting: attributes, segments, public symbols, load data, trailer.
#pragma once

#include "builder/bytes.h"

namespace scan695::builder {

// F0: names an index.
Bytes Nn(const Num& index, const Text& name);
// F1 CE: attribute `kind` of an index, with the numbers that the kind asks for.
template <typename... More>
Bytes Atn(const Num& index, const Num& type, const Num& kind, const More&... more) {
    return Bytes{0xF1, 0xCE} + index + type + kind + Numbers(more...);
}
// E2 CE: a value of an index.
Bytes Asn(const Num& index, const Num& value);

// Attributes of the AD extension and environment parts.
enum PartAttribute {
    FORMAT_VERSION = 37,  // major, minor
    FILE_FORMAT = 38,     // 1 absolute
    CASE_SENSE = 39,      // 1 no
    MEMORY_MODEL = 40,    // 6 sets a model flag
    DATE_TIME = 50,       // 1 to 6 numbers
    COMMAND_LINE = 51,    // a name
    LINK_STATUS = 52,     // 0 good, 1 warnings, 2 failed
    HOST = 53,            // a number
    TOOL_INFO = 54,       // 3 or 4 numbers
    COMMENT = 55,         // a name
};

// An NN record, 32 in the AD extension and 33 in the environment, with its attributes behind it.
Bytes AdExtension(const Bytes& attributes);
Bytes Environment(const Bytes& attributes);
template <typename... More>
Bytes AdAttribute(PartAttribute kind, const More&... more) {
    return Atn(32, 0, static_cast<int>(kind), more...);
}
template <typename... More>
Bytes EnvAttribute(PartAttribute kind, const More&... more) {
    return Atn(33, 0, static_cast<int>(kind), more...);
}

// Memory letter of a segment's type.
enum class Memory { CODE, CONSTANTS, DATA, NONE };

// The four records of one segment: E6 with its letters and name, E7 without alignment, E2 D3 with
// the size, E2 CC with the base.
Bytes Segment(const Num& number, Memory memory, const Text& name, const Num& base, const Num& size);

// A public symbol: E8, F1 C9, E2 C9. Attributes are 8, 16, 19, 20; `index` is at least 32.
Bytes PublicSymbol(const Num& index, const Text& name, const Num& type, const Num& attribute,
                   const Num& value, const Num& memory_id = Absent());

Bytes UseSegment(const Num& number);                      // E5
Bytes LoadAt(const Num& segment, const Num& address);     // E2 D0
Bytes Repeat(const Num& count);                           // F7
Bytes Load(const Bytes& bytes);                           // ED with the bytes' own count
Bytes LoadCounted(const Num& count, const Bytes& bytes);  // ED with another count

Bytes Trailer(const Num& address, const Num& segment = Absent());
Bytes BracketTrailer(const Num& address, const Num& segment = Absent());

}  // namespace scan695::builder
