#include "driver/run.h"

#include <csignal>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>

#include "base/text_case.h"
#include "driver/paths.h"
#include "fst/fst_file.h"
#include "input/input_state.h"
#include "platform/files.h"
#include "platform/memory.h"
#include "reader/module_header.h"
#include "report/report.h"
#include "scopes/scope_state.h"
#include "stf/code_records.h"
#include "stf/stf_stream.h"
#include "stf/type_words.h"
#include "store/chunk_file.h"
#include "store/tables.h"
#include "types/type_state.h"

namespace scan695 {

namespace {

constexpr uint32_t CONVERTER_VERSION =
    144;  // in hundredths, as the banner and the STF file tell it

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using OpenFile = std::unique_ptr<std::FILE, CloseFile>;

void FreeInput() {
    std::free(std::exchange(Input.InputImage, nullptr));
}

// The path in upper case, for messages.
std::string UpperCasePath(const char* path) {
    std::string text = path;
    UpperCaseInPlace(text.data());
    return text;
}

// Reads the whole file with one read.
void LoadInput(const char* path) {
    const OpenFile file(std::fopen(path, "rb"));
    if (file == nullptr) ReportAndStop(ERROR_OPEN_INPUT);
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    const int64_t length = FileLength(file.get());
    if (length < 0 || length > ChunkFile::MAX_SIZE) ReportAndStop(ERROR_NO_MEMORY);
    const auto size = static_cast<size_t>(length);
    Input.InputLength = static_cast<uint32_t>(size);
    Input.InputImage = static_cast<uint8_t*>(AllocateLarge(size));
    const bool allocated = size == 0 || Input.InputImage != nullptr;
    if (!allocated || std::fread(Input.InputImage, 1, size, file.get()) != size)
        ReportAndStop(ERROR_NO_MEMORY);
    Input.InputCursor = 0;
}

// Writes the Code records, the last ones of the STF file, and closes it.
void outClose() {
    outCode();
    outCloseFile();
    FreeTypeAliases();
}

}  // namespace

void StartRun(uint32_t debug_mode, const char* stf_path) {
    FreeInput();
    StartReport(debug_mode);
    StartFst();
    StartStore();
    StartInput();
    StartTypes();
    StartScopes();
    StartStf(stf_path != nullptr ? stf_path : "");
}

int32_t RunConversion(const char* input_path) {
    if (input_path == nullptr) ReportAndStop(ERROR_OPEN_INPUT);
    Input.InputPath = UpperCasePath(input_path);
    std::signal(SIGINT, OnInterrupt);
    SetFstPath(input_path, MakeFstPath(Input.InputPath));
    ReserveFstHeader();
    LoadInput(input_path);
    if (IsSameFile(input_path, Stf.FileName)) ReportAndStop(ERROR_OPEN_OUTPUT);
    outOpen(CONVERTER_VERSION);
    ScanModule();
    outClose();
    FreeInput();
    if (Report.DebugMode != 0) FinishFstFile();
    StopCollectingLines();
    return 0;
}

}  // namespace scan695
