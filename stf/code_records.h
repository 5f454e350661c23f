// The Code records, the last ones of the STF file: the chunks of target memory are collected while
// the input is read, and written sorted by memory and address, neighbours merged:
//
//     Code.0{
//     address=0x1000;          or address=data 0x1000; for any memory type but 0
//     body=0x28
//     "00112233..."            at most 32 bytes a line, a new line for every chunk
//     ;
//     }
#pragma once

#include <cstdint>

#include "store/records.h"

namespace scan695 {

// Adds a chunk of record.length bytes; a length of 0 adds nothing. The bytes are not copied: they
// must stay until outCode has run. No memory ends the run.
void outCodeAdd(const CODEINFO& record, const uint8_t* bytes);

// Writes all records and frees the collection.
void outCode();

}  // namespace scan695
