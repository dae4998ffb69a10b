# SPDX-License-Identifier: GPL-3.0-or-later
"""C++ text in tokens, as far as small changes of it need: comments are left out, preprocessor lines too but for the
bodies of macros, and each token knows whether it is code, part of a table, or nothing to be changed."""
import re
from dataclasses import dataclass

PATTERN = re.compile(r"""
    (?P<comment>//[^\n]*|/\*.*?\*/)
  | (?P<raw>R"(?P<fence>[^\s()\\]*)\(.*?\)(?P=fence)")
  | (?P<string>(?:u8|[uUL])?"(?:\\.|[^"\\\n])*")
  | (?P<char>(?:u8|[uUL])?'(?:\\.|[^'\\\n])+')
  | (?P<number>(?:0[xX][0-9a-fA-F']+|\d[\d']*(?:\.\d+)?)[uUlLfF]*)
  | (?P<word>[A-Za-z_]\w*)
  | (?P<op><<=|>>=|<=>|\.\.\.|->|::|\+\+|--|&&|\|\||[-+*/%&|^=!<>]=|<<|>>|\#\#|[^\s\w])
  | (?P<space>\s+)
""", re.X | re.S)
CONTROL = {"if", "for", "while", "switch"}


@dataclass
class Token:
    kind: str  # string, char, number, word or op
    text: str
    at: int
    line: int
    first: int = 0  # lines of the statement or of the element of a list that it stands in
    last: int = 0
    inside: str = "outer"  # code, outer, enum, or table: a list in braces outside of functions
    checks: bool = False  # in a function that the compiler may run
    frozen: bool = False  # static assertion or attribute


def directive_ends(text, at):
    """Where a preprocessor line ends, its continuations included."""
    while True:
        end = text.find("\n", at)
        if end < 0:
            return len(text)
        if text[end - 1] != "\\":
            return end
        at = end + 1


def directives(text):
    """(start, end) of what is left out of preprocessor lines: all of them, but of macros only the head."""
    for found in re.finditer(r"^[ \t]*#[ \t]*(\w*)", text, re.M):
        end = directive_ends(text, found.start())
        if found[1] == "define":
            head = re.compile(r"[ \t]+\w+(\([^)]*\))?").match(text, found.end())
            end = min(end, head.end()) if head else end
        yield found.start(), end


def split(text):
    """The tokens of a text."""
    left_out = dict(directives(text))
    tokens, at, line = [], 0, 1
    while at < len(text):
        if at in left_out and left_out[at] > at:
            end = left_out.pop(at)
        elif text.startswith("\\\n", at):
            end = at + 2
        else:
            found = PATTERN.match(text, at)
            end = found.end()
            if found.lastgroup == "space":  # stops where a preprocessor line begins
                end = min([end] + [start for start in left_out if at < start < end])
            elif found.lastgroup != "comment":
                kind = "string" if found.lastgroup == "raw" else found.lastgroup
                kind = "string" if found["string"] or found["raw"] else kind
                tokens.append(Token(kind, found.group(0), at, line))
        line += text.count("\n", at, end)
        at = end
    mark_statements(tokens)
    mark_places(tokens)
    mark_frozen(tokens)
    return tokens


def mark_statements(tokens):
    begin = 0
    for n, token in enumerate(tokens):
        if token.text in (";", "{", "}") or n + 1 == len(tokens):
            for other in tokens[begin:n + 1]:
                other.first, other.last = tokens[begin].line, token.line
            begin = n + 1


def opens(tokens, n, around):
    """What the brace at n opens: (code, outer, table or enum; whether the compiler may run it)."""
    begin = n
    while begin > 0 and tokens[begin - 1].text not in (";", "{", "}"):
        begin -= 1
    head = [token.text for token in tokens[begin:n]]
    before = head[-1] if head else ""
    if around[0] == "code":
        return around
    if "enum" in head:
        return "enum", False
    if "namespace" in head or "extern" in head and before == '"C"':
        return "outer", around[1]
    if before in (")", "const", "noexcept", "override", "do", "else") or "->" in head and "=" not in head:
        return "code", "constexpr" in head or "consteval" in head
    if {"struct", "class", "union"} & set(head) and "=" not in head and "(" not in head:
        return "outer", False
    return "table", False


def mark_places(tokens):
    around = [("outer", False)]
    for n, token in enumerate(tokens):
        if token.text == "}" and len(around) > 1:
            around.pop()
        token.inside, token.checks = around[-1]
        if token.text == "{":
            around.append(opens(tokens, n, around[-1]))


def closing(tokens, n):
    """Index of the bracket that closes the one at n."""
    pairs = {"(": ")", "[": "]", "{": "}"}
    depth, left, right = 0, tokens[n].text, pairs[tokens[n].text]
    for at in range(n, len(tokens)):
        depth += (tokens[at].text == left) - (tokens[at].text == right)
        if depth == 0:
            return at
    return len(tokens) - 1


def mark_frozen(tokens):
    for n, token in enumerate(tokens[:-1]):
        after = tokens[n + 1].text
        if token.text == "static_assert" and after == "(" or token.text == after == "[":
            for other in tokens[n:closing(tokens, n + 1 if after == "(" else n) + 1]:
                other.frozen = True
        elif token.text == "extern" and tokens[n + 1].kind == "string":
            tokens[n + 1].frozen = True
