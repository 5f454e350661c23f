#include "cli/local_file.h"

#include <cerrno>

#include "cli/host.h"

namespace scan695::cli {

LocalFile::LocalFile(const std::string& file, bool waits_for_writer) : path(file) {
    if (const auto problem = ExamineInput(file)) {
        cause = *problem;
    } else if (file == "-" || StatusOf(file).kind != FileKind::REGULAR) {
        if (!MakeStaging("", staging_)) {
            cause = "cannot make a temporary folder: " + ErrorText(errno);
            return;
        }
        cause = StageInput(file, staging_, waits_for_writer).value_or("");
        path = staging_.PathOf(staging_.input);
    }
}

LocalFile::~LocalFile() {
    RemoveStaging(staging_);
}

}  // namespace scan695::cli
