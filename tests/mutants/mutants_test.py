#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The tool that changes the library: what it finds to change, what it remembers, what it says.  Nothing is built."""
import os
import random
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import cover  # noqa: E402
import find  # noqa: E402
import judge  # noqa: E402
import place  # noqa: E402
import results  # noqa: E402
import tell  # noqa: E402
import tokens  # noqa: E402


def changes(text, enumerators=""):
    """(old, new) of everything that is found in a text."""
    return [(one.old, one.new) for one in find.mutations("a.cpp", text, find.Enumerators([enumerators]))]


def in_function(statement):
    return changes("void f() { " + statement + " }")


def mutation(text="int a = b < c;\n", old="<", new="<="):
    found = find.mutations("a.cpp", "void f() {\n" + text + "}\n", find.Enumerators([]))
    return next(one for one in found if (one.old, one.new) == (old, new))


class Tests(unittest.TestCase):
    def test_comments_and_preprocessor_lines_are_left_alone(self):
        self.assertEqual(changes('// 1 < 2\n/* true\n false */\n#include "a.h"\n#if X == 1\n#define N\n#endif\n'), [])

    def test_the_body_of_a_macro_is_changed_and_its_head_is_not(self):
        self.assertEqual(changes("#define F(a) \\\n    ((a) + b)\n"), [("+", "-")])

    def test_a_comment_sign_in_a_text_begins_no_comment(self):
        self.assertEqual(changes('const char *a = "//";\nint b = 1;\n'), [('"//"', '"-/"'), ("1", "2")])

    def test_static_assertions_and_attributes_are_left_alone(self):
        self.assertEqual(changes('static_assert(sizeof(a) == 8, "eight");\n[[deprecated("no")]] int b = 1;\n'),
                         [("1", "2")])

    def test_templates_and_references_are_no_operators(self):
        self.assertEqual(changes("template <class T> void f(const T &a, T *b, T &&c);\n"), [])

    def test_each_comparison_has_its_neighbours(self):
        for old, new in (("<", ["<=", ">="]), (">=", ["<", ">"]), ("==", ["!="])):
            with self.subTest(old):
                found = [other for word, other in in_function(f"bool a = b {old} c;") if word == old]
                self.assertEqual(sorted(found), new)

    def test_logical_bitwise_and_stepping_operators_are_changed(self):
        for old, new in (("&&", "||"), ("|", "&"), ("<<", ">>"), ("%", "*"), ("+", "-")):
            with self.subTest(old):
                self.assertIn((old, new), in_function(f"a = b {old} c;"))
        self.assertIn(("++", "--"), in_function("++a;"))
        self.assertIn(("!", ""), in_function("if (!a) b();"))

    def test_numbers_of_code_go_up_and_down_those_of_tables_up(self):
        self.assertEqual([one for one in in_function("if (a == 7) b();") if one[0] == "7"], [("7", "6"), ("7", "8")])
        self.assertEqual(changes("constexpr int k[] = {7, 0x0F};\n"), [("7", "8"), ("0x0F", "0x10")])

    def test_numbers_keep_their_writing_and_their_width(self):
        for text, expected in (("0xFF", ["0xFE"]), ("0x00A", ["0x00B"]), ("0775", ["0776"]), ("9u", ["10u"]),
                               ("0.5", ["0.6"]), ("65535", ["65534"])):
            with self.subTest(text):
                self.assertEqual(find.next_number(text, (1,)), expected)

    def test_one_letter_of_a_text_changes_and_no_conversion(self):
        for text, expected in (('"%d"', []), ('""', []), ('"P%d_Az"', ['"P%d_Bz"']), ('"%02d\\n!"', ['"%02d\\n-"'])):
            with self.subTest(text):
                self.assertEqual(find.other_text(text), expected)

    def test_an_enumerator_becomes_its_neighbour_and_the_last_one_the_first(self):
        enum = "enum E : int { kA = 3, kB, /* kX, */ kC };\nenum class S { kA, kZ };\n"
        self.assertEqual(changes("int f = kA;\nint g = kC;\nS h = S::kA;\n", enum),
                         [("kA", "kB"), ("kC", "kA"), ("kA", "kZ")])

    def test_a_list_of_groups_takes_its_first_word_from_the_groups(self):
        enums = "enum class Group { kCpu, kPsu };\nenum Kind { kCpu, kOther };\n"
        self.assertEqual(changes("INDEXED(kCpu, kCpu, f)\n", enums), [("kCpu", "kPsu"), ("kCpu", "kOther")])

    def test_the_line_that_declares_a_kind_keeps_its_name(self):
        lines = "KIND(kA, Full(kB))\nKIND(kB, Full())\n"
        self.assertEqual(changes(lines, lines), [("kB", "kA")])

    def test_calls_and_assignments_are_left_out_declarations_are_not(self):
        for text in ("f(a);", "a = b;", "*a = b;", "std::g(a);", "a.b(c);", "++a;", "a[n] |= b;"):
            with self.subTest(text):
                self.assertIn((text, "{}"), in_function("if (x) " + text))
        for text in ("int a = b;", "const T &a = b;", "auto a = b;", "T a(b);", "using a::b;", "T<U> a;"):
            with self.subTest(text):
                self.assertNotIn((text, "{}"), in_function(text))

    def test_the_parts_of_a_for_loop_are_no_statements(self):
        self.assertNotIn("{}", [new for _, new in in_function("for (a = b; c; d()) {}")])

    def test_a_value_is_not_returned(self):
        self.assertIn(("a", "{}"), in_function("return a;"))
        self.assertNotIn(("0", "{}"), in_function("return 0;"))
        self.assertEqual(in_function("return true;"), [("true", "false")])

    def test_a_change_keeps_the_lines_that_follow_where_they_are(self):
        text = "void f() {\n    g(a,\n      b);\n    h();\n}\n"
        one = next(one for one in find.mutations("a.cpp", text, find.Enumerators([])) if one.old.startswith("g("))
        self.assertEqual(one.apply(text), "void f() {\n    {}\n\n    h();\n}\n")

    def test_code_that_the_compiler_runs_is_marked(self):
        for text, expected in (("constexpr int f() { return a + b; }", True), ("int f() { return a + b; }", False),
                               ("constexpr int k = a + b;", False)):
            with self.subTest(text):
                found = find.mutations("a.cpp", text, find.Enumerators([]))
                self.assertEqual({one.checks for one in found if one.old == "+"}, {expected})

    def test_the_second_of_two_in_a_line_is_told_apart(self):
        found = find.mutations("a.cpp", "bool a = b && c && d;\n", find.Enumerators([]))
        self.assertEqual([one.says() for one in found], ["`&&` -> `||`", "`&&` -> `||` (number 2 in the line)"])

    def test_statements_know_their_lines(self):
        words = tokens.split("int a;\nint b =\n    c;\n")
        self.assertEqual({(one.first, one.last) for one in words if one.line > 1}, {(2, 3)})

    def test_a_case_of_a_python_test_is_called_by_its_class(self):
        with tempfile.NamedTemporaryFile("w", suffix=".py") as file:
            file.write("class A:\n    def test_a(self):\n        pass\n\nclass B(A):\n    def test_b(self):\n        pass\n")
            file.flush()
            found = list(place.cases("workbench.x", ["python3", file.name]))
        self.assertEqual([(name, words[-1]) for name, words in found],
                         [("workbench.x.test_a", "A.test_a"), ("workbench.x.test_b", "B.test_b")])

    def test_a_line_is_known_whether_the_build_tells_its_path_whole_or_within_the_tree(self):
        for where in ("/tree/library/x.cpp:12", "library/x.cpp:12", "./library/y/../x.cpp:12 (discriminator 2)"):
            self.assertEqual(cover.line_of(where, "/tree"), "library/x.cpp:12")
        for where in ("/usr/include/x.h:12", "library/x.cpp:?", "library/x.cpp:0", "??:0"):
            self.assertEqual(cover.line_of(where, "/tree"), "")

    def test_a_trace_that_is_cut_has_the_blocks_that_are_in_it(self):
        self.assertEqual(cover.Map([1, 3, 900], {}).hit(b"\0\1\0\0"), (0,))
        self.assertEqual(cover.Map([1, 3, 900], {}).hit(b""), ())

    def test_a_line_of_a_list_is_tried_on_all_that_reads_it_a_line_of_code_on_what_runs_it(self):
        class Known(judge.Judge):
            def __init__(self):
                self.coverage = self

            def of_lines(self, file, first, last):
                return {"runs the line"}

            def reaching(self, unit):
                return {"reads " + unit}

            def affected(self, units):
                return ()

            def of_programs(self, programs):
                return set()

        class Line:
            first, last, checks = 1, 1, False
        for file, expected in (("a.def", {"runs the line", "reads a", "reads b"}), ("a.cpp", {"runs the line"})):
            Line.file = file
            self.assertEqual(Known().covering(Line, ["a", "b"]), expected, file)

    def test_an_equivalent_mutant_is_known_by_its_text_wherever_it_stands(self):
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "equivalent.txt")
            with open(path, "w", encoding="utf-8") as out:
                out.write("# why\na.cpp\nint a = b < c;\n`<` -> `<=`\nb is never\nc\n\na.cpp\ngone\n`1` -> `2`\nno\n")
            known = results.Equivalents(path)
        self.assertEqual(known.reason(mutation("\n\nint a = b < c;\n")), "b is never c")
        self.assertIsNone(known.reason(mutation(new=">=")))
        self.assertEqual(known.stale([mutation()]), [("a.cpp", "gone", "`1` -> `2`")])

    def test_a_kill_holds_for_the_same_library_and_while_its_test_is_there(self):
        verdict = judge.Verdict(judge.KILLED, "A.Test")
        for library, tests, expected in (("l1", ["A.Test"], True), ("l2", ["A.Test"], False), ("l1", [], False)):
            with self.subTest(library=library, tests=tests):
                self.assertEqual(self.remembered(verdict, library, "other", tests), expected)

    def test_a_survivor_is_tried_again_when_a_test_has_changed(self):
        verdict = judge.Verdict(judge.SURVIVED)
        self.assertTrue(self.remembered(verdict, "l1", "e1", []))
        self.assertFalse(self.remembered(verdict, "l1", "e2", []))

    def remembered(self, verdict, library, everything, tests):
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "results.jsonl")
            results.Results(path, "l1", "e1", []).add(mutation(), verdict)
            return mutation().key() in results.Results(path, library, everything, tests).known

    def test_the_last_line_counts_and_leaves_out_refused_and_equivalent_ones(self):
        outcomes = [judge.KILLED] * 3 + [judge.SURVIVED] + [judge.REFUSED] * 2 + [judge.EQUIVALENT]
        self.assertEqual(tell.closing([judge.Verdict(one) for one in outcomes]),
                         "3 killed, 1 survived, 2 refused by the compiler, 1 equivalent; "
                         "75.0 % of compiling, non-equivalent")

    def test_a_survivor_is_told_with_its_change_and_its_tests(self):
        text = "void f() {\nint a = b < c;\n}\n"
        self.assertEqual(tell.survivor(mutation(), text, judge.Verdict(judge.SURVIVED, "", ["A.B", "C.D"])),
                         "survived: a.cpp:2 `<` -> `<=`\n  -int a = b < c;\n  +int a = b <= c;\n  tests: A.B, C.D")

    def test_a_seed_always_draws_the_same(self):
        self.assertEqual(random.Random(1).sample(range(11000), 3), random.Random(1).sample(range(11000), 3))


if __name__ == "__main__":
    unittest.main()
