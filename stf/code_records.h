// The Code records, the last ones of the STF file: the load records of the input are collected
// while it is read, and written sorted by memory and address, neighbours merged:
//
//     Code.0{
//     address=0x1000;          or address=data 0x1000; for any memory type but 0
//     body=0x28
//     "00112233..."            at most 32 bytes a line, a new line for every chunk
//     ;
//     }
//
// What is sorted and merged are the chunks of at most 256 bytes in which every repetition of a load
// record is cut. They are never listed: a few bytes of the input may stand for millions of them.
#pragma once

#include <cstdint>

namespace scan695 {

// Adds `repeats` times the same `size` bytes, one behind the other from `address` on, which wraps;
// less than 2^31 bytes in all. The bytes are not copied: they stand in the image of the input,
// which must stay until outCode has run. No memory ends the run.
void outCodeAdd(int8_t mem_type, uint32_t address, const uint8_t* bytes, uint32_t size,
                uint32_t repeats);

// Writes all records and frees the collection.
void outCode();

}  // namespace scan695
