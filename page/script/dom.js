"use strict";

// Elements and texts. Names of the program enter the document as text nodes and attribute values
// only; nothing here or elsewhere parses markup.

const SVG_NAMESPACE = "http://www.w3.org/2000/svg";

// Functions among the attributes are listeners; null and false leave an attribute out.
function setAttributes(node, attributes) {
    for (const [name, value] of Object.entries(attributes || {})) {
        if (value === null || value === undefined || value === false) continue;
        if (typeof value === "function") node.addEventListener(name, value);
        else node.setAttribute(name, value === true ? "" : String(value));
    }
}

function el(tag, attributes, ...children) {
    const node = document.createElement(tag);
    setAttributes(node, attributes);
    node.append(...children.flat().filter((child) => child !== null && child !== undefined));
    return node;
}

function svg(tag, attributes, ...children) {
    const node = document.createElementNS(SVG_NAMESPACE, tag);
    setAttributes(node, attributes);
    node.append(...children);
    return node;
}

function text(content, x, y, name) {
    const node = svg("text", {x, y, class: name});
    node.textContent = content;
    return node;
}

// What stands for nothing: gaps of the map, holes in a struct.
function hatchPattern(id) {
    return svg("defs", {}, svg("pattern", {id, width: 6, height: 6,
                                           patternUnits: "userSpaceOnUse",
                                           patternTransform: "rotate(45)"},
        svg("line", {x1: 0, x2: 0, y1: 0, y2: 6, class: "hatch"})));
}

function button(content, label, onClick, attributes) {
    return el("button", {type: "button", "aria-label": label, title: label, click: onClick,
                         ...attributes}, content);
}

const LABEL_CHARACTER = 6.6;  // pixels that a character of a label takes

// Numbers

function hex(number, digits = 1) {
    return number < 0 ? "-" + hex(-number, digits)
                      : "0x" + number.toString(16).padStart(digits, "0");
}

// "12,345"
function count(number) {
    const digits = String(number);
    return number < 1000 ? digits : digits.replace(/\B(?=(\d{3})+$)/g, ",");
}

function plural(number, word) {
    return count(number) + " " + word + (number === 1 ? "" : "s");
}

function bytes(number) {
    return plural(number, "byte");
}

// "710 B", "12.5 KB": for captions, where the exact number stands elsewhere.
function roughBytes(number) {
    if (number < 1024) return number + " B";
    const power = Math.min(3, Math.floor(Math.log2(number) / 10));
    const scaled = number / 1024 ** power;
    return (scaled < 10 && scaled % 1 !== 0 ? scaled.toFixed(1) : Math.round(scaled)) + " " +
           ["B", "KB", "MB", "GB"][power];
}

const UNPRINTABLE = /[\u0000-\u001f\u007f-\u009f\u200e\u200f\u202a-\u202e\u2066-\u2069]/;

// Control characters would vanish from the page or spoil a line: their pictures stand for them.
function shown(name, fallback = "(no name)") {
    if (name === null || name === undefined || name === "") return fallback;
    if (!UNPRINTABLE.test(name)) return name;
    return name.replace(/[\u0000-\u001f]/g, (c) => String.fromCharCode(0x2400 + c.charCodeAt(0)))
               .replace(/[\u007f-\u009f\u200e\u200f\u202a-\u202e\u2066-\u2069]/g, "\u2421");
}

function capitalized(word) {
    return word[0].toUpperCase() + word.slice(1);
}

function shortened(text, characters) {
    return text.length <= characters ? text : text.slice(0, Math.max(1, characters - 1)) + "\u2026";
}

// The index of the last item of a sorted list whose key is not above the value; -1 for none.
function lastNotAbove(items, value, key) {
    let low = 0;
    let high = items.length;
    while (low < high) {
        const middle = (low + high) >> 1;
        if (key(items[middle]) <= value) low = middle + 1;
        else high = middle;
    }
    return low - 1;
}

// Colours of modules and members: neighbours in number are far apart in hue.
function hue(number) {
    return Math.round((205 + number * 137.508) % 360);
}
