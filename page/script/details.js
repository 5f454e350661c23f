// The panel of details: one function for each kind of thing, from the hash's KIND/NUMBER to the
// content. Everything that a thing refers to is a link.

const MOST_LINKS = 60;  // in a list of the panel

function link(hash, content, title) {
    return el("a", {href: hash, title}, content);
}

function typeLink(index, name) {
    return model.typeAt.has(index) ? link("#type/" + index, shown(name)) : shown(name);
}

function moduleLink(index) {
    return model.moduleAt.has(index) ? link("#module/" + index, moduleName(index)) : "\u2013";
}

function functionLink(block) {
    return block ? link("#function/" + block.record, functionName(block)) : "\u2013";
}

function lineLink(line) {
    return line ? link("#line/" + line.record, lineText(line)) : "\u2013";
}

function addressLink(at) {
    return link("#address/" + hex(at), address(at));
}

function mapLink(at, size) {
    return link("#map/" + hex(at) + "+" + hex(Math.max(size, 1)), "show on the map");
}

// Facts as pairs; pairs without a value are left out.
function facts(pairs) {
    const list = el("dl", {class: "facts"});
    for (const [name, value] of pairs) {
        if (value === null || value === undefined || value === "") continue;
        list.append(el("dt", {}, name), el("dd", {}, ...[value].flat()));
    }
    return list;
}

function part(title, ...content) {
    const nodes = content.flat().filter((node) => node !== null);
    return nodes.length === 0 ? null : el("section", {}, el("h3", {}, title), nodes);
}

function smallTable(titles, rows, numeric = []) {
    if (rows.length === 0) return null;
    const kind = (i) => numeric.includes(i) ? "num" : "mono";
    return el("table", {class: "list"},
        el("thead", {}, el("tr", {}, titles.map((title, i) =>
            el("th", {scope: "col", class: kind(i)}, title)))),
        el("tbody", {}, rows.map((cells) => el("tr", {}, cells.map((cell, i) =>
            el("td", {class: kind(i)}, cell))))));
}

function linkList(rows, toLink, moreHash) {
    if (rows.length === 0) return null;
    const items = rows.slice(0, MOST_LINKS).map((row) => el("li", {}, toLink(row)));
    if (rows.length > MOST_LINKS) {
        const rest = "and " + count(rows.length - MOST_LINKS) + " more";
        items.push(el("li", {}, moreHash ? link(moreHash, rest) : rest));
    }
    return el("ul", {class: "links"}, items);
}

function symbolLink(symbol) {
    return link("#symbol/" + symbol.record, shown(symbol.name), symbol.type_name);
}

function quoted(name) {
    return encodeURIComponent("\"" + name.replaceAll("\"", "") + "\"");
}

// Symbols

function placeWords(storage, memory, value, register) {
    if (storage === "register") return "register " + (register || hex(value));
    if (storage === "auto") return "stack " + (value < 0 ? "\u2212" : "+") + hex(Math.abs(value));
    return ADDRESSED_MEMORY.has(memory) ? address(value) : memory + " " + hex(value);
}

function symbolPlace({storage, memory, value, register}) {
    return placeWords(storage, memory, value, register);
}

const locationPlace = symbolPlace;  // the members have the same names

function rangeText(begin, end) {
    return address(begin) + " \u2013 " + (end === null ? "open" : address(end));
}

function symbolDetails(symbol) {
    const at = symbolAddress(symbol);
    const block = model.blockAt.get(symbol.block);
    const around = block ? functionOf(block) : null;
    const size = symbol.functionBlock ? symbol.functionBlock.size : symbol.size;
    return [
        facts([
            ["Place", at === null ? symbolPlace(symbol) : [addressLink(at), " \u00b7 ",
                                                            mapLink(at, size)]],
            ["Size", size > 0 ? bytes(size) : null],
            ["Type", typeLink(symbol.type, symbol.type_name)],
            ["Storage", symbol.storage + " in " + symbol.memory + " memory"],
            ["Module", moduleLink(symbol.module)],
            ["Code", symbol.functionBlock ? functionLink(symbol.functionBlock) : null],
            ["Function", around ? functionLink(around) : null],
            ["Block", block && block.kind !== "function" ? addressLink(block.address) : null],
            ["Line", at !== null && symbol.memory === "code" ? lineLink(lineAtAddress(at)) : null],
        ]),
        part("Lifetimes", smallTable(["Code", "Place"], symbol.locations.map((location) =>
            [rangeText(location.begin, location.end), locationPlace(location)]))),
        part("Stack", adjustmentTable(symbol)),
        layoutPart(plainType(symbol.type)),
    ];
}

function adjustmentTable(symbol) {
    return smallTable(["Code", "Adjusted by"], symbol.adjustments.map((adjustment) =>
        [rangeText(adjustment.begin, adjustment.end), bytes(adjustment.value)]));
}

// Functions

function variableRows(block) {
    const ofBlock = (inner) => symbolsOfBlock(inner.record).map((symbol) =>
        [symbolLink(symbol), typeLink(symbol.type, symbol.type_name), variablePlaces(symbol)]);
    const rows = [];
    const visit = (inner, depth) => {
        rows.push(...ofBlock(inner));
        if (depth < 16) for (const next of inner.inner) visit(next, depth + 1);
    };
    visit(block, 0);
    return rows;
}

function variablePlaces(symbol) {
    if (symbol.locations.length === 0) return symbolPlace(symbol);
    return [...new Set(symbol.locations.map(locationPlace))].join(", ");
}

function symbolsOfBlock(number) {
    model.symbolsByBlock ??= groupBy(model.data.symbols, "block");
    return model.symbolsByBlock.get(number) || [];
}

function innerBlocks(block, found = []) {
    for (const inner of block.inner) {
        if (found.length > 500) return found;
        found.push(inner);
        innerBlocks(inner, found);
    }
    return found;
}

function functionDetails(block) {
    const lines = linesOf(block).filter((line) => line.module === block.module);
    return [
        facts([
            ["Address", [addressLink(block.address), " \u2013 ",
                         address(block.address + block.size - 1), " \u00b7 ",
                         mapLink(block.address, block.size)]],
            ["Size", bytes(block.size)],
            ["Symbol", block.symbol ? symbolLink(block.symbol) : null],
            ["Type", block.symbol ? typeLink(block.symbol.type, block.symbol.type_name) : null],
            ["Module", moduleLink(block.module)],
            ["Lines", lines.length === 0 ? null : [lineLink(lines[0]), " \u2013 ",
                                                   String(lines[lines.length - 1].line)]],
        ]),
        part("Variables", smallTable(["Name", "Type", "Place"], variableRows(block))),
        part("Inner blocks", smallTable(["Address", "Size"], innerBlocks(block).map((inner) =>
            [addressLink(inner.address), count(inner.size)]), [1])),
        part("Stack", block.symbol ? adjustmentTable(block.symbol) : null),
        part("Lines", linkList(lines, (line) => [addressLink(line.address), " " + line.line])),
    ];
}

// Types

function layoutPart(type) {
    if (!isAggregate(type)) return null;
    const rows = layoutRows(type);
    const summary = shown(type.type_name) + " \u00b7 " + layoutSummary(type, rows);
    return el("section", {class: "layoutbox"}, el("h3", {}, "Layout"),
              el("p", {class: "summary"}, summary), layoutPicture(type), layoutTable(type));
}

function typeDetails(type) {
    const users = usersOf(type.type);
    return [
        facts([
            ["Kind", type.kind],
            ["Size", type.size === null ? null : bytes(type.size)],
            [type.kind === "array" ? "Elements" : "Members",
             type.count === null || type.kind === "function" ? null : count(type.count)],
            [type.kind === "function" ? "Returns" : type.kind === "pointer" ? "To" : "Of",
             type.target === null ? null : typeLink(type.target, type.target_name)],
            ["Bits", type.bits === null ? null
                : plural(type.bits, "bit") + " at bit " + type.bit_offset],
            ["In", type.parent === null ? null : typeLink(type.parent, type.parent_name)],
            ["Number", String(type.type)],
        ]),
        layoutPart(type),
        part("Items", smallTable(["Name", "Value"], type.items.map((item) =>
            [shown(item.name), String(item.value)]), [1])),
        part("Parameters", smallTable(["Type", "Size"], type.parameters.map((parameter) =>
            [typeLink(parameter.type, parameter.type_name),
             parameter.size === null ? "?" : count(parameter.size)]), [1])),
        part("Symbols of this type", linkList(users.symbols, symbolLink)),
        part("Types made of it", linkList(users.types,
            (row) => typeLink(row.type, row.type_name))),
    ];
}

// Modules

function moduleDetails(module) {
    const ranges = model.data.ranges.filter((range) => range.module === module.record);
    const functions = model.functions.filter((block) => block.module === module.record);
    const variables = model.variables.filter((symbol) => symbol.module === module.record);
    const query = "?q=module:" + quoted(shown(module.name));
    return [
        facts([
            ["Source", module.source === null ? null : shown(module.source)],
            ["Language", module.language],
            ["Code", bytes(sumOf(ranges)) + " in " + plural(ranges.length, "range")],
            ["Variables", bytes(sumOf(variables)) + " in " + count(variables.length)],
            ["See", [link("#symbols" + query, "symbols"), " \u00b7 ",
                     link("#functions" + query, "functions"), " \u00b7 ",
                     link("#lines" + query, plural(module.nof_lines, "line")), " \u00b7 ",
                     link("#sizes/" + module.record, "sizes")]],
        ]),
        part("Ranges", smallTable(["Address", "Size", ""],
            ranges.slice(0, MOST_LINKS).map((range) => [addressLink(range.address),
                count(range.size), mapLink(range.address, range.size)]), [1])),
        part("Functions", linkList(functions, functionLink, "#functions" + query)),
        part("Variables", linkList(variables, symbolLink, "#symbols" + query)),
    ];
}

// Lines and addresses

function lineDetails(line) {
    const same = model.data.lines.filter((other) => other.module === line.module &&
                                                    other.line === line.line);
    const blocks = blocksAt(line.address);
    return [
        facts([
            ["Source", line.source === null ? null : shown(line.source)],
            ["Module", moduleLink(line.module)],
            ["Address", [addressLink(line.address), " \u00b7 ", mapLink(line.address, 1)]],
            ["Function", blocks.length > 0 ? functionLink(blocks[0]) : null],
        ]),
        same.length < 2 ? null : part("All addresses of this line",
            linkList(same, (other) => addressLink(other.address))),
    ];
}

// Where a variable lives at an address; null where it does not. Without locations it lives in one
// place all over its block.
function placeAt(symbol, at) {
    if (symbol.locations.length === 0) return symbolPlace(symbol);
    const location = symbol.locations.find((candidate) => at >= candidate.begin &&
        (candidate.end === null || at < candidate.end));
    return location ? locationPlace(location) : null;
}

// The innermost block's first.
function aliveRows(blocks, at) {
    return [...blocks].reverse().flatMap((block) => symbolsOfBlock(block.record))
        .map((symbol) => [symbolLink(symbol), typeLink(symbol.type, symbol.type_name),
                          placeAt(symbol, at)])
        .filter((cells) => cells[2] !== null);
}

function addressDetails(at) {
    const place = placeOf(at);
    const {image, range, blocks, line, variable} = place;
    const labels = model.data.symbols.filter((symbol) => symbolAddress(symbol) === at);
    const inner = blocks.slice(1);
    return [
        facts([
            ["Image", image ? image.memory + ", " + rangeText(image.address,
                image.address + image.size - 1) : "no code block here"],
            ["Module", range ? moduleLink(range.module) : null],
            ["Function", blocks.length > 0
                ? [functionLink(blocks[0]), "+" + hex(at - blocks[0].address)] : null],
            ["Blocks", inner.length === 0 ? null : inner.map((block) =>
                rangeText(block.address, block.address + block.size - 1)).join(", ")],
            ["Line", line ? lineLink(line) : null],
            ["Variable", variable
                ? [symbolLink(variable), "+" + hex(at - variable.address)] : null],
            ["Map", mapLink(at, 1)],
        ]),
        part("Symbols at this address", linkList(labels, symbolLink)),
        part("Variables alive here", smallTable(["Name", "Type", "Place"], aliveRows(blocks, at))),
    ];
}

// KIND of a hash: the view that shows such things, the thing, its title and content.
const DETAILS = {
    symbol: {view: "symbols", find: (id) => rowOf("symbols", id), content: symbolDetails,
             title: (symbol) => shown(symbol.name)},
    function: {view: "functions", find: (id) => model.blockAt.get(id), content: functionDetails,
               title: functionName},
    type: {view: "types", find: (id) => model.typeAt.get(id), content: typeDetails,
           title: (type) => shown(type.type_name)},
    module: {view: "overview", find: (id) => model.moduleAt.get(id), content: moduleDetails,
             title: (module) => shown(module.name)},
    line: {view: "lines", find: (id) => rowOf("lines", id), content: lineDetails,
           title: lineText},
    address: {view: "overview", find: (id) => id >= 0 && id < model.space ? id : undefined,
              content: addressDetails, title: address},
};

class DetailPanel {
    constructor() {
        this.heading = el("h2", {tabindex: -1});
        this.kind = el("span", {class: "kind"});
        this.content = el("div", {class: "content"});
        this.element = el("aside", {class: "details", "aria-label": "Details", hidden: true,
                                    keydown: (event) => this.onKey(event)},
            el("div", {class: "detailhead"}, this.kind, this.heading,
               button("\u00d7", "Close the details", closeDetails, {class: "close"})),
            this.content);
    }

    show(kind, id) {
        const {find, content, title} = DETAILS[kind];
        const thing = find(id);
        const hadFocus = this.element.contains(document.activeElement);
        this.element.hidden = false;
        this.kind.textContent = kind;
        this.heading.textContent = thing === undefined ? "Not in this program" : title(thing);
        const nodes = thing === undefined ? [] : content(thing).filter((node) => node !== null);
        this.content.replaceChildren(...nodes);
        this.element.scrollTop = 0;
        if (hadFocus) this.heading.focus();
    }

    hide() {
        this.element.hidden = true;
        this.content.replaceChildren();
    }

    onKey(event) {
        if (event.key === "Escape") closeDetails();
    }
}
