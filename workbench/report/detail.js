// SPDX-License-Identifier: GPL-3.0-or-later
//
// One sensor: its limits, why it is there, and every byte of its record and of its device-table entry.

function fieldsOf(set, sensor, where) {
    const bytes = sensor[where].split(" ");
    return sensor[`${where}_fields`]
        .map(at => set.fields[at])
        .filter(field => field.offset < bytes.length) // behind the record is the rest of its slot
        .map(field => ({...field, name: field.field, where, bytes: bytes.slice(field.offset, field.offset + field.size).join(" ")}));
}

const placeText = field => field.size > 1 ? `${field.offset}–${field.offset + field.size - 1}` : `${field.offset}`;
const covers = (field, offset) => offset >= field.offset && offset < field.offset + field.size;
const TITLES = {record: "Record", entry: "Device-table entry"};

class Detail {
    constructor(onClose, onStep) {
        this.onClose = onClose;
        this.onStep = onStep;
        this.sensor = null;
        this.panel = byId("detail");
        new ResizeObserver(() => this.drawScale()).observe(this.panel);
        addEventListener("beforeprint", () => this.panel.querySelectorAll("details").forEach(one => { one.open = true; }));
    }

    show(set, sensor) {
        this.set = set;
        this.sensor = sensor;
        this.fields = {record: fieldsOf(set, sensor, "record"), entry: fieldsOf(set, sensor, "entry")};
        this.asked = sensor.asked.map(at => set.asked[at]);
        this.card = element("div", {class: "card", role: "status"});
        this.panel.replaceChildren(this.bar(), this.heading(), ...this.scale(), ...this.change(), ...this.bytes("record"),
                                   ...this.bytes("entry"), ...this.why(), this.list("record"), this.list("entry"));
        this.panel.hidden = false;
        this.panel.scrollTop = 0;
        const telling = this.fields.record.find(field => this.answers("record", field).length) ?? this.fields.record.find(field => field.set_by);
        this.pick("record", telling?.offset ?? 0, false);
        this.drawScale();
    }

    hide() {
        this.sensor = null;
        this.panel.hidden = true;
        this.panel.replaceChildren();
    }

    bar() {
        const button = (text, title, click) => element("button", {type: "button", title, "aria-label": title, click}, text);
        return element("div", {class: "bar no-print"},
            element("span", {class: "label"}, `Sensor ${this.sensor.ordinal} of ${this.set.count}`),
            button("↑", "Previous sensor", () => this.onStep(-1)), button("↓", "Next sensor", () => this.onStep(1)),
            button("×", "Close", () => this.onClose()));
    }

    heading() {
        const s = this.sensor;
        const facts = [s.kind + " record", s.sensor_type.text, s.event_type.text, `${s.entity.text} ${hex(s.entity.instance)}`,
                       readingText(s), `device ${hex(s.device.code)}/${s.device.item}`];
        return element("header", {}, element("h2", {}, s.name), element("p", {}, facts.join(" · ")));
    }

    // ---- limits

    scale() {
        const s = this.sensor;
        if (!s.reading) {
            const states = s.events.reading.map(state => element("li", {value: state.bit}, element("b", {}, `${state.bit}`), state.text));
            return states.length ? [element("h3", {}, "States"), element("ul", {class: "states"}, ...states)] : [];
        }
        this.drawing = element("div", {class: "drawing"});
        const hysteresis = ["positive", "negative"].map(side => `${s.hysteresis[side].value ?? s.hysteresis[side].raw}`);
        const words = [limitsOf(s).length ? null : "No limits", `step ${s.reading.factor} ${s.reading.unit}`,
                       `hysteresis +${hysteresis[0]} −${hysteresis[1]} ${s.reading.unit}`];
        return [element("h3", {}, "Limits"), this.drawing,
                element("p", {class: "soft"}, words.filter(Boolean).join(" · "))];
    }

    drawScale() {
        const width = Math.floor(this.drawing?.clientWidth ?? 0);
        const drawn = Number(this.drawing?.firstChild?.getAttribute("width"));
        if (this.sensor?.reading && width >= 100 && width !== drawn)
            this.drawing.replaceChildren(largePicture(this.sensor, width));
    }

    // ---- differences

    change() {
        const {change} = this.sensor;
        if (!change)
            return [];
        const line = one => element("li", {}, one.field ? element("b", {}, `${one.where} ${one.offset} ${one.field}: `) : null,
            one.text ?? `${one.was.join(", ") || "–"} → ${one.now.join(", ") || "–"}`);
        const was = change.was ? element("p", {}, "was ", element("b", {}, change.was)) : null;
        return [element("h3", {}, `${change.what[0].toUpperCase()}${change.what.slice(1)} against ${this.set.against.label}`), was,
                element("ul", {class: "differences"}, ...change.lines.map(line))];
    }

    isChanged(where, offset) {
        return this.sensor.change?.lines.some(line => line.where === where &&
            this.fields[where].some(field => field.offset === line.offset && covers(field, offset)));
    }

    // ---- bytes

    byte(where, field, offset) {
        const value = this.sensor[where].split(" ")[offset];
        const classes = ["byte", offset === field.offset ? "first" : "", offset === field.offset + field.size - 1 ? "last" : "",
                         field.set_by || this.answers(where, field).length ? "own" : "", value === "00" ? "zero" : "",
                         this.isChanged(where, offset) ? "changed" : ""];
        return element("button", {type: "button", class: classes.filter(Boolean).join(" "), "data-where": where, "data-offset": offset,
            tabindex: -1, "aria-label": `${where} byte ${offset}, ${value}: ${field.name}`, click: () => this.pick(where, offset, true)},
            value);
    }

    bytes(where) {
        const cells = [];
        for (const field of this.fields[where])
            for (let offset = field.offset; offset < field.offset + field.size; ++offset) {
                if (offset % 8 === 0)
                    cells.push(element("span", {class: offset % 16 ? "place half" : "place", "aria-hidden": "true"}, `${offset}`));
                cells.push(this.byte(where, field, offset));
            }
        const grid = element("div", {class: "bytes", role: "group", "aria-label": `Bytes of the ${TITLES[where].toLowerCase()}`,
                                     keydown: event => this.pressed(event, where)}, ...cells);
        const count = this.sensor[where].split(" ").length;
        return [element("h3", {}, TITLES[where], element("span", {class: "soft"}, ` ${count} bytes`)), grid];
    }

    pressed(event, where) {
        const perLine = getComputedStyle(event.currentTarget).gridTemplateColumns.split(" ").length - 1;
        const steps = {ArrowLeft: -1, ArrowRight: 1, ArrowUp: -perLine, ArrowDown: perLine, Home: -Infinity, End: Infinity};
        if (!(event.key in steps))
            return;
        event.preventDefault();
        const last = this.sensor[where].split(" ").length - 1;
        this.pick(where, Math.max(0, Math.min(last, this.picked.offset + steps[event.key])), true);
    }

    // Shows what is known of the byte's field below its bytes.
    pick(where, offset, focus) {
        const field = this.fields[where].find(one => covers(one, offset));
        this.picked = {where, offset};
        for (const byte of this.panel.querySelectorAll(".byte")) {
            const at = Number(byte.dataset.offset);
            const same = byte.dataset.where === where;
            byte.classList.toggle("picked", same && covers(field, at));
            byte.setAttribute("aria-pressed", same && at === offset);
            byte.setAttribute("tabindex", at === (same ? offset : 0) ? 0 : -1);
            if (focus && same && at === offset)
                byte.focus();
        }
        this.card.replaceChildren(...this.words(field));
        this.panel.querySelector(`.byte[data-where=${where}]`).parentElement.after(this.card);
    }

    // Questions to the board that change a byte of the field when they are answered otherwise.
    answers(where, field) {
        return this.asked.filter(one => one[`${where}_bytes`].some(offset => covers(field, offset)));
    }

    words(field) {
        const answers = this.answers(field.where, field);
        const kind = this.set.rows[this.sensor.row].kind;
        const line = (label, text) => element("p", {class: "from"}, element("span", {class: "label"}, label), text);
        const out = [element("p", {class: "what"}, element("span", {class: "place"}, placeText(field)),
                             element("code", {}, field.bytes), element("b", {}, field.name)),
                     ...field.meaning.map(text => element("p", {}, text))];
        if (field.set_by)
            out.push(line("set by", field.set_by));
        for (const one of answers)
            out.push(line("follows", `${one.call}(${one.args}) = ${one.answer}${one.from ? ", " + one.from : ""}`));
        if (!field.set_by && answers.length === 0)
            out.push(line("set by", `the sensor's kind, ${kind.name}, or its row; every board has it so`));
        return out;
    }

    list(where) {
        const row = field => element("tr", {}, element("td", {class: "place"}, placeText(field)),
            element("td", {}, element("code", {}, field.bytes)), element("td", {}, element("b", {}, field.name)),
            element("td", {}, ...field.meaning.map(text => element("div", {}, text)),
                    field.set_by ? element("div", {class: "soft"}, `= ${field.set_by}`) : null));
        return element("details", {}, element("summary", {}, `All ${plural(this.fields[where].length, "field")} of the ${TITLES[where].toLowerCase()}`),
            element("table", {class: "fields"}, element("tbody", {}, ...this.fields[where].map(row))));
    }

    // ---- why

    why() {
        const row = this.set.rows[this.sensor.row];
        const fact = (label, ...text) => [element("dt", {class: "label"}, label), element("dd", {}, ...text)];
        const list = element("dl", {class: "row"}, ...fact("Row", element("code", {}, row.pattern), ` ${row.file}:${row.line}`),
            ...fact("Kind", element("code", {}, row.kind.name), ` ${row.kind.place}`),
            ...fact("Group", row.group_words));
        const asked = this.asked.map(one => this.question(one));
        return [element("h3", {}, "Why it is there"), list,
                asked.length ? element("ol", {class: "asked"}, ...asked) : element("p", {}, "Nothing is asked: every board has it.")];
    }

    question(one) {
        const names = where => this.fields[where].filter(field => one[`${where}_bytes`].some(offset => covers(field, offset)))
            .map(field => element("button", {type: "button", class: "ref", click: () => this.pick(where, field.offset, true)},
                                  `${where} ${placeText(field)} ${field.name}`));
        const sets = [...names("record"), ...names("entry")];
        const gone = one.gone_when.map(word => word === "fails" ? "it fails" : `it answers ${word}`);
        return element("li", {class: one.of_group ? "of-group" : ""},
            element("p", {class: "call"}, element("code", {}, `${one.call}(${one.args})`), " = ", element("b", {}, one.answer)),
            one.from ? element("p", {class: "soft"}, one.from) : null,
            sets.length ? element("p", {class: "sets"}, element("span", {class: "label"}, "sets"), element("span", {}, ...sets)) : null,
            gone.length ? element("p", {}, element("span", {class: "label"}, "gone"), `when ${gone.join(" or ")}`) : null);
    }
}
