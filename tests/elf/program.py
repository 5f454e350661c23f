"""A program as `scan695 show --json` tells it, and the ELF file that `scan695 elf` makes of it."""
import json
import pathlib
import re
import shutil
import subprocess

BIT = 12  # the basic type


def run(*command, status=0):
    """Runs a tool that must not complain; gives its standard output, every byte as a character."""
    done = subprocess.run([str(word) for word in command], capture_output=True, encoding="latin-1")
    assert done.returncode == status, f"{command}: status {done.returncode}\n{done.stderr}"
    assert not re.search("warning|error", done.stderr, re.I), f"{command}:\n{done.stderr}"
    return done.stdout


class Program:
    def __init__(self, scan695, fst, elf):
        self.fst, self.elf = fst, elf
        self.bytes = pathlib.Path(fst).read_bytes()
        tables = json.loads(run(scan695, "show", fst, "--json").encode("latin-1"))
        for name in ("symbols", "types", "modules", "blocks", "lines", "ranges", "code"):
            setattr(self, name, sorted(tables[name], key=lambda row: row["record"]))
        self.header = tables["header"]
        self.code_symbols = {}
        for symbol in self.symbols:
            if symbol["memory"] == "code" and symbol["block"] is None:
                self.code_symbols.setdefault(symbol["value"], []).append(symbol)
        run(scan695, "elf", fst, "-o", elf)

    def image(self):
        """The bytes of the code blocks by memory and address, later blocks over earlier ones."""
        image = {}
        for block in self.code:
            body = self.bytes[block["offset"]:block["offset"] + block["size"]]
            for i, byte in enumerate(body):
                image[block["memory"], (block["address"] + i) % 2**32] = byte
        return image

    def last_lines(self):
        """The last line of every address that has one."""
        rows = sorted(self.lines, key=lambda row: (row["address"], row["line"]))
        return {row["address"]: row for row in rows}

    def place(self, line):
        """A line as addr2line writes it."""
        if line["module"] is None: return f"(no module):{line['line'] or '?'}"
        module = self.modules[line["module"]]
        return f"{module['source'] or module['name'] or '?'}:{line['line'] or '?'}"

    def addressed_symbols(self):
        return [symbol for symbol in self.symbols
                if symbol["storage"] in ("global", "static") and symbol["memory"] != "register"
                and not (symbol["type"] == BIT and "bit" in symbol["memory"])]


def open_programs(scan695, folder, files):
    """Makes the folder anew and gives a Program for each file, and the file's name."""
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    for file in map(pathlib.Path, files):
        fst = file
        if file.suffix == ".abs":
            shutil.copy(file, folder)
            run(scan695, folder / file.name, "-o", folder / "stf", "--debug", "-q")
            fst = folder / (file.stem.upper() + ".FST")
        yield Program(scan695, fst, str(folder / file.stem) + ".elf"), file.stem
