// The private folder of one conversion. The library works in it under a name that nothing else has,
// so no older file is touched before the conversion has succeeded, two conversions never meet, and
// what the library makes of its input's name (the name of the FST file, its lines on the console)
// does not matter: the name is put right on the way to the user.
#pragma once

#include <optional>
#include <string>

namespace scan695::cli {

struct Staging {
    std::string folder;  // empty: there is none
    std::string parent;  // as MakeStaging got it
    // Names in the folder.
    std::string input;
    std::string fst;  // the one that the library makes of `input`
    static constexpr const char* STF = "out.stf";
    static constexpr const char* TRACE = "trace";

    std::string PathOf(const std::string& name) const;
};

// A name for a hidden file that does not exist yet.
std::string HiddenName();

// Makes the folder in `parent`, which is on the file system of the results, or else (an empty one,
// or one too deep for a child) in the folder for temporary files. Gives false with errno set.
bool MakeStaging(const std::string& parent, Staging& staging);

// Removes the folder with all that lies in it.
void RemoveStaging(Staging& staging);

// Empties the folder and keeps it for the next one that is made in the same parent: making and
// removing a folder can cost more than a small conversion.
void KeepStaging(Staging& staging);
void RemoveKeptStagings();

// Why FILE ("-" for standard input) is no input at all, as far as shows without reading it.
std::optional<std::string> ExamineInput(const std::string& file);

// Puts FILE into the folder: as a link where it is a regular file and links are to be had, else as
// a copy, of which the beginning will do if it is nothing that anybody here reads. A pipe without a
// writer waits for one, or else it is as good as empty. Gives the cause if that fails.
std::optional<std::string> StageInput(const std::string& file, const Staging& staging,
                                      bool waits_for_writer = true);

}  // namespace scan695::cli
