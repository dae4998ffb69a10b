// SPDX-License-Identifier: GPL-3.0-or-later
//
// The page: which set is shown, what is open, keys and theme.  The sets stand in the page as JSON, each in an element of
// its own that is read when it is chosen.

const REPORT = JSON.parse(byId("report").textContent);
const read = new Map();

function setAt(at) {
    if (!read.has(at))
        read.set(at, JSON.parse(byId(`set-${at}`).textContent));
    return read.get(at);
}

class Page {
    constructor() {
        this.list = new SensorList((sensor, asked) => this.open(sensor, asked));
        this.detail = new Detail(() => this.close(), by => this.stepOpen(by));
        this.fillChoice();
        byId("program").textContent = REPORT.program;
        byId("filter").addEventListener("input", () => this.list.filter());
        byId("filter").addEventListener("keydown", event => this.pressedInFilter(event));
        byId("set").addEventListener("change", () => this.choose(Number(byId("set").value)));
        addEventListener("keydown", event => this.pressed(event));
        addEventListener("hashchange", () => this.follow());
        this.theme();
        this.follow();
    }

    // ---- sets

    fillChoice() {
        const boards = new Map();
        REPORT.sets.forEach((set, at) => {
            const group = boards.get(set.board) ?? element("optgroup", {label: set.title});
            boards.set(set.board, group);
            group.append(element("option", {value: at}, `${set.title}, ${set.profile.name}: ${set.no_set ? "no set" : set.count}`));
        });
        byId("set").append(...boards.values());
        byId("set-choice").hidden = REPORT.sets.length < 2;
    }

    choose(at) {
        this.at = at;
        const told = REPORT.sets[at];
        this.set = told.no_set ? {...told, sensors: [], groups: []} : setAt(at);
        this.close();
        byId("set").value = at;
        byId("board").textContent = told.title;
        byId("caption").textContent = `Sensors of ${told.title}, profile ${told.profile.name}`;
        document.title = `${told.title}, ${told.profile.name}: sensors`;
        this.list.show(this.set);
        this.facts(told);
        if (told.no_set) {
            byId("none").hidden = false;
            byId("none").textContent = `No set: ${told.no_set}`;
        }
    }

    facts(told) {
        const fact = (label, ...text) => element("div", {}, element("dt", {class: "label"}, label), element("dd", {}, ...text));
        const facts = [fact("Profile", `${told.profile.name} `, element("span", {class: "soft"}, `id ${told.profile.id}`)),
                       fact("Board file", told.board)];
        if (!told.no_set)
            facts.push(fact("Sensors", `${told.count} `, element("span", {class: "soft"}, `${told.full} full, ${told.compact} compact`)));
        if (this.set.against)
            facts.push(fact("Against", this.set.against.label, " ", element("span", {class: "soft"}, this.differences())));
        byId("facts").replaceChildren(...facts);
    }

    differences() {
        const {against, sensors} = this.set;
        if (against.nothing)
            return against.nothing;
        const count = what => sensors.filter(sensor => sensor.change?.what === what).length;
        const parts = [...["changed", "renamed", "added"].map(what => [count(what), what]), [against.removed.length, "removed"]];
        return parts.filter(([number]) => number).map(([number, what]) => `${number} ${what}`).join(", ") || "the same";
    }

    // ---- one sensor

    // Asked for by name (a click, Enter), or because the selection moved while one was open.
    open(sensor, asked) {
        if (!asked && this.detail.sensor === null)
            return;
        if (asked && this.detail.sensor === sensor)
            return this.close();
        document.documentElement.classList.add("has-detail");
        this.detail.show(this.set, sensor);
        this.list.mark(sensor);
        this.list.current.row.scrollIntoView({block: "nearest"});
        this.remember();
        if (asked && this.covered())
            byId("detail").focus();
    }

    // On narrow screens the sensor lies over the list.
    covered() {
        return getComputedStyle(byId("detail")).position === "fixed";
    }

    stepOpen(by) {
        const inPanel = byId("detail").contains(document.activeElement);
        this.list.step(by);
        this.open(this.list.current.sensor, false);
        if (inPanel)
            byId("detail").querySelectorAll(".bar button")[by < 0 ? 0 : 1].focus();
    }

    close() {
        if (this.detail.sensor === null)
            return;
        document.documentElement.classList.remove("has-detail");
        this.detail.hide();
        this.list.mark(null);
        this.list.go(this.list.current);
        this.remember();
    }

    // ---- the address: #SET/SENSOR

    remember() {
        history.replaceState(null, "", `#${this.at}${this.detail.sensor ? "/" + this.detail.sensor.ordinal : ""}`);
    }

    follow() {
        const [, set, ordinal] = /^#(\d+)(?:\/(\d+))?$/.exec(location.hash) ?? [];
        this.choose(set in REPORT.sets ? Number(set) : 0);
        const line = this.list.lineOf(Number(ordinal));
        if (!line)
            return;
        this.list.select(line);
        this.open(line.sensor, true);
    }

    // ---- keys

    pressed(event) {
        const typing = event.target.matches("input[type=search], select, textarea");
        if (event.key === "/" && !typing && !event.ctrlKey && !event.metaKey && !event.altKey) {
            event.preventDefault();
            if (this.covered())
                this.close();
            byId("filter").focus();
            byId("filter").select();
        } else if (event.key === "Escape" && event.target !== byId("filter"))
            this.close();
    }

    pressedInFilter(event) {
        if (event.key === "ArrowDown" || event.key === "Enter") {
            event.preventDefault();
            this.list.go(this.list.current?.shown ? this.list.current : this.list.openable()[0]);
        } else if (event.key === "Escape" && byId("filter").value) {
            event.preventDefault();
            byId("filter").value = "";
            this.list.filter();
        } else if (event.key === "Escape")
            this.detail.sensor ? this.close() : byId("filter").blur();
    }

    // ---- theme

    theme() {
        const choose = word => {
            document.documentElement.dataset.theme = word;
            for (const input of byId("theme").querySelectorAll("input"))
                input.checked = input.value === word;
        };
        try {
            choose(localStorage.getItem("oxa-theme") ?? "");
        } catch { // a browser that lets pages of files keep nothing
            choose("");
        }
        byId("theme").addEventListener("change", event => {
            choose(event.target.value);
            try {
                localStorage.setItem("oxa-theme", event.target.value);
            } catch {
            }
        });
    }
}

new Page();
