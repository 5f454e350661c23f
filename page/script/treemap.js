// The treemap of sizes: modules, and in them functions, variables and the rest. Every rectangle has
// the area of its bytes at one scale for the whole chart; what is too small to see is put together
// into one rectangle for each module, so nothing is lost from the sums.

const TREEMAP_HEIGHT = 380;
const SMALLEST_AREA = 30;     // square pixels of a rectangle of its own
const MOST_MODULES = 300;

const SIZE_GROUPS = ["all", "code", "constants", "data"];

// Squarified: rows of rectangles along the shorter side, each row closed when another one would
// make its rectangles longer. `items` {size, ...} come largest first; gives {item, x, y, width,
// height}.
function squarify(items, x, y, width, height) {
    const placed = [];
    let total = sumOf(items);
    let i = 0;
    while (i < items.length && total > 0) {
        const isUpright = width >= height;
        const side = isUpright ? height : width;
        const scale = width * height / total;
        const row = longestGoodRow(items, i, side, scale);
        const rowSize = sumOf(row);
        const thickness = side > 0 ? rowSize * scale / side : 0;
        let offset = 0;
        for (const item of row) {
            const length = rowSize > 0 ? side * item.size / rowSize : 0;
            placed.push(isUpright
                ? {item, x, y: y + offset, width: thickness, height: length}
                : {item, x: x + offset, y, width: length, height: thickness});
            offset += length;
        }
        if (isUpright) [x, width] = [x + thickness, width - thickness];
        else [y, height] = [y + thickness, height - thickness];
        total -= rowSize;
        i += row.length;
    }
    return placed;
}

function longestGoodRow(items, first, side, scale) {
    let sum = 0;
    let best = Infinity;
    let end = first;
    for (; end < items.length; ++end) {
        const next = sum + items[end].size;
        const thickness = next * scale / side;
        const largest = items[first].size * scale / thickness;
        const smallest = items[end].size * scale / thickness;
        const worst = Math.max(largest / thickness, thickness / smallest);
        if (worst > best) break;
        [best, sum] = [worst, next];
    }
    return items.slice(first, Math.max(end, first + 1));
}

// Largest first; those below the limit as one.
function gathered(items, limit, gather) {
    const sorted = [...items].sort((a, b) => b.size - a.size);
    const large = sorted.filter((item) => item.size >= limit);
    const small = sorted.slice(large.length);
    if (small.length < 2) return sorted;
    return [...large, gather(small, sumOf(small))].sort((a, b) => b.size - a.size);
}

class Treemap {
    constructor(parts) {
        this.parts = parts;
        this.group = "all";
        this.module = undefined;  // the one that is shown alone; undefined for all
        this.current = -1;
        this.build();
        new ResizeObserver(() => this.draw()).observe(this.frame);
    }

    build() {
        this.chart = svg("svg", {
            class: "treemap", tabindex: 0, role: "application", height: TREEMAP_HEIGHT,
            "aria-describedby": "treemap-keys", keydown: (event) => this.onKey(event),
            pointermove: (event) => this.show(event.target.dataset.place),
            pointerleave: () => this.show(this.current),
            click: (event) => this.onClick(event),
            focus: () => this.moveTo(Math.max(0, this.current)),
        });
        this.readout = el("p", {class: "readout", role: "status", "aria-live": "polite"});
        this.total = el("span", {class: "window"});
        this.frame = el("div", {class: "treeframe"}, this.chart);
        this.groupButtons = SIZE_GROUPS.map((name) => button(
            capitalized(name), "Show sizes: " + name, () => this.setGroup(name),
            {"data-group": name}));
        this.allButton = button("\u2190 All modules", "Show all modules",
                                () => { location.hash = "#sizes"; });
        this.element = el("section", {class: "panel", id: "sizes",
                                      "aria-labelledby": "sizes-title"},
            el("div", {class: "panelhead"}, el("h2", {id: "sizes-title"}, "Sizes"), this.total,
               el("div", {class: "buttons", role: "group", "aria-label": "What the sizes count"},
                  this.allButton, this.groupButtons)),
            this.frame, this.readout,
            el("p", {id: "treemap-keys", class: "hint"},
               "Area is bytes. Click or Enter opens a rectangle, the arrow keys step through " +
               "them; a module's name shows the module alone."));
    }

    setGroup(name) {
        this.group = name;
        this.current = -1;
        this.draw();
    }

    setModule(module) {
        this.module = module;
        this.current = -1;
        this.draw();
    }

    // Groups {module, size, parts} as they are drawn.
    groups(pixels) {
        const chosen = this.parts.filter((part) =>
            (this.group === "all" || part.group === this.group) &&
            (this.module === undefined || part.module === this.module));
        const limit = sumOf(chosen) / Math.max(1, pixels) * SMALLEST_AREA;
        const groups = [...groupBy(chosen, "module")].map(([module, parts]) => ({
            module, name: moduleName(module), size: sumOf(parts), parts}));
        return gathered(groups, limit, (small, size) => ({
            module: null, size, name: plural(small.length, "smaller module"),
            parts: small.flatMap((group) => group.parts)}))
            .slice(0, MOST_MODULES)
            .map((group) => ({...group, parts: this.partsOf(group, limit)}));
    }

    partsOf(group, limit) {
        return gathered(group.parts, limit, (small, size) => ({
            kind: "small", module: group.module, size, name: plural(small.length, "smaller item"),
            link: group.module === null ? null : "#module/" + group.module}));
    }

    draw() {
        const width = Math.max(200, this.frame.clientWidth - 1);
        const groups = this.groups(width * TREEMAP_HEIGHT);
        const total = sumOf(groups);
        this.leaves = [];
        this.chart.setAttribute("width", width);
        this.chart.setAttribute("viewBox", `0 0 ${width} ${TREEMAP_HEIGHT}`);
        this.chart.replaceChildren(...squarify(groups, 0, 0, width, TREEMAP_HEIGHT)
            .flatMap((place) => this.drawGroup(place)));
        if (total === 0) this.chart.append(text("Nothing takes any bytes.", 12, 28, "lanetitle"));
        this.showState(total);
    }

    showState(total) {
        this.total.textContent = bytes(total);
        this.chart.setAttribute("aria-label", "Treemap of sizes, " + bytes(total) + " in " +
                                plural(this.leaves.length, "rectangle"));
        this.allButton.hidden = this.module === undefined;
        for (const node of this.groupButtons) {
            node.setAttribute("aria-pressed", String(node.dataset.group === this.group));
        }
        this.show(this.current);
    }

    drawGroup({item: group, x, y, width, height}) {
        const caption = width > 50 && height > 22
            ? shortened(group.name, Math.floor((width - 8) / LABEL_CHARACTER)) : null;
        const nodes = squarify(group.parts, x, y, width, height)
            .flatMap((place) => this.drawPart(place, group, caption !== null && place.y === y &&
                place.x < x + 5 + caption.length * LABEL_CHARACTER));
        nodes.push(svg("rect", {class: "outline", x, y, width, height}));
        if (caption !== null) nodes.push(this.drawCaption(group, caption, x, y));
        return nodes;
    }

    drawCaption(group, caption, x, y) {
        const node = text(caption, x + 5, y + 14, "grouplabel");
        const isSingle = model.moduleAt.has(group.module);
        if (isSingle) node.setAttribute("data-link", "#sizes/" + group.module);
        return node;
    }

    drawPart({item: part, x, y, width, height}, group, isBelowCaption) {
        const place = this.leaves.push({...part, group: group.name}) - 1;
        const rect = svg("rect", {class: "leaf " + part.kind.replace(" ", "-"), x, y, width, height,
                                  "data-place": place, "data-size": part.size,
                                  "data-module": part.module});
        rect.style.setProperty("--hue", part.module === null ? 0 : hue(part.module));
        if (part.module === null) rect.classList.add("nobody");
        const top = isBelowCaption ? 30 : 15;
        if (width < 34 || height < top + 4) return [rect];
        const label = shortened(part.name, Math.floor((width - 8) / LABEL_CHARACTER));
        const nodes = [rect, text(label, x + 5, y + top, "leaflabel")];
        const size = roughBytes(part.size);
        if (height > top + 18 && width > 8 + size.length * LABEL_CHARACTER) {
            nodes.push(text(size, x + 5, y + top + 14, "leafsize"));
        }
        return nodes;
    }

    // Events

    show(place) {
        const part = this.leaves[place];
        this.readout.textContent = part
            ? [part.group, part.name, part.kind === "small" ? null : part.kind, bytes(part.size)]
                .filter(Boolean).join(" \u00b7 ")
            : "Point at a rectangle to see what it is.";
    }

    moveTo(place) {
        if (this.leaves.length === 0) return;
        this.current = Math.min(Math.max(place, 0), this.leaves.length - 1);
        for (const rect of this.chart.querySelectorAll(".leaf")) {
            rect.classList.toggle("active", Number(rect.dataset.place) === this.current);
        }
        this.show(this.current);
    }

    onClick(event) {
        const link = event.target.dataset.link ?? this.leaves[event.target.dataset.place]?.link;
        if (link) location.hash = link;
    }

    onKey(event) {
        const steps = {ArrowRight: 1, ArrowDown: 1, ArrowLeft: -1, ArrowUp: -1,
                       Home: -Infinity, End: Infinity};
        if (event.key in steps) this.moveTo(this.current + steps[event.key]);
        else if (event.key === "Enter") openByKeyboard(this.leaves[this.current]?.link);
        else return;
        event.preventDefault();
    }
}
