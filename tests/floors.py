#!/usr/bin/env python3
"""The floor plan of docs/architecture.md against the #include lines: floors.py ROOT [CXX FLAGS...]

Fails on an arrow from a room to one that does not lie lower, on a room without a floor, on a circle
of includes between files (a header and its source count as one), and on a header that does not
compile alone.
"""
import pathlib
import re
import subprocess
import sys

root = pathlib.Path(sys.argv[1])
rows = re.findall(r"^\| (\d+) \| `(\w+)/` \|", (root / "docs/architecture.md").read_text(), re.M)
floors = {room: int(floor) for floor, room in rows}
outside = {"bench", "build", "examples", "fuzz", "include", "samples", "tests"}
files = [f.relative_to(root) for f in root.glob("*/*") if f.suffix in (".h", ".cpp", ".inc", ".c")]
files = sorted(f for f in files if f.parts[0] not in outside)
faults = [f"{room}/ stands on no floor" for room in {f.parts[0] for f in files} - set(floors)]
uses = {}  # file without its suffix: those that it includes
for file in files:
    unit = uses.setdefault(file.with_suffix(""), set())
    for name in re.findall(r'^#include "(\w+/[\w.]+)"', (root / file).read_text(), re.M):
        used = pathlib.Path(name)
        here, there = file.parts[0], used.parts[0]
        if used.with_suffix("") != file.with_suffix(""):
            unit.add(used.with_suffix(""))
        if here != there and there != "include" and floors.get(there, 99) >= floors.get(here, 99):
            faults.append(f"{file} (floor {floors.get(here)}) includes {name} ({floors.get(there)})")

done = set()


def visit(file, way):
    if file in way:
        faults.append("circle: " + " -> ".join(map(str, way[way.index(file):] + [file])))
    elif file not in done:
        for used in sorted(uses.get(file, ())):
            visit(used, way + [file])
        done.add(file)


for file in sorted(uses):
    visit(file, [])

# A header whose source includes it first has been compiled alone; the others are compiled here.
alone = []
for header in (f for f in files if f.suffix == ".h" and "windows" not in f.name):
    sources = [f for f in files if f.suffix != ".h" and f.with_suffix("") == header.with_suffix("")]
    first = [re.search(r"^#include .*", (root / f).read_text(), re.M).group() for f in sources]
    if f'#include "{header}"' not in first:
        alone.append(f'#include "{header}"\n')
if len(sys.argv) > 2:
    for line in alone:
        command = [*sys.argv[2:], "-fsyntax-only", f"-I{root}", f"-I{root}/include", "-xc++", "-"]
        result = subprocess.run(command, input=line, capture_output=True, text=True, check=False)
        if result.returncode != 0:
            faults.append(f"{line} does not compile alone:\n{result.stderr[:2000]}")
print("\n".join(faults))
sys.exit(1 if faults or not files else 0)
