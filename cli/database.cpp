#include "cli/database.h"

#include "cli/complain.h"
#include "cli/file_head.h"
#include "cli/host.h"
#include "cli/local_file.h"
#include "cli/run.h"

namespace scan695::cli {

namespace {

std::optional<inspector::Fst> Load(const std::string& file, const std::string& path) {
    inspector::Fst fst;
    std::string error;
    if (!inspector::Load(ToPath(path), fst, error)) {
        Complain(file, error);
        return {};
    }
    fst.path = file == "-" ? "" : file;  // answers name what was asked about, not a copy of it
    return fst;
}

std::optional<inspector::Fst> Convert(const std::string& file, const std::string& path) {
    std::optional<inspector::Fst> fst;
    Request request;
    request.file = path;
    request.debug = true;
    RunConversions({request}, {}, [&](Conversion& conversion) {
        conversion.request.file = file;
        if (TellOutcome(conversion, false)) fst = Load(file, DatabaseOf(conversion));
    });
    return fst;
}

}  // namespace

std::optional<inspector::Fst> OpenDatabase(const std::string& file) {
    const LocalFile local(file);
    if (!local.cause.empty()) {
        Complain(file, local.cause);
        return {};
    }
    const std::string head = HeadOf(local.path);
    if (IsDatabase(head)) return Load(file, local.path);
    if (IsObject(head)) return Convert(file, local.path);
    Complain(file, "neither an object file nor an FST file");
    return {};
}

}  // namespace scan695::cli
