#include "cli/result_file.h"

#include <cerrno>
#include <utility>

#include "cli/command.h"
#include "cli/host.h"
#include "cli/places.h"

namespace scan695::cli {

ResultFile::~ResultFile() {
    if (descriptor != -1) CloseDescriptor(descriptor);
    CloseOutput(output);
    RemoveStaging(staging);
}

std::optional<std::string> OpenResult(const std::string& file, const std::string& out,
                                      ResultFile& result) {
    if (out.empty()) throw UsageError{"-o: OUT is empty"};
    const std::string key = out == "-" ? KeyOf(STANDARD_OUTPUT) : KeyOf(out);
    if (!key.empty() && key == (file == "-" ? KeyOf(STANDARD_INPUT) : KeyOf(file))) {
        throw UsageError{out + ": the output is the input"};
    }
    if (auto cause = OpenOutput(out, result.output)) return cause;
    const bool is_stream = result.output.final_path.empty();
    if (!MakeStaging(is_stream ? "" : FolderOf(result.output), result.staging)) {
        return WriteFailure(out, ErrorText(errno));
    }
    result.output.staged = result.staging.PathOf(Staging::STF);
    result.descriptor = CreateNew(result.output.staged);
    if (result.descriptor == -1) return WriteFailure(out, ErrorText(errno));
    return {};
}

std::optional<std::string> WriteResult(ResultFile& result, std::string_view bytes) {
    if (WriteAll(result.descriptor, bytes.data(), bytes.size())) return {};
    return WriteFailure(result.output.name, ErrorText(errno));
}

std::optional<std::string> DeliverResult(ResultFile& result) {
    if (!CloseDescriptor(std::exchange(result.descriptor, -1))) {
        return WriteFailure(result.output.name, ErrorText(errno));
    }
    std::vector<Output> outputs = {result.output};
    auto cause = Deliver(outputs);
    result.output = outputs[0];
    return cause;
}

}  // namespace scan695::cli
