// SPDX-License-Identifier: GPL-3.0-or-later
//
// Limits drawn on the range of a sensor, in its unit.  Every step away from the normal range is thinner and of another
// colour, so that it can be told on paper and by eyes that see no colours.
"use strict";

const LIMITS = ["lnr", "lc", "lnc", "unc", "uc", "unr"];
const LIMIT_NAMES = {
    lnr: "lower non-recoverable", lc: "lower critical", lnc: "lower non-critical",
    unc: "upper non-critical", uc: "upper critical", unr: "upper non-recoverable"
};
const SEVERITY = {lnr: 3, lc: 2, lnc: 1, unc: 1, uc: 2, unr: 3}; // beyond the limit; 0 is normal

// The limits that a sensor has, lowest first.
function limitsOf(sensor) {
    return LIMITS.filter(key => sensor.thresholds?.[key]).map(key => ({key, ...sensor.thresholds[key]}));
}

// What the record says, else what its byte can say; wide enough for every limit.
function rangeOf(sensor) {
    const {minimum, maximum, factor, offset, signed} = sensor.reading;
    const ends = maximum > minimum ? [minimum, maximum]
                                   : [offset + factor * (signed ? -128 : 0), offset + factor * (signed ? 127 : 255)];
    const values = limitsOf(sensor).map(limit => limit.value);
    return {low: Math.min(...ends, ...values), high: Math.max(...ends, ...values)};
}

// Parts of the range from left to right, with how far from normal each of them is.
function zonesOf(sensor) {
    const {low, high} = rangeOf(sensor);
    const limits = limitsOf(sensor);
    const lower = limits.filter(limit => limit.key[0] === "l"), upper = limits.filter(limit => limit.key[0] === "u");
    const edges = [...lower.map(limit => ({value: limit.value, below: SEVERITY[limit.key], above: null})),
                   ...upper.map(limit => ({value: limit.value, below: null, above: SEVERITY[limit.key]}))];
    const zones = [];
    let from = low;
    edges.forEach((edge, i) => {
        const severity = edge.below ?? edges[i - 1]?.above ?? 0;
        zones.push({from, to: edge.value, severity});
        from = edge.value;
    });
    zones.push({from, to: high, severity: edges.at(-1)?.above ?? 0});
    return zones.filter(zone => zone.to > zone.from);
}

function svg(tag, attributes, ...children) {
    const node = document.createElementNS("http://www.w3.org/2000/svg", tag);
    for (const [name, value] of Object.entries(attributes))
        node.setAttribute(name, value);
    node.append(...children);
    return node;
}

// The bar itself, `width` by `height`, from (0, top).
function drawZones(sensor, width, top, height) {
    const {low, high} = rangeOf(sensor);
    const at = value => (value - low) / (high - low) * width;
    const middle = top + height / 2;
    const out = [svg("rect", {class: "axis", x: 0, y: middle - 0.5, width, height: 1})];
    if (limitsOf(sensor).length > 0)
        for (const zone of zonesOf(sensor)) {
            const thick = height * [1, 0.72, 0.45, 0.22][zone.severity];
            out.push(svg("rect", {class: `zone z${zone.severity}`, x: at(zone.from), y: middle - thick / 2,
                                  width: at(zone.to) - at(zone.from), height: thick}));
        }
    if (low < 0 && high > 0)
        out.push(svg("rect", {class: "zero", x: at(0) - width / 400, y: top - 2, width: width / 200, height: height + 4}));
    return out;
}

function rangeText(sensor) {
    const {low, high} = rangeOf(sensor);
    const unit = sensor.reading.unit;
    const limits = limitsOf(sensor).map(limit => `${LIMIT_NAMES[limit.key]} ${limit.value}`);
    return `${low} to ${high} ${unit}${limits.length ? ": " + limits.join(", ") : ", no limits"}`;
}

// A row's picture: the bar, or the states that a discrete sensor can show, a cell for each bit.
function smallPicture(sensor) {
    if (!sensor.reading) {
        const bits = new Set(sensor.events.reading.map(state => state.bit));
        const cell = bit => svg("rect", {class: bits.has(bit) ? "bit on" : "bit", x: bit * 12, y: 3, width: 9, height: 6});
        const words = `${bits.size} ${bits.size === 1 ? "state" : "states"}`;
        return svg("svg", {class: "bits", viewBox: "0 0 180 12", role: "img", "aria-label": words},
                   ...Array.from({length: 15}, (_, bit) => cell(bit)));
    }
    return svg("svg", {class: "bar", viewBox: "0 0 1000 12", preserveAspectRatio: "none", role: "img",
                       "aria-label": rangeText(sensor)}, ...drawZones(sensor, 1000, 2, 8));
}

// Labels under their places, pushed apart where they would touch.
function spread(places, gap, width) {
    const out = [...places];
    for (let i = 1; i < out.length; ++i)
        out[i] = Math.max(out[i], out[i - 1] + gap);
    for (let i = out.length - 1, most = width; i >= 0; --i, most -= gap)
        out[i] = Math.min(out[i], most);
    return out;
}

// The large picture, drawn for a width in pixels so that its text is as large as all other text.
function largePicture(sensor, width) {
    const {low, high} = rangeOf(sensor);
    const side = 22, inner = width - 2 * side, top = 24, height = 22;
    const limits = limitsOf(sensor);
    const places = limits.map(limit => side + (limit.value - low) / (high - low) * inner);
    const labels = spread(places, 44, width - side);
    const out = svg("svg", {class: "scale", width, height: limits.length ? 112 : 52, role: "img",
                            "aria-label": rangeText(sensor)});
    out.append(svg("g", {transform: `translate(${side} 0)`}, ...drawZones(sensor, inner, top, height)));
    const end = (x, anchor, text) => svg("text", {class: "end", x, y: 14, "text-anchor": anchor}, text);
    out.append(end(side, "start", `${low}`), end(width - side, "end", `${high} ${sensor.reading.unit}`));
    if (low < 0 && high > 0)
        out.append(end(side - low / (high - low) * inner, "middle", "0"));
    limits.forEach((limit, i) => {
        const line = `M${places[i]} ${top - 2}V${top + height + 4}L${labels[i]} ${top + height + 20}V${top + height + 24}`;
        const text = (y, className, words) =>
            svg("text", {class: className, x: labels[i], y, "text-anchor": "middle"}, words);
        out.append(svg("path", {class: `lead s${SEVERITY[limit.key]}`, d: line}),
                   text(top + height + 40, "key", limit.key.toUpperCase()),
                   text(top + height + 57, `value s${SEVERITY[limit.key]}`, `${limit.value}`));
    });
    return out;
}
