"""Every small change to a C++ or Objective-C++ source: a condition is inverted, a statement is
removed, two neighbouring ones are swapped, a text or a constant is changed, a message is not sent.
"""

import re
from dataclasses import dataclass

TOKEN = re.compile(
    r"""(?P<skip>\s+|//[^\n]*|/\*.*?\*/|\#(?:\\.|[^\\\n])*)
    |(?P<text>"(?:\\.|[^"\\])*"|'(?:\\.|[^'\\])*')
    |(?P<number>\d[\w.]*)
    |(?P<word>[A-Za-z_]\w*)
    |(?P<sign><=>|->|::|<<|>>|&&|\|\||[=!<>+\-*/]=|\+\+|--|.)""",
    re.VERBOSE | re.DOTALL,
)
OPPOSITE = {"==": "!=", "!=": "==", "<": ">=", ">=": "<", ">": "<=", "<=": ">"}
CLOSING = {"(": ")", "[": "]", "{": "}"}
BOUNDARIES = {"(", ")", "{", "}", ";", ",", "?", ":", "&&", "||", "=", "+=", "return"}
HEADED = {"if", "for", "while", "switch"}
TRUTHS = {"true": "false", "false": "true", "YES": "NO", "NO": "YES"}
METHOD = re.compile(r"^[-+] ?\([^{};]*\{", re.MULTILINE)
LAYOUT = {"NSMakeRect", "systemFontOfSize", "boldSystemFontOfSize", "xRadius", "yRadius"}
# Also where it is done under a condition or several times.
SETTER = re.compile(r"(?:(?:if|for) \([^{]*\{\s*)?\[+([\w.()]+)[^;]*? (set|add)[A-Z]")
DECLARED = {"const", "constexpr", "auto", "using", "static", "@"}


@dataclass(frozen=True)
class Token:
    kind: str
    text: str
    start: int
    end: int


@dataclass(frozen=True)
class Change:
    path: str
    kind: str
    line: int
    before: str
    after: str
    content: str

    @property
    def name(self):
        return f"{self.path}: {self.kind}: {self.before} => {self.after}".strip()


class Source:
    """One file, and every change to it."""

    def __init__(self, path, content, enumerations):
        self.path, self.content = path, content
        self.enumerations = enumerations
        self.method_bodies = {m.end() - 1 for m in METHOD.finditer(content)}
        found = TOKEN.finditer(self.content)
        self.tokens = [
            Token(m.lastgroup, m[0], m.start(), m.end()) for m in found if m.lastgroup != "skip"
        ]
        self.partner, opened = {}, []
        for i, token in enumerate(self.tokens):
            if token.text in CLOSING:
                opened.append(i)
            elif token.text in CLOSING.values():
                first = opened.pop()
                self.partner[first], self.partner[i] = i, first

    def changes(self):
        """Each once, in the order of the file."""
        made = {}
        for kind, start, end, new in sorted(self._edits(), key=lambda edit: edit[1:]):
            content = self.content[:start] + new + self.content[end:]
            first = self.content.rfind("\n", 0, start) + 1
            last = self.content.find("\n", end)
            before = " ".join(self.content[first:last].split())
            after = " ".join(content[first : last + len(content) - len(self.content)].split())
            line = self.content.count("\n", 0, start) + 1
            made.setdefault(content, Change(self.path, kind, line, before, after, content))
        return list(made.values())

    def _edits(self):
        for i, token in enumerate(self.tokens):
            yield from self._condition_edits(i, token)
            yield from self._value_edits(i, token)
            if token.text == "[" and self.path.endswith(".mm") and self._is_asked(i):
                yield "not sent", token.start, self.tokens[self.partner[i]].end, "0"
            if token.text == "{" and self._holds_statements(i):
                yield from self._statement_edits(self._statements(i + 1, self.partner[i]))

    # Conditions

    def _condition_edits(self, i, token):
        spans = []
        if token.text in ("if", "while"):
            spans.append((i + 2, self.partner[i + 1]))
        elif token.text == "?":
            spans.append((self._left(i), i))
        elif token.text in ("&&", "||") and self._spaced(token):
            spans += [(self._left(i), i), (i + 1, self._right(i))]
        elif token.text in OPPOSITE and self._spaced(token):
            spans.append((self._left(i), self._right(i)))
        elif token.text == "!":
            spans.append((i, self._right(i)))
        for start, end in spans:
            first, last = self.tokens[start].start, self.tokens[end - 1].end
            yield "condition", first, last, self._inverted(start, end)

    def _inverted(self, start, end):
        text = self.content[self.tokens[start].start : self.tokens[end - 1].end]
        flat = list(self._flat(start, end))
        joined = any(self.tokens[k].text in ("&&", "||", "?") for k in flat)
        comparisons = [
            k for k in flat if self.tokens[k].text in OPPOSITE and self._spaced(self.tokens[k])
        ]
        if not joined and len(comparisons) == 1:
            sign = self.tokens[comparisons[0]]
            offset = self.tokens[start].start
            before, after = text[: sign.start - offset], text[sign.end - offset :]
            return before + OPPOSITE[sign.text] + after
        if not joined and self.tokens[start].text == "!":
            return text[1:]
        return f"!({text})"

    def _spaced(self, token):
        """Binary signs stand between blanks; those of templates and references do not."""
        return self.content[token.start - 1] in " \n" and self.content[token.end] in " \n"

    def _flat(self, start, end):
        """The tokens of a range that stand in no brackets of it."""
        i = start
        while i < end:
            yield i
            i = self.partner[i] if self.tokens[i].text in CLOSING else i
            i += 1

    def _left(self, i):
        while self.tokens[i - 1].text not in BOUNDARIES or self.tokens[i - 1].text in (")", "}"):
            i = self.partner[i - 1] if self.tokens[i - 1].text in CLOSING.values() else i - 1
        return i

    def _right(self, i):
        i += 1
        while self.tokens[i].text not in BOUNDARIES or self.tokens[i].text in CLOSING:
            i = self.partner[i] + 1 if self.tokens[i].text in CLOSING else i + 1
        return i

    # Texts and constants

    def _value_edits(self, i, token):
        if token.kind == "text" and token.text.startswith('"'):
            yield "text", token.start, token.end, token.text[:-1] + '~"'
        elif token.kind == "text":
            yield "text", token.start, token.end, "'~'"
        elif token.kind == "number" and not self._is_pure(i) and not self._is_drawn(i):
            value = float(token.text) if "." in token.text else int(token.text, 0)
            yield "constant", token.start, token.end, str(value + 1)
        elif token.text in TRUTHS:
            yield "constant", token.start, token.end, TRUTHS[token.text]
        elif self.tokens[i - 1].text == "::" and self.tokens[i - 2].text in self.enumerations:
            values = self.enumerations[self.tokens[i - 2].text]
            if token.text in values:
                other = values[(values.index(token.text) + 1) % len(values)]
                yield "constant", token.start, token.end, other

    def _is_drawn(self, i):
        """Whether the number only says where something stands or how large it is: that is looked
        at on pictures."""
        return any(
            first < i < self.partner[first] and self.tokens[first - 1].text in LAYOUT
            for first in self.partner
        ) or self.tokens[i - 2].text in LAYOUT

    def _is_pure(self, i):
        """Whether the number says of a function that it has no body."""
        return self.tokens[i - 1].text == "=" and self.tokens[i - 2].text in (")", "const")

    # Statements

    def _holds_statements(self, i):
        """Whether the brace at `i` opens the body of a function, loop, condition or block."""
        before = (")", "]", "const", "override", "else", "do", "try", "^")
        return self.tokens[i - 1].text in before or self.tokens[i].start in self.method_bodies

    def _is_asked(self, i):
        """Whether a message is sent from the bracket at `i` on for its answer. One that is only
        the receiver of another makes the same difference as that one."""
        before, after = self.tokens[i - 1].text, self.tokens[self.partner[i] + 1].text
        is_capture = after in ("(", "{")
        return before in ("(", ",", ":", "=", "return", "!", "?", "&&", "||") and not is_capture

    def _statements(self, i, end):
        """(first token, one after the last) of each statement of a block."""
        while i < end:
            start, i = i, self._end_of_statement(i)
            yield start, i

    def _end_of_statement(self, i):
        if self.tokens[i].text in HEADED:
            i = self._end_of_statement(self.partner[i + 1] + 1)
            is_else = self.tokens[i].text == "else"
            return self._end_of_statement(i + 1) if is_else else i
        if self.tokens[i].text == "{":
            return self.partner[i] + 1
        if self.tokens[i].text == "@" and self.tokens[i + 1].text == "try":
            i = self.partner[i + 2] + 1
            while self.tokens[i].text == "@" and self.tokens[i + 1].text == "catch":
                i = self.partner[self.partner[i + 2] + 1] + 1
            return i
        while self.tokens[i].text != ";":
            i = self.partner[i] + 1 if self.tokens[i].text in CLOSING else i + 1
        return i + 1

    def _statement_edits(self, statements):
        last = None
        for start, end in statements:
            first, stop = self.tokens[start].start, self.tokens[end - 1].end
            # What is declared is needed.
            if self.tokens[start].text not in DECLARED:
                yield "removed", first, stop, ""
            does = self._does_something(start)
            if does and last and not self._are_in_any_order(last, (start, end)):
                place, after = self.tokens[last[0]].start, self.tokens[last[1] - 1].end
                one, other = self.content[place:after], self.content[first:stop]
                yield "swapped", place, stop, other + self.content[after:first] + one
            last = (start, end) if does else None

    def _are_in_any_order(self, one, other):
        """Whether the order of the two statements hardly ever matters: both leave, or both set
        something of one object."""
        if self._is_exit(one[0]) and self._is_exit(other[0]):
            return True
        texts = [self._text(*statement) for statement in (one, other)]
        setters = [SETTER.match(text) for text in texts]
        if not all(setters) or any("return" in text for text in texts):
            return False
        return setters[0][1] == setters[1][1] and "set" in (setters[0][2], setters[1][2])

    def _text(self, start, end):
        return self.content[self.tokens[start].start : self.tokens[end - 1].end]

    def _is_exit(self, start):
        """Whether the statement only leaves, under a condition."""
        if self.tokens[start].text != "if":
            return False
        body = self.partner[start + 1] + 1
        return self.tokens[body + 1].text == "return"

    def _does_something(self, start):
        """Whether the statement is more than a declaration or an exit."""
        if self.tokens[start].text in HEADED:
            return True
        text = self.content[self.tokens[start].start :]
        if text.startswith("["):
            return True
        return re.match(r"[^\s(=]+(\(|;| [-+*/]?= )", text) is not None


