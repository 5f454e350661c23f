// What the scan cannot know of a symbol: its size and, below attributed types, its final type and
// memory.
#pragma once

#include <cstdint>
#include <memory>

namespace scan695 {

// What a symbol of a type becomes, whatever its name and address.
struct TypeEnd {
    enum Memory : uint8_t { KEPT, SET, BY_ADDRESS };

    uint32_t type_index = 0;  // at the end of the chain
    uint32_t size = 0;        // in bytes
    int8_t mem_type = 0;      // if SET
    Memory memory = KEPT;     // BY_ADDRESS: one of the two bit memories
};

// The ends of the chains that symbols have asked for. Chains share their tails, and the ends of all
// links of a chain are found in one walk over it, so that no file can make the walks long. Types
// are known by the bits that a look-up goes by.
class TypeEnds {
  public:
    // A type that is not found, and a chain that comes back to itself, end the run.
    TypeEnd Find(uint32_t type_index);

  private:
    struct Link {
        TypeEnd end;        // while it is walked over: what this link alone does
        uint16_t previous;  // while it is walked over: the link in front of it
        bool known;
        bool is_end;  // the chain ends here, and with it the type index by which it was reached
    };

    Link* LinkOf(uint32_t type_index);
    // Gives the end of a type where it is known, and true, or what its link does by itself.
    bool LookAt(uint32_t type_index, uint32_t last, TypeEnd& end);
    void EndWalk(TypeEnd end, uint32_t nof_links, uint32_t last);

    struct FreeMemory {
        void operator()(void* memory) const;
    };
    std::unique_ptr<Link[], FreeMemory> links_;  // null when there is no memory: walks stay single
};

// The size in bytes of an object of a type, which must be a basic type or stand in the finished
// type sections. Walks down through attributed types: each replaces `type_index` and, by its
// attribute, `mem_type`; `value` tells the two bit memories apart.
uint32_t SymbolSize(TypeEnds& ends, uint32_t value, uint32_t& type_index, int8_t& mem_type);

}  // namespace scan695
