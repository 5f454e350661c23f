// Writes the manual pages of the command and its completion for shells into a folder:
// describe_commands FOLDER TAILS DATE. It runs while scan695 is built and is not installed.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

#include "cli/commands.h"
#include "cli/convert_command.h"
#include "manual/bash_completion.h"
#include "manual/page.h"
#include "manual/zsh_completion.h"

namespace {

namespace fs = std::filesystem;

void Save(const fs::path& path, const std::string& text) {
    fs::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    if (!(file << text) || !file.flush()) throw std::runtime_error("cannot write " + path.string());
}

std::string Load(const fs::path& path) {
    std::ostringstream text;
    const std::ifstream file(path, std::ios::binary);
    if (!(text << file.rdbuf())) throw std::runtime_error("cannot read " + path.string());
    return std::move(text).str();
}

struct Places {
    fs::path folder;
    fs::path tails;
    std::string date;
};

void SavePage(const CLI::App& app, const std::string& name, const Places& places) {
    std::string title = name;
    for (char& c : title) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    Save(places.folder / "man1" / (name + ".1"), ".Dd " + places.date + "\n.Dt " + title +
                                                     " 1\n.Os\n" + scan695::manual::PageOf(app) +
                                                     Load(places.tails / (name + ".mdoc")));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) return 2;
    const Places places = {argv[1], argv[2], argv[3]};
    try {
        CLI::App app;
        scan695::cli::DeclareCommands(app);
        SavePage(app, "scan695", places);
        for (const CLI::App* subcommand : app.get_subcommands({})) {
            SavePage(*subcommand, "scan695-" + subcommand->get_name(), places);
        }
        const std::string fallback = scan695::cli::CONVERT_COMMAND.name;
        Save(places.folder / "bash" / "scan695", scan695::manual::BashCompletion(app, fallback));
        Save(places.folder / "zsh" / "_scan695", scan695::manual::ZshCompletion(app, fallback));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
