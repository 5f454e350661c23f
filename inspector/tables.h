// The tables of an FST file as rows of named cells: one description for the listings as text and
// for the JSON document.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
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
    int width;  // in a listing, at least; below 0 for left-aligned
};

using Cells = std::vector<Cell>;

struct Row {
    Cells cells;                 // one for each column
    std::vector<Cells> details;  // one for each detail column
};

using RowSink = std::function<void(const Row&)>;

struct Table {
    const char* name;
    std::vector<Column> columns;
    const char* detail_name;  // what a detail of a row is called; null for none
    std::vector<const char*> detail_columns;
    // Hands out the rows in the order of the table's index.
    void (*rows)(const Fst& fst, const RowSink& sink);
};

// Null for a name that no table has.
const Table* FindTable(const std::string& name);

}  // namespace scan695::inspector
