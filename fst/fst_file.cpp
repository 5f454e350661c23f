#include "fst/fst_file.h"

#include <utility>

#include "fst/post_process.h"
#include "fst/working_arrays.h"
#include "platform/files.h"
#include "report/report.h"
#include "store/tables.h"

namespace scan695 {

FstFileState FstFile;

namespace {

void WriteFinalHeader() {
    Store.Header.basic_sizes_offs = StoreInImage(Store.BasicTypeSizes, NOF_BASIC_SIZES);
    WriteRecord(Store.FstImage, 0, Store.Header);
}

// Written unbuffered, in the blocks of the image, so that a full disk shows.
void SaveImage() {
    if (!IsSameFile(FstFile.place, FstFile.input))
        FstFile.handle = std::fopen(FstFile.place.c_str(), "wb");
    if (FstFile.handle == nullptr) ReportAndStop(ERROR_OPEN_OUTPUT);
    std::setvbuf(FstFile.handle, nullptr, _IONBF, 0);
    if (!Store.FstImage.SaveAndFree(FstFile.handle)) ReportAndStop(ERROR_WRITE_OUTPUT);
    if (std::fclose(std::exchange(FstFile.handle, nullptr)) != 0) ReportAndStop(ERROR_WRITE_OUTPUT);
}

}  // namespace

void StartFst() {
    FreePostProcessWork();
    if (FstFile.handle != nullptr) std::fclose(FstFile.handle);
    FstFile = FstFileState();
    Report.RemoveFstHook = RemoveFstFile;
    Report.FreeWorkHook = FreePostProcessWork;
}

void SetFstPath(const std::string& host_path, const std::string& fst_path) {
    FstFile.FstPath = fst_path;
    FstFile.place = PlaceOfFstFile(host_path, FstFile.FstPath);
    FstFile.input = host_path;
}

void RemoveFstFile() {
    if (FstFile.handle != nullptr) std::fclose(std::exchange(FstFile.handle, nullptr));
    if (!IsSameFile(FstFile.place, FstFile.input)) RemoveFile(FstFile.place);
}

void FinishFstFile() {
    PostProcess();
    WriteFinalHeader();
    SaveImage();
    ReportAndGoOn("\nFile %s created.\n", FstFile.FstPath.c_str());
}

}  // namespace scan695
