// Answers to "where is it, what is there": an address, a name, a source line.
#pragma once

#include <iosfwd>
#include <string>

#include "ask/line_search.h"
#include "ask/places.h"
#include "ask/symbol_search.h"
#include "inspector/json_writer.h"

namespace scan695::ask {

// What a question asks for: "0x1F0" and "496" an address, "main.c:120" a line, all else a name.
struct Query {
    enum Kind { ADDRESS, NAME, LINE };
    Kind kind = NAME;
    std::string text;
    uint32_t address = 0;
    std::string source = {};
    uint32_t line = 0;
};

Query ParseQuery(std::string text);

// Answers questions about one file, which must live longer. Each answer costs a few binary
// searches; what the file has no index for is sorted once, when it is first needed.
class Finder {
  public:
    explicit Finder(const Fst& fst) : fst_(fst), places_(fst), symbols_(fst), lines_(fst) {}

    // Each prints the whole answer and gives false if there is none.
    bool Print(const Query& query, std::ostream& out);
    bool Write(const Query& query, inspector::JsonWriter& json);

    // An address as symbolizers tell it, in one line: "0x1f0 main+0x12 main.c:120 MAIN_C". Names
    // and lines as Print does it.
    bool PrintBrief(const Query& query, std::ostream& out);

  private:
    bool PrintAddress(const Query& query, std::ostream& out);
    bool PrintNames(const Query& query, std::ostream& out);
    bool PrintLine(const Query& query, std::ostream& out);
    bool WriteAddress(const Query& query, inspector::JsonWriter& json);
    bool WriteNames(const Query& query, inspector::JsonWriter& json);
    bool WriteLine(const Query& query, inspector::JsonWriter& json);

    std::string NameOf(const Symbol& symbol) const;
    std::string FunctionName(const Symbol& symbol) const;
    std::string LineText(const Line& line) const;
    std::string HeadOf(const Place& place) const;
    std::string SourceOf(int64_t module) const;
    std::string ModuleName(int64_t module) const;
    std::optional<Line> LineOf(const Symbol& symbol) const;

    const Fst& fst_;
    Places places_;
    SymbolSearch symbols_;
    LineSearch lines_;
};

}  // namespace scan695::ask
