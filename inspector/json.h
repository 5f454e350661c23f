// The summary and the tables as one JSON document, which docs/json.md describes.
#pragma once

#include <iosfwd>
#include <vector>

#include "inspector/json_writer.h"
#include "inspector/reader.h"
#include "inspector/tables.h"

namespace scan695::inspector {

// Numbers that a listing shows in hexadecimal are plain numbers here; what it shows as "-" is null.
void PrintJson(const Fst& fst, const std::vector<const Table*>& tables, std::ostream& out);

// One row as an object, for the answers that tell of the same things.
void WriteRow(JsonWriter& json, const Table& table, const Row& row);
// Its members alone, into an object that has others.
void WriteMembers(JsonWriter& json, const Table& table, const Row& row);
void WriteCells(JsonWriter& json, const std::vector<Column>& columns, const Cells& cells);

}  // namespace scan695::inspector
