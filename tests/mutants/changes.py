# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""Small changes to a C++ source, one at a time, each of which some test should detect.

Works on tokens, not on a grammar, and relies on the project's format: an operator between spaces has
two operands, `<` without them opens template arguments, `*` and `&` without them declare.
"""
import re
from typing import NamedTuple


class Change(NamedTuple):
    file: str
    line: int
    column: int
    start: int
    end: int
    new: str
    what: str

    def apply(self, text):
        return text[:self.start] + self.new + text[self.end:]


TOKEN = re.compile(r"""
    (?P<skip>//[^\n]*|/\*.*?\*/|^[ ]*\#(?:[^\n]*\\\n)*[^\n]*|\[\[\w+\]\])
  | (?P<string>"(?:\\.|[^"\\])*"|'(?:\\.|[^'\\])+')
  | (?P<number>\b(?:0[xX][0-9A-Fa-f']+|[0-9][0-9']*)[uUlLzZ]*\b)
  | (?P<word>[A-Za-z_]\w*)
  | (?P<mark><<=|>>=|->|\+\+|--|<<|>>|<=|>=|==|!=|&&|\|\||[-+*/%&|^]=|::|[^\s\w])
""", re.VERBOSE | re.DOTALL | re.MULTILINE)

SWAPPED = {
    "<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==", "&&": "||", "||": "&&",
    "+": "-", "-": "+", "*": "+", "/": "*", "%": "/", "&": "|", "|": "&", "^": "|", "<<": ">>", ">>": "<<",
    "+=": "-=", "-=": "+=", "*=": "+=", "|=": "&=", "&=": "|=", "^=": "|=", "<<=": ">>=", ">>=": "<<=",
}
# Clean-up after a call is tested by tests/secrets, in the builds that are shipped.
EXCLUDED = re.compile(r"\b(wipe|burn_stack|\w*Burn|Wiping|kStack\w*|static_assert|__asm__|__attribute__)\b")
KEYWORDS = {"return", "case", "else", "throw", "new", "delete", "goto", "sizeof", "using", "typedef", "class",
            "struct", "enum", "union", "namespace", "template", "public", "private", "protected", "break",
            "continue", "do", "default", "static", "const", "constexpr", "explicit", "inline", "extern",
            "friend", "operator", "if", "for", "while", "switch", "true", "false", "constinit", "void",
            "auto"}
WRITES = {"=", "+=", "-=", "*=", "|=", "&=", "^=", "<<=", ">>=", "++", "--"}


class Token(NamedTuple):
    kind: str
    text: str
    start: int
    end: int


def tokens_of(text):
    found = (Token(m.lastgroup, m.group(), m.start(), m.end()) for m in TOKEN.finditer(text))
    return [token for token in found if token.kind != "skip"]


def partner(tokens, index):
    """The index of the bracket that closes the one at index."""
    opening = tokens[index].text
    closing = {"(": ")", "[": "]", "{": "}"}[opening]
    depth = 0
    for i in range(index, len(tokens)):
        if tokens[i].text == opening:
            depth += 1
        elif tokens[i].text == closing:
            depth -= 1
            if depth == 0:
                return i
    return len(tokens) - 1


class Finder:
    def __init__(self, file, text):
        self.file, self.text, self.tokens = file, text, tokens_of(text)
        self.left_alone = self.excluded()
        self.changes = []

    def excluded(self):
        """Indices of tokens in template arguments, in sizes of declared arrays, and in
        statements that are not to be changed."""
        out, tokens = set(), self.tokens
        start = 0
        for i, token in enumerate(tokens):
            before = tokens[i - 1] if i > 0 else token
            if token.text == "<" and (before.text == "template" or before.end == token.start):
                out.update(range(i, self.closing_angle(i) + 1))
            if token.text == "[" and i > 1 and before.kind == "word" and self.is_type(tokens[i - 2]):
                out.update(range(i, partner(tokens, i) + 1))
            if token.text in (";", "{", "}"):
                words = " ".join(t.text for t in tokens[start:i])
                if EXCLUDED.search(words) and token.text != "{" or "static_assert" in words:
                    out.update(range(start, i + 1))
                start = i + 1
        return out

    @staticmethod
    def is_type(token):
        return token.kind == "word" and token.text not in KEYWORDS

    def closing_angle(self, index):
        depth = 0
        for i in range(index, len(self.tokens)):
            text = self.tokens[i].text
            depth += {"<": 1, ">": -1, ">>": -2}.get(text, 0)
            if depth <= 0 or text in (";", "{"):
                return i
        return index

    def add(self, first, last, new, what):
        start, end = self.tokens[first].start, self.tokens[last].end
        line = self.text.count("\n", 0, start) + 1
        column = start - (self.text.rfind("\n", 0, start) + 1) + 1
        self.changes.append(Change(self.file, line, column, start, end, new, what))

    def between_blanks(self, token):
        return self.text[token.start - 1].isspace() and self.text[token.end].isspace()

    def find(self):
        for i, token in enumerate(self.tokens):
            if i in self.left_alone:
                continue
            if token.kind == "number":
                self.number(i)
            elif token.kind == "mark":
                self.mark(i)
            elif token.text in ("true", "false"):
                other = "false" if token.text == "true" else "true"
                self.add(i, i, other, f"{token.text} -> {other}")
            elif token.text in ("if", "while"):
                self.condition(i)
        self.statements()
        self.changes.sort(key=lambda change: (change.start, change.end, change.new))
        return self.changes

    def number(self, i):
        text = self.tokens[i].text
        digits = text.rstrip("uUlLzZ")
        value = int(digits.replace("'", ""), 16 if digits[:2] in ("0x", "0X") else 10) + 1
        new = (f"0x{value:X}" if digits[:2] in ("0x", "0X") else str(value)) + text[len(digits):]
        if digits.upper() in ("0XFFFFFFFF", "0XFFFFFFFFFFFFFFFF"):
            new = "0x" + "F" * (len(digits) - 3) + "E" + text[len(digits):]
        self.add(i, i, new, f"{text} -> {new}")

    def mark(self, i):
        token = self.tokens[i]
        if token.text in SWAPPED and self.between_blanks(token):
            self.add(i, i, SWAPPED[token.text], f"{token.text} -> {SWAPPED[token.text]}")
        elif token.text in ("++", "--"):
            new = "--" if token.text == "++" else "++"
            self.add(i, i, new, f"{token.text} -> {new}")
        elif token.text == "!":
            self.add(i, i, "", "! removed")

    def condition(self, i):
        opening = i + 1
        constant = self.tokens[opening].text == "constexpr"
        opening += constant
        if self.tokens[opening].text != "(":
            return
        last = partner(self.tokens, opening)
        inside = self.text[self.tokens[opening].end:self.tokens[last].start]
        kind = self.tokens[i].text
        self.add(opening, last, f"(!({inside}))", f"{kind} condition negated")
        self.add(opening, last, "(false)", f"{kind} condition false")
        if kind == "if":
            self.add(opening, last, "(true)", f"{kind} condition true")

    def statements(self):
        """Calls and assignments that are whole statements."""
        tokens, i, starts = self.tokens, 0, True
        while i < len(tokens):
            token = tokens[i]
            if token.text in ("if", "for", "while", "switch"):
                i += 1
                while tokens[i].text != "(":
                    i += 1
                i = partner(tokens, i) + 1
                starts = True
                continue
            if starts and (self.is_type(token) or token.text in ("*", "++", "--")):
                end = self.statement_end(i)
                if end is not None and i not in self.left_alone and self.does_something(i, end):
                    words = " ".join(self.text[token.start:tokens[end].start].split())
                    self.add(i, end - 1, "", f"removed: {words if len(words) < 60 else words[:57] + '...'}")
                    i = end
            starts = tokens[i].text in (";", "{", "}", ":", "else")
            i += 1

    def statement_end(self, i):
        while i < len(self.tokens):
            text = self.tokens[i].text
            if text in ("(", "["):
                i = partner(self.tokens, i)
            elif text in ("{", "}"):
                return None
            elif text == ";":
                return i
            i += 1
        return None

    def does_something(self, first, end):
        """A call or an assignment, and no declaration, which has two names in a row."""
        tokens = self.tokens
        if tokens[first].text in ("++", "--"):
            return True
        i = first + (tokens[first].text == "*")
        while i + 2 < end and tokens[i + 1].text in ("::", ".", "->"):
            i += 2
        while i + 1 < end and tokens[i + 1].text == "[":
            i = partner(tokens, i + 1)
            while i + 2 < end and tokens[i + 1].text in (".", "->"):
                i += 2
        following = tokens[i + 1].text
        if following == "<" and tokens[i].end == tokens[i + 1].start:
            following = tokens[self.closing_angle(i + 1) + 1].text
        if following == "(":
            return tokens[first].text != "*"
        return following in WRITES


def changes(file, text):
    return Finder(file, text).find()
