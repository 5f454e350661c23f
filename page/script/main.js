// The page: heading, navigation, theme, and the way from the hash to what is shown.
//
// Hashes: #VIEW, #VIEW?q=SEARCH for a table that is searched; #map/ADDRESS+SIZE, #sizes/MODULE and
// #modules for parts of the overview; #KIND/NUMBER for details, which leave the view as it is.

const VIEWS = ["overview", "symbols", "functions", "types", "lines"];
const OVERVIEW_PARTS = ["map", "sizes", "modules"];

const page = {
    view: null,
    built: {},        // views by name
    focusDetails: false,
    returnTo: null,   // what had the focus when the details opened
};

// Theme: the system's until the switch is used; the choice is kept where the browser allows it.

function storedTheme() {
    try {
        return localStorage.getItem("scan695-theme");
    } catch {
        return null;
    }
}

function applyTheme() {
    const isDark = matchMedia("(prefers-color-scheme: dark)").matches;
    const theme = page.theme || (isDark ? "dark" : "light");
    document.documentElement.dataset.theme = theme;
    const other = theme === "dark" ? "light" : "dark";
    page.themeButton.textContent = capitalized(other);
    page.themeButton.setAttribute("aria-label", "Switch to " + other + " colours");
}

function switchTheme() {
    page.theme = document.documentElement.dataset.theme === "dark" ? "light" : "dark";
    try {
        localStorage.setItem("scan695-theme", page.theme);
    } catch {
        // Kept for this visit only.
    }
    applyTheme();
}

// Frame

function viewCount(view) {
    if (view === "overview") return null;
    const rows = view === "functions" ? model.functions : model.data[view];
    return el("span", {class: "count"}, count(rows.length));
}

function buildFrame() {
    page.themeButton = button("", "", switchTheme, {class: "theme"});
    page.themeButton.removeAttribute("title");
    page.find = el("input", {type: "search", name: "find", autocomplete: "off",
                             spellcheck: "false", placeholder: "Go to address, name or file.c:120",
                             "aria-label": "Go to an address, a name or a line"});
    page.tabs = VIEWS.map((view) => el("a", {href: "#" + view}, capitalized(view),
                                        viewCount(view)));
    page.main = el("main", {id: "main", tabindex: -1});
    page.panel = new DetailPanel();
    document.body.append(
        el("a", {class: "skip", href: "#main", click: skipToMain}, "Skip to the content"),
        el("header", {},
           el("div", {class: "title"},
              el("h1", {}, fileName()), el("span", {class: "processor"}, model.header.processor)),
           el("form", {role: "search", submit: goTo}, page.find), page.themeButton),
        el("nav", {"aria-label": "Views"}, page.tabs),
        el("div", {class: "columns"}, page.main, page.panel.element));
}

function fileName() {
    return shown((model.data.file || "").split(/[/\\]/).pop(), "Program");
}

function skipToMain(event) {
    event.preventDefault();
    page.main.focus();
}

// Go to: an address, a line, a symbol of exactly this name, or a search in the symbols.

function goTo(event) {
    event.preventDefault();
    const query = page.find.value.trim();
    if (query !== "") openByKeyboard(hashOf(query));
}

function hashOf(query) {
    if (/^(0x[0-9a-f]+|\d+)$/i.test(query)) return "#address/" + hex(Number(query));
    const place = query.match(/^(.+):(\d+)$/);
    const line = place && findLine(place[1].toLowerCase(), Number(place[2]));
    if (line) return "#line/" + line.record;
    const symbol = findSymbol(query);
    if (symbol) return "#symbol/" + symbol.record;
    return "#symbols?q=" + encodeURIComponent(query);
}

function findLine(name, number) {
    return model.data.lines.find((line) => line.line === number &&
        [line.source, line.module_name].some((text) => (text || "").toLowerCase() === name));
}

function findSymbol(name) {
    return model.data.symbols.find((symbol) => symbol.name === name) ||
           model.data.symbols.find((symbol) =>
               (symbol.name || "").toLowerCase() === name.toLowerCase());
}

// Navigation

function openByKeyboard(hash) {
    if (!hash) return;
    page.focusDetails = true;
    if (location.hash === hash) navigate();
    else location.hash = hash;
}

function closeDetails() {
    page.panel.hide();
    history.pushState(null, "", "#" + page.view);
    markSelected(null, null);
    if (page.returnTo && page.returnTo.isConnected) page.returnTo.focus();
}

function builtView(view) {
    page.built[view] ??= view === "overview" ? new Overview() : TABLES[view]();
    return page.built[view];
}

function showView(view) {
    const built = builtView(view);
    if (page.view === view) return built;
    page.view = view;
    page.main.replaceChildren(view === "overview" ? built.element : titled(view, built.element));
    page.main.className = view;
    page.tabs.forEach((tab, i) => {
        if (VIEWS[i] === view) tab.setAttribute("aria-current", "page");
        else tab.removeAttribute("aria-current");
    });
    document.title = fileName() + " \u2013 " + capitalized(view);
    return built;
}

function titled(view, element) {
    return el("section", {class: "view", "aria-label": capitalized(view)},
              el("h2", {class: "hidden"}, capitalized(view)), element);
}

function markSelected(kind, id) {
    for (const [view, built] of Object.entries(page.built)) {
        const table = view === "overview" ? built.modules : built;
        if (!table) continue;
        const isOfKind = kind !== null && (view === "overview" ? kind === "module"
                                                               : DETAILS[kind].view === view);
        table.select(isOfKind ? id : null);
    }
}

function showDetails(kind, id) {
    if (!page.view) showView(DETAILS[kind].view);
    const opener = document.activeElement;
    if (opener !== document.body && !page.panel.element.contains(opener)) page.returnTo = opener;
    page.panel.show(kind, id);
    if (page.focusDetails) page.panel.heading.focus();
    markSelected(kind, id);
}

function showOverviewPart(part, key) {
    const overview = showView("overview");
    overview.complete();
    const [at, size] = (key || "").split("+").map(Number);
    if (part === "map" && key) overview.map.showAddress(at, size || 1);
    if (part === "sizes") overview.treemap.setModule(key ? at : undefined);
    document.getElementById(part).scrollIntoView({block: "nearest"});
}

function decoded(text) {
    try {
        return decodeURIComponent(text);
    } catch {
        return text;  // a hash that somebody typed
    }
}

function navigate() {
    const [path, query] = location.hash.slice(1).split("?q=");
    const [name, key] = path.split("/");
    if (name in DETAILS && key) showDetails(name, Number(key));
    else if (OVERVIEW_PARTS.includes(name)) showOverviewPart(name, key);
    else {
        const view = VIEWS.includes(name) ? name : page.view || "overview";
        const built = showView(view);
        if (query !== undefined) built.search(decoded(query));
        else if (name === view) page.panel.hide();
        if (page.focusDetails && view !== "overview") built.grid.focus();
    }
    page.focusDetails = false;
}

function tablesInSight() {
    const built = page.built[page.view];
    if (page.view !== "overview") return [built];
    built.complete();
    return [built.modules];
}

function start() {
    loadModel(JSON.parse(document.getElementById("data").textContent));
    buildFrame();
    page.theme = storedTheme();
    applyTheme();
    navigate();
    addEventListener("hashchange", navigate);
    addEventListener("beforeprint", () => tablesInSight().forEach((table) => table.render(true)));
    addEventListener("afterprint", () => tablesInSight().forEach((table) => table.render()));
    addEventListener("keydown", (event) => {
        if (event.key === "/" && !/^(input|textarea)$/i.test(event.target.tagName)) {
            event.preventDefault();
            page.find.focus();
            page.find.select();
        }
    });
    matchMedia("(prefers-color-scheme: dark)").addEventListener("change", applyTheme);
    requestAnimationFrame(() => setTimeout(() => performance.mark("first-view")));
}

start();
