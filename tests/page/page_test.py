# SPDX-License-Identifier: GPL-3.0-or-later
"""The page of report in a browser: what a person sees and does."""
import json
import os
import re
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "workbench"))

from browser import PROGRAM, Browser  # pylint: disable=wrong-import-position
from support import BASE, FULLEST, TWO_SOCKET, Workbench, main  # pylint: disable=wrong-import-position

KEYSTROKE = 100  # milliseconds that a key in the filter may take until its result is drawn

SHOWN = "[...document.querySelectorAll('#rows tr')].filter(r => !r.hidden)"
# milliseconds from the key's event to the frame that shows what it did
WATCH = """(() => {
  window.took = [];
  document.getElementById('filter').addEventListener('keydown', event =>
    requestAnimationFrame(() => { const c = new MessageChannel();
      c.port1.onmessage = () => took.push(performance.now() - event.timeStamp); c.port2.postMessage(0); }), true);
})()"""


class PageTest(Workbench):
    @classmethod
    def setUpClass(cls):
        cls.browser = Browser()
        cls.pages = tempfile.TemporaryDirectory()
        cls.made = {}

    @classmethod
    def tearDownClass(cls):
        cls.browser.close()
        cls.pages.cleanup()

    def page(self, *words):
        """The path of a page; each is made once."""
        if words not in self.made:
            self.made[words] = os.path.join(self.pages.name, f"{len(self.made)}.html")
            self.out("report", *words, "-o", self.made[words])
        return self.made[words]

    def open(self, *words, anchor="", width=1280, height=800):
        self.browser.resize(width, height)
        self.browser.media()
        self.browser.open(self.page(*(words or ("--board", TWO_SOCKET))), anchor)
        self.addCleanup(self.nothing_went_wrong)

    def nothing_went_wrong(self):
        self.assertEqual(self.browser.problems, [])
        self.assertEqual([url for url in self.browser.requests if not url.startswith(("file:", "data:"))], [])
        self.assertEqual(len([url for url in self.browser.requests if url.startswith("file:")]), 1)

    def js(self, expression):
        return self.browser.js(expression)

    def names(self):
        return self.js(SHOWN + ".map(r => r.querySelector('.name button, .name s').textContent)")

    def text(self, selector):
        return self.js(f"document.querySelector({json.dumps(selector)})?.innerText")

    def focused(self):
        return self.js("document.activeElement.textContent || document.activeElement.id")


class Filtering(PageTest):
    def test_every_key_leaves_fewer_and_escape_brings_all_back(self):
        self.open()
        everything = self.names()
        self.assertEqual(len(everything), 164)
        self.browser.key("/")
        self.assertEqual(self.js("document.activeElement.id"), "filter")
        for typed in ("p", "ps", "psu", "psu_", "psu_t"):
            self.browser.key(typed[-1])
        self.assertEqual(self.names(), [name for name in everything if "psu_t" in name.lower()])
        self.assertEqual(self.text("#count"), f"{len(self.names())} of 164")
        self.assertEqual(self.js("document.getElementById('filter').value"), "psu_t")
        self.browser.key("Escape")
        self.assertEqual(self.names(), everything)
        self.assertEqual(self.text("#count"), "164 sensors")

    def test_words_are_found_in_type_unit_and_group_and_all_must_be(self):
        self.open()
        listed = self.json("list", "--board", TWO_SOCKET)["sensors"]
        self.browser.key("/")
        self.browser.type("temperature full")
        self.assertEqual(self.names(), [s["name"] for s in listed if s["kind"] == "full" and
                                        "Temperature" in (s["sensor_type"]["text"], s["name"].title())])
        self.assertGreater(len(self.names()), 5)

    def test_what_nothing_has_says_so(self):
        self.open()
        self.browser.key("/")
        self.browser.type("zzz")
        self.assertEqual((self.names(), self.text("#none")), ([], "No sensor has all of these words."))

    def test_a_group_is_left_alone_by_its_chip_and_counted_on_it(self):
        self.open()
        counted = self.json("list", "--board", TWO_SOCKET, "--profile", "all")["profiles"][0]["groups"]
        chips = dict(self.js("[...document.querySelectorAll('#groups button')].map(b => [b.dataset.word, +b.lastChild.textContent])"))
        self.assertEqual(chips, {name: count for name, count in counted.items() if count})
        self.browser.click("#groups button[data-word=memory]")
        self.assertEqual(len(self.names()), counted["memory"])
        self.assertEqual(self.js("document.querySelector('#groups [aria-pressed=true]').dataset.word"), "memory")
        self.browser.click("#groups button[data-word=memory]")
        self.assertEqual(len(self.names()), 164)

    def test_a_key_takes_less_than_100_ms_with_700_sensors(self):
        self.open("--board", FULLEST, "--profile", "kestrin")
        self.assertEqual(len(self.names()), 703)
        self.js(WATCH)
        rounds = []
        for _ in range(3):  # other programs may have had the processor in one of them
            self.js("took.length = 0; document.getElementById('filter').focus()")
            for key in ["t", "e", "m", "p", " ", "c", *["Backspace"] * 6]:
                self.browser.key(key)
                self.browser.frame()
                if key == "c":
                    self.assertIn(len(self.names()), range(1, 600))
            rounds.append(sorted(self.js("took")))
            self.assertEqual((len(rounds[-1]), len(self.names())), (12, 703))
        worst = min(times[-1] for times in rounds)
        print(f"703 sensors: a key takes {rounds[0][6]:.0f} ms (median), {worst:.0f} ms (longest of 12)")
        self.assertLess(worst, KEYSTROKE)


class Sorting(PageTest):
    def values(self, column):
        return self.js(SHOWN + f".map(r => r.querySelector('td:nth-child({column})')).map(c => (c.querySelector('button') ?? c).textContent)")

    def columns(self):
        return self.js("[...document.querySelectorAll('#columns th')].map(t => t.dataset.key)")

    def test_every_column_sorts_both_ways(self):
        self.open()
        order = {"type": str, "entity": str, "group": str, "reading": str, "kind": str, "name": str, "ordinal": int}
        for key, kind in order.items():
            with self.subTest(key):
                at = self.columns().index(key) + 1
                self.js(f"document.querySelector('th[data-key={key}] button').click()")
                up = self.values(at)
                if self.js(f"document.querySelector('th[data-key={key}]').ariaSort") == "descending":
                    self.js(f"document.querySelector('th[data-key={key}] button').click()")
                    up = self.values(at)
                self.assertEqual([kind(v) for v in up], sorted(kind(v) for v in up))
                self.assertEqual(self.js(f"document.querySelector('th[data-key={key}]').ariaSort"), "ascending")
                self.js(f"document.querySelector('th[data-key={key}] button').click()")
                self.assertEqual([kind(v) for v in self.values(at)], sorted((kind(v) for v in up), reverse=True))
                self.assertEqual(self.js("document.querySelectorAll('th[aria-sort]').length"), 1)

    def test_limits_sort_as_numbers_and_sensors_without_one_come_last(self):
        self.open()
        at = self.columns().index("uc") + 1
        self.browser.click("th[data-key=uc] button")
        up = self.values(at)
        self.browser.click("th[data-key=uc] button")
        down = self.values(at)
        for values, reverse in ((up, False), (down, True)):
            numbers = [float(v) for v in values if v]
            self.assertGreater(len(numbers), 3)
            self.assertEqual(numbers, sorted(numbers, reverse=reverse))
            self.assertEqual(values[len(numbers):], [""] * (len(values) - len(numbers)))


class OneSensor(PageTest):
    def test_enter_opens_arrows_follow_escape_returns(self):
        self.open()
        self.browser.key("/")
        self.browser.type("input_temp")
        self.browser.key("ArrowDown")
        self.assertEqual(self.focused(), "INPUT_TEMP")
        self.browser.key("Enter")
        self.assertEqual(self.text("#detail h2"), "INPUT_TEMP")
        self.assertEqual(self.js("document.querySelector('[aria-expanded=true]').textContent"), "INPUT_TEMP")
        self.browser.key("/")
        self.browser.key("Escape")
        self.browser.key("Enter")
        self.browser.key("ArrowDown")
        following = self.names()[self.names().index("INPUT_TEMP") + 1]
        self.assertEqual((self.text("#detail h2"), self.focused()), (following, following))
        self.browser.key("Escape")
        self.assertTrue(self.js("document.getElementById('detail').hidden"))
        self.assertEqual(self.focused(), following)

    def test_one_row_alone_is_in_the_order_of_the_tab_key(self):
        self.open()
        tabbable = "[...document.querySelectorAll('#rows button')].filter(b => b.tabIndex === 0).length"
        self.assertEqual(self.js(tabbable), 1)
        self.browser.key("/")
        self.browser.type("fan")
        self.browser.key("ArrowDown")
        self.browser.key("ArrowDown")
        self.assertEqual(self.js(tabbable), 1)
        outline = self.js("getComputedStyle(document.activeElement).outlineStyle + getComputedStyle(document.activeElement).outlineWidth")
        self.assertEqual(outline, "solid2px")

    def test_a_click_opens_and_another_closes(self):
        self.open()
        self.browser.click("#rows tr[data-ordinal='12'] td.range")
        self.assertEqual(self.text("#detail h2"), "OUTPUT_VOLTS_01")
        self.browser.click("#rows tr[data-ordinal='12'] td.range")
        self.assertTrue(self.js("document.getElementById('detail').hidden"))

    def test_every_byte_tells_its_field_its_meaning_and_what_set_it(self):
        for name in ("CPU_VOLTS_00", "FAN_STATUS_03"):
            (shown,) = self.json("show", "--board", TWO_SOCKET, name)["sensors"]
            self.open(anchor=f"#0/{shown['ordinal']}")
            self.assertEqual(self.text("#detail h2"), name)
            for where in ("record", "entry"):
                count = len(shown[where].split())
                self.assertEqual(self.js(f"document.querySelectorAll('.byte[data-where={where}]').length"), count)
                for offset in range(count):
                    field = next(f for f in shown[where + "_fields"] if f["offset"] <= offset < f["offset"] + f["size"])
                    self.js(f"document.querySelector('.byte[data-where={where}][data-offset=\"{offset}\"]').click()")
                    card = self.text(".card")
                    for part in (field["field"], field["bytes"], *field["meaning"], field["set_by"] or ""):
                        self.assertIn(part, card, (name, where, offset))

    def test_arrows_go_from_byte_to_byte(self):
        self.open(anchor="#0/4")
        self.browser.click(".byte[data-where=record][data-offset='8']")
        self.browser.key("ArrowRight")
        at = "+document.activeElement.dataset.offset"
        self.assertEqual(self.js(at), 9)
        self.browser.key("ArrowDown")
        self.assertIn(self.js(at), (17, 25))
        self.browser.key("Home")
        self.assertEqual(self.js(at), 0)
        self.assertIn("record ID", self.text(".card"))
        self.assertEqual(self.text("#detail h2"), "CPU_VOLTS_00")

    def test_the_reasons_are_there(self):
        self.open(anchor="#0/98")
        asked = self.text("#detail .asked")
        for part in ("HalFanService.GetFanMaxCount() = 8", f"{TWO_SOCKET}:38: [fans] count", "entity instance",
                     "when it answers 0 or it fails"):
            self.assertIn(part, asked)
        self.assertIn("library/profiles/default.def:", self.text("#detail dl.row"))

    def test_limits_are_drawn_where_they_are(self):
        (sensor,) = self.json("show", "--board", TWO_SOCKET, "INPUT_TEMP")["sensors"]
        self.open(anchor=f"#0/{sensor['ordinal']}")
        # -128 to 127 °C; UNC 45, UC 50, UNR 52
        zones = self.js("""[...document.querySelectorAll('tr.open .zone')].map(z => [z.getAttribute('class').split(' ')[1],
            +z.getAttribute('x'), +z.getAttribute('x') + +z.getAttribute('width')])""")
        edges = [1000 * (value + 128) / 255 for value in (-128, 45, 50, 52, 127)]
        self.assertEqual([zone[0] for zone in zones], ["z0", "z1", "z2", "z3"])
        for (_, low, high), low_edge, high_edge in zip(zones, edges, edges[1:]):
            self.assertAlmostEqual(low, low_edge, 3)
            self.assertAlmostEqual(high, high_edge, 3)
        labels = self.js("[...document.querySelectorAll('.scale .value')].map(t => t.textContent)")
        self.assertEqual(labels, ["45", "50", "52"])
        places = self.js("[...document.querySelectorAll('.scale .value')].map(t => t.getBoundingClientRect()).map(b => [b.left, b.right])")
        self.assertTrue(all(a[1] < b[0] for a, b in zip(places, places[1:])), places)


class Sets(PageTest):
    WORDS = ("--board", TWO_SOCKET, "--board", BASE, "--profile", "default", "--profile", "kestrin", "--against",
             "default@" + BASE)

    def choose(self, at):
        self.js(f"(() => {{ const s = document.getElementById('set'); s.value = '{at}'; s.dispatchEvent(new Event('change')); }})()")

    def test_each_set_can_be_chosen(self):
        self.open(*self.WORDS)
        for at, (board, profile) in enumerate(((TWO_SOCKET, "default"), (TWO_SOCKET, "kestrin"), (BASE, "default"), (BASE, "kestrin"))):
            self.choose(at)
            removed = self.js("document.querySelectorAll('#rows .gone').length")
            listed = [s["name"] for s in self.json("list", "--board", board, "--profile", profile)["sensors"]]
            self.assertEqual(self.names()[:len(listed)], listed)
            self.assertEqual(len(self.names()), len(listed) + removed)

    def test_differences_have_chips_and_are_told(self):
        for at, (board, profile) in enumerate(((TWO_SOCKET, "default"), (TWO_SOCKET, "kestrin"))):
            self.open(*self.WORDS, anchor=f"#{at}")
            diff = json.loads(self.run_raw("diff", "default@" + BASE, f"{profile}@{board}", "--json").stdout)
            chips = dict(self.js("[...document.querySelectorAll('#changes button')].map(b => [b.dataset.word, +b.lastChild.textContent])"))
            kinds = ("changed", "renamed", "added", "removed")
            self.assertEqual(chips, {what: len(diff[what]) for what in kinds if diff[what]})
            for what in chips:
                self.js(f"document.querySelector('#changes button[data-word={what}]').click()")
                self.assertEqual(len(self.names()), chips[what])
                if what != "removed":
                    self.told(what, diff[what])
        self.assertEqual(self.names(), [one["name"] for one in diff["removed"]])

    def told(self, what, changed):
        self.js("document.querySelector('#rows tr:not([hidden]) button').click()")
        (one, *_) = [one for one in changed if one.get("new_name", one["name"]) == self.text("#detail h2")]
        if what == "renamed":
            self.assertIn("was " + one["name"], self.text("#detail"))
        for change in one.get("changes", []):
            told = self.text("#detail .differences")
            for part in (change["where"], str(change["offset"]), change["field"], ", ".join(change["a"]), ", ".join(change["b"])):
                self.assertIn(part, told)
            self.assertTrue(self.js(f"document.querySelector('.byte[data-where={change['where']}][data-offset=\"{change['offset']}\"]')"
                                    ".classList.contains('changed')"))

    def test_a_board_without_a_set_says_why(self):
        path = os.path.join(self.pages.name, "none.html")
        self.run_raw("report", "--board", BASE, "--board", "boards/guards/psu_count_fails.toml", "-o", path)
        self.browser.open(path, "#1")
        self.addCleanup(self.nothing_went_wrong)
        self.assertIn("the pass ended without a count", self.text("#none"))


class Look(PageTest):
    def luminance(self, element="body"):
        return sum(map(int, re.findall(r"\d+", self.js(f"getComputedStyle(document.querySelector('{element}')).backgroundColor"))[:3]))

    def test_dark_and_light_follow_the_system_until_the_switch_says_otherwise(self):
        self.open()
        self.browser.media(prefers_color_scheme="dark")
        self.assertLess(self.luminance(), 200)
        self.browser.media(prefers_color_scheme="light")
        self.assertGreater(self.luminance(), 700)
        self.js("document.querySelector('#theme input[value=dark]').click()")
        self.assertLess(self.luminance(), 200)
        self.browser.open(self.page("--board", TWO_SOCKET))
        self.assertLess(self.luminance(), 200)  # it is remembered
        self.js("document.querySelector('#theme input[value=\"\"]').click()")
        self.assertGreater(self.luminance(), 700)

    def test_text_has_contrast_in_both(self):
        # WCAG: 4.5 : 1
        ratios = """(() => {
          const light = c => { const [r, g, b] = c.match(/[\\d.]+/g).slice(0, 3).map(v => v / 255)
            .map(v => v <= 0.04045 ? v / 12.92 : ((v + 0.055) / 1.055) ** 2.4); return 0.2126 * r + 0.7152 * g + 0.0722 * b; };
          const paper = e => { while (e && /, 0\\)|transparent/.test(getComputedStyle(e).backgroundColor)) e = e.parentElement;
            return getComputedStyle(e ?? document.body).backgroundColor; };
          const out = [];
          for (const e of document.querySelectorAll('main *, header *, footer *')) {
            const own = [...e.childNodes].some(n => n.nodeType === 3 && n.data.trim());
            if (!own || !e.checkVisibility() || e.namespaceURI.endsWith('svg')) continue;
            const s = getComputedStyle(e);
            const [a, b] = [light(s.color), light(paper(e))].sort((x, y) => y - x);
            if ((a + 0.05) / (b + 0.05) < 4.5) out.push([e.tagName, e.className, s.color, paper(e), e.textContent.slice(0, 20)]);
          }
          return out.slice(0, 5);
        })()"""
        for scheme in ("light", "dark"):
            self.open(*Sets.WORDS, anchor="#3/20")
            self.browser.media(prefers_color_scheme=scheme)
            self.assertEqual(self.js(ratios), [], scheme)

    def test_at_320_pixels_nothing_sticks_out_and_a_sensor_covers_the_list(self):
        self.open(*Sets.WORDS, anchor="#1", width=320, height=640)
        self.assertEqual(self.js("document.documentElement.scrollWidth"), 320)
        self.assertIn("UC 50", self.js("[...document.querySelectorAll('.brief')].map(b => b.innerText).join('\\n')"))
        wide = """[...document.querySelectorAll('body *')].filter(e => e.checkVisibility() && !e.closest('.chips, .unseen, svg'))
            .filter(e => e.getBoundingClientRect().right > 320.5 && e.getBoundingClientRect().width > 0)
            .map(e => e.tagName + '.' + e.className + ' ' + e.textContent.slice(0, 20)).slice(0, 5)"""
        self.assertEqual(self.js(wide), [])
        self.assertGreaterEqual(self.js("Math.min(...[...document.querySelectorAll('#rows tr')].slice(0, 20)"
                                        ".map(r => r.getBoundingClientRect().height))"), 24)  # for fingers
        self.browser.click("#rows tr[data-ordinal='4'] button")
        self.assertEqual(self.js("getComputedStyle(document.getElementById('detail')).position"), "fixed")
        self.assertEqual(self.js(wide), [])
        self.assertEqual(self.js("document.getElementById('detail').scrollWidth - document.getElementById('detail').clientWidth"), 0)
        self.browser.key("Escape")
        self.assertTrue(self.js("document.getElementById('detail').hidden"))

    def test_it_prints_the_list_and_the_open_sensor(self):
        self.open()
        pdf = self.browser.pdf()
        self.assertTrue(pdf.startswith(b"%PDF"))
        closed = self.count(pdf)
        self.assertIn(closed, range(2, 8))  # 164 lines
        sizes = set(re.findall(rb"/MediaBox \[0 0 ([\d.]+) ([\d.]+)\]", pdf))
        self.assertEqual({(round(float(w)), round(float(h))) for w, h in sizes}, {(842, 595)})  # A4, landscape
        self.open(anchor="#0/4")
        self.assertGreater(self.count(self.browser.pdf()), closed)
        self.browser.call("Emulation.setEmulatedMedia", media="print")
        self.assertTrue(self.js("document.querySelector('#detail .fields').checkVisibility()"))
        self.assertFalse(self.js("document.getElementById('filter').checkVisibility()"))
        heads = "[...document.querySelectorAll('th')].filter(t => t.checkVisibility()).map(t => t.innerText)"
        self.assertEqual(self.js(heads)[:5], ["#", "Name", "Type", "Entity", "Reading"])
        self.assertGreater(self.luminance(), 700)

    @staticmethod
    def count(pdf):
        return len(re.findall(rb"/Type\s*/Page\b", pdf))


class Names(PageTest):
    def test_names_that_look_like_markup_are_text(self):
        bad = ["<b>bold</b>", "</script>", "<img src=x onerror=h()>", "<!--<script>"]
        board = self.board('[board]\nname = "<i>7</i></script><script>h()</script>"\n[dimms]\ncount = 4\nnames = '
                           + json.dumps(bad) + "\n")
        path = os.path.join(self.pages.name, "names.html")
        self.out("report", "--board", board, "--against", "default", "-o", path)
        self.browser.open(path)
        self.addCleanup(self.nothing_went_wrong)
        self.assertEqual(self.text("h1"), "<i>7</i></script><script>h()</script>")
        names = [s["name"] for s in self.json("list", "--board", board)["sensors"]]
        self.assertEqual(self.names(), names)
        self.assertTrue(all(any(word[:6] in name for name in names) for word in bad), names)
        self.assertEqual(self.js("document.querySelectorAll('img, i, #rows b').length"), 0)
        for ordinal in range(1, len(names) + 1):
            self.js(f"document.querySelector('#rows tr[data-ordinal=\"{ordinal}\"] button').click()")
            self.assertEqual(self.js("document.querySelector('#detail h2').textContent"), names[ordinal - 1])
        self.assertEqual(self.js("document.querySelectorAll('img, i').length"), 0)


if __name__ == "__main__":
    if PROGRAM is None:
        print("no chromium")
        sys.exit(77)
    unittest.TestCase.maxDiff = 2000
    main()
