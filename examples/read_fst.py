#!/usr/bin/env python3
"""read_fst.py FILE.FST ADDRESS: tells which function and which line an address belongs to."""
import bisect
import struct
import sys

NONE = 0xFFFFFFFF


class Fst:
    def __init__(self, path):
        with open(path, "rb") as file:
            self.bytes = file.read()
        (self.modules, self.blocks, self.symbols, self.lines) = self.words(4, 4)
        (self.block_index,) = self.words(36, 1)
        (self.nof_blocks, _, self.nof_globals, self.nof_module_symbols) = self.words(72, 4)
        (self.nof_lines,) = self.words(92, 1)
        (self.line_index,) = self.words(124, 1)

    def words(self, offset, count):
        return struct.unpack_from(f"<{count}I", self.bytes, offset)

    def name(self, offset):
        return self.bytes[offset : self.bytes.index(0, offset)].decode("latin-1") if offset else ""

    def sorted_record(self, table, size, index, entry):
        return self.words(table + size * self.words(index + 4 * entry, 1)[0], size // 4)

    def function_at(self, address):
        """The last block, in the order of addresses, that holds the address, and its parents."""
        key = lambda entry: self.sorted_record(self.blocks, 24, self.block_index, entry)[0]
        entry = bisect.bisect_right(range(self.nof_blocks), address, key=key)
        for i in reversed(range(entry)):
            block = self.sorted_record(self.blocks, 24, self.block_index, i)
            if address - block[0] < block[1]:
                while block[2] != NONE:
                    block = self.words(self.blocks + 24 * block[2], 6)
                return self.symbol_at(block[0]), address - block[0]
        return None, 0

    def symbol_at(self, address):
        for i in range(self.nof_globals + self.nof_module_symbols):
            symbol = self.words(self.symbols + 36 * i, 9)
            if symbol[1] == address and symbol[6] >> 24 == 0:
                return self.name(symbol[0])
        return None

    def line_at(self, address):
        key = lambda entry: self.sorted_record(self.lines, 12, self.line_index, entry)[0]
        entry = bisect.bisect_right(range(self.nof_lines), address, key=key)
        if entry == 0:
            return None
        _, module, number = self.sorted_record(self.lines, 12, self.line_index, entry - 1)
        source = 0 if module == NONE else self.words(self.modules + 24 * module + 4, 1)[0]
        return f"{self.name(source)}:{number & 0xFFFF}"


if __name__ == "__main__":
    fst, address = Fst(sys.argv[1]), int(sys.argv[2], 0)
    function, offset = fst.function_at(address)
    print(f"{function}+{offset:#x}" if function else "no function", fst.line_at(address))
