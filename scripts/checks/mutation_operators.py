"""The mutants of a source file: each is one small change of its text.

Strings are left alone but for the few that are constants, and so are static_asserts:
a weaker check is no other behaviour.
"""
import re

import mutation_text

# Calls that differ in one point.
CALLS = {
    "Text": ("PlainText", "OptionalText"),
    "PlainText": ("Text", "OptionalPlainText"),
    "OptionalText": ("Text", "OptionalPlainText"),
    "OptionalPlainText": ("PlainText", "OptionalText"),
    "Mac": ("OptionalMac",),
    "OptionalMac": ("Mac",),
}
ERRORS = {
    "InvalidArgument": "OutOfMemory",
    "OutOfMemory": "ShortReply",
    "ShortReply": "InvalidArgument",
}
NAMES = {
    "AF_INET": "AF_INET6",
    "AF_INET6": "AF_INET",
    "EACCES": "ENOENT",
    "EBADMSG": "EINVAL",
    "EEXIST": "ENOENT",
    "EFAULT": "EINVAL",
    "EFBIG": "EINVAL",
    "EINVAL": "ENOMEM",
    "ENOENT": "EACCES",
    "ENOMEM": "EBADMSG",
    "ENOSPC": "ENOMEM",
    "ENOTDIR": "ENOENT",
    "ENOTTY": "EINVAL",
    "O_RDWR": "O_RDONLY",
    "false": "true",
    "kNormalNode": "kUpgradeNode",
    "kUpgradeNode": "kNormalNode",
    "nullptr": None,
    "SIGKILL": "SIGTERM",
    "SIGTERM": "SIGKILL",
    "true": "false",
}
OPERATORS = {
    "<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==",
    "&&": "||", "||": "&&", "&": "|",
    "+": "-", "-": "+", "*": "+", "/": "*", "%": "/", "+=": "-=", "-=": "+=",
}
STEPS = {"++": "--", "--": "++"}
NO_STATEMENT = {
    "auto", "case", "catch", "const", "constexpr", "default", "do", "else", "for", "if", "return",
    "static", "static_assert", "struct", "switch", "template", "try", "typename", "using", "while",
}
# Classes that are empty without being told.
EMPTY_BY_ITSELF = re.compile(
    r"\bstd::(span|string|string_view|vector|optional|shared_ptr|unique_ptr)(<[^;=]*>)? \w+ $")
# Memory that is asked for beforehand would be asked for when it is needed.
RESERVE = re.compile(r"[\w.]+\.reserve\([^;]*;")
WIDTHS = {"U8": 1, "U16": 2, "U24": 3, "U32": 4, "U64": 8, "Mac": 6}


def neighbours(codes):
    """Each command code with the one behind it, the last with the one before."""
    return dict(zip(codes, codes[1:] + codes[-2:-1]))


class Source(mutation_text.Text):
    def __init__(self, path, text, next_code):
        super().__init__(path, text)
        self.next_code = next_code
        self.skipped = self.regions(r"\bstatic_assert\s*\(")
        self.reserves = [range(*found.span()) for found in RESERVE.finditer(text)]
        self.rows = self.regions(r"\bField \w+Rows\[\] = \{")
        self.codes = self.regions(r"\benum class CommandCode : int \{")

    def collect(self):
        self._conditions()
        for region in self.rows:
            self._rows(region)
        for index, token in enumerate(self.tokens):
            if self.is_in(index, self.skipped):
                continue
            if token.kind == "number":
                self._number(index)
            elif token.kind == "char":
                self.add(index, index, r"'\1'" if token.text == r"'\0'" else "';'")
            elif token.kind == "name":
                self._name(index)
            elif token.kind == "sign":
                self._sign(index)
        self._constant_strings()
        self._initialisers()
        self._statements()
        return self._distinct()

    def _distinct(self):
        seen = set()
        result = []
        for mutant in sorted(self.mutants):
            if self.is_in(mutant.start, self.reserves):
                continue
            changed = self.text[:mutant.start] + mutant.replacement + self.text[mutant.end:]
            if changed != self.text and changed not in seen:
                seen.add(changed)
                result.append(mutant)
        return result

    # Branches.

    def _conditions(self):
        self.decided = set()  # operators whose change would repeat the negation
        for index, token in enumerate(self.tokens):
            if self.is_in(index, self.skipped):
                continue
            if token.text in ("if", "while"):
                begin = index + (2 if self.word(index + 1) == "constexpr" else 1)
                self._condition(begin + 1, self.close[begin] - 1, token.text)
            elif token.text == "for":
                ends = self._at_depth(index + 2, self.close[index + 1] - 1, {";"})
                if len(ends) == 2:
                    self._condition(ends[0] + 1, ends[1] - 1, "for")
            elif token.text == "?":
                self._condition(self._begin_of_choice(index), index - 1, "?")

    def _condition(self, first, last, kind):
        condition = self.span(first, last)
        self.add(first, last, f"!({condition})", "condition negated")
        if kind == "if":
            self.add(first, last, f"false && ({condition})", "branch never taken")
        joints = self._at_depth(first, last, {"&&", "||"})
        if not joints:
            self.decided.update(self._at_depth(first, last, {"==", "!="}))
            if self.word(first) == "!":
                self.decided.add(first)
        for joint in joints:
            self.add(first, last, self.span(joint + 1, last),
                     f"only `{self.span(joint + 1, last)}` tested")
            self.add(first, last, self.span(first, joint - 1),
                     f"only `{self.span(first, joint - 1)}` tested")

    def _at_depth(self, first, last, wanted):
        found = []
        index = first
        while index <= last:
            if self.word(index) in wanted and (self.word(index) == ";" or self.is_spaced(index)):
                found.append(index)
            index = self.close.get(index, index) + 1
        return found

    def _begin_of_choice(self, index):
        index -= 1
        while self.word(index) not in ("(", "[", "{", ",", ";", "=", "+=", "-=", "?", ":", "return"):
            index = self.open.get(index, index) - 1
        return index + 1

    # Numbers.

    def _number(self, index):
        digits, suffix = re.fullmatch(r"(0[xX][0-9a-fA-F]+|\d+)(\w*)",
                                      self.word(index).replace("'", "")).groups()
        prefix = re.match(r"(?:0[xX]|0(?=\d))?", digits)[0].lower()
        base, kind = {"": (10, "d"), "0": (8, "o"), "0x": (16, "X")}[prefix]
        value = int(digits, base)
        form = f"{prefix}{{:{kind}}}"
        self.add(index, index, form.format(value + 1) + suffix)
        # A row, a code or an index that is off by one is wrong either way.
        is_index = self.word(index - 1) == "[" and self.word(index + 1) == "]"
        if value > 0 and not is_index and not self.is_in(index, self.rows + self.codes):
            self.add(index, index, form.format(value - 1) + suffix)

    def _size(self, index):
        last = index + 1
        while self.word(last) == "*":
            last += 1
        last = self.close.get(last, last)
        while self.word(last + 1) in ("[", ".", "->"):
            last = self.close[last + 1] if self.word(last + 1) == "[" else last + 2
        size = self.span(index, last)
        self.add(index, last, f"({size} + 1)")
        self.add(index, last, f"({size} - 1)")

    # Names: codes, constants, kinds of calls, types that are widths.

    def _name(self, index):
        name, before, behind = self.word(index), self.word(index - 1), self.word(index + 1)
        if name in NAMES and NAMES[name] and before not in ("*", "char"):
            self.add(index, index, NAMES[name])
        elif name in ERRORS and behind == "(" and before != "int":
            self.add(index, index, ERRORS[name])
        elif name in CALLS and before in (".", "?"):
            for other in CALLS[name]:
                # What was tested before is never NULL.
                if not other.startswith("Optional") or not self._is_tested(index):
                    self.add(index, index, other)
        elif name in self.next_code and self.word(index - 2) == "CommandCode":
            self.add(index, index, self.next_code[name])
        elif name in ("Free", "Drop") and self.word(index - 2) == "HeaderOnFailure":
            self.add(index, index, "Drop" if name == "Free" else "Free")
        elif name == "sizeof":
            self._size(index)
        elif name == "malloc" and behind == "(":
            self.add(index, self.close[index + 1],
                     f"calloc(1, {self.span(index + 2, self.close[index + 1] - 1)})",
                     "`malloc` -> `calloc`")
        elif name == "calloc" and behind == "(":
            end = self.close[index + 1]
            (comma,) = self._commas(index + 2, end - 1)
            self.add(index, end, f"malloc(({self.span(index + 2, comma - 1)}) * "
                                 f"({self.span(comma + 1, end - 1)}))", "`calloc` -> `malloc`")
        elif name in ("min", "max") and behind in ("(", "<"):
            self._choice_of_two(index)
        elif name == "strnlen" and behind == "(":
            (comma,) = self._commas(index + 2, self.close[index + 1] - 1)
            self.add(index, self.close[index + 1], f"strlen({self.span(index + 2, comma - 1)})")
        elif name == "Uncleared" and before == "{":
            self.add(index, self.close[index + 1], "")
        elif name == "Put" and before == "." and behind == "<":
            self._stored_width(index)

    def _choice_of_two(self, index):
        """Only the one or the other argument of a minimum or maximum."""
        begin = index + 1
        while self.word(begin) != "(":
            begin += 1
        commas = self._commas(begin + 1, self.close[begin] - 1)
        if len(commas) != 1:
            return  # that of a type, or one of many
        first = index - 2 if self.word(index - 1) == "::" else index
        for argument in (self.span(begin + 1, commas[0] - 1),
                         self.span(commas[0] + 1, self.close[begin] - 1)):
            self.add(first, self.close[begin], f"({argument})")

    def _is_tested(self, index):
        """Whether the function has returned when the last argument of this call is NULL."""
        begin = index + 1
        while self.word(begin) != "(":
            begin += 1
        argument = self.word(self.close[begin] - 1)
        start = self.text.rfind("\n}", 0, self.tokens[index].start) + 1
        return re.search(rf"if \([^;{{]*!{re.escape(argument)}\b[^;{{]*\) return",
                         self.text[start:self.tokens[index].start]) is not None

    def _commas(self, first, last):
        return [index for index in range(first, last + 1) if self.word(index) == ","
                and not any(begin in range(first, last + 1) and begin < index < end
                            for begin, end in self.close.items())]

    def _stored_width(self, index):
        """A number is stored as wide as its type; narrower, it loses its high bytes."""
        begin = index + 1
        while self.word(begin) != "(":
            begin += 1
        first, last = begin + 1, self.close[begin] - 1
        if self.word(first) == "static_cast":
            if self.word(first + 2) == "uint8_t":
                self.add(first + 2, first + 2, "uint16_t")
        elif first == last:
            types = re.findall(rf"\bu?int(\d+)_t {self.word(first)}\b",
                               self.text[:self.tokens[first].start])
            if types and types[-1] != "8":
                narrow = f"static_cast<uint{int(types[-1]) // 2}_t>({self.word(first)})"
                self.add(first, last, narrow)

    # Operators.

    def _sign(self, index):
        sign = self.word(index)
        if sign in STEPS:
            self.add(index, index, STEPS[sign])
        elif sign == "!" and index not in self.decided:
            # A result that is dropped is inverted to satisfy the compiler.
            if self.word(index - 2) != "void":
                self.add(index, index, "")
        elif sign in OPERATORS and self.is_spaced(index) and index not in self.decided:
            self.add(index, index, OPERATORS[sign])

    # Rows of layouts: other kinds, and a last byte that is treated as one of another kind.

    def _rows(self, region):
        for index in region:
            if self.word(index + 1) != "(" or self.tokens[index].kind != "name":
                continue
            end = self.close[index + 1]
            parts = [part.strip() for part in self.span(index + 2, end - 1).split(",")]
            self._row(index, end, self.word(index), *parts)

    def _row(self, index, end, kind, name, offset, *rest):
        def become(text):
            unnamed = text.replace(f"{name}, ", "").replace("), ", ") and ")
            self.add(index, end, text, f"{kind} at {offset} -> {unnamed}")

        at = int(offset)
        if kind == "Entries":
            become(f"Skipped({name}, {offset}, {rest[0]} * {rest[1]}.size)")
            return
        if kind == "Numbers":
            each, elements = int(rest[0]), int(rest[1])
            width = each * elements
            become(f"Skipped({name}, {offset}, {width})")
            if elements > 1:
                become(f"Numbers({name}, {offset}, {each}, {elements - 1}), "
                       f"Skipped({name}, {at + width - each}, {each})")
            return
        width = WIDTHS.get(kind) or int(rest[0])
        others = {"Text": ("Bytes", "Skipped"), "Bytes": ("Text", "Skipped"),
                  "Skipped": ("Bytes",)}.get(kind, ("Skipped",))
        for other in others:
            become(f"{other}({name}, {offset}, {width})")
        if width > 1:
            shorter = kind if kind in ("Text", "Skipped") else "Bytes"
            last = "Bytes" if kind == "Skipped" else "Skipped"
            become(f"{shorter}({name}, {offset}, {width - 1}), {last}({name}, {at + width - 1}, 1)")

    # Strings that are constants: the names of nodes and variables, and formats.

    def _constant_strings(self):
        for index, token in enumerate(self.tokens):
            if token.kind == "string" and token.text != '""' and (
                    self.word(index - 1) == "=" or self.word(index - 2) == "getenv"
                    or self.word(index - 1) == "," and "%" in token.text):
                self.add(index, index, token.text[:-2] + '"')

    # Statements and initialisers.

    def _initialisers(self):
        for index in range(len(self.tokens)):
            if self.word(index) != "{" or self.word(index + 1) != "}":
                continue
            if self.word(index - 1) == "=":
                if not EMPTY_BY_ITSELF.search(self.text[:self.tokens[index - 1].start]):
                    self.add(index - 1, index + 1, "", "initialiser removed")
            elif self.word(index - 2) == ":":
                self.add(index - 2, index + 1, "", "initialiser removed")

    def _statements(self):
        for index, token in enumerate(self.tokens):
            if self.is_in(index, self.skipped) or not self._begins_statement(index):
                continue
            end = index
            while self.word(end) not in (";", "}", ""):
                end = self.close.get(end, end) + 1
            statement = self.span(index, end)
            if self.word(end) != ";" or token.text in NO_STATEMENT:
                continue
            if re.match(r"[\w:]+(<[^;=]*>)?[*&]*\s+[*&]*\w+\s*[;=\[{]", statement):
                continue  # a declaration
            self.add(index, end, ";", f"`{statement}` removed")

    def _begins_statement(self, index):
        token, before = self.tokens[index], self.word(index - 1)
        if token.kind != "name" and token.text not in ("*", "++", "--"):
            return False
        if before not in (";", "{", "}", ")", "else", ":") or not self._is_in_body(index):
            return False
        if before == ")":
            head = self.open[index - 1] - 1
            return self.word(head) in ("if", "for", "while", "constexpr")
        if before == ":":
            return self.word(index - 2) == "default" or self.word(index - 3) == "case"
        return True

    def _is_in_body(self, index):
        """Whether the innermost bracket around is that of a function, a lambda or a block."""
        begin = max((begin for begin, end in self.close.items() if begin < index < end), default=0)
        return self.word(begin) == "{" and self.word(begin - 1) in (")", "const", "else")


def collect(path, text, codes):
    """All mutants of one source; `codes` are the names of the command codes in their order."""
    return Source(path, text, neighbours(codes)).collect()
