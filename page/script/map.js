// The memory map: lanes of rectangles over one axis, from the whole address space down to blocks.
// The strip above it is the whole space at its true scale; the frame in it is what the lanes show.

const LANE_HEIGHT = 26;
const LANE_GAP = 6;
const LABEL_WIDTH = 84;
const AXIS_HEIGHT = 26;
const STRIP_HEIGHT = 12;
const SMALLEST_WINDOW = 8;  // bytes

class MemoryMap {
    constructor() {
        this.lanes = mapLanes();
        this.areas = occupiedAreas();
        this.isFolded = this.areas.length > 0;
        this.cursor = null;
        this.width = 800;
        this.build();
        this.setAxis();
        new ResizeObserver(() => this.schedule()).observe(this.frame);
    }

    // Construction

    build() {
        this.chart = svg("svg", {
            class: "map", tabindex: 0, role: "application", "aria-label": this.describe(),
            "aria-describedby": "map-keys", height: this.height(),
            wheel: (event) => this.onWheel(event),
            keydown: (event) => this.onKey(event),
            pointerdown: (event) => this.onPointerDown(event),
            pointermove: (event) => this.onPointerMove(event),
            pointerup: (event) => this.onPointerUp(event),
            pointerleave: () => this.showIdle(),
        });
        this.readout = el("p", {class: "readout", role: "status", "aria-live": "polite"});
        this.window = el("span", {class: "window mono"});
        this.frame = el("div", {class: "mapframe"}, this.chart);
        this.foldButton = button("Fold gaps", "Fold the gaps between occupied areas",
                                 () => this.toggleFold(), {"aria-pressed": "true"});
        this.element = el("section", {class: "panel mapbox", "aria-labelledby": "map-title",
                                      id: "map"},
            el("div", {class: "panelhead"}, el("h2", {id: "map-title"}, "Memory map"), this.window,
               this.buildButtons()),
            this.frame, this.readout,
            el("p", {id: "map-keys", class: "hint"},
               "Wheel or + and \u2212 zoom, drag or \u2190 and \u2192 move, N and P step through " +
               "what is there, Enter opens it, Home shows everything."),
            this.buildAreas());
    }

    buildButtons() {
        return el("div", {class: "buttons", role: "group", "aria-label": "Zoom of the memory map"},
            button("\u2212", "Zoom out", () => this.zoom(2)),
            button("+", "Zoom in", () => this.zoom(0.5)),
            button("\u2190", "Move to lower addresses", () => this.pan(-0.25)),
            button("\u2192", "Move to higher addresses", () => this.pan(0.25)),
            button("All", "Show the whole address space", () => this.showAll()),
            this.foldButton);
    }

    // The largest areas as buttons: the short way by keyboard.
    buildAreas() {
        const largest = [...this.areas].sort((a, b) => (b.end - b.begin) - (a.end - a.begin))
            .slice(0, 12).sort((a, b) => a.begin - b.begin);
        if (largest.length === 0) return null;
        return el("div", {class: "areas", role: "group", "aria-label": "Occupied areas"},
            largest.map((area) => button(
                address(area.begin) + " \u00b7 " + roughBytes(area.end - area.begin),
                "Show " + address(area.begin) + " to " + address(area.end - 1) + ", " +
                    bytes(area.end - area.begin),
                () => this.showRange(area.begin, area.end - area.begin), {class: "mono"})));
    }

    describe() {
        return "Memory map of the " + model.header.address_bits + "-bit address space: " +
               this.lanes.map((lane) => count(lane.items.length) + " in " +
                                        lane.title.toLowerCase()).join(", ");
    }

    height() {
        return STRIP_HEIGHT + AXIS_HEIGHT + this.lanes.length * (LANE_HEIGHT + LANE_GAP) + 8;
    }

    setAxis() {
        this.axis = new Axis(this.areas, this.isFolded);
        this.foldButton.setAttribute("aria-pressed", String(this.isFolded));
        this.view = {begin: 0, end: this.axis.length};
        this.showIdle();
        this.schedule();
    }

    // Zoom

    toggleFold() {
        this.isFolded = !this.isFolded;
        this.setAxis();
    }

    showAll() {
        this.setView(0, this.axis.length);
    }

    setView(begin, end) {
        const length = Math.min(Math.max(end - begin, SMALLEST_WINDOW), this.axis.length);
        const start = Math.min(Math.max(begin, 0), this.axis.length - length);
        this.view = {begin: start, end: start + length};
        this.schedule();
    }

    zoom(factor, at = this.middle()) {
        const {begin, end} = this.view;
        this.setView(at - (at - begin) * factor, at + (end - at) * factor);
    }

    middle() {
        const cursor = this.cursor === null ? -1 : this.axis.unitOf(this.cursor);
        const isInSight = cursor >= this.view.begin && cursor <= this.view.end;
        return isInSight ? cursor : (this.view.begin + this.view.end) / 2;
    }

    pan(share) {
        const step = (this.view.end - this.view.begin) * share;
        this.setView(this.view.begin + step, this.view.end + step);
    }

    // A range with some room around it.
    showRange(begin, size) {
        const from = this.axis.unitOf(begin);
        const to = this.axis.unitOf(Math.min(begin + Math.max(size, 1), model.space));
        const room = Math.max((to - from) * 0.06, 2);
        this.setView(from - room, to + room);
    }

    showAddress(at, size) {
        this.setCursor(at);
        this.showRange(Math.max(0, at - size), Math.max(16, size * 3));
    }

    setCursor(at) {
        this.cursor = at;
        this.readout.textContent = placeText(placeOf(at));
        this.schedule();
    }

    showIdle() {
        this.readout.textContent = this.cursor === null
            ? "Point at the map to see what is there." : placeText(placeOf(this.cursor));
    }

    // Drawing

    schedule() {
        if (this.pending) return;
        this.pending = requestAnimationFrame(() => {
            this.pending = 0;
            this.draw();
        });
    }

    x(at) {
        const {begin, end} = this.view;
        return LABEL_WIDTH + (this.axis.unitOf(at) - begin) / (end - begin) * this.width;
    }

    unitAt(x) {
        const share = Math.min(Math.max((x - LABEL_WIDTH) / this.width, 0), 1);
        return this.view.begin + share * (this.view.end - this.view.begin);
    }

    draw() {
        this.width = Math.max(200, this.frame.clientWidth - LABEL_WIDTH - 1);  // of the lanes
        const width = this.width + LABEL_WIDTH;
        const from = this.axis.addressOf(this.view.begin);
        const to = this.axis.addressOf(this.view.end);
        this.chart.setAttribute("width", width);
        this.chart.setAttribute("viewBox", `0 0 ${width} ${this.height()}`);
        this.chart.replaceChildren(hatchPattern("map-gap"), ...this.drawStrip(from, to, width),
                                   ...this.drawGaps(), ...this.drawTicks(from, to),
                                   ...this.lanes.flatMap((lane, i) =>
                                       this.drawLane(lane, this.laneTop(i), from, to)),
                                   ...this.drawCursor());
        this.window.textContent = address(from) + " \u2013 " + address(to);
    }

    laneTop(i) {
        return STRIP_HEIGHT + AXIS_HEIGHT + i * (LANE_HEIGHT + LANE_GAP);
    }

    drawStrip(from, to, width) {
        const scale = this.width / model.space;
        const marks = this.areas.map(({begin, end}) => svg("rect", {
            class: "mark", x: LABEL_WIDTH + begin * scale, y: 2,
            width: Math.max(2, (end - begin) * scale), height: STRIP_HEIGHT - 4}));
        const frameWidth = Math.max(4, (to - from + 1) * scale);
        return [
            text("Space", 0, STRIP_HEIGHT - 2, "lanetitle"),
            svg("rect", {class: "strip", x: LABEL_WIDTH, y: 2, width: width - LABEL_WIDTH,
                         height: STRIP_HEIGHT - 4}),
            ...marks,
            svg("rect", {class: "viewport", y: 0.5, height: STRIP_HEIGHT - 1, width: frameWidth,
                         x: Math.min(LABEL_WIDTH + from * scale, width - frameWidth)}),
        ];
    }

    drawGaps() {
        const top = STRIP_HEIGHT + AXIS_HEIGHT;
        return this.axis.segments
            .filter((segment) => segment.isGap && segment.start < this.view.end &&
                                 segment.start + segment.length > this.view.begin)
            .map((segment) => {
                const left = Math.max(LABEL_WIDTH, this.x(segment.begin));
                const right = Math.min(LABEL_WIDTH + this.width, this.x(segment.end));
                return svg("rect", {class: "gap", x: left, y: top, fill: "url(#map-gap)",
                                    width: Math.max(0, right - left),
                                    height: this.height() - top - 8});
            });
    }

    drawTicks(from, to) {
        const bottom = STRIP_HEIGHT + AXIS_HEIGHT;
        const room = {left: LABEL_WIDTH, right: LABEL_WIDTH + this.width,
                      label: LABEL_CHARACTER * (model.addressDigits + 3)};
        return tickPlaces(this.axis, from, to, (at) => this.x(at), room).flatMap(({at, x}) => [
            svg("line", {class: "tick", x1: x, x2: x, y1: bottom - 8, y2: bottom - 2}),
            text(address(at), x + 3, bottom - 4, "ticklabel"),
        ]);
    }

    // Neighbours that share a pixel become one rectangle without a name.
    drawLane(lane, top, from, to) {
        const nodes = [text(lane.title, 0, top + LANE_HEIGHT - 9, "lanetitle")];
        let last = null;
        const first = Math.max(0, lastNotAbove(lane.items, from, (item) => item.address) - 16);
        for (let i = first; i < lane.items.length && lane.items[i].address <= to; ++i) {
            const item = lane.items[i];
            if (item.address + item.size <= from) continue;
            const left = Math.max(LABEL_WIDTH, this.x(item.address));
            const right = Math.min(LABEL_WIDTH + this.width,
                                   this.x(Math.min(item.address + item.size, model.space)));
            const isSmall = right - left < 1.5;
            if (last && isSmall && left < last.right + 0.5 && !lane.nested) {
                last.right = Math.max(last.right, right);
                last.size += item.size;
                last.items += 1;
                continue;
            }
            if (last) nodes.push(...this.drawItem(lane, last, top));
            last = {item, left, right, size: item.size, items: 1};
        }
        if (last) nodes.push(...this.drawItem(lane, last, top));
        return nodes;
    }

    drawItem(lane, {item, left, right, size, items}, top) {
        const width = Math.max(1, right - left);
        const inset = lane.nested ? Math.min(item.depth - 1, 3) * 5 : 0;
        const rect = svg("rect", {
            class: "item", x: left, y: top + inset, width, height: LANE_HEIGHT - inset,
            "data-lane": lane.title, "data-address": item.address, "data-size": size,
            "data-items": items, "data-link": items === 1 ? lane.link(item) : null});
        rect.style.setProperty("--hue", lane.hue(item));
        const label = shortened(lane.text(item), Math.floor((width - 8) / LABEL_CHARACTER));
        if (items > 1 || width < 4 * LABEL_CHARACTER || label === "") return [rect];
        return [rect, text(label, left + 4, top + LANE_HEIGHT - 9, "itemlabel")];
    }

    drawCursor() {
        if (this.cursor === null) return [];
        const x = this.x(this.cursor);
        if (x < LABEL_WIDTH || x > LABEL_WIDTH + this.width) return [];
        return [svg("line", {class: "cursor", x1: x, x2: x, y1: STRIP_HEIGHT + 4,
                             y2: this.height() - 4})];
    }

    // Events

    pointerX(event) {
        return event.clientX - this.chart.getBoundingClientRect().left;
    }

    onWheel(event) {
        event.preventDefault();
        if (event.shiftKey || Math.abs(event.deltaX) > Math.abs(event.deltaY)) {
            this.pan((event.deltaX || event.deltaY) / this.width);
        } else {
            this.zoom(Math.exp(event.deltaY * 0.002), this.unitAt(this.pointerX(event)));
        }
    }

    onPointerDown(event) {
        if (event.button !== 0) return;
        this.drag = {x: this.pointerX(event), view: {...this.view}, moved: false,
                     target: event.target};
        this.chart.setPointerCapture(event.pointerId);
    }

    onPointerMove(event) {
        const x = this.pointerX(event);
        if (this.drag) {
            const delta = x - this.drag.x;
            if (Math.abs(delta) > 3) this.drag.moved = true;
            const {begin, end} = this.drag.view;
            const step = delta / this.width * (end - begin);
            if (this.drag.moved) this.setView(begin - step, end - step);
            return;
        }
        if (x < LABEL_WIDTH) return this.showIdle();
        const isOnStrip = event.clientY - this.chart.getBoundingClientRect().top < STRIP_HEIGHT;
        const at = isOnStrip ? this.stripAddress(x) : this.axis.addressOf(this.unitAt(x));
        this.readout.textContent = placeText(placeOf(at));
    }

    stripAddress(x) {
        const share = Math.min(Math.max((x - LABEL_WIDTH) / this.width, 0), 1);
        return Math.min(Math.floor(share * model.space), model.space - 1);
    }

    onPointerUp(event) {
        const drag = this.drag;
        this.drag = null;
        if (!drag || drag.moved) return;
        const x = this.pointerX(event);
        if (drag.target.closest(".strip, .mark, .viewport")) {
            const middle = this.axis.unitOf(this.stripAddress(x));
            const half = (this.view.end - this.view.begin) / 2;
            return this.setView(middle - half, middle + half);
        }
        if (x < LABEL_WIDTH) return;
        this.setCursor(this.axis.addressOf(this.unitAt(x)));
        location.hash = drag.target.dataset.link || "#address/" + hex(this.cursor);
    }

    onKey(event) {
        const keys = {
            "+": () => this.zoom(0.5), "=": () => this.zoom(0.5), "-": () => this.zoom(2),
            ArrowLeft: () => this.pan(-0.125), ArrowRight: () => this.pan(0.125),
            Home: () => this.showAll(), n: () => this.step(1), p: () => this.step(-1),
            Enter: () => this.openCursor(),
        };
        const action = keys[event.key.length === 1 ? event.key.toLowerCase() : event.key];
        if (!action || event.ctrlKey || event.altKey || event.metaKey) return;
        event.preventDefault();
        action();
    }

    // To where the next or the one before of all items begins.
    step(direction) {
        const begins = this.begins ??= [...new Set(this.lanes.flatMap((lane) =>
            lane.items.map((item) => item.address)))].sort((a, b) => a - b);
        if (begins.length === 0) return;
        const place = this.cursor === null ? (direction > 0 ? -1 : begins.length)
                                           : lastNotAbove(begins, this.cursor, (begin) => begin);
        const isBetween = place >= 0 && begins[place] !== this.cursor && direction < 0;
        const next = Math.min(Math.max(isBetween ? place : place + direction, 0),
                              begins.length - 1);
        this.setCursor(begins[next]);
        const unit = this.axis.unitOf(this.cursor);
        const half = (this.view.end - this.view.begin) / 2;
        if (unit < this.view.begin || unit > this.view.end) this.setView(unit - half, unit + half);
    }

    openCursor() {
        if (this.cursor !== null) openByKeyboard("#address/" + hex(this.cursor));
    }
}
