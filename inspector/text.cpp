#include "inspector/text.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ostream>
#include <string>
#include <vector>

#include "inspector/summary.h"

namespace scan695::inspector {

namespace {

std::string CellText(const Cell& cell) {
    switch (cell.kind) {
        case Cell::TEXT:
            return cell.text.empty() ? "\"\"" : cell.text;
        case Cell::NUMBER:
            return std::to_string(cell.number);
        case Cell::HEX: {
            char text[20];
            std::snprintf(text, sizeof text, "0x%x", static_cast<uint32_t>(cell.number));
            return text;
        }
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

// The widths of the columns, headings included; below 0 for left-aligned.
std::vector<int> Widths(const Table& table) {
    std::vector<int> widths;
    for (const Column& column : table.columns) {
        const int heading = static_cast<int>(std::strlen(column.name));
        widths.push_back(column.width < 0 ? std::min(column.width, -heading)
                                          : std::max(column.width, heading));
    }
    return widths;
}

}  // namespace

void PrintSummary(const Fst& fst, std::ostream& out) {
    for (const auto& [name, cell] : HeaderItems(fst)) {
        out << name << ':' << std::string(20 - std::string(name).size(), ' ') << CellText(cell)
            << '\n';
    }
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
    const std::vector<int> widths = Widths(table);
    const size_t last = table.columns.size() - 1;
    for (size_t i = 0; i <= last; ++i) {
        PrintAligned(table.columns[i].name, widths[i], i == last, out);
    }
    table.rows(fst, [&](const Row& row) {
        for (size_t i = 0; i <= last; ++i) {
            PrintAligned(CellText(row.cells[i]), widths[i], i == last, out);
        }
        for (const Cells& detail : row.details) {
            out << "       ";
            for (size_t i = 0; i < detail.size(); ++i) {
                if (detail[i].kind == Cell::NOTHING) continue;
                out << ' ' << table.detail_columns[i] << '=' << CellText(detail[i]);
            }
            out << '\n';
        }
    });
}

}  // namespace scan695::inspector
