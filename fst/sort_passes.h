// The passes of the post-processing, one for each kind of record: each moves its table into the
// image, frees it, completes what the scan could not know, and writes the sorted indexes behind the
// records. They run in the order in which they stand here, with BuildRangeTable behind SortLines;
// a kind without records is skipped. A failure ends the run.
#pragma once

namespace scan695 {

// Type records and the index by here_type_index.
void SortTypes();

// Loads ModuleWork and completes the modules' counts and first symbols; writes nothing.
void PrepareModules();

// Block records with their counts and first symbols, and the index by address.
void SortBlocks();

// Symbol records with their sizes, global ones first, then module by module and block by block; the
// indexes by address and by name, in slices of the same scopes.
void SortSymbols();

// Line records; the indexes by address and by number, in slices for each module, and the one of all
// lines by address.
void SortLines();

// Module records and the index by name. Frees ModuleWork.
void SortModules();

// The code, merged into large blocks and sorted unless it overlaps.
void SortCode();

}  // namespace scan695
