#include "inspector/text.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "inspector/names.h"
#include "inspector/summary.h"

namespace scan695::inspector {

namespace {

std::string CellText(const Cell& cell) {
    switch (cell.kind) {
        case Cell::TEXT:
            return cell.text.empty() ? "\"\"" : Printable(cell.text);
        case Cell::NUMBER:
            return std::to_string(cell.number);
        case Cell::HEX:
            return HexText(static_cast<uint32_t>(cell.number));
        default:
            return "-";
    }
}

// Pads to the column's width; nothing trails behind the last column.
void PrintAligned(const std::string& text, int width, bool is_last, std::ostream& out) {
    const size_t wanted = static_cast<size_t>(width < 0 ? -width : width);
    const std::string padding(text.size() < wanted ? wanted - text.size() : 0, ' ');
    if (width >= 0) out << padding;
    out << text;
    if (width < 0 && !is_last) out << padding;
    out << (is_last ? "\n" : "  ");
}

// The columns of a listing with their widths, headings included; below 0 for left-aligned.
std::vector<std::pair<size_t, int>> ListedColumns(const Table& table) {
    std::vector<std::pair<size_t, int>> listed;
    for (size_t i = 0; i < table.columns.size(); ++i) {
        const Column& column = table.columns[i];
        if (column.width == 0) continue;
        const int heading = static_cast<int>(std::strlen(column.name));
        listed.emplace_back(i, column.width < 0 ? std::min(column.width, -heading)
                                                : std::max(column.width, heading));
    }
    return listed;
}

void PrintDetail(const Detail& detail, const Cells& cells, std::ostream& out) {
    out << "       ";
    for (size_t i = 0; i < cells.size(); ++i) {
        const Column& column = detail.columns[i];
        if (column.width == 0 || cells[i].kind == Cell::NOTHING) continue;
        out << ' ' << column.name << '=' << CellText(cells[i]);
    }
    out << '\n';
}

}  // namespace

void PrintSummary(const Fst& fst, std::ostream& out) {
    const auto print = [&](const std::string& name, const std::string& text) {
        out << name << ':' << std::string(20 - name.size(), ' ') << text << '\n';
    };
    for (const HeaderItem& item : HeaderItems(fst)) print(item.name, CellText(item.cell));
    print("basic_sizes", BasicSizesText(fst));
    out << "\nsection                   offset    entries       size\n";
    for (const SectionItem& section : SectionItems(fst)) {
        char line[120];
        std::snprintf(line, sizeof line, "%-20s  0x%08llx %10llu %10llu\n", section.name,
                      static_cast<unsigned long long>(section.offset),
                      static_cast<unsigned long long>(section.entries),
                      static_cast<unsigned long long>(section.size));
        out << line;
    }
}

void PrintTable(const Fst& fst, const Table& table, std::ostream& out) {
    const auto listed = ListedColumns(table);
    const size_t last = listed.back().first;
    for (const auto& [column, width] : listed)
        PrintAligned(table.columns[column].name, width, column == last, out);
    table.rows(fst, [&](const Row& row) {
        for (const auto& [column, width] : listed)
            PrintAligned(CellText(row.cells[column]), width, column == last, out);
        for (size_t i = 0; i < table.details.size(); ++i) {
            for (const Cells& cells : row.details[i]) PrintDetail(table.details[i], cells, out);
        }
    });
}

}  // namespace scan695::inspector
