// The axis of the memory map. It counts in units: bytes, but that folded stretches where nothing
// stands take few of them. Unfolded, the whole address space is one segment of its own length.

const FOLDED_SHARE = 0.012;  // of all occupied bytes: what a folded gap takes
const TICK_DISTANCE = 110;   // pixels between ticks, about
const MOST_SEGMENTS = 200;   // that ticks are tried for

// Stretches that hold anything, with small gaps between neighbours closed.
function occupiedAreas() {
    const items = [...model.data.code, ...model.data.ranges, ...model.functions,
                   ...model.variables];
    const stretches = mergeStretches(items
        .filter((item) => item.size > 0 && item.address < model.space)
        .map((item) => ({begin: item.address,
                         end: Math.min(item.address + item.size, model.space)})));
    const total = stretches.reduce((sum, {begin, end}) => sum + end - begin, 0);
    const smallGap = Math.max(16, total * FOLDED_SHARE);
    const areas = [];
    for (const {begin, end} of stretches) {
        const last = areas[areas.length - 1];
        if (last && begin - last.end <= smallGap) last.end = end;
        else areas.push({begin, end});
    }
    return areas;
}

class Axis {
    // Segments: {begin, end, start, length}, the first two in addresses, the others in units.
    constructor(areas, isFolded) {
        this.segments = [];
        this.length = 0;
        if (isFolded && areas.length > 0) this.addFolded(areas);
        else this.add(0, model.space, model.space, false);
    }

    add(begin, end, length, isGap) {
        this.segments.push({begin, end, start: this.length, length, isGap});
        this.length += length;
    }

    addFolded(areas) {
        const total = areas.reduce((sum, area) => sum + area.end - area.begin, 0);
        let at = 0;
        for (const {begin, end} of [...areas, {begin: model.space, end: model.space}]) {
            const gap = begin - at;
            if (gap > 0) this.add(at, begin, Math.min(gap, total * FOLDED_SHARE * 1.5), true);
            if (end > begin) this.add(begin, end, end - begin, false);
            at = end;
        }
    }

    segmentBy(key, value) {
        return this.segments[Math.max(0, lastNotAbove(this.segments, value, (s) => s[key]))];
    }

    // Asked for one address after the other: the segment is mostly that of the last time.
    unitOf(at) {
        if (!this.last || at < this.last.begin || at >= this.last.end) {
            this.last = this.segmentBy("begin", at);
        }
        const segment = this.last;
        return segment.start +
               (at - segment.begin) / (segment.end - segment.begin) * segment.length;
    }

    addressOf(unit) {
        const segment = this.segmentBy("start", unit);
        const offset = (unit - segment.start) / segment.length * (segment.end - segment.begin);
        return Math.min(Math.floor(segment.begin + offset), model.space - 1);
    }
}

// Ticks {at, x} for the addresses from `from` to `to`, as far as there is room for their labels:
// the begins of segments, the longest first, then round addresses between them.
function tickPlaces(axis, from, to, xOf, {left, right, label}) {
    const places = [];
    const offer = (at) => {
        const x = xOf(at);
        if (x < left - 1 || x > right - label) return;
        if (places.every((place) => Math.abs(place.x - x) > label)) places.push({at, x});
    };
    const segments = axis.segments
        .filter((segment) => !segment.isGap && segment.end > from && segment.begin <= to)
        .sort((a, b) => b.length - a.length).slice(0, MOST_SEGMENTS);
    for (const segment of segments) offer(Math.max(segment.begin, from));
    for (const segment of segments) {
        const begin = Math.max(segment.begin, from);
        const end = Math.min(segment.end, to + 1);
        const pixels = xOf(end - 1) - xOf(begin);
        for (const at of roundAddresses(begin, end, pixels / TICK_DISTANCE)) offer(at);
    }
    return places;
}

// Multiples of a power of two in [begin, end), about as many as wanted.
function roundAddresses(begin, end, wanted) {
    const step = 2 ** Math.max(2, Math.ceil(Math.log2((end - begin) / Math.max(1, wanted))));
    const addresses = [];
    for (let at = Math.ceil(begin / step) * step; at < end; at += step) addresses.push(at);
    return addresses;
}
