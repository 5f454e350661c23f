#include "fst/code_merger.h"
#include "fst/compare_callbacks.h"
#include "fst/sort_passes.h"
#include "fst/working_arrays.h"
#include "report/report.h"
#include "store/tables.h"

namespace scan695 {

namespace {

void SeekCode(ChunkFile& file, int64_t offset, ChunkFile::Origin origin) {
    if (file.Seek(offset, origin) == 0) ReportAndStop(ERROR_READ_TEMPORARY);
}

CODEINFO ReadHead(ChunkFile& file) {
    CODEINFO head = {};
    if (file.Read(&head, sizeof head) == 0) ReportAndStop(ERROR_READ_TEMPORARY);
    return head;
}

// First pass: joins the chunks in which the reader of the data part delivers its records.
void MergeInInputOrder() {
    SeekCode(Store.CodeTable, 0, ChunkFile::FROM_START);
    CodeMerger merger(Store.MergedCodeFile);
    for (uint32_t i = 0; i < Store.Header.nof_code; ++i) {
        ProgressTick();
        const CODEINFO head = ReadHead(Store.CodeTable);
        merger.Add(head, Store.CodeTable);
    }
    Store.Header.nof_code = merger.Finish();
    Store.CodeTable.Free();
}

void LoadCodeWork() {
    const uint32_t count = Store.Header.nof_code;
    Work.CodeWork.reset(
        static_cast<CodeEntry*>(AllocateEntries(nullptr, count, sizeof(CodeEntry))));
    ChunkFile& merged = Store.MergedCodeFile;
    SeekCode(merged, 0, ChunkFile::FROM_START);
    for (uint32_t i = 0; i < count; ++i) {
        CodeEntry& entry = Work.CodeWork[i];
        entry.record = ReadHead(merged);
        entry.body = merged.Position();
        SeekCode(merged, entry.record.length, ChunkFile::FROM_CURRENT);
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
    Store.Header.code_offs = SeekImageEnd();
    CodeMerger merger(Store.FstImage);
    for (uint32_t i = 0; i < Store.Header.nof_code; ++i) {
        ProgressTick();
        const CodeEntry& entry = Work.CodeWork[in_input_order ? i : Work.SortIndex[i]];
        SeekCode(Store.MergedCodeFile, entry.body, ChunkFile::FROM_START);
        merger.Add(entry.record, Store.MergedCodeFile);
    }
    Store.Header.nof_code = merger.Finish();
    SeekImageEnd();
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
    SortRecords(CompareCode, Store.Header.nof_code);
    MergeIntoImage(TellOverlaps());
    Work.CodeWork.reset();
    Work.SortIndex.reset();
}

}  // namespace scan695
