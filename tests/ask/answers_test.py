"""Compares the answers of find, type and size with a plain walk over the tables of show, and every
document with the schema: answers_test.py COMMAND RANDOM_PROGRAMS SOURCE"""

import bisect
import json
import pathlib
import random
import subprocess
import sys
import tempfile

import jsonschema

COMMAND, PROGRAMS, SOURCE = sys.argv[1:4]
COUNT = 40
SCHEMA = json.loads((pathlib.Path(SOURCE) / "docs/json.schema.json").read_text())
VALIDATOR = jsonschema.Draft202012Validator(SCHEMA)
failures = 0


def run(*arguments, queries=None):
    result = subprocess.run([COMMAND, *arguments], input=queries, capture_output=True, check=False)
    if result.returncode > 1 or not result.stdout:
        return None
    return json.loads(result.stdout)


def expect(is_good, *what):
    global failures
    if not is_good:
        failures += 1
        if failures < 20:
            print("FAILED", *what)


def holds(item, address):
    return item["address"] <= address < item["address"] + item["size"]


def last(items, test):
    found = [item for item in items if test(item)]
    return found[-1] if found else None


class Tables:
    """The tables of show and what follows from them, by walking through all of them."""

    def __init__(self, show):
        self.show = show
        self.by_block = {block["record"]: block for block in show["blocks"]}
        self.variables = sorted(
            (s for s in show["symbols"] if s["storage"] in ("global", "static") and s["size"]
             and s["memory"] in ("code", "memory 1", "data", "memory 3")),
            key=lambda s: (s["value"], -s["size"], s["record"]))

    def chain(self, address):
        block = last(self.show["blocks"], lambda b: holds(b, address))
        blocks = []
        while block:
            blocks.append(block)
            block = self.by_block.get(block["outer"])
        return blocks

    def functions(self, block):
        """Symbols that may stand for the function of a block."""
        header = self.show["header"]
        outer = header["nof_global_symbols"] + header["nof_module_symbols"]
        here = [s for s in self.show["symbols"] if s["memory"] == "code" and s["record"] < outer
                and s["value"] == block["address"] and s["module"] == block["module"]]
        typed = [s for s in here if 100 <= s["type"] < 0x800000]
        return {s["record"]: s["name"] for s in typed or here}

    def label(self, address, range_):
        order = {"code": 0, "data": 2, "unknown": 6}
        header = self.show["header"]
        outer = header["nof_global_symbols"] + header["nof_module_symbols"]
        near = [s for s in self.show["symbols"] if s["record"] < outer and s["memory"] in order
                and range_["address"] <= s["value"] <= address
                and s["module"] in (None, range_["module"])]
        return max(near, key=lambda s: (s["value"], -order[s["memory"]], -s["record"]), default=None)

    def line(self, address, module):
        found = last(self.show["lines"], lambda l: l["address"] <= address)
        return found if found and found["module"] == module else None

    def alive(self, address):
        alive = {}
        for block in self.chain(address):
            end = block["address"] + block["size"] - 1
            for s in self.show["symbols"]:
                if s["block"] != block["record"]:
                    continue
                spans = [l for l in s["locations"] if l["begin"] <= address and (
                    l["end"] is None or address < l["end"] or address == l["end"] == end)]
                if spans or not s["locations"]:
                    alive[s["record"]] = spans[0] if spans else None
        return alive


def check_address(name, tables, answer):
    show, address = tables.show, answer["address"]
    where = (name, hex(address))
    code = max((c for c in show["code"] if holds(c, address)),
               key=lambda c: (c["address"], c["record"]), default=None)
    expect(answer["code"] == (code and code["record"]), *where, "code")
    expect(answer["memory"] == (code and code["memory"]), *where, "memory")
    range_ = last(show["ranges"], lambda r: holds(r, address))
    expect(answer["module"] == (range_ and range_["module"]), *where, "module")
    chain = tables.chain(address)
    expect(answer["blocks"] == chain, *where, "blocks")
    function = next((b for b in chain if b["kind"] == "function"), None)
    if function:
        candidates = tables.functions(function)
        expect(answer["function_offset"] == address - function["address"], *where, "offset")
        expect(candidates.get(answer["function"]) == answer["function_name"], *where, "function")
    else:
        symbol = last(tables.variables, lambda s: s["value"] <= address < s["value"] + s["size"])
        if not symbol and range_:
            symbol = tables.label(address, range_)
        expect(answer["symbol"] == (symbol and symbol["record"]), *where, "symbol")
        expect(not answer["function"], *where, "no function")
    line = range_ and tables.line(address, range_["module"])
    expect(answer["line"] == (line and line["line"]), *where, "line")
    expect({v["record"]: v["location"] for v in answer["variables"]} == tables.alive(address),
           *where, "variables")


def check_find(name, file, tables, chance):
    show = tables.show
    edges = {0, 0xFFFFFFFF}
    for item in show["blocks"] + show["ranges"] + show["code"]:
        edges |= {item["address"] + d for d in (-1, 0, item["size"] - 1, item["size"])}
    for s in tables.variables:
        edges |= {s["value"] + d for d in (-1, 0, s["size"] - 1, s["size"])}
    edges |= {line["address"] + d for line in show["lines"] for d in (0, 1)}
    edges = [a for a in edges if 0 <= a < 1 << 32]
    addresses = chance.sample(sorted(edges), min(len(edges), 150))

    lower = lambda text: "".join(chr(ord(c) + 32) if "A" <= c <= "Z" else c for c in text)
    names = {s["name"] for s in show["symbols"]} - {""}
    names |= {n.swapcase() for n in chance.sample(sorted(names), min(len(names), 20))}
    names = sorted(n for n in names if "*" not in n and ord(max(n)) < 256)
    stars = [n[:2] + "*" for n in names[:3]] + ["*" + n[-2:] for n in names[-2:]] + ["*"]
    lines = [f"{l['source']}:{l['line'] + d}" for l in show["lines"][::7] if l["source"]
             for d in (0, 1)]
    queries = [hex(a) for a in addresses] + names + stars + lines
    document = run("find", file, "-", "--json", queries="\n".join(queries).encode("latin-1"))
    VALIDATOR.validate(document)
    answers = document["answers"]
    expect(len(answers) == len(queries), name, "answers", len(answers), len(queries))
    for address, answer in zip(addresses, answers):
        check_address(name, tables, answer)
    for query, answer in zip(names + stars, answers[len(addresses):]):
        if query.endswith("*") or query.startswith("*"):
            part = lower(query.strip("*"))
            match = str.startswith if query.endswith("*") else str.endswith
            wanted = {s["record"] for s in show["symbols"] if match(lower(s["name"]), part)}
        else:
            wanted = {s["record"] for s in show["symbols"] if s["name"] == query} or {
                s["record"] for s in show["symbols"] if lower(s["name"]) == lower(query)}
        expect({s["record"] for s in answer["symbols"]} == wanted, name, repr(query))
    for query, answer in zip(lines, answers[len(addresses) + len(names) + len(stars):]):
        source, line = query.rsplit(":", 1)
        same = [l for l in show["lines"] if l["source"] == source] or [
            l for l in show["lines"] if lower(l["source"] or "") == lower(source)]
        wanted = sorted(l["record"] for l in same if l["line"] == int(line))
        expect(sorted(l["record"] for l in answer["lines"]) == wanted, name, query)


def holes(layout):
    if layout["kind"] == "enumeration" or layout["size"] > 1000:
        return layout["holes"]
    bits = [False] * (8 * layout["size"])
    for m in layout["members"]:
        begin = 8 * m["offset"] + (m["bit_offset"] or 0)
        width = max(m["bits"], 0) if m["bits"] is not None else 8 * (m["size"] or 0)
        bits[begin:begin + width] = [True] * len(bits[begin:begin + width])
    found, at = [], 0
    while at < len(bits):
        if bits[at]:
            at += 1
            continue
        end = bits.index(True, at) if True in bits[at:] else len(bits)
        found.append({"offset": at // 8, "bit_offset": at % 8, "bits": end - at})
        at = end
    return found


def check_types(name, file, tables):
    document = run("type", file, "--json")
    VALIDATOR.validate(document)
    rows = {t["type"]: t for t in tables.show["types"]
            if t["kind"] in ("struct", "union", "enumeration")}
    listed = [t for layout in document["layouts"] for t in layout["types"]]
    expect(sorted(listed) == sorted(rows), name, "types listed")
    for layout in document["layouts"]:
        row = {key: layout[key] for key in rows[layout["type"]]}
        expect(row == rows[layout["type"]], name, "row", layout["type"])
        expect(layout["holes"] == holes(layout), name, "holes", layout["type"])
        shape = lambda t: [(m["name"], m["offset"], m["type_name"], m["bit_offset"], m["bits"])
                           for m in t["members"]] + t["items"]
        expect(all(shape(rows[t]) == shape(layout) and rows[t]["size"] == layout["size"]
                   for t in layout["types"]), name, "equal layouts", layout["types"])


def check_sizes(name, file, tables):
    document = run("size", file, "--json")
    VALIDATOR.validate(document)
    show = tables.show

    def owners(items, begin, size, owner):
        """Stretches that do not overlap: what begins first has the bytes."""
        taken, reach = [], 0
        for item in items:
            first, end = max(item[begin], reach), item[begin] + item[size]
            if first < end:
                taken.append((first, end, item[owner]))
            reach = max(reach, end)
        return taken

    def owner_of(taken, address):
        at = bisect.bisect_right(taken, (address, 1 << 40, 0)) - 1
        return taken[at][2] if at >= 0 and address < taken[at][1] else None

    ranges = owners(sorted(show["ranges"], key=lambda r: r["address"]), "address", "size", "module")
    variables = owners(tables.variables, "value", "size", "record")
    module_of = {s["record"]: s["module"] for s in show["symbols"]}
    sums, image = {}, set()

    def count(module, what, number):
        sums[module, what] = sums.get((module, what), 0) + number

    for code in show["code"]:
        for address in range(code["address"], code["address"] + code["size"]):
            image.add(address)
            module, variable = owner_of(ranges, address), owner_of(variables, address)
            if module is not None:
                count(module, "code", 1)
            elif variable is not None:
                count(module_of[variable], "constants", 1)
            else:
                count(None, "code" if code["memory"] == "code" else "constants", 1)
    image = sorted(image)
    for begin, end, record in variables:
        inside = bisect.bisect_left(image, end) - bisect.bisect_left(image, begin)
        count(module_of[record], "data", end - begin - inside)
    total = {"code": 0, "constants": 0, "data": 0}
    for row in document["modules"]:
        for what in total:
            total[what] += row[what]
            expect(row[what] == sums.get((row["module"], what), 0), name, "size", row["module"], what)
        expect(row["lines"] == sum(l["module"] == row["module"] for l in show["lines"]), name, "lines")
    totals = document["totals"]
    expect(all(totals[what] == total[what] for what in total), name, "totals")
    expect(totals["code"] + totals["constants"] == totals["image"]
           == sum(c["size"] for c in show["code"]), name, "image")
    owned = sum(r["code"] for r in document["modules"] if r["module"] is not None)
    expect(sum(f["code"] for f in document["functions"]) + totals["code_outside_functions"] == owned,
           name, "functions")
    expect(all(m["size"] == m["code"] + m["constants"] + m["nobody"]
               for m in document["memories"]), name, "memories")
    for rows, key in (("memories", "size"), ("functions", "size"), ("variables", "size")):
        order = [row[key] for row in document[rows]]
        expect(order == sorted(order, reverse=True), name, rows, "order")


def check_diff(name, file, other):
    same = run("diff", file, file, "--json")
    VALIDATOR.validate(same)
    expect(same["is_equal"] and not same["symbols"], name, "diff with itself")
    document = run("diff", file, other, "--json")
    VALIDATOR.validate(document)
    expect(not document["is_equal"], name, "diff with", other)
    back = run("diff", other, file, "--json")
    expect(len(back["symbols"]) == len(document["symbols"]), name, "diff the other way")


def main():
    chance = random.Random(1)
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([PROGRAMS, folder, str(COUNT)], check=True)
        files = sorted(pathlib.Path(SOURCE, "samples").glob("*.abs"))
        files += [pathlib.Path(folder, f"{i}.abs") for i in range(1, COUNT + 1)]
        checked, before = 0, None
        for source in files:
            abs_file = pathlib.Path(folder, source.name)
            abs_file.write_bytes(source.read_bytes())
            converted = subprocess.run([COMMAND, "--debug", "--quiet", abs_file, "-o", "/dev/null"],
                                       stdin=subprocess.DEVNULL, capture_output=True, check=False)
            if converted.returncode:
                continue
            file = abs_file.with_name(abs_file.stem.upper() + ".FST")
            show = run("show", str(file), "--json")
            checked += 1
            VALIDATOR.validate(show)
            tables = Tables(show)
            check_find(file.name, str(file), tables, chance)
            check_types(file.name, str(file), tables)
            check_sizes(file.name, str(file), tables)
            if before:
                check_diff(file.name, str(file), before)
            before = str(file)
    print(checked, "programs,", failures, "failures")
    return 1 if failures or checked < 20 else 0


sys.exit(main())
