# SPDX-License-Identifier: GPL-3.0-or-later
"""Every small change that can be made in a source."""
import re
from dataclasses import dataclass

import tokens as cpp

# Written with a space on both sides; the formatter sees to it that nothing else (templates, references) is.
BINARY = {"==": ["!="], "!=": ["=="], "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"],
          "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["*"], "<<": [">>"], ">>": ["<<"],
          "&&": ["||"], "||": ["&&"], "&": ["|"], "|": ["&"], "^": ["&"],
          "+=": ["-="], "-=": ["+="], "*=": ["/="], "/=": ["*="], "%=": ["*="], "&=": ["|="], "|=": ["&="],
          "^=": ["&="], "<<=": [">>="], ">>=": ["<<="]}
ANYWHERE = {"++": ["--"], "--": ["++"], "true": ["false"], "false": ["true"]}
JUMPS = {"break": "continue", "continue": "break"}
TOPS = {0xFF, 0xFFFF, 0xFFFFFFFF}  # one more does not fit
# Not the first word of a statement that can be left out, or not one that does anything but declare.
NO_CALL = {"return", "break", "continue", "using", "static_assert", "typedef", "case", "default", "goto", "const",
           "constexpr", "static", "auto", "struct", "enum", "union", "class", "if", "for", "while", "switch", "do",
           "else", "extern", "inline", "template"}
# Lists whose first word is a group, and lists that declare their first word.
OF_GROUPS = {"SINGLE", "INDEXED", "INDEX_LAST", "LABELLED", "DRIVER"}
DECLARED_BY = {"KIND", "DEVICE_TYPE"}
CONVERSION = re.compile(r"%[-+ #0]*[\d*]*(?:\.[\d*]+)?(?:hh|h|ll|l|z)?[a-zA-Z%]|\\(?:x[0-9a-fA-F]+|[0-7]{1,3}|.)")


@dataclass(frozen=True)
class Mutation:
    file: str
    line: int
    at: int  # offset in the file
    old: str
    new: str
    first: int  # lines of its statement
    last: int
    source: str  # text of its line
    count: int  # how manieth of that text in the line
    checks: bool  # in code that may run in the compiler only

    def apply(self, text):
        assert text.startswith(self.old, self.at)
        kept = "\n" * (self.old.count("\n") - self.new.count("\n"))  # log lines carry line numbers
        return text[:self.at] + self.new + kept + text[self.at + len(self.old):]

    def says(self):
        nth = "" if self.count == 1 else f" (number {self.count} in the line)"
        return f"`{one_line(self.old)}` -> `{one_line(self.new)}`{nth}"

    def key(self):
        return f"{self.file}:{self.line}:{self.at}:{self.new}"


def one_line(text):
    return " ".join(text.split())


class Enumerators:
    """Neighbours of enumerators, by name."""

    def __init__(self, texts):
        self.scoped, self.plain = {}, {}
        listed = {}
        for text in texts:
            text = re.sub(r"//[^\n]*|/\*.*?\*/", "", text, flags=re.S)
            for found in re.finditer(r"\benum\s+(class\s+)?(\w+)?[^{};()]*\{(.*?)\}", text, re.S):
                parts = re.sub(r"^\s*#.*$", "", found[3], flags=re.M).split(",")
                names = [part.split("=")[0].strip() for part in parts]
                names = [name for name in names if re.fullmatch(r"\w+", name)]
                into = self.scoped.setdefault(found[2], {}) if found[1] else self.plain
                into.update(zip(names, names[1:] + names[:1]))
            for found in re.finditer(r"^(KIND|DEVICE_TYPE)\((k\w+),", text, re.M):
                listed.setdefault(found[1], []).append(found[2])
        for names in listed.values():
            self.plain.update(zip(names, names[1:] + names[:1]))

    def neighbour(self, found, n):
        word = found[n].text
        if n >= 2 and found[n - 1].text == "::":
            return self.scoped.get(found[n - 2].text, {}).get(word)
        before, macro = found[n - 1].text if n else "", found[n - 2].text if n >= 2 else ""
        if before == "(" and macro in DECLARED_BY or before in (".", "->"):
            return None
        if before == "(" and macro in OF_GROUPS:
            return self.scoped.get("Group", {}).get(word)
        return self.plain.get(word)


def next_number(text, steps):
    """The number one more or one less, written like it."""
    body = text.rstrip("uUlL")
    suffix = text[len(body):]
    if "." in body:
        return [body[:-1] + str((int(body[-1]) + 1) % 10) + suffix]
    octal = re.fullmatch(r"0[0-7]+", body)
    value = int(body, 8) if octal else int(body.replace("'", ""), 0)
    steps = [-1] if value in TOPS else [step for step in steps if value + step >= 0]
    if octal:
        return [f"0{value + step:o}{suffix}" for step in steps]
    if body[:2] in ("0x", "0X"):
        return [f"0x{value + step:0{len(body) - 2}X}{suffix}" for step in steps]
    return [f"{value + step}{suffix}" for step in steps]


def next_letter(letter):
    if letter in "zZ9":
        return {"z": "a", "Z": "A", "9": "0"}[letter]
    return chr(ord(letter) + 1)


def other_text(text):
    """A text with one letter changed, in its middle, but in no conversion."""
    begin = text.index('"') + 1
    taken = {at for found in CONVERSION.finditer(text) for at in range(*found.span())}
    free = [at for at in range(begin, len(text) - 1) if at not in taken]
    letters = [at for at in free if text[at].isascii() and text[at].isalnum()]
    if letters:
        at = letters[len(letters) // 2]
        return [text[:at] + next_letter(text[at]) + text[at + 1:]]
    if free:
        return [text[:free[0]] + ("-" if text[free[0]] != "-" else "_") + text[free[0] + 1:]]
    return []


def other_char(text):
    quoted = text[text.index("'") + 1:-1]
    if quoted.startswith("\\"):
        return ["'\\1'"] if quoted == "\\0" else ["'\\0'"]
    return [f"'{next_letter(quoted)}'" if quoted.isalnum() else "'_'" if quoted != "_" else "'-'"]


def of_operator(found, n, text):
    token = found[n]
    spaced = text[token.at - 1:token.at].isspace() and text[token.at + len(token.text):][:1].isspace()
    if spaced and token.text in BINARY and found[n - 1].text != "operator":
        return BINARY[token.text]
    if token.text in ANYWHERE:
        return ANYWHERE[token.text]
    if token.text in ("!", "~") and not spaced:
        return [""]
    return []


def of_token(found, n, text, enumerators):
    """What may stand in the place of a token."""
    token = found[n]
    if token.kind == "number":
        return next_number(token.text, (1, -1) if token.inside == "code" else (1,))
    if token.kind == "string":
        return other_text(token.text)
    if token.kind == "char":
        return other_char(token.text)
    if token.kind == "op" or token.text in ANYWHERE:
        return of_operator(found, n, text)
    if token.text in JUMPS:
        return [JUMPS[token.text]]
    declared = token.inside == "enum" and found[n - 1].text in ("{", ",")
    other = None if declared else enumerators.neighbour(found, n)
    return [other] if other else []


def statement_begins(found, end):
    """Where the statement that ends at the semicolon begins, or None inside of a bracket."""
    depth = 0
    for at in range(end - 1, -1, -1):
        text = found[at].text
        if depth == 0 and (text in (";", "{", "}", "else", "do") or text == ":" and labels(found, at)):
            return at + 1
        depth += (text in (")", "]", "}")) - (text in ("(", "[", "{"))
        if depth < 0:
            return None
        if depth == 0 and text == "(" and found[at - 1].text in cpp.CONTROL:
            return cpp.closing(found, at) + 1
    return 0


def labels(found, at):
    while at > 0 and found[at].text not in (";", "{", "}", "?"):
        at -= 1
        if found[at].text in ("case", "default"):
            return True
    return False


def removable(statement):
    """Whether tokens are a call or an assignment, not a declaration."""
    words = [token.text for token in statement]
    if not words or words[0] in NO_CALL or len(words) < 3 and not {"++", "--"} & set(words):
        return False
    if words[0] in ("*", "++", "--", "("):
        return True
    at = 0
    while words[at + 1:at + 2] == ["::"]:
        at += 2
    return statement[0].kind == "word" and words[at + 1:at + 2] and (
        words[at + 1] in ("(", ".", "->", "[", "++", "--") or words[at + 1] in BINARY and words[at + 1].endswith("=")
        or words[at + 1] == "=")


def of_statements(found, text):
    """(token, old text, new text) of calls and assignments left out, and of values that are not returned."""
    for end, token in enumerate(found):
        if token.text != ";" or token.inside != "code" or token.frozen:
            continue
        begin = statement_begins(found, end)
        if begin is None or begin >= end:
            continue
        whole = text[found[begin].at:token.at + 1]
        if removable(found[begin:end]):
            yield found[begin], whole, "{}"
        elif found[begin].text == "return" and end - begin > 1:
            old = text[found[begin + 1].at:token.at]
            if not (end - begin == 2 and found[begin + 1].kind in ("number", "char")) and old not in (
                    "true", "false", "{}", "nullptr"):
                yield found[begin + 1], old, "{}"


def mutations(file, text, enumerators):
    """All of a file, in its order."""
    found, lines, seen = cpp.split(text), text.split("\n"), {}

    def mutation(token, old, new):
        start = text.rfind("\n", 0, token.at) + 1
        count = text.count(old, start, token.at) + 1
        return Mutation(file, token.line, token.at, old, new, token.first, token.last,
                        lines[token.line - 1].strip(), count, token.checks)

    for n, token in enumerate(found):
        if not token.frozen:
            for new in of_token(found, n, text, enumerators):
                one = mutation(token, token.text, new)
                seen[one.key()] = one
    for token, old, new in of_statements(found, text):
        one = mutation(token, old, new)
        seen[one.key()] = one
    return sorted(seen.values(), key=lambda one: (one.at, one.old, one.new))
