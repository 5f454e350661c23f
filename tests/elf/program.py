"""A program as `scan695 show --json` tells it, and the ELF file that `scan695 elf` makes of it."""
import json
import pathlib
import re
import subprocess

BIT = 12  # the basic type


def run(*command, status=0):
    """Runs a tool that must not complain; gives its standard output, bytes beyond ASCII kept."""
    done = subprocess.run([str(word) for word in command], capture_output=True,
                          encoding="utf-8", errors="surrogateescape")
    assert done.returncode == status, f"{command}: status {done.returncode}\n{done.stderr}"
    assert not re.search("warning|error", done.stderr, re.I), f"{command}:\n{done.stderr}"
    return done.stdout


class Program:
    def __init__(self, scan695, fst, elf):
        self.elf = elf
        self.bytes = pathlib.Path(fst).read_bytes()
        tables = json.loads(run(scan695, "show", fst, "--json"))
        for name in ("symbols", "types", "modules", "blocks", "lines", "ranges", "code"):
            setattr(self, name, sorted(tables[name], key=lambda row: row["record"]))
        run(scan695, "elf", fst, "-o", elf)

    def image(self):
        """The bytes of the code blocks by memory and address, later blocks over earlier ones."""
        image = {}
        for block in self.code:
            body = self.bytes[block["offset"]:block["offset"] + block["size"]]
            for i, byte in enumerate(body):
                image[block["memory"], (block["address"] + i) % 2**32] = byte
        return image

    def addressed_symbols(self):
        return [symbol for symbol in self.symbols
                if symbol["storage"] in ("global", "static") and symbol["memory"] != "register"
                and not (symbol["type"] == BIT and "bit" in symbol["memory"])]
