// A table of an FST file as rows of named cells: one description for the listings as text and for
// the JSON document.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "inspector/reader.h"

namespace scan695::inspector {

struct Cell {
    enum Kind { NOTHING, TEXT, NUMBER, HEX };
    Kind kind = NOTHING;
    std::string text;
    int64_t number = 0;
};

struct Column {
    const char* name;
    int width;               // in a listing, at least; below 0 for left-aligned, 0 for not listed
    bool is_in_json = true;  // false for what other columns tell as well
};

using Cells = std::vector<Cell>;

// A list within a row: its name and what each of its elements tells.
struct Detail {
    const char* name;
    std::vector<Column> columns;
};

struct Row {
    Cells cells;                              // one for each column
    std::vector<std::vector<Cells>> details;  // the elements of each detail
};

using RowSink = std::function<void(const Row&)>;

struct Table {
    const char* name;
    std::vector<Column> columns;
    std::vector<Detail> details;
    // Hands out the rows in the order of the table's index.
    void (*rows)(const Fst& fst, const RowSink& sink);
};

// Cells by what they hold. Text is the bytes of the file.
inline Cell TextCell(std::string text) {
    return {Cell::TEXT, std::move(text), 0};
}
inline Cell NumberCell(int64_t number) {
    return {Cell::NUMBER, {}, number};
}
inline Cell HexCell(uint32_t number) {
    return {Cell::HEX, {}, number};
}

}  // namespace scan695::inspector
