"""The text of a source as tokens and brackets, and the mutants that are made of it."""
import collections
import re

Mutant = collections.namedtuple("Mutant", "path start end replacement change")
Token = collections.namedtuple("Token", "kind text start end")

TOKENS = re.compile(
    r"""(?P<space>\s+|//[^\n]*|/\*.*?\*/|^[ \t]*\#(?:\\\n|[^\n])*)
      | (?P<raw>R"(?P<mark>\w*)\(.*?\)(?P=mark)")
      | (?P<string>"(?:\\.|[^"\\])*")
      | (?P<char>'(?:\\.|[^'\\])+')
      | (?P<number>\b\d[\w']*)
      | (?P<name>\w+)
      | (?P<sign>::|->|\+\+|--|[-+<>=!]=|&&|\|\||.)""",
    re.VERBOSE | re.MULTILINE | re.DOTALL)

CLOSING = {"(": ")", "[": "]", "{": "}"}


class Text:
    def __init__(self, path, text):
        self.path = path
        self.text = text
        self.mutants = []
        self.tokens = [Token(found.lastgroup, found.group(), *found.span())
                       for found in TOKENS.finditer(text) if found.lastgroup != "space"]
        self.close = {}
        self.open = {}
        pending = []
        for index, token in enumerate(self.tokens):
            if token.text in CLOSING:
                pending.append(index)
            elif token.text in CLOSING.values():
                begin = pending.pop()
                self.close[begin] = index
                self.open[index] = begin

    def word(self, index):
        return self.tokens[index].text if 0 <= index < len(self.tokens) else ""

    def span(self, first, last):
        """The text from one token to another, both included."""
        return self.text[self.tokens[first].start:self.tokens[last].end]

    def add(self, first, last, replacement, change=None):
        start, end = self.tokens[first].start, self.tokens[last].end
        change = change or f"`{self.text[start:end]}` -> `{replacement}`"
        self.mutants.append(Mutant(self.path, start, end, replacement, " ".join(change.split())))

    def regions(self, head):
        """Token ranges from the bracket that `head` ends with to its partner."""
        begins = {token.start: index for index, token in enumerate(self.tokens)}
        found = [begins[match.end() - 1] for match in re.finditer(head, self.text)
                 if match.end() - 1 in begins]
        return [range(index, self.close[index] + 1) for index in found]

    def is_in(self, index, regions):
        return any(index in region for region in regions)

    def is_spaced(self, index):
        """Tells an operator from a bracket of a template and from the mark of a pointer."""
        token = self.tokens[index]
        return self.text[token.start - 1].isspace() and self.text[token.end].isspace()
