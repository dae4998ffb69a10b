// SPDX-License-Identifier: GPL-3.0-or-later
//
// The list of sensors: columns, order, and which of them are left by the filter.  Rows are made once for a set; a key
// pressed in the filter only hides and shows them.
const byId = id => document.getElementById(id);

// Everything that is shown goes through here: text becomes a text node, never markup.
function element(tag, attributes = {}, ...children) {
    const node = document.createElement(tag);
    for (const [name, value] of Object.entries(attributes))
        if (typeof value === "function")
            node.addEventListener(name, value);
        else if (value !== false && value !== null && value !== undefined)
            node.setAttribute(name, value === true ? "" : value);
    node.append(...children.filter(child => child !== null && child !== undefined));
    return node;
}

const hex = value => "0x" + value.toString(16).toUpperCase().padStart(2, "0");
const plural = (count, noun) => `${count} ${noun}${count === 1 ? "" : "s"}`;

function readingText(sensor) {
    return sensor.reading ? sensor.reading.formula : plural(sensor.events.reading.length, "state");
}

function limitColumn(key) {
    const value = sensor => sensor.thresholds?.[key]?.value;
    return {key, title: key.toUpperCase(), class: `limit s${SEVERITY[key]}`, value, text: s => `${value(s) ?? ""}`};
}

// Sorted by `value` where there is one, else by `text`; sensors without a value come last.
const COLUMNS = [
    {key: "ordinal", title: "#", class: "number", value: s => s.ordinal, text: s => `${s.ordinal ?? ""}`},
    {key: "name", title: "Name", class: "name", text: s => s.name},
    {key: "type", title: "Type", class: "type", text: s => s.sensor_type.text},
    {key: "entity", title: "Entity", class: "entity", text: s => `${s.entity.text} ${hex(s.entity.instance)}`},
    {key: "group", title: "Group", class: "group", text: s => s.group},
    {key: "reading", title: "Reading", class: "reading", text: readingText},
    {key: "range", title: "Range", class: "range", value: s => s.reading?.maximum},
    ...LIMITS.map(limitColumn),
    {key: "device", title: "Device", class: "device", value: s => s.device.code * 256 + s.device.item,
     text: s => `${hex(s.device.code)}/${s.device.item}`},
    {key: "kind", title: "Kind", class: "kind", text: s => s.kind}
];

// On narrow screens: what the columns would say that are not there.
function briefText(sensor) {
    const unit = sensor.reading?.unit ? " " + sensor.reading.unit : "";
    const limits = limitsOf(sensor).map(limit => `${limit.key.toUpperCase()} ${limit.value}`);
    return [sensor.sensor_type.text, limits.length ? limits.join(" ") + unit : readingText(sensor)].join(" · ");
}

function nameCell(sensor) {
    const change = sensor.change;
    return element("td", {class: "name", role: "cell"},
        element("button", {type: "button", tabindex: -1, "aria-expanded": "false", "aria-controls": "detail"}, sensor.name),
        change ? element("span", {class: `change ${change.what}`}, change.what) : null,
        element("span", {class: "brief"}, briefText(sensor)));
}

function sensorRow(sensor) {
    const cells = COLUMNS.map(column =>
        column.key === "name"    ? nameCell(sensor)
        : column.key === "range" ? element("td", {class: "range", role: "cell"}, smallPicture(sensor))
                                 : element("td", {class: column.class, role: "cell", title: column.text(sensor)}, column.text(sensor)));
    return element("tr", {role: "row", "data-ordinal": sensor.ordinal}, ...cells);
}

// A sensor that only the other set has: nothing of it is here but its name and what it was.
function removedRow(removed) {
    return element("tr", {class: "gone", role: "row"}, element("td", {class: "number", role: "cell"}),
        element("td", {class: "name", role: "cell"}, element("s", {}, removed.name), element("span", {class: "change removed"}, "removed")),
        element("td", {class: "what", role: "cell"}, removed.what));
}

function wordsOf(sensor) {
    const change = sensor.change ? [sensor.change.what, sensor.change.was ?? ""] : [];
    return [sensor.name, sensor.sensor_type.text, sensor.entity.text, sensor.reading?.unit ?? "", readingText(sensor),
            sensor.group, sensor.kind, sensor.event_type.text, ...change].join("\n").toLowerCase();
}

class SensorList {
    constructor(onOpen) {
        this.onOpen = onOpen;
        this.lines = []; // {sensor, row, button, words, shown}; sensor is null for removed ones
        this.order = {column: COLUMNS[0], down: false};
        this.choice = {group: null, change: null};
        this.current = null;
        byId("rows").addEventListener("click", event => this.clicked(event));
        byId("rows").addEventListener("keydown", event => this.pressed(event));
        byId("columns").append(...COLUMNS.map(column => this.header(column)));
        for (const column of COLUMNS)
            byId("sort").append(element("option", {value: column.key}, column.title));
        byId("sort").addEventListener("change", () => this.sortBy(byId("sort").value));
    }

    header(column) {
        return element("th", {scope: "col", role: "columnheader", class: column.class, "data-key": column.key},
            element("button", {type: "button", title: LIMIT_NAMES[column.key], click: () => this.sortBy(column.key)}, column.title),
            element("span", {class: "paper"}, column.title)); // a head with buttons is not repeated on every page
    }

    show(set) {
        const removed = set.against?.removed ?? [];
        this.lines = [
            ...set.sensors.map(sensor => {
                const row = sensorRow(sensor);
                return {sensor, row, button: row.querySelector("button"), words: wordsOf(sensor), shown: true, group: sensor.group,
                        change: sensor.change?.what};
            }),
            ...removed.map(gone => ({sensor: null, row: removedRow(gone), words: `${gone.name} ${gone.what} removed`.toLowerCase(),
                                     shown: true, change: "removed"}))
        ];
        this.choice = {group: null, change: null};
        this.chips("groups", "group", set.groups);
        this.chips("changes", "change", ["changed", "renamed", "added", "removed"]);
        this.select(this.lines[0]);
        this.arrange();
        this.filter();
    }

    // A chip for each word that some sensor has, with how many.
    chips(id, what, words) {
        const count = word => this.lines.filter(line => line[what] === word).length;
        const chip = word => element("button", {type: "button", "aria-pressed": "false", "data-word": word, click: () => {
            this.choice[what] = this.choice[what] === word ? null : word;
            for (const other of byId(id).children)
                other.setAttribute("aria-pressed", other.dataset.word === this.choice[what]);
            this.filter();
        }}, word, element("b", {}, `${count(word)}`));
        byId(id).replaceChildren(...words.filter(word => count(word) > 0).map(chip));
    }

    sortBy(key) {
        const column = COLUMNS.find(one => one.key === key);
        this.order = {column, down: this.order.column === column && !this.order.down};
        this.arrange();
    }

    arrange() {
        const {column, down} = this.order;
        const keyOf = line => line.sensor === null ? undefined : (column.value ?? column.text)(line.sensor);
        const compare = (a, b) => a === undefined || b === undefined ? (a === undefined) - (b === undefined)
            : (typeof a === "number" ? a - b : a < b ? -1 : a > b ? 1 : 0) * (down ? -1 : 1);
        const keyed = this.lines.map(line => ({line, key: keyOf(line)}));
        this.lines = keyed.sort((a, b) => compare(a.key, b.key)).map(one => one.line);
        byId("rows").replaceChildren(...this.lines.map(line => line.row));
        for (const th of byId("columns").children)
            if (th.dataset.key === column.key)
                th.setAttribute("aria-sort", down ? "descending" : "ascending");
            else
                th.removeAttribute("aria-sort");
        byId("sort").value = column.key;
    }

    // Every word must be somewhere in what is known of the sensor.
    filter() {
        const words = byId("filter").value.toLowerCase().split(/\s+/).filter(Boolean);
        const {group, change} = this.choice;
        let count = 0;
        for (const line of this.lines) {
            const shown = (group === null || line.group === group) && (change === null || line.change === change) &&
                words.every(word => line.words.includes(word));
            count += shown;
            if (shown !== line.shown)
                line.row.hidden = !shown;
            line.shown = shown;
        }
        byId("count").textContent = count === this.lines.length ? plural(count, "sensor") : `${count} of ${this.lines.length}`;
        byId("none").hidden = count > 0;
        byId("none").textContent = this.lines.length ? "No sensor has all of these words." : "";
        if (!this.current?.shown)
            this.select(this.openable()[0] ?? this.current);
    }

    openable() {
        return this.lines.filter(line => line.shown && line.sensor !== null);
    }

    // The one row that the Tab key comes to.
    select(line) {
        this.current?.button?.setAttribute("tabindex", -1);
        this.current = line ?? null;
        this.current?.button?.setAttribute("tabindex", 0);
    }

    go(line) {
        if (!line)
            return;
        this.select(line);
        line.button.focus();
        line.row.scrollIntoView({block: "nearest"});
    }

    step(by) {
        const lines = this.openable();
        const at = lines.indexOf(this.current);
        this.go(lines[Math.max(0, Math.min(lines.length - 1, at + by))]);
    }

    mark(sensor) {
        for (const line of this.lines) {
            line.button?.setAttribute("aria-expanded", line.sensor === sensor);
            line.row.classList.toggle("open", sensor !== null && line.sensor === sensor);
        }
    }

    lineOf(ordinal) {
        return this.lines.find(line => line.sensor?.ordinal === ordinal);
    }

    clicked(event) {
        const row = event.target.closest("tr[data-ordinal]");
        if (!row || String(getSelection()).length > 0)
            return;
        const line = this.lineOf(Number(row.dataset.ordinal));
        this.go(line);
        this.onOpen(line.sensor, true);
    }

    pressed(event) {
        const steps = {ArrowDown: 1, ArrowUp: -1, PageDown: 15, PageUp: -15, Home: -Infinity, End: Infinity};
        if (!(event.key in steps) || event.altKey || event.ctrlKey || event.metaKey)
            return;
        event.preventDefault();
        const before = this.current;
        this.step(steps[event.key]);
        if (this.current !== before)
            this.onOpen(this.current.sensor, false);
    }
}
