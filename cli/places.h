// Names of files on disk: which of them are one file, and what the outputs of FILE are called.
#pragma once

#include <string>
#include <vector>

namespace scan695::cli {

// The name of the file at the end of a chain of links, which need not exist; the name itself when
// it is no link or the chain has no end.
std::string EndOfLinks(const std::string& name);

// A text that is the same for every spelling of one file, also of one that does not exist yet.
// Empty for a device, which any number may share.
std::string KeyOf(const std::string& name);
// The same for what a descriptor leads to; never empty.
std::string KeyOf(int descriptor);

// FILE with another extension, in `folder` if that is not empty: "rel-1.2/fw" becomes
// "rel-1.2/fw.stf", "DIR/fw.stf".
std::string StfNameOf(const std::string& file, const std::string& folder);
std::string TraceNameOf(const std::string& file, const std::string& folder);
// The database has FILE's own name in upper case: "rel-1.2/FW.FST".
std::string FstNameOf(const std::string& file, const std::string& folder);

// A to Z for a to z.
std::string UpperCase(std::string text);

}  // namespace scan695::cli
