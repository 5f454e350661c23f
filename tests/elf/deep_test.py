"""What debuggers and other readers say of the ELF file of a program:
deep_test.py SCAN695 FOLDER FILE...

FILE is an FST file or an object file; one whose name begins with "odd" holds what no compiler
writes, so that readers need only read it. FOLDER is made anew. Beside binutils_test.py."""
import collections
import pathlib
import re
import subprocess
import sys

from program import open_programs, run
from walk import Walk

IDENTIFIER = re.compile(r"[A-Za-z_][A-Za-z0-9_$]*")


def read_only(*command):
    """Runs a reader that must neither crash nor give up; gives its output."""
    done = subprocess.run([str(word) for word in command], capture_output=True, timeout=300,
                          encoding="latin-1")
    text = done.stdout + done.stderr
    assert done.returncode >= 0 and "internal" not in done.stderr, f"{command}:\n{text[-2000:]}"
    return done.stdout


def check_standards(program, is_odd):
    run("readelf", "-a", "-w", "-W", program.elf)
    said = read_only("llvm-dwarfdump", "--verify", program.elf)
    assert is_odd or "No errors." in said and "warning" not in said, said
    if program.header["processor"] == "TriCore" and not is_odd:
        assert run("eu-elflint", "--gnu-ld", program.elf) == "No errors\n"


def check_all_lines(program):
    """LLVM's addr2line asks the debug information alone, so it knows lines outside the image too."""
    lines = program.last_lines()
    answers = read_only("llvm-addr2line", "-e", program.elf, *map(hex, lines)).split("\n")
    for (address, line), answer in zip(lines.items(), answers):
        assert answer == program.place(line).replace(":?", ":0"), (hex(address), answer)


def layouts(program):
    """What the members of structs and unions are: bit offset, width, size; by name, where several
    may have one name."""
    found = collections.defaultdict(list)
    for row in program.types:
        if row["kind"] in ("struct", "union") and IDENTIFIER.fullmatch(row["name"] or ""):
            found[f"{row['kind']} {row['name']}"].append(
                [(m["name"], 8 * m["offset"] + (m["bit_offset"] or 0), m["bits"], m["size"])
                 for m in row["members"]])
    return found


def is_among(found, candidates, sizes=True):
    """`found` has a text in which the name of a member occurs, in place of the name."""
    return any(len(found) == len(members) and all(
        re.search(rf"\b{re.escape(name)}\b", text) and first == at and width == bits and
        (not sizes or size is None or size == length)
        for (text, first, width, size), (name, at, bits, length) in zip(found, members))
        for members in candidates)


def gdb(program, *commands):
    script = pathlib.Path(program.elf + ".gdb")
    script.write_text("".join(f"echo \\n@{i}\\n\n{c}\n" for i, c in enumerate(commands)))
    text = read_only("gdb", "-nx", "-batch", "-ex", f"source {script}", program.elf)
    return [part.partition("\n")[2] for part in re.split(r"\n@(?=\d+\n)", text)[1:]]


def members_of_gdb(text):
    """The members of the outermost type that `ptype /o` prints."""
    found = []
    for line in text.split("\n"):
        row = re.match(r"/\*\s+(?:(\d+)(?:: ?(\d+))?\s+\|)?\s+(\d+) \*/    (\S.*)", line)
        if row:
            width = re.search(r" : (\d+);", row[4])
            found.append((row[4], 8 * int(row[1] or 0) + int(row[2] or 0),
                          width and int(width[1]), int(row[3])))
        elif re.match(r" {31}\} ", line) and found:  # the name behind a nested type
            found[-1] = (line, *found[-1][1:])
    return found


def check_gdb(program):
    stated = layouts(program)
    for name, text in zip(stated, gdb(program, *(f"ptype /o {name}" for name in stated))):
        candidates = stated[name]
        if name.startswith("union"):  # of which gdb prints no offsets
            candidates = [[(m[0], 0, *m[2:]) for m in members] for members in candidates]
        assert is_among(members_of_gdb(text), candidates), f"{name}:\n{text}\n{candidates}"
    names = collections.Counter(symbol["name"] for symbol in program.symbols)
    unique = [symbol for symbol in program.addressed_symbols()
              if names[symbol["name"]] == 1 and symbol["block"] is None and
              symbol["type"] >= 1 and IDENTIFIER.fullmatch(symbol["name"])]
    answers = gdb(program, *(f"info address {symbol['name']}" for symbol in unique))
    for symbol, answer in zip(unique, answers):
        # What has the address 0 and no code there, gdb takes for removed by the linker.
        is_removed = symbol["value"] == 0 and "at 0x0 in a file" in answer
        assert f"address {symbol['value']:#x}." in answer or is_removed, (symbol, answer)
    blocks = [block for block in program.blocks
              if block["kind"] == "function" and names[block["name"]] == 1]
    for block, text in zip(blocks, gdb(program, *(f"info scope {b['name']}" for b in blocks))):
        for symbol in program.symbols:
            if symbol["block"] == block["record"] and IDENTIFIER.fullmatch(symbol["name"]):
                assert f"Symbol {symbol['name']} is" in text, (symbol, text)


def check_list_main(program, folder):
    line = next((program.last_lines().get(block["address"]) for block in program.blocks
                 if block["name"] == "main"), None)
    if not line or not line["source"]: return
    (folder / line["source"]).write_text("".join(f"text of {n}\n" for n in range(1, 200)))
    text, = gdb(program, f"directory {folder}\nlist main")
    assert f"{line['line']}\ttext of {line['line']}\n" in text, text


def check_pahole(program):
    """pahole takes every pointer for four bytes long."""
    has_short = any(row["kind"] == "pointer" and row["size"] != 4 for row in program.types)
    stated, found = layouts(program), None
    for line in read_only("pahole", program.elf).split("\n"):
        if head := re.match(r"(struct|union) (\S+) \{", line):
            name, found = f"{head[1]} {head[2]}", []
        elif line.startswith("}") and found is not None:
            assert is_among(found, stated[name], not has_short), (name, found, stated[name])
            found = None
        elif row := re.match(r"\t(\S.*?);? +/\* +(\d+)(?:: ?(\d+))? +(\d+) \*/", line):
            width = re.search(r":(\d+)", row[1])
            found.append((row[1], 8 * int(row[2]) + int(row[3] or 0), width and int(width[1]),
                          int(row[4])))


def main(scan695, folder, *files):
    for program, name in open_programs(scan695, pathlib.Path(folder), files):
        is_odd = name.startswith("odd")
        check_standards(program, is_odd)
        Walk(program, is_odd).run()
        check_all_lines(program)
        if is_odd:
            read_only("gdb", "-nx", "-batch", "-ex", "info types", "-ex", "info scope main",
                      "-ex", "list main", "-ex", "info functions", program.elf)
            read_only("pahole", program.elf)
            continue
        check_gdb(program)
        check_list_main(program, pathlib.Path(folder))
        check_pahole(program)
        print(f"{name}: {len(program.types)} types, {len(program.symbols)} symbols")


main(*sys.argv[1:])
