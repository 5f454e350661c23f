// A table of any length: only the rows in sight are in the document. Sorting and searching work on
// row numbers; the texts to search in are put together once, when the first search comes.

const ROW_HEIGHT = 24;
const SPARE_ROWS = 12;          // above and below the rows in sight
const TALLEST = 15_000_000;     // pixels that browsers scroll well; more rows share them
const PRINTED_ROWS = 1000;
const WIDE_COLUMN = 260;        // of a column that tells no width

// name:"whole text", name:part, "words in a row", word
const QUERY_WORD = /(?:([a-z]+):)?(?:"([^"]*)"|(\S+))/gi;

function parseQuery(query, columns) {
    const terms = [];
    for (const [whole, key, quoted, plain] of query.matchAll(QUERY_WORD)) {
        const column = columns.find((candidate) => candidate.key === (key || "").toLowerCase());
        const text = column ? quoted ?? plain : quoted ?? whole;
        terms.push({column: column || null, whole: column && quoted !== undefined,
                    text: text.toLowerCase()});
    }
    return terms;
}

// What has no value comes last, whatever the direction.
function compareValues(a, b, sign) {
    if (a === b) return 0;
    if (a === null || a === undefined || a === "") return 1;
    if (b === null || b === undefined || b === "") return -1;
    return a < b ? -sign : sign;
}

// Columns: {key, title, width, numeric, text(row), value(row), link(row), title(row)}; `value` is
// what is sorted by, the text where it is missing.
// Options: {name, label, columns, rows, sort, descending, open(row), id(row), example, empty,
// tall}.
class Table {
    constructor(options) {
        Object.assign(this, options);
        this.order = [];          // numbers of the rows that match, as sorted
        this.sorted = new Map();  // by column and direction: the numbers of all rows
        this.texts = null;
        this.query = "";
        this.sortKey = this.sort || this.columns[0].key;
        this.descending = Boolean(this.descending);
        this.active = -1;         // place in `order` of the row that the keyboard is at
        this.build();
        this.update();
    }

    // Construction

    build() {
        this.head = el("tr", {role: "row", "aria-rowindex": 1});
        this.headers = this.columns.map((column) => this.buildHeader(column));
        this.head.append(...this.headers);
        this.body = el("tbody", {role: "rowgroup"});
        this.grid = el("table", {
            class: "grid", role: "grid", tabindex: 0, "aria-label": this.label,
            keydown: (event) => this.onKey(event),
            focus: () => this.onFocus(),
            click: (event) => this.onClick(event),
        }, this.buildWidths(), el("thead", {role: "rowgroup"}, this.head), this.body);
        this.scroller = el("div", {class: "scroller" + (this.tall ? " tall" : ""),
                                   scroll: () => this.schedule()}, this.grid);
        this.status = el("span", {class: "matches", role: "status", "aria-live": "polite"});
        this.input = el("input", {
            type: "search", class: "query", placeholder: "Search, also " + this.example,
            spellcheck: "false", autocomplete: "off",
            "aria-label": "Search " + this.label.toLowerCase(),
            input: () => this.search(this.input.value),
            keydown: (event) => this.onQueryKey(event),
        });
        this.element = el("div", {class: "tablebox"},
            el("div", {class: "tablebar"}, this.input, this.status), this.scroller);
        new ResizeObserver(() => this.schedule()).observe(this.scroller);
    }

    // Columns keep their proportions, however wide the table is.
    buildWidths() {
        const widths = this.columns.map((column) => column.width || WIDE_COLUMN);
        const total = widths.reduce((sum, width) => sum + width, 0);
        return el("colgroup", {}, widths.map((width) => {
            const column = el("col");
            column.style.width = 100 * width / total + "%";
            return column;
        }));
    }

    buildHeader(column) {
        const sorter = el("button", {type: "button", tabindex: 0,
                                     click: () => this.sortBy(column.key)}, column.title);
        return el("th", {role: "columnheader", scope: "col", class: column.numeric ? "num" : null},
                  sorter);
    }

    // Sorting and searching

    sortBy(key) {
        this.descending = this.sortKey === key ? !this.descending : false;
        this.sortKey = key;
        this.update();
    }

    sortValue(column, row) {
        if (column.value) return column.value(row);
        return column.text(row).toLowerCase();
    }

    sortedNumbers() {
        const way = this.sortKey + (this.descending ? " down" : " up");
        if (!this.sorted.has(way)) {
            const sign = this.descending ? -1 : 1;
            const column = this.columns.find((candidate) => candidate.key === this.sortKey);
            const values = this.rows.map((row) => this.sortValue(column, row));
            const numbers = Array.from(this.rows.keys());
            numbers.sort((a, b) => compareValues(values[a], values[b], sign) || a - b);
            this.sorted.set(way, numbers);
        }
        return this.sorted.get(way);
    }

    textOf(number) {
        if (!this.texts) {
            this.texts = this.rows.map((row) =>
                this.columns.map((column) => column.text(row)).join("\n").toLowerCase());
        }
        return this.texts[number];
    }

    matches(number, terms) {
        return terms.every((term) => {
            if (!term.column) return this.textOf(number).includes(term.text);
            const text = term.column.text(this.rows[number]).toLowerCase();
            return term.whole ? text === term.text : text.includes(term.text);
        });
    }

    search(query) {
        this.query = query;
        if (this.input.value !== query) this.input.value = query;
        this.update();
    }

    update() {
        const terms = parseQuery(this.query, this.columns);
        const numbers = this.sortedNumbers();
        const kept = terms.length === 0 ? numbers
                                        : numbers.filter((number) => this.matches(number, terms));
        const activeNumber = this.active < 0 ? -1 : this.order[this.active];
        this.order = kept;
        this.active = activeNumber < 0 ? -1 : kept.indexOf(activeNumber);
        this.scroller.scrollTop = 0;
        this.showState();
        this.render();
    }

    showState() {
        this.status.textContent = this.order.length === this.rows.length
            ? count(this.rows.length) + " rows"
            : count(this.order.length) + " of " + count(this.rows.length) + " rows";
        this.grid.setAttribute("aria-rowcount", this.order.length + 1);
        this.columns.forEach((column, i) => {
            const isSorted = column.key === this.sortKey;
            const direction = this.descending ? "descending" : "ascending";
            this.headers[i].setAttribute("aria-sort", isSorted ? direction : "none");
        });
    }

    // Rows in sight

    schedule() {
        if (this.frame) return;
        this.frame = requestAnimationFrame(() => {
            this.frame = 0;
            this.render();
        });
    }

    bodyHeight() {
        return Math.min(this.order.length * ROW_HEIGHT, TALLEST);
    }

    roomForRows() {
        return Math.max(ROW_HEIGHT, this.scroller.clientHeight - ROW_HEIGHT);
    }

    // The first row in sight. Where rows share pixels, the scroll bar tells a proportion.
    firstInSight() {
        const height = this.order.length * ROW_HEIGHT;
        const top = this.scroller.scrollTop;
        if (height <= TALLEST) return Math.floor(top / ROW_HEIGHT);
        const share = top / Math.max(1, TALLEST - this.roomForRows());
        return Math.floor(share * (this.order.length - this.roomForRows() / ROW_HEIGHT));
    }

    render(all = false) {
        const room = Math.ceil(this.roomForRows() / ROW_HEIGHT);
        const first = all ? 0 : Math.max(0, this.firstInSight() - SPARE_ROWS);
        const end = Math.min(this.order.length,
                             all ? PRINTED_ROWS : first + room + 2 * SPARE_ROWS);
        const above = Math.min(first * ROW_HEIGHT, this.scrollOffset(first));
        const rows = [];
        for (let place = first; place < end; ++place) rows.push(this.buildRow(place));
        const below = this.bodyHeight() - above - rows.length * ROW_HEIGHT;
        this.body.replaceChildren(this.spacer(above), ...rows, this.spacer(all ? 0 : below));
        if (this.order.length === 0) this.body.append(this.buildEmpty());
        if (all && end < this.order.length) this.body.append(this.buildRest(end));
        this.markActive();
    }

    scrollOffset(first) {
        if (this.order.length * ROW_HEIGHT <= TALLEST) return first * ROW_HEIGHT;
        return Math.max(0, this.scroller.scrollTop - SPARE_ROWS * ROW_HEIGHT);
    }

    spacer(height) {
        const row = el("tr", {class: "spacer", "aria-hidden": "true"},
                       el("td", {colspan: this.columns.length}));
        row.firstChild.style.height = Math.max(0, height) + "px";
        if (height <= 0) row.hidden = true;
        return row;
    }

    buildEmpty() {
        const text = this.rows.length === 0 ? this.empty : "Nothing matches this search.";
        return el("tr", {class: "empty", role: "row"},
                  el("td", {role: "gridcell", colspan: this.columns.length}, text));
    }

    buildRest(end) {
        return el("tr", {class: "empty"}, el("td", {colspan: this.columns.length},
            "\u2026 and " + count(this.order.length - end) + " more rows"));
    }

    buildRow(place) {
        const row = this.rows[this.order[place]];
        const id = this.id(row);
        return el("tr", {
            role: "row", id: this.name + "-" + place, "data-place": place,
            "aria-rowindex": place + 2, "aria-selected": id === this.selected ? "true" : "false",
        }, this.columns.map((column) => this.buildCell(column, row)));
    }

    buildCell(column, row) {
        const text = column.text(row);
        const href = column.link && text !== "" ? column.link(row) : null;
        const content = href ? el("a", {href, tabindex: -1}, text) : text;
        return el("td", {role: "gridcell", title: text.length > 16 ? text : null,
                         class: column.numeric ? "num" : column.mono ? "mono" : null}, content);
    }

    // The active row and the selected one

    markActive() {
        for (const row of this.body.children) {
            row.classList.toggle("active", Number(row.dataset.place) === this.active);
        }
        const id = this.name + "-" + this.active;
        if (document.getElementById(id)) this.grid.setAttribute("aria-activedescendant", id);
        else this.grid.removeAttribute("aria-activedescendant");
    }

    select(id) {
        this.selected = id;
        this.render();
    }

    moveTo(place) {
        if (this.order.length === 0) return;
        this.active = Math.min(Math.max(place, 0), this.order.length - 1);
        this.scrollToActive();
        this.render();
    }

    scrollToActive() {
        const room = this.roomForRows();
        const shareOfRows = this.bodyHeight() / (this.order.length * ROW_HEIGHT);
        const top = this.active * ROW_HEIGHT * shareOfRows;
        if (top < this.scroller.scrollTop) this.scroller.scrollTop = top;
        const lowest = top + ROW_HEIGHT - room;
        if (lowest > this.scroller.scrollTop) this.scroller.scrollTop = lowest;
    }

    openActive(byKeyboard) {
        const row = this.rows[this.order[this.active]];
        if (row) this.open(row, byKeyboard);
    }

    // Events

    onFocus() {
        if (this.active < 0) this.moveTo(this.firstInSight());
    }

    onKey(event) {
        if (event.target !== this.grid) return;
        const page = Math.max(1, Math.floor(this.roomForRows() / ROW_HEIGHT) - 1);
        const moves = {ArrowDown: 1, ArrowUp: -1, PageDown: page, PageUp: -page,
                       Home: -Infinity, End: Infinity};
        if (event.key in moves) this.moveTo(this.active + moves[event.key]);
        else if (event.key === "Enter") this.openActive(true);
        else return;
        event.preventDefault();
    }

    onQueryKey(event) {
        if (event.key === "ArrowDown" || event.key === "Enter") {
            event.preventDefault();
            this.active = 0;
            this.grid.focus();
            this.moveTo(0);
        }
    }

    onClick(event) {
        const row = event.target.closest("tr[data-place]");
        if (!row) return;
        this.active = Number(row.dataset.place);
        this.markActive();
        if (!event.target.closest("a")) this.openActive(false);
    }
}
