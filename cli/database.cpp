#include "cli/database.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "cli/commands.h"
#include "cli/complain.h"
#include "scan695.h"

namespace scan695::cli {

namespace {

namespace fs = std::filesystem;

int Convert(const fs::path& folder) {
    const pid_t child = fork();
    if (child == 0) {
        const int null = open("/dev/null", O_RDWR);
        dup2(null, 0);
        dup2(null, 1);
        if (chdir(folder.c_str()) != 0) _exit(FAILED);
        std::exit(::Convert(0, "x.abs", "/dev/null", 1) == nullptr ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

}  // namespace

std::optional<inspector::Fst> OpenDatabase(const std::string& file) {
    inspector::Fst fst;
    std::string error;
    if (inspector::Load(file, fst, error)) return fst;
    if (error == "not an FST file") {
        std::string name = fs::temp_directory_path() / "scan695-XXXXXX";
        if (mkdtemp(name.data()) != nullptr) {
            const fs::path folder = name;
            fs::create_symlink(fs::absolute(file), folder / "x.abs");
            const bool is_open =
                Convert(folder) == 0 && inspector::Load(folder / "X.FST", fst, error);
            fs::remove_all(folder);
            if (is_open) return fst;
            error = "neither an object file that converts nor an FST file";
        }
    }
    Complain(file, error);
    return {};
}

}  // namespace scan695::cli
