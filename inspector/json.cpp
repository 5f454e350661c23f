#include "inspector/json.h"

#include "inspector/c_text.h"
#include "inspector/summary.h"

namespace scan695::inspector {

namespace {

void WriteCell(JsonWriter& json, const Cell& cell) {
    if (cell.kind == Cell::NOTHING) return json.Null();
    if (cell.kind == Cell::TEXT) return json.Value(cell.text);
    json.Value(cell.number);
}

void WriteHeader(const Fst& fst, JsonWriter& json) {
    json.Key("header").BeginObject();
    for (const HeaderItem& item : HeaderItems(fst)) {
        json.Key(item.name);
        WriteCell(json, item.cell);
    }
    json.Key("basic_sizes").BeginArray();
    for (uint32_t type = 0; type < BASIC_SIZES_COUNT; ++type) {
        const auto size = ReadEntry<uint8_t>(fst, BASIC_SIZES, type);
        if (!size) break;
        json.BeginObject();
        json.Member("type", type);
        json.Member("type_name", Declaration(fst, type));
        json.Member("size", *size);
        json.End();
    }
    json.End();
    json.End();
}

void WriteSections(const Fst& fst, JsonWriter& json) {
    json.Key("sections").BeginArray();
    for (const SectionItem& section : SectionItems(fst)) {
        json.BeginObject();
        json.Member("name", section.name);
        json.Member("offset", section.offset);
        json.Member("entries", section.entries);
        json.Member("size", section.size);
        json.End();
    }
    json.End();
}

}  // namespace

void WriteCells(JsonWriter& json, const std::vector<Column>& columns, const Cells& cells) {
    for (size_t i = 0; i < cells.size(); ++i) {
        if (!columns[i].is_in_json) continue;
        json.Key(columns[i].name);
        WriteCell(json, cells[i]);
    }
}

void WriteMembers(JsonWriter& json, const Table& table, const Row& row) {
    WriteCells(json, table.columns, row.cells);
    for (size_t i = 0; i < table.details.size(); ++i) {
        json.Key(table.details[i].name).BeginArray();
        for (const Cells& cells : row.details[i]) {
            json.BeginObject();
            WriteCells(json, table.details[i].columns, cells);
            json.End();
        }
        json.End();
    }
}

void WriteRow(JsonWriter& json, const Table& table, const Row& row) {
    json.BeginObject();
    WriteMembers(json, table, row);
    json.End();
}

void PrintJson(const Fst& fst, const std::vector<const Table*>& tables, std::ostream& out) {
    JsonWriter json(out);
    BeginDocument(json, "show", fst.path);
    WriteHeader(fst, json);
    WriteSections(fst, json);
    for (const Table* table : tables) {
        json.Key(table->name).BeginArray();
        table->rows(fst, [&](const Row& row) { WriteRow(json, *table, row); });
        json.End();
    }
    json.End();
}

}  // namespace scan695::inspector
