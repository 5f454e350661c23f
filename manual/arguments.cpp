#include "manual/arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iterator>

namespace scan695::manual {

namespace {

constexpr const char* NOT_FILES[] = {"N", "QUERY", "NAME"};

}  // namespace

std::vector<const CLI::Option*> OptionsOf(const CLI::App& app) {
    return app.get_options([](const CLI::Option* option) { return !option->get_positional(); });
}

std::vector<const CLI::Option*> PositionalsOf(const CLI::App& app) {
    return app.get_options([](const CLI::Option* option) { return option->get_positional(); });
}

std::vector<std::string> NamesOf(const CLI::Option& option) {
    std::vector<std::string> names;
    for (const std::string& name : option.get_snames()) names.push_back("-" + name);
    for (const std::string& name : option.get_lnames()) names.push_back("--" + name);
    return names;
}

bool TakesValue(const CLI::Option& option) {
    return option.get_items_expected_max() > 0;
}

bool IsRepeated(const CLI::Option& positional) {
    return positional.get_items_expected_max() > 1;
}

bool IsFile(const CLI::Option& option) {
    const std::string type = option.get_type_name();  // "N:INT in [1 - 9]"
    const std::string name =
        option.get_positional() ? option.get_name(true) : type.substr(0, type.find(':'));
    return std::none_of(std::begin(NOT_FILES), std::end(NOT_FILES),
                        [&](const char* other) { return name == other; });
}

}  // namespace scan695::manual
