// The program: the document of `scan695 show --json` with what follows from it.

const BASIC_TYPES_END = 100;  // types below have no record of their own
const FIXED_STORAGE = new Set(["global", "static"]);
const ADDRESSED_MEMORY = new Set(["code", "data", "memory 1", "memory 3"]);

const model = {
    data: null,
    header: {},
    addressDigits: 6,
    space: 2 ** 24,
    functions: [],   // blocks of kind "function", by address
    variables: [],   // symbols that take bytes at a fixed address, by address
    typeAt: new Map(),
    moduleAt: new Map(),
    blockAt: new Map(),
    numbered: {},    // rows of the large tables by number, made when the first one is asked for
};

function byNumber(rows, key) {
    return new Map(rows.map((row) => [row[key], row]));
}

function byAddress(a, b) {
    return a.address - b.address || b.size - a.size;
}

function groupBy(rows, key) {
    const groups = new Map();
    for (const row of rows) {
        const group = groups.get(row[key]);
        if (group) group.push(row);
        else groups.set(row[key], [row]);
    }
    return groups;
}

function address(number) {
    return hex(number, model.addressDigits);
}

function isVariable(symbol) {
    return symbol.size > 0 && FIXED_STORAGE.has(symbol.storage) &&
           ADDRESSED_MEMORY.has(symbol.memory);
}

// Where a symbol stands in memory: code and variables; null for registers and stack frames.
function symbolAddress(symbol) {
    const isFixed = FIXED_STORAGE.has(symbol.storage) && ADDRESSED_MEMORY.has(symbol.memory);
    return isFixed ? symbol.value : null;
}

function linkBlocks(blocks) {
    for (const block of blocks) {
        block.inner = [];
        block.depth = 0;
    }
    for (const block of blocks) {
        const outer = model.blockAt.get(block.outer);
        if (outer) outer.inner.push(block);
    }
    // Damaged files may hold circles: nobody's depth exceeds the limit.
    for (const block of blocks) {
        let outer = model.blockAt.get(block.outer);
        while (outer && block.depth < 16) {
            block.depth += 1;
            outer = model.blockAt.get(outer.outer);
        }
    }
}

// A function has no size as a symbol: its block tells it.
function linkFunctions(data) {
    const codeSymbols = groupBy(data.symbols.filter((symbol) => symbol.memory === "code" &&
                                                                symbol.block === null), "value");
    model.functions = data.blocks.filter((block) => block.kind === "function").sort(byAddress);
    for (const block of model.functions) {
        block.symbol = (codeSymbols.get(block.address) || []).find((symbol) =>
            symbol.module === block.module && symbol.name === block.name) || null;
        if (block.symbol) block.symbol.functionBlock = block;
    }
}

function loadModel(data) {
    model.data = data;
    model.header = data.header;
    model.addressDigits = data.header.address_bits / 4;
    model.space = 2 ** data.header.address_bits;
    model.typeAt = byNumber(data.types, "type");
    model.moduleAt = byNumber(data.modules, "record");
    model.blockAt = byNumber(data.blocks, "record");
    linkBlocks(data.blocks);
    linkFunctions(data);
    model.variables = data.symbols.filter(isVariable)
        .map((symbol) => ({...symbol, address: symbol.value})).sort(byAddress);
}

// Questions

function rowOf(table, record) {
    model.numbered[table] ??= byNumber(model.data[table], "record");
    return model.numbered[table].get(record);
}

function moduleName(number) {
    const module = model.moduleAt.get(number);
    return module ? shown(module.name) : "no module";
}

function functionName(block) {
    return shown(block.name, "function at " + address(block.address));
}

// The function around a block; the block itself where it is one.
function functionOf(block) {
    let found = block;
    for (let steps = 0; found && found.kind !== "function" && steps < 16; ++steps) {
        found = model.blockAt.get(found.outer);
    }
    return found && found.kind === "function" ? found : null;
}

function covers(item, at) {
    return at >= item.address && at - item.address < item.size;
}

// Items may overlap a little: a few of those that begin before are looked at too.
function itemAt(items, at) {
    const last = lastNotAbove(items, at, (item) => item.address);
    for (let i = last; i >= 0 && i > last - 16; --i) {
        if (covers(items[i], at)) return items[i];
    }
    return null;
}

// The blocks around an address, the function first.
function blocksAt(at) {
    const chain = [];
    let block = itemAt(model.functions, at);
    while (block && chain.length < 16) {
        chain.push(block);
        block = block.inner.find((inner) => covers(inner, at));
    }
    return chain;
}

function lineAtAddress(at) {
    const line = model.data.lines[lastNotAbove(model.data.lines, at, (row) => row.address)];
    const range = itemAt(model.data.ranges, at);
    return line && range && line.module === range.module ? line : null;
}

function linesOf(block) {
    const lines = model.data.lines;
    const first = lastNotAbove(lines, block.address - 1, (row) => row.address) + 1;
    const end = lastNotAbove(lines, block.address + block.size - 1, (row) => row.address) + 1;
    return lines.slice(first, end);
}

function lineText(line) {
    return shown(line.source || line.module_name, "?") + ":" + line.line;
}

// What is at an address, from the memory image down to the line and the variable.
function placeOf(at) {
    const blocks = blocksAt(at);
    return {
        address: at,
        image: itemAt(model.data.code, at),
        range: itemAt(model.data.ranges, at),
        blocks,
        line: lineAtAddress(at),
        variable: itemAt(model.variables, at),
    };
}

function placeText(place) {
    const parts = [address(place.address)];
    if (place.image) {
        parts.push(place.image.memory + " image " + address(place.image.address) + " + " +
                   bytes(place.image.size));
    }
    if (place.range) parts.push(moduleName(place.range.module));
    if (place.blocks.length > 0) {
        const block = place.blocks[0];
        parts.push(functionName(block) + "+" + hex(place.address - block.address));
        if (place.blocks.length > 1) {
            const inner = place.blocks[place.blocks.length - 1];
            parts.push("block " + address(inner.address) + " + " + bytes(inner.size));
        }
    }
    if (place.line) parts.push(lineText(place.line));
    if (place.variable) {
        const offset = place.address - place.variable.address;
        parts.push(shown(place.variable.name) + (offset === 0 ? "" : "+" + hex(offset)) + " (" +
                   place.variable.type_name + ")");
    }
    if (parts.length === 1) parts.push("nothing here");
    return parts.join(" \u00b7 ");
}

// Who uses a type: built when the first one asks.
const typeUsers = {index: null};

function addUser(type, kind, row) {
    if (type === null || type === undefined || type < BASIC_TYPES_END) return;
    if (!typeUsers.index.has(type)) typeUsers.index.set(type, {symbols: [], types: []});
    const list = typeUsers.index.get(type)[kind];
    if (list[list.length - 1] !== row) list.push(row);
}

function usersOf(type) {
    if (!typeUsers.index) {
        typeUsers.index = new Map();
        for (const symbol of model.data.symbols) addUser(symbol.type, "symbols", symbol);
        for (const row of model.data.types) {
            addUser(row.target, "types", row);
            for (const member of row.members) addUser(member.type, "types", row);
            for (const parameter of row.parameters) addUser(parameter.type, "types", row);
        }
    }
    return typeUsers.index.get(type) || {symbols: [], types: []};
}
