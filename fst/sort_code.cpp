#include "fst/code_merger.h"
#include "fst/compare_callbacks.h"
#include "fst/image_access.h"
#include "fst/sort_passes.h"
#include "fst/working_arrays.h"
#include "report/report.h"
#include "store/tables.h"

namespace scan695 {

namespace {

CODEINFO ReadHead(const ChunkFile& file, uint32_t offset) {
    CODEINFO head = {};
    if (!file.ReadAt(offset, &head, sizeof head)) ReportAndStop(ERROR_READ_TEMPORARY);
    return head;
}

// First pass: joins the chunks in which the reader of the data part delivers its records.
void MergeInInputOrder() {
    CodeMerger merger(Store.MergedCodeFile);
    uint32_t offset = 0;
    for (uint32_t i = 0; i < Store.Header.nof_code; ++i) {
        ProgressTick();
        const CODEINFO head = ReadHead(Store.CodeTable, offset);
        offset += sizeof head;
        merger.Add(head, Store.CodeTable, offset);
        offset += head.length;
        Store.CodeTable.FreeInFrontOf(offset);
    }
    Store.Header.nof_code = merger.Finish();
    Store.CodeTable.Free();
}

void LoadCodeWork() {
    AllocateEntries(Work.CodeWork, nullptr, Store.Header.nof_code);
    uint32_t offset = 0;
    for (MergedBlock& block : Work.CodeWork) {
        block.record = ReadHead(Store.MergedCodeFile, offset);
        block.body = offset + uint32_t{sizeof(CODEINFO)};
        offset = block.body + block.record.length;
    }
}

// Looks at all neighbours in sorted order.
bool TellOverlaps() {
    bool overlap = false;
    for (uint32_t i = 1; i < Store.Header.nof_code; ++i) {
        const CODEINFO& a = Work.CodeWork[Work.SortIndex[i - 1]].record;
        const CODEINFO& b = Work.CodeWork[Work.SortIndex[i]].record;
        if (a.mem_type != b.mem_type || a.address + a.length <= b.address) continue;
        Trace("Overlapped code/data: %04X-%04X <-> %04X-%04X\n", a.address,
              a.address + a.length - 1, b.address, b.address + b.length - 1);
        overlap = true;
    }
    return overlap;
}

// Second pass: joins what the input held apart and the sort brought together. Code that overlaps
// stays in the order of the input, since the later bytes count.
void MergeIntoImage(bool in_input_order) {
    Store.Header.code_offs = ImageEnd();
    CodeMerger merger(Store.FstImage);
    for (uint32_t i = 0; i < Store.Header.nof_code; ++i) {
        ProgressTick();
        const MergedBlock& block = Work.CodeWork[in_input_order ? i : Work.SortIndex[i]];
        merger.Add(block.record, Store.MergedCodeFile, block.body);
    }
    Store.Header.nof_code = merger.Finish();
}

}  // namespace

void SortCode() {
    if (Store.Header.nof_code == 0) {
        PrintLine("Warning: no code/data detected\n");
        return;
    }
    Trace("Sorting code\n");
    MergeInInputOrder();
    LoadCodeWork();
    SortRecords(CompareCode, 0, Store.Header.nof_code);
    MergeIntoImage(TellOverlaps());
    Store.MergedCodeFile.Free();
    FreeEntries(Work.CodeWork);
    FreeEntries(Work.SortIndex);
}

}  // namespace scan695
