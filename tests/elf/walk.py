"""A walk over every entry of the debug information, compared with what `show --json` tells: every
type, member, item, parameter, symbol, location, block and line once, and nothing else."""
from elftools.dwarf.dwarf_expr import DWARFExprParser
from elftools.dwarf.locationlists import LocationEntry
from elftools.elf.elffile import ELFFile

ENTRY_KINDS = {"pointer": "pointer_type", "array": "array_type", "struct": "structure_type",
               "union": "union_type", "function": "subroutine_type",
               "enumeration": "enumeration_type"}
BASIC = ["", "unsigned char", "char", "unsigned short", "short", "unsigned int", "int",
         "unsigned long", "long", "float", "double", "long double", "bit"]
VOID = (0, 32)
UNTYPED = (0, 32, 34)
OPEN = 0xFFFFFFFF


class Walk:
    def __init__(self, program, may_cut=False):
        """`may_cut`: some types lead back to themselves, and references may be cut."""
        self.program, self.may_cut = program, may_cut
        self.dwarf = ELFFile(open(program.elf, "rb")).get_dwarf_info()
        self.units = list(self.dwarf.iter_CUs())
        self.expressions = DWARFExprParser(self.units[0].structs)
        self.rows = {row["type"]: row for row in reversed(program.types)}
        self.is_c166 = program.header["processor"] != "TriCore"

    def run(self):
        self.check_types()
        functions = [self.function_of(block) for block in self.program.blocks]
        blocks, symbols = {}, {}
        for block, function in zip(self.program.blocks, functions):
            blocks.setdefault(self.scope(block, "outer"), []).append((block, function))
        named = {function["record"] for function in functions if function}
        for symbol in self.program.symbols:
            if symbol["record"] not in named:
                symbols.setdefault(self.scope(symbol, "block"), []).append(symbol)
        self.scopes = (symbols, blocks)
        for number, unit in enumerate(self.units[1:]):
            module = number if number < len(self.program.modules) else None
            self.check_scope(list(unit.get_top_DIE().iter_children()), ("module", module))
            self.check_lines(unit, module)
        assert not symbols and not blocks, "symbols or blocks without an entry"

    # Attributes.

    def name(self, die, attribute="DW_AT_name"):
        return die.attributes[attribute].value.decode("latin-1") if attribute in die.attributes else ""

    def value(self, die, attribute, default=None):
        return die.attributes[attribute].value if attribute in die.attributes else default

    # Types: an entry is told by its offset, a basic type by its name.

    def target(self, die):
        if "DW_AT_type" not in die.attributes: return None
        target = die.get_DIE_from_attribute("DW_AT_type")
        bits = self.value(target, "DW_AT_bit_size")
        if "DW_AT_declaration" in target.attributes: return self.name(target)
        if target.tag == "DW_TAG_base_type" and bits is None: return self.name(target)
        return target.offset if bits is None else (bits, target.attributes["DW_AT_data_bit_offset"].value)

    def check_target(self, die, index):
        found, asked = self.target(die), index
        for _ in range(64):
            row = self.rows.get(index)
            if not row or row["kind"] != "attribute": break
            index = row["target"]
        if found in (f"type_{asked}", f"type_{index}"):
            assert self.may_cut or not row or row["kind"] not in ENTRY_KINDS, asked
        elif index in VOID:
            assert found is None, asked
        elif index < 100:
            assert found == (BASIC[index] if index < len(BASIC) else found), asked
        elif index & 0x800000:
            assert found == f"unresolved_{index & 0x7FFFFF}", asked
        elif row["kind"] == "bitfield":
            assert found == (row["bits"], row["bit_offset"]), asked
        else:
            assert found == self.offsets[index], (asked, found)

    def check_types(self):
        rows = [row for row in self.program.types if row["kind"] in ENTRY_KINDS]
        top = self.units[0].get_top_DIE()
        entries = list(top.iter_children()) if top.has_children else []
        self.offsets = {}
        for row, die in zip(rows, entries):
            self.offsets.setdefault(row["type"], die.offset)
        assert len(entries) >= len(rows)
        for row, die in zip(rows, entries):
            assert die.tag == "DW_TAG_" + ENTRY_KINDS[row["kind"]], row
            assert self.name(die) == (row["name"] or ""), row
            if row["kind"] not in ("array", "function"):
                assert self.value(die, "DW_AT_byte_size") == row["size"], row
            if row["kind"] in ("pointer", "array", "function", "enumeration"):
                self.check_target(die, row["target"])
            self.check_fields(row, list(die.iter_children()))
        for die in entries[len(rows):]:
            assert die.tag in ("DW_TAG_base_type", "DW_TAG_unspecified_type") or (
                "DW_AT_declaration" in die.attributes), die

    def check_fields(self, row, children):
        if row["kind"] == "array":
            bound = self.value(children[0], "DW_AT_upper_bound", -1)
            assert bound + 1 == row["count"] and len(children) == 1, row
            return
        fields = row["members"] or row["items"] or row["parameters"] or []
        assert len(fields) == len(children), row
        for field, die in zip(fields, children):
            assert self.name(die) == field.get("name", ""), (row, field)
            if row["kind"] == "enumeration":
                assert die.attributes["DW_AT_const_value"].value == field["value"], field
            elif (field.get("bits") or 0) > 0:
                first = 8 * field["offset"] + field["bit_offset"]
                found = (self.value(die, "DW_AT_bit_size"), self.value(die, "DW_AT_data_bit_offset"))
                assert found == (field["bits"], first), field
                self.check_target(die, field["parent"])
            else:
                assert self.value(die, "DW_AT_data_member_location") == field.get("offset"), field
                self.check_target(die, field["type"])

    # Scopes: symbols first, then blocks, both in the order of their records.

    def scope(self, row, outer):
        return ("block", row[outer]) if row[outer] is not None else ("module", row["module"])

    def function_of(self, block):
        if block["kind"] != "function" or block["size"] == 0: return None
        for storages in (("global",), ("static",)):
            found = [symbol for symbol in self.program.code_symbols.get(block["address"], [])
                     if symbol["storage"] in storages and symbol["module"] == block["module"]]
            found.sort(key=lambda symbol: symbol["type"] < 100)
            if found: return found[0]
        return None

    def check_scope(self, children, scope):
        symbols, blocks = (table.pop(scope, []) for table in self.scopes)
        while children and children[0].tag == "DW_TAG_formal_parameter": children.pop(0)
        assert len(children) == len(symbols) + len(blocks), scope
        for symbol, die in zip(symbols, children): self.check_symbol(die, symbol)
        for (block, function), die in zip(blocks, children[len(symbols):]):
            kind = "subprogram" if block["kind"] == "function" else "lexical_block"
            assert die.tag == "DW_TAG_" + kind, block
            self.check_code(die, block, [b for b, _ in blocks])
            if function: self.check_function(die, function)
            self.check_scope(list(die.iter_children()), ("block", block["record"]))

    def check_code(self, die, block, siblings):
        """A block has the code of its record, but for what other blocks hide."""
        begin, end = block["address"], min(block["address"] + block["size"], 2**32)
        low = self.value(die, "DW_AT_low_pc")
        if low is not None:
            assert begin <= low and low + self.value(die, "DW_AT_high_pc") <= end, block
        is_whole = low == begin and self.value(die, "DW_AT_high_pc") == end - begin
        overlapped = [b for b in siblings if b is not block and b["size"] != 0 and
                      b["address"] < end and begin < b["address"] + b["size"]]
        assert is_whole or overlapped or block["size"] == 0 or self.may_cut, block

    def check_name(self, die, symbol):
        assert self.name(die) == symbol["name"], symbol
        assert ("DW_AT_external" in die.attributes) == (symbol["storage"] == "global"), symbol

    def check_function(self, die, symbol):
        self.check_name(die, symbol)
        row = self.rows.get(symbol["type"])
        if not row or row["kind"] != "function": return
        self.check_target(die, row["target"])
        children = [c for c in die.iter_children() if c.tag == "DW_TAG_formal_parameter"]
        assert len(children) == len(row["parameters"]), symbol
        for child, parameter in zip(children, row["parameters"]):
            self.check_target(child, parameter["type"])
        if "DW_AT_frame_base" not in die.attributes or not symbol["adjustments"]: return
        found = [(b, e, ops[0].args[-1]) for b, e, ops in self.location_list(die, "DW_AT_frame_base")]
        for a in symbol["adjustments"]:
            if a["begin"] < (a["end"] or OPEN):
                assert found.count((a["begin"], a["end"] or OPEN, a["value"])) == 1, symbol

    def check_symbol(self, die, symbol):
        row = self.rows.get(symbol["type"])
        has_address = symbol["storage"] in ("global", "static") and symbol["memory"] != "register"
        if has_address and row and row["kind"] == "function":
            assert die.tag == "DW_TAG_subprogram" and self.value(die, "DW_AT_low_pc") == symbol["value"]
            return self.check_function(die, symbol)
        self.check_name(die, symbol)
        if has_address and symbol["type"] in UNTYPED and not symbol["locations"]:
            assert die.tag == "DW_TAG_label" and self.value(die, "DW_AT_low_pc") == symbol["value"], symbol
            return
        assert die.tag == "DW_TAG_variable", symbol
        if symbol["locations"]:
            stated = [(l["begin"], OPEN if l["end"] is None else l["end"], self.place_of(l))
                      for l in symbol["locations"]]
            found = [(b, e, self.place(ops)) for b, e, ops in self.location_list(die, "DW_AT_location")]
            assert found == [lifetime for lifetime in stated if lifetime[0] < lifetime[1]], symbol
            self.check_target(die, symbol["type"])
            return
        place = self.place(self.expressions.parse_expr(self.value(die, "DW_AT_location")))
        if symbol["type"] == 12 and "bit" in symbol["memory"]:
            assert place == ("address", symbol["value"] // 8), symbol
            assert self.target(die) == (1, symbol["value"] % 8), symbol
            return
        storage = "register" if symbol["memory"] == "register" else symbol["storage"]
        if storage == symbol["storage"]:
            assert place == self.place_of(symbol), (symbol, place)
        assert place[0] == storage.replace("global", "address").replace("static", "address"), symbol
        self.check_target(die, symbol["type"])

    # Places.

    def location_list(self, die, attribute):
        if attribute not in die.attributes: return []
        entries = self.dwarf.location_lists().get_location_list_at_offset(
            die.attributes[attribute].value, die)
        return [(e.begin_offset, e.end_offset, self.expressions.parse_expr(e.loc_expr))
                for e in entries if isinstance(e, LocationEntry)]

    def place(self, operations):
        first = operations[0]
        if first.op_name == "DW_OP_addr": return ("address", first.args[0])
        if first.op_name == "DW_OP_fbreg": return ("auto", first.args[0])
        numbers = [op.args[0] if op.args else int(op.op_name[9:]) for op in operations
                   if op.op_name.startswith("DW_OP_reg")]
        if not self.is_c166: return ("register", numbers[0])
        names = [f"R{n}" if n < 16 else f"R{'LH'[n % 2]}{n // 2 - 8}" for n in numbers]
        return ("register", ",".join(reversed(names)))

    def place_of(self, row):
        if row["storage"] == "auto": return ("auto", row["value"])
        if row["storage"] != "register": return ("address", row["value"])
        return ("register", row["register"] if self.is_c166 else row["value"])

    def check_lines(self, unit, module):
        stated = [(row["address"], row["line"]) for row in self.program.lines if row["module"] == module]
        program = self.dwarf.line_program_for_CU(unit)
        states = [entry.state for entry in program.get_entries()] if program else []
        found = [(s.address, s.line) for s in states if s and not s.end_sequence]
        assert found == sorted(stated), module
        ends = [s.address for s in states if s and s.end_sequence]
        assert bool(ends) == bool(stated) and len(ends) <= len(stated), module
