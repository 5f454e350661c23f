#include "manual/bash_completion.h"

#include <CLI/CLI.hpp>
#include <sstream>

#include "manual/arguments.h"

namespace scan695::manual {

namespace {

constexpr int ANY_NUMBER = 9999;

// How many of the positional arguments are files.
int FilesOf(const CLI::App& app) {
    int files = 0;
    for (const CLI::Option* option : PositionalsOf(app)) {
        if (!IsFile(*option)) break;
        if (IsRepeated(*option)) return ANY_NUMBER;
        ++files;
    }
    return files;
}

// What the script needs to know of a subcommand, as assignments.
std::string FactsOf(const CLI::App& app) {
    std::string options;
    std::string files_after;
    std::string words_after;
    for (const CLI::Option* option : OptionsOf(app)) {
        for (const std::string& name : NamesOf(*option)) {
            options += ' ' + name;
            if (TakesValue(*option)) (IsFile(*option) ? files_after : words_after) += ' ' + name;
        }
    }
    return "options='" + options + " ' files_after='" + files_after + " ' words_after='" +
           words_after + " ' files=" + std::to_string(FilesOf(app));
}

constexpr char HEAD[] = R"(# Completion of scan695 for bash, made from the command's own grammar.
_scan695()
{
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local options files_after words_after files first=2 taken=0 i
    COMPREPLY=()
    case ${COMP_WORDS[1]} in
)";
// "--output=OUT" comes as three words. An empty reply lets readline complete the names of files,
// unless compopt forbids it.
constexpr char TAIL[] = R"(    if [[ $previous == = ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    elif [[ $current == = ]]; then
        current=
    fi
    if [[ $words_after == *" $previous "* ]]; then
        compopt +o default +o bashdefault 2>/dev/null
        return
    fi
    [[ $files_after != *" $previous "* ]] || return
    if [[ $current == -* ]]; then
        COMPREPLY=($(compgen -W "$options" -- "$current"))
        return
    fi
    if ((COMP_CWORD == 1)); then
        COMPREPLY=($(compgen -W "$subcommands" -- "$current"))
        if ((${#COMPREPLY[@]} > 0)); then
            local names
            mapfile -t names < <(compgen -f -- "$current")
            COMPREPLY+=("${names[@]}")
            compopt -o filenames 2>/dev/null
        fi
        return
    fi
    for ((i = first; i < COMP_CWORD; ++i)); do
        case ${COMP_WORDS[i]} in
            =) ((++i)) ;;
            -?*)
                if [[ ${COMP_WORDS[i + 1]} != = &&
                    "$files_after$words_after" == *" ${COMP_WORDS[i]} "* ]]; then
                    ((++i))
                fi
                ;;
            *) ((++taken)) ;;
        esac
    done
    ((taken < files)) || compopt +o default +o bashdefault 2>/dev/null
}
complete -o bashdefault -o default -F _scan695 scan695
)";

}  // namespace

std::string BashCompletion(const CLI::App& app, const std::string& fallback) {
    std::ostringstream out;
    std::string names;
    out << HEAD;
    for (const CLI::App* subcommand : app.get_subcommands({})) {
        names += ' ' + subcommand->get_name();
        out << "        " << subcommand->get_name() << ") " << FactsOf(*subcommand) << " ;;\n";
    }
    out << "        *) first=1 " << FactsOf(*app.get_subcommand(fallback)) << " ;;\n    esac\n"
        << "    local subcommands='" << names << "'\n    ((COMP_CWORD > 1)) || options+='";
    for (const CLI::Option* option : OptionsOf(app)) out << NamesOf(*option).back() << ' ';
    out << "'\n" << TAIL;
    return std::move(out).str();
}

}  // namespace scan695::manual
