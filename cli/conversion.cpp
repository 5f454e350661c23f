#include "cli/conversion.h"

#include <cerrno>
#include <utility>

#include "cli/causes.h"
#include "cli/cleanup.h"
#include "cli/places.h"

namespace scan695::cli {

namespace {

constexpr size_t CONSOLE_BYTES = size_t{64} * 1024;

bool Fail(Conversion& conversion, std::string cause) {
    if (conversion.cause.empty()) conversion.cause = std::move(cause);
    return false;
}

bool OpenOutputs(Conversion& conversion) {
    const Request& request = conversion.request;
    for (const std::string& name : {request.stf, request.fst}) {
        if (name.empty()) continue;
        Output& output = conversion.outputs.emplace_back();
        if (const auto cause = OpenOutput(name, output)) return Fail(conversion, *cause);
    }
    if (request.trace.empty()) return true;
    if (const auto cause = OpenOutput(request.trace, conversion.trace)) {
        return Fail(conversion, *cause);
    }
    return true;
}

// The folder lies where the first file of the results will be, so that it can be moved there.
bool MakeFolder(Conversion& conversion) {
    const Output* first = nullptr;
    if (!conversion.trace.final_path.empty()) first = &conversion.trace;
    for (auto output = conversion.outputs.rbegin(); output != conversion.outputs.rend(); ++output) {
        if (!output->final_path.empty()) first = &*output;
    }
    if (MakeStaging(first == nullptr ? "" : FolderOf(*first), conversion.staging)) return true;
    const std::string reason = ErrorText(errno);
    return Fail(conversion, first == nullptr ? "cannot make a temporary folder: " + reason
                                             : WriteFailure(first->name, reason));
}

// Where each output is made, and the trace's descriptor.
bool StageOutputs(Conversion& conversion) {
    const Staging& staging = conversion.staging;
    size_t next = 0;
    if (!conversion.request.stf.empty()) {
        conversion.outputs[next++].staged = staging.PathOf(Staging::STF);
    }
    if (!conversion.request.fst.empty()) {
        conversion.outputs[next++].staged = staging.PathOf(staging.fst);
    }
    if (conversion.trace.final_path.empty()) return true;
    conversion.trace.staged = staging.PathOf(Staging::TRACE);
    conversion.trace.descriptor = CreateNew(conversion.trace.staged);
    if (conversion.trace.descriptor != -1) return true;
    return Fail(conversion, WriteFailure(conversion.trace.name, ErrorText(errno)));
}

void NameOnConsole(Conversion& conversion) {
    const Request& request = conversion.request;
    const bool is_named = !request.fst.empty() && request.fst != FstNameOf(request.file, "");
    conversion.console.names = {
        {UpperCase(conversion.staging.input), UpperCase(request.file)},
        {conversion.staging.fst, is_named ? request.fst : UpperCase(FstNameOf(request.file, ""))},
    };
}

bool IsDebug(const Request& request) {
    return request.debug || !request.fst.empty() || !request.trace.empty();
}

void EndChild(Conversion& conversion) {
    if (conversion.child.process == -1) return;
    const HoldSignals hold;
    ReleaseChild(conversion.child.process);
    CloseDescriptor(conversion.child.console);
    KillChild(conversion.child.process);
    conversion.child = {};
}

bool WriteTrace(Conversion& conversion, const std::string& text) {
    Output& trace = conversion.trace;
    if (trace.descriptor == -1 || WriteAll(trace.descriptor, text.data(), text.size())) return true;
    return Fail(conversion, WriteFailure(trace.name, ErrorText(errno)));
}

// A trace that went to a file of ours becomes an output like the others.
bool CloseTrace(Conversion& conversion) {
    Output& trace = conversion.trace;
    if (trace.descriptor == -1) return true;
    const bool is_stream = trace.final_path.empty();
    const bool is_good = is_stream ? CanBeClosed(trace.descriptor)
                                   : CloseDescriptor(std::exchange(trace.descriptor, -1));
    if (!is_good) return Fail(conversion, WriteFailure(trace.name, ErrorText(errno)));
    if (!is_stream) conversion.outputs.push_back(std::exchange(trace, {}));
    return true;
}

// The library does not tell which output failed: it completes the STF file first.
std::string FailedOutput(const Conversion& conversion, const std::string& reason) {
    const Request& request = conversion.request;
    const std::string stf = conversion.staging.PathOf(Staging::STF);
    const bool is_stf = !request.stf.empty() && (request.fst.empty() || CheckStf(stf, ""));
    const std::string& name = is_stf ? request.stf : request.fst;
    if (name.empty()) return "cannot write a temporary file: " + reason;
    return WriteFailure(name, reason);
}

std::string CauseOfEnd(const Conversion& conversion, const ChildEnd& end) {
    if (end.is_file_limit) return FailedOutput(conversion, ErrorText(EFBIG));
    if (end.signal != 0) {
        return "the conversion was ended by signal " + std::to_string(end.signal) + " (" +
               SignalText(end.signal) + ")";
    }
    const std::string message = FatalMessage(conversion.console);
    if (message.empty()) return "the conversion ended with status " + std::to_string(end.status);
    if (IsOutputMessage(message))
        return FailedOutput(conversion, WhyNoRoom(conversion.staging.folder));
    return CauseOf(message);
}

}  // namespace

bool StartConversion(Conversion& conversion) {
    const Request& request = conversion.request;
    if (const auto cause = ExamineInput(request.file)) return Fail(conversion, *cause);
    if (!OpenOutputs(conversion) || !MakeFolder(conversion) || !StageOutputs(conversion))
        return false;
    if (const auto cause = StageInput(request.file, conversion.staging)) {
        return Fail(conversion, *cause);
    }
    NameOnConsole(conversion);
    const ChildTask task = {conversion.staging.folder, conversion.staging.input,
                            request.stf.empty() ? NULL_DEVICE : Staging::STF, IsDebug(request)};
    const HoldSignals hold;
    if (!StartChild(task, conversion.child)) {
        return Fail(conversion, "cannot start a process: " + ErrorText(errno));
    }
    GuardChild(conversion.child.process);
    return true;
}

bool ReadConversion(Conversion& conversion) {
    static std::vector<char> buffer(CONSOLE_BYTES);
    const long count = ReadSome(conversion.child.console, buffer.data(), buffer.size());
    if (count <= 0) return false;
    std::string trace;
    ReadConsole(conversion.console, buffer.data(), static_cast<size_t>(count), trace);
    return WriteTrace(conversion, trace);
}

bool FinishConversion(Conversion& conversion) {
    if (!conversion.cause.empty()) return false;
    const ChildEnd end = WaitForChild(conversion.child);
    ReleaseChild(conversion.child.process);
    CloseChild(conversion.child);
    conversion.child = {};

    const bool is_failure = end.signal != 0 || end.status != 0;
    std::string rest;
    EndConsole(conversion.console, rest);
    if (!WriteTrace(conversion, rest) || !CloseTrace(conversion)) return false;
    if (is_failure) return Fail(conversion, CauseOfEnd(conversion, end));

    const std::string stf = conversion.staging.PathOf(Staging::STF);
    if (!conversion.request.stf.empty()) {
        if (const auto cause = CheckStf(stf, conversion.request.stf)) {
            return Fail(conversion, *cause);
        }
    }
    if (const auto cause = Deliver(conversion.outputs)) return Fail(conversion, *cause);
    return true;
}

std::string DatabaseOf(const Conversion& conversion) {
    return conversion.staging.PathOf(conversion.staging.fst);
}

void DropConversion(Conversion& conversion) {
    EndChild(conversion);
    for (Output& output : conversion.outputs) CloseOutput(output);
    CloseOutput(conversion.trace);
    KeepStaging(conversion.staging);
}

}  // namespace scan695::cli
