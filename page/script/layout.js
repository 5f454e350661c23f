// The layout of a struct or union: members, holes and bitfields, as a list with offsets and as a
// picture of its bytes.

const GRID_WIDTH = 352;
const GRID_LEFT = 44;
const GRID_TOP = 18;
const GRID_ROW = 22;
const MOST_GRID_ROWS = 64;
const DEEPEST = 8;  // levels that open in place

// Through attributes (const, volatile and the like) and enumerations' names to the type itself.
function plainType(index) {
    let type = model.typeAt.get(index);
    for (let steps = 0; type && type.kind === "attribute" && steps < 64; ++steps) {
        type = model.typeAt.get(type.target);
    }
    return type || null;
}

function isAggregate(type) {
    return type !== null && (type.kind === "struct" || type.kind === "union");
}

function memberBits(member) {
    const first = member.offset * 8 + (member.bit_offset ?? 0);
    const length = member.bits ?? (member.size ?? 0) * 8;
    return {first, end: first + length};
}

// Rows {kind, member, first, end} in bits: members, and the holes between and behind them.
function layoutRows(type) {
    const rows = [];
    const members = type.members.map((member, i) => ({kind: "member", member, hue: hue(i),
                                                      ...memberBits(member)}));
    if (type.kind === "union") return members;
    let reached = 0;
    for (const row of [...members].sort((a, b) => a.first - b.first || a.end - b.end)) {
        if (row.first > reached) rows.push({kind: "hole", first: reached, end: row.first});
        rows.push(row);
        reached = Math.max(reached, row.end);
    }
    const end = (type.size ?? 0) * 8;
    if (end > reached) rows.push({kind: "padding", first: reached, end});
    return rows;
}

function bitsText(length) {
    const whole = Math.floor(length / 8);
    const rest = length % 8;
    return [whole > 0 ? bytes(whole) : null, rest > 0 ? plural(rest, "bit") : null]
        .filter(Boolean).join(" ");
}

function layoutSummary(type, rows) {
    const holes = rows.filter((row) => row.kind === "hole");
    const parts = [type.size === null ? "size unknown" : bytes(type.size),
                   plural(type.members.length, "member")];
    const sum = (list) => list.reduce((total, row) => total + row.end - row.first, 0);
    if (holes.length > 0) parts.push(plural(holes.length, "hole") + ", " + bitsText(sum(holes)));
    const padding = rows.filter((row) => row.kind === "padding");
    if (padding.length > 0) parts.push(bitsText(sum(padding)) + " of padding");
    return parts.join(" \u00b7 ");
}

// The list

function layoutTable(type) {
    const body = el("tbody");
    addLayoutRows(body, type, 0, 0, null);
    return el("table", {class: "layout"},
        el("caption", {class: "hidden"}, "Members of " + shown(type.type_name)),
        el("thead", {}, el("tr", {}, ["Offset", "Bits", "Size", "Member", "Type"].map((title, i) =>
            el("th", {scope: "col", class: i < 3 ? "num" : null}, title)))),
        body);
}

function addLayoutRows(body, type, base, depth, after) {
    const nodes = [];
    for (const row of layoutRows(type)) {
        nodes.push(row.kind === "member" ? memberRow(row, base, depth) : holeRow(row, base, depth));
    }
    if (after) after.after(...nodes);
    else body.append(...nodes);
    return nodes;
}

function holeRow(row, base, depth) {
    const name = row.kind === "hole" ? "hole" : "padding";
    const node = el("tr", {class: "hole"},
        el("td", {class: "num"}, hex(base + Math.floor(row.first / 8))),
        el("td", {class: "num"}, row.first % 8 === 0 && row.end % 8 === 0 ? "" : bitSpan(row)),
        el("td", {class: "num"}, row.end - row.first < 8 ? "" : count((row.end - row.first) >> 3)),
        el("td", {colspan: 2}, name + ", " + bitsText(row.end - row.first)));
    node.children[3].style.paddingInlineStart = indent(depth);
    return node;
}

function bitSpan(row) {
    return row.first % 8 + "\u2013" + (row.first % 8 + row.end - row.first - 1);
}

function indent(depth) {
    return 10 + 16 * depth + "px";
}

function memberRow(row, base, depth) {
    const {member} = row;
    const type = plainType(member.type);
    const swatch = el("span", {class: "swatch", "aria-hidden": "true"});
    swatch.style.setProperty("--hue", row.hue);
    const name = el("td", {class: "mono member"}, depth === 0 ? swatch : null, shown(member.name));
    name.style.paddingInlineStart = indent(depth);
    const node = el("tr", {},
        el("td", {class: "num"}, hex(base + member.offset)),
        el("td", {class: "num"}, member.bits === null ? ""
            : member.bit_offset + (member.bits > 1
                ? "\u2013" + (member.bit_offset + member.bits - 1) : "")),
        el("td", {class: "num"}, member.bits !== null ? plural(member.bits, "bit")
            : member.size === null ? "?" : count(member.size)),
        name, el("td", {class: "mono"}, member.bits === null
            ? typeLink(member.type, member.type_name) : shown(member.parent_name)));
    if (isAggregate(type) && depth < DEEPEST) addExpander(node, name, type, base + member.offset,
                                                          depth);
    return node;
}

function addExpander(node, cell, type, base, depth) {
    let inner = null;
    const toggle = button("\u25b8", "Members of " + shown(type.type_name), () => {
        if (inner) removeInner(inner);
        inner = inner ? null : addLayoutRows(null, type, base, depth + 1, node);
        toggle.setAttribute("aria-expanded", String(inner !== null));
        toggle.textContent = inner ? "\u25be" : "\u25b8";
    }, {class: "expander", "aria-expanded": "false"});
    node.removeInner = () => { if (inner) removeInner(inner); };
    cell.append(toggle);
}

function removeInner(rows) {
    for (const row of rows) {
        if (row.removeInner) row.removeInner();
        row.remove();
    }
}

// The picture: four or eight bytes in a row, the lowest bit on the left; a union has a row for each
// member.

function layoutPicture(type) {
    const rows = layoutRows(type);
    const bits = Math.max((type.size ?? 0) * 8, ...rows.map((row) => row.end));
    if (bits === 0 || rows.length === 0) return null;
    const perRow = bits <= 32 ? 32 : 64;
    const perMember = Math.ceil(bits / perRow);
    const needed = type.kind === "union" ? perMember * rows.length : perMember;
    const grid = {perRow, perMember, rows: Math.min(needed, MOST_GRID_ROWS),
                  bitWidth: GRID_WIDTH / perRow};
    const chart = svg("svg", {
        class: "bytegrid", role: "img", width: GRID_LEFT + GRID_WIDTH + 2,
        height: GRID_TOP + grid.rows * GRID_ROW, "aria-label": "Bytes of " +
            shown(type.type_name) + ": " + layoutSummary(type, rows)}, hatchPattern("hole-hatch"));
    labelGrid(chart, grid);
    rows.forEach((row, i) =>
        drawMember(chart, grid, row, type.kind === "union" ? i * perMember : 0));
    const note = needed <= grid.rows ? null : el("p", {class: "hint"},
        "The first " + plural(grid.rows, "row") + " of " + count(needed) + ".");
    return el("div", {class: "picture"}, chart, note);
}

function labelGrid(chart, {perRow, perMember, rows, bitWidth}) {
    for (let byte = 0; byte < perRow / 8; ++byte) {
        chart.append(text("+" + byte, GRID_LEFT + (byte + 0.5) * 8 * bitWidth, 11, "bytelabel"));
    }
    for (let i = 0; i < rows; ++i) {
        chart.append(text(hex(i % perMember * perRow / 8), 0, GRID_TOP + i * GRID_ROW + 15,
                          "rowlabel"));
    }
}

function drawMember(chart, grid, row, firstRow) {
    for (let bit = row.first; bit < row.end;) {
        const line = Math.floor(bit / grid.perRow);
        const end = Math.min(row.end, (line + 1) * grid.perRow);
        if (firstRow + line >= grid.rows) return;
        const y = GRID_TOP + (firstRow + line) * GRID_ROW;
        const rect = drawBits(chart, row, GRID_LEFT + bit % grid.perRow * grid.bitWidth, y,
                              (end - bit) * grid.bitWidth, bit === row.first);
        rect.setAttribute("data-bits", end - bit);
        bit = end;
    }
}

function drawBits(chart, row, x, y, width, isFirst) {
    const isMember = row.kind === "member";
    const name = isMember ? shown(row.member.name) : row.kind;
    const rect = svg("rect", {class: isMember ? "item" : "gap", x, y: y + 1, width,
                              height: GRID_ROW - 3, fill: isMember ? null : "url(#hole-hatch)"});
    if (isMember) rect.style.setProperty("--hue", row.hue);
    rect.append(svg("title"));
    rect.firstChild.textContent = name;
    chart.append(rect);
    const label = shortened(name, Math.floor((width - 6) / LABEL_CHARACTER));
    if (isFirst && label.length > 1 && width > 2.5 * LABEL_CHARACTER) {
        chart.append(text(label, x + 4, y + 15, "itemlabel"));
    }
    return rect;
}
