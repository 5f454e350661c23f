#!/usr/bin/env python3
"""read_stf.py FILE.STF: lists the functions of a program with their local variables."""
import re
import sys

HEAD = re.compile(r"(\w+)\.(-?\d+)\{$")
FIELD = re.compile(r'([\w/>. \-\[\]]+?)=("(?:\\.|[^"\\])*"|[^;]*);?')


def value_of(text):
    if text.startswith('"'):
        return re.sub(r"\\(.)", r"\1", text[1:-1])
    return text


def read_records(path):
    """All records by kind and number; a later record of the same number adds to the first."""
    records = {}
    fields = None
    with open(path, encoding="latin-1", newline="\r\n") as file:
        for line in (line.rstrip("\r\n") for line in file):
            head = HEAD.match(line)
            if line.startswith("//") or line in (";", "}"):
                continue
            if head:
                fields = records.setdefault(head[1], {}).setdefault(int(head[2]), {})
            elif line.startswith('"'):
                fields.setdefault("bytes", bytearray()).extend(bytes.fromhex(line[1:-1]))
            else:
                key, value = FIELD.match(line).groups()
                fields[key] = value_of(value)
    return records


def main(path):
    records = read_records(path)
    symbols = records.get("Symbol", {}).values()
    for number, block in sorted(records.get("Block", {}).items()):
        names = [s["name"] for s in symbols if s.get("address") == block.get("blkbegin")]
        locals_ = [s["name"] for s in symbols if s.get("block") == f"@Block.{number}"]
        print(block.get("blkbegin"), names[0] if names else "-", *locals_)
    code = records.get("Code", {}).values()
    print(sum(len(c.get("bytes", b"")) for c in code), "bytes of code and data")


if __name__ == "__main__":
    main(sys.argv[1])
