#include "inspector/json.h"

#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

#include "inspector/summary.h"

namespace scan695::inspector {

namespace {

using Json = nlohmann::ordered_json;

Json CellJson(const Cell& cell) {
    if (cell.kind == Cell::NOTHING) return nullptr;
    if (cell.kind == Cell::TEXT) return cell.text;  // ASCII, as names are escaped
    return cell.number;
}

Json RowJson(const Table& table, const Row& row) {
    Json record;
    for (size_t i = 0; i < row.cells.size(); ++i) {
        record[table.columns[i].name] = CellJson(row.cells[i]);
    }
    if (table.detail_name == nullptr) return record;
    Json details = Json::array();
    for (const Cells& cells : row.details) {
        Json detail;
        for (size_t i = 0; i < cells.size(); ++i) {
            detail[table.detail_columns[i]] = CellJson(cells[i]);
        }
        details.push_back(std::move(detail));
    }
    record[table.detail_name] = std::move(details);
    return record;
}

// Row by row, since a table can be far larger than the rest of the document.
void PrintRows(const Fst& fst, const Table& table, std::ostream& out) {
    const char* separator = "\n";
    out << ",\n\"" << table.name << "\": [";
    table.rows(fst, [&](const Row& row) {
        out << separator << RowJson(table, row);
        separator = ",\n";
    });
    out << "\n]";
}

}  // namespace

void PrintJson(const Fst& fst, const std::vector<const Table*>& tables, std::ostream& out) {
    Json header;
    for (const auto& [name, cell] : HeaderItems(fst)) header[name] = CellJson(cell);
    Json sections = Json::array();
    for (const SectionItem& section : SectionItems(fst)) {
        sections.push_back({{"name", section.name},
                            {"offset", section.offset},
                            {"entries", section.entries},
                            {"size", section.size}});
    }
    out << "{\n\"header\": " << header << ",\n\"sections\": " << sections;
    for (const Table* table : tables) PrintRows(fst, *table, out);
    out << "\n}\n";
}

}  // namespace scan695::inspector
