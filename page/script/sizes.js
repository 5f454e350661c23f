// Who owns which bytes. Functions, the rest of the modules' ranges, variables and the rest of the
// code image are carved out of the address space one after the other, so that every byte counts
// once and the parts add up to the union of ranges, variables and image.

// The stretches of [begin, end) that no taken stretch covers. `taken` is sorted and disjoint.
function freeStretches(begin, end, taken) {
    const free = [];
    let at = begin;
    let i = lastNotAbove(taken, begin, (stretch) => stretch.begin);
    for (i = Math.max(i, 0); i < taken.length && taken[i].begin < end; ++i) {
        if (taken[i].begin > at) free.push({begin: at, end: taken[i].begin});
        at = Math.max(at, taken[i].end);
    }
    if (at < end) free.push({begin: at, end});
    return free;
}

function mergeStretches(stretches) {
    const merged = [];
    for (const {begin, end} of stretches.sort((a, b) => a.begin - b.begin)) {
        const last = merged[merged.length - 1];
        if (last && begin <= last.end) last.end = Math.max(last.end, end);
        else merged.push({begin, end});
    }
    return merged;
}

// Calls `use(item, free)` with the stretches of each item that are still free; gives `taken` with
// those of all items.
function carve(items, taken, use) {
    const own = [];
    let reached = 0;
    for (const item of [...items].sort(byAddress)) {
        const begin = Math.max(item.address, reached);
        const end = item.address + item.size;
        if (begin >= end) continue;
        reached = end;
        own.push({begin, end});
        const free = freeStretches(begin, end, taken);
        if (free.length > 0) use(item, free);
    }
    return mergeStretches([...taken, ...own]);
}

function stretchesOf(items) {
    return mergeStretches(items.map((item) => ({begin: item.address,
                                                end: item.address + item.size})));
}

function lengthOf(stretches) {
    return stretches.reduce((sum, {begin, end}) => sum + end - begin, 0);
}

// Functions count where a range says that their module owns the code.
function clippedToRanges(functions, ranges) {
    const clipped = [];
    for (const block of functions) {
        let i = Math.max(0, lastNotAbove(ranges, block.address, (range) => range.address));
        for (; i < ranges.length && ranges[i].address < block.address + block.size; ++i) {
            const begin = Math.max(block.address, ranges[i].address);
            const end = Math.min(block.address + block.size, ranges[i].address + ranges[i].size);
            if (begin < end) {
                clipped.push({address: begin, size: end - begin, block, module: ranges[i].module});
            }
        }
    }
    return clipped;
}

// Parts: {kind, group, module, name, address, size, link}; `group` is code, constants or data,
// `module` null for nobody's. Variables are constants where the image has their bytes.
function accountBytes() {
    const parts = [];
    const add = (kind, group, module, name, free, size, link) => {
        if (size > 0) parts.push({kind, group, module, name, address: free[0].begin, size, link});
    };
    const image = stretchesOf(model.data.code);
    const functions = clippedToRanges(model.functions, model.data.ranges);
    let taken = carve(functions, [], (item, free) =>
        add("function", "code", item.module, functionName(item.block), free, lengthOf(free),
            "#function/" + item.block.record));
    taken = carve(model.data.ranges, taken, (range, free) =>
        add("other code", "code", range.module, "code outside functions", free, lengthOf(free),
            "#address/" + hex(free[0].begin)));
    taken = carve(model.variables, taken, (symbol, free) => {
        const data = free.flatMap(({begin, end}) => freeStretches(begin, end, image));
        const name = shown(symbol.name);
        const link = "#symbol/" + symbol.record;
        add("data", "data", symbol.module, name, free, lengthOf(data), link);
        add("constant", "constants", symbol.module, name, free, lengthOf(free) - lengthOf(data),
            link);
    });
    carve(model.data.code, taken, (block, free) =>
        add("image", block.memory === "code" ? "code" : "constants", null,
            block.memory + " image at " + address(free[0].begin), free, lengthOf(free),
            "#address/" + hex(free[0].begin)));
    return parts;
}

function sumOf(items) {
    return items.reduce((sum, item) => sum + item.size, 0);
}

// Sums by module, for the table of modules.
function sizesByModule(parts) {
    const sums = new Map();
    for (const part of parts) {
        if (!sums.has(part.module)) sums.set(part.module, {code: 0, constants: 0, data: 0});
        sums.get(part.module)[part.group] += part.size;
    }
    return sums;
}
