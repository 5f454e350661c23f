"""What binutils say of the ELF file of a program: binutils_test.py SCAN695 FOLDER FILE...

FILE is an object file or an FST file; FOLDER is made anew."""
import pathlib
import re
import sys

from program import open_programs, run


def read_hex(text):
    """An Intel hex file or one of S records as bytes by address."""
    image, base = {}, 0
    for line in text.split():
        if line[0] == "S" and line[1] in "123":
            width = int(line[1]) + 1
            address, data = int(line[4:4 + 2 * width], 16), bytes.fromhex(line[4 + 2 * width:-2])
        elif line[0] == ":" and line[7:9] == "00":
            address, data = base + int(line[3:7], 16), bytes.fromhex(line[9:-2])
        else:
            if line[7:9] == "04": base = int(line[9:13], 16) << 16
            if line[7:9] == "02": base = int(line[9:13], 16) << 4
            continue
        image.update((address + i, byte) for i, byte in enumerate(data))
    return image


def sections(elf):
    """Name, address and size of the sections that are loaded."""
    rows = [row[7:].split() for row in run("readelf", "-SW", elf).splitlines() if "PROGBITS" in row]
    return [(row[0], int(row[2], 16), int(row[4], 16)) for row in rows if "A" in row[6]]


def check_image(program):
    """Flash formats hold the memory image, byte by byte."""
    image = program.image()
    if not image: return
    flat = {address: byte for (_, address), byte in sorted(image.items())}
    for target in ("ihex", "srec"):
        out = program.elf + "." + target
        run("objcopy", "-O", target, program.elf, out)
        if len(flat) == len(image):  # no two memories at one address
            assert read_hex(pathlib.Path(out).read_text()) == flat, target
    memories = {"text": "code", "data": "data", "memory6": "unknown"}
    found = {}
    for name, address, size in sections(program.elf):
        run("objcopy", "-I", "elf32-little", "-O", "binary", "-j", name, program.elf,
            program.elf + ".bin")
        data = pathlib.Path(program.elf + ".bin").read_bytes()
        assert len(data) == size, name
        memory = memories[name.split(".")[1]]
        found.update(((memory, address + i), byte) for i, byte in enumerate(data))
    assert found == image


def check_symbols(program):
    """nm tells every symbol that has an address, once, and no other."""
    rows = re.findall(r"(?s)([0-9a-f]{8}) . (.*?)\n(?=[0-9a-f]{8} . |$)",
                      run("nm", "--no-sort", program.elf))
    stated = [(symbol["value"], symbol["name"]) for symbol in program.addressed_symbols()]
    assert sorted((int(address, 16), name) for address, name in rows) == sorted(stated)
    bindings = [row.split()[4] for row in run("readelf", "-sW", program.elf).splitlines()[4:]]
    globals_ = [s for s in program.addressed_symbols() if s["storage"] == "global"]
    assert bindings.count("GLOBAL") == len(globals_)


def check_lines(program):
    """addr2line tells the last line of every address in the image, and its file."""
    image = {address for _, address in program.image()}
    lines = {address: line for address, line in program.last_lines().items() if address in image}
    if not lines: return
    addresses = [hex(address) for address in lines]
    answers = run("addr2line", "-e", program.elf, *addresses).split("\n")
    for (address, line), answer in zip(lines.items(), answers):
        assert answer == program.place(line), (hex(address), answer)


def main(scan695, folder, *files):
    for program, name in open_programs(scan695, pathlib.Path(folder), files):
        run("readelf", "-a", "-w", "-W", program.elf)
        check_image(program)
        check_symbols(program)
        check_lines(program)
        first = pathlib.Path(program.elf).read_bytes()
        run(scan695, "elf", program.fst, "-o", program.elf)
        assert pathlib.Path(program.elf).read_bytes() == first, "not reproducible"
        print(f"{name}: {len(program.symbols)} symbols, {len(first)} bytes")


main(*sys.argv[1:])
