// The views: the overview with header facts, map, sizes and modules, and a table for each kind.

const SYMBOL_COLUMNS = [
    {key: "name", title: "Name", width: 190, mono: true, text: (row) => shown(row.name),
     link: (row) => "#symbol/" + row.record},
    {key: "place", title: "Place", width: 130, mono: true, text: symbolPlace,
     value: (row) => symbolAddress(row) ?? model.space + row.value},
    {key: "size", title: "Size", width: 72, numeric: true,
     text: (row) => symbolSize(row) > 0 ? count(symbolSize(row)) : "", value: symbolSize},
    {key: "type", title: "Type", mono: true, text: (row) => shown(row.type_name),
     link: (row) => model.typeAt.has(row.type) ? "#type/" + row.type : null},
    {key: "storage", title: "Storage", width: 84, text: (row) => row.storage},
    {key: "memory", title: "Memory", width: 84, text: (row) => row.memory},
    {key: "module", title: "Module", width: 120, mono: true,
     text: (row) => row.module === null ? "" : moduleName(row.module),
     link: (row) => "#module/" + row.module},
    {key: "function", title: "Function", width: 130, mono: true,
     text: (row) => symbolFunction(row) ? functionName(symbolFunction(row)) : "",
     link: (row) => "#function/" + symbolFunction(row).record},
];

function symbolSize(symbol) {
    return symbol.functionBlock ? symbol.functionBlock.size : symbol.size;
}

function symbolFunction(symbol) {
    const block = model.blockAt.get(symbol.block);
    return block ? functionOf(block) : null;
}

const FUNCTION_COLUMNS = [
    {key: "name", title: "Name", width: 200, mono: true, text: functionName,
     link: (row) => "#function/" + row.record},
    {key: "address", title: "Address", width: 110, mono: true,
     text: (row) => address(row.address), value: (row) => row.address,
     link: (row) => "#address/" + hex(row.address)},
    {key: "size", title: "Size", width: 80, numeric: true, text: (row) => count(row.size),
     value: (row) => row.size},
    {key: "type", title: "Type", mono: true,
     text: (row) => row.symbol ? shown(row.symbol.type_name) : "",
     link: (row) => row.symbol && model.typeAt.has(row.symbol.type)
        ? "#type/" + row.symbol.type : null},
    {key: "module", title: "Module", width: 130, mono: true,
     text: (row) => row.module === null ? "" : moduleName(row.module),
     link: (row) => "#module/" + row.module},
    {key: "line", title: "First line", width: 140, mono: true,
     text: (row) => row.firstLine ? lineText(row.firstLine) : "",
     link: (row) => "#line/" + row.firstLine.record},
    {key: "blocks", title: "Blocks", width: 80, numeric: true,
     text: (row) => row.inner.length > 0 ? count(innerBlocks(row).length) : "",
     value: (row) => innerBlocks(row).length},
];

const TYPE_COLUMNS = [
    {key: "name", title: "Type", mono: true, text: (row) => shown(row.type_name),
     link: (row) => "#type/" + row.type},
    {key: "kind", title: "Kind", width: 110, text: (row) => row.kind},
    {key: "size", title: "Size", width: 80, numeric: true,
     text: (row) => row.size === null ? "" : count(row.size), value: (row) => row.size},
    {key: "members", title: "Members", width: 90, numeric: true,
     text: (row) => row.members.length + row.items.length > 0
        ? count(row.members.length + row.items.length) : "",
     value: (row) => row.members.length + row.items.length},
    {key: "target", title: "Of", width: 220, mono: true,
     text: (row) => row.target === null ? "" : shown(row.target_name),
     link: (row) => model.typeAt.has(row.target) ? "#type/" + row.target : null},
    {key: "number", title: "Number", width: 80, numeric: true, text: (row) => String(row.type),
     value: (row) => row.type},
];

const LINE_COLUMNS = [
    {key: "source", title: "Source", mono: true,
     text: (row) => shown(row.source || row.module_name, "")},
    {key: "line", title: "Line", width: 80, numeric: true, text: (row) => String(row.line),
     value: (row) => row.line, link: (row) => "#line/" + row.record},
    {key: "address", title: "Address", width: 120, mono: true,
     text: (row) => address(row.address), value: (row) => row.address,
     link: (row) => "#address/" + hex(row.address)},
    {key: "function", title: "Function", width: 220, mono: true,
     text: (row) => row.functionBlock ? functionName(row.functionBlock) : "",
     link: (row) => "#function/" + row.functionBlock.record},
    {key: "module", title: "Module", width: 160, mono: true,
     text: (row) => row.module === null ? "" : moduleName(row.module),
     link: (row) => "#module/" + row.module},
];

function moduleColumns(sums) {
    const sumFor = (row, key) => (sums.get(row.record) || {code: 0, constants: 0, data: 0})[key];
    return [
        {key: "name", title: "Module", mono: true, text: (row) => shown(row.name),
         link: (row) => "#module/" + row.record},
        {key: "source", title: "Source", width: 180, mono: true,
         text: (row) => shown(row.source, "")},
        {key: "language", title: "Language", width: 100, text: (row) => row.language},
        {key: "code", title: "Code", width: 100, numeric: true,
         text: (row) => count(sumFor(row, "code")), value: (row) => sumFor(row, "code")},
        {key: "constants", title: "Constants", width: 100, numeric: true,
         text: (row) => count(sumFor(row, "constants")),
         value: (row) => sumFor(row, "constants")},
        {key: "data", title: "Data", width: 100, numeric: true,
         text: (row) => count(sumFor(row, "data")), value: (row) => sumFor(row, "data")},
        {key: "symbols", title: "Symbols", width: 90, numeric: true,
         text: (row) => count(row.nof_symbols), value: (row) => row.nof_symbols},
        {key: "lines", title: "Lines", width: 90, numeric: true,
         text: (row) => count(row.nof_lines), value: (row) => row.nof_lines},
    ];
}

function openDetails(kind, key) {
    return (row, byKeyboard) => {
        const hash = "#" + kind + "/" + row[key];
        if (byKeyboard) openByKeyboard(hash);
        else location.hash = hash;
    };
}

function buildTable(name, title, kind, key, columns, rows, options) {
    return new Table({name, label: title, columns, rows, open: openDetails(kind, key),
                      id: (row) => row[key], empty: "This program has no " +
                      title.toLowerCase() + ".", tall: true, ...options});
}

const TABLES = {
    symbols: () => buildTable("symbols", "Symbols", "symbol", "record", SYMBOL_COLUMNS,
                              model.data.symbols,
                              {example: "type:struct, module:name, 0x12"}),
    functions: () => {
        for (const block of model.functions) {
            block.firstLine = linesOf(block).find((line) => line.module === block.module);
        }
        return buildTable("functions", "Functions", "function", "record", FUNCTION_COLUMNS,
                          model.functions,
                          {sort: "address", example: "module:name, line:file.c"});
    },
    types: () => buildTable("types", "Types", "type", "type", TYPE_COLUMNS, model.data.types,
                            {sort: "size", descending: true, example: "kind:struct, name:part"}),
    lines: () => {
        for (const line of model.data.lines) {
            line.functionBlock = itemAt(model.functions, line.address);
        }
        return buildTable("lines", "Lines", "line", "record", LINE_COLUMNS, model.data.lines,
                          {sort: "address", example: "line:120, function:name"});
    },
};

// The overview

function headerFacts() {
    const header = model.header;
    const start = header.start_address;
    const basic = header.basic_sizes.map((row) => row.type_name + " " + row.size).join(", ");
    return el("section", {class: "panel", "aria-labelledby": "facts-title"},
        el("div", {class: "panelhead"}, el("h2", {id: "facts-title"}, "Program")),
        el("dl", {class: "figures"}, headerFigures().map(([name, value]) =>
            el("div", {}, el("dt", {}, name), el("dd", {}, value)))),
        facts([
            ["Processor", header.processor + ", " + header.address_bits + "-bit addresses"],
            ["Start address", start === null ? "none" : addressLink(start)],
            ["Database", bytes(header.file_size) + ", source format " + header.source_format +
                         ", format version " + header.format_version + ", model flags " +
                         hex(header.model_flags)],
            ["Basic types", basic],
        ]));
}

function headerFigures() {
    const {code, ranges, modules, symbols, types, lines} = model.data;
    return [
        ["Image", roughBytes(sumOf(code))],
        ["Code in modules", roughBytes(sumOf(ranges))],
        ["Variables", roughBytes(sumOf(model.variables))],
        ["Modules", link("#modules", count(modules.length))],
        ["Functions", link("#functions", count(model.functions.length))],
        ["Symbols", link("#symbols", count(symbols.length))],
        ["Types", link("#types", count(types.length))],
        ["Lines", link("#lines", count(lines.length))],
    ];
}

// Facts and map stand first; what is below them follows when their frame has been painted.
class Overview {
    constructor() {
        this.map = new MemoryMap();
        this.element = el("div", {class: "overview"}, headerFacts(), this.map.element);
        requestAnimationFrame(() => requestAnimationFrame(() =>
            setTimeout(() => this.complete())));
    }

    complete() {
        if (this.treemap) return;
        const parts = accountBytes();
        this.treemap = new Treemap(parts);
        this.modules = new Table({
            name: "modules", label: "Modules", rows: model.data.modules, sort: "code",
            descending: true, columns: moduleColumns(sizesByModule(parts)),
            open: openDetails("module", "record"), id: (row) => row.record,
            example: "language:C", empty: "This program has no modules."});
        this.element.append(this.treemap.element,
            el("section", {class: "panel", id: "modules", "aria-labelledby": "modules-title"},
               el("div", {class: "panelhead"}, el("h2", {id: "modules-title"}, "Modules")),
               this.modules.element));
    }
}
