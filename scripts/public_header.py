"""Reads the public headers: their functions, records and macros, and what stands above each.

    for header in public_header.read("include"):
        for function in header.functions:
            print(function.name, function.parameters)

The headers are those that the umbrella includes, in its order.
"""
import dataclasses
import pathlib
import re
from typing import List, Optional, Tuple

_COMMENT = r"(?:/\*(?P<comment>(?:(?!\*/).)*)\*/\n)?"
_FUNCTION = re.compile(
    "^" + _COMMENT + r"VDRZAX_API\s+(?P<checked>VDRZAX_CHECKED\s+)?(?P<result>[\w* ]+?)\s*"
    r"\b(?P<name>VDRZAX\w+)\((?P<parameters>[^)]*)\)"
    r"(?:\s*VDRZAX_NONNULL\((?P<nonnull>[^)]*)\))?;", re.MULTILINE | re.DOTALL)
_RECORD = re.compile(
    "^" + _COMMENT + r"typedef struct (?P<name>\w+) \{\n(?P<fields>.*?)^\} (?P=name);",
    re.MULTILINE | re.DOTALL)
_FIELD = re.compile(
    r"^\s*(?P<type>[\w ]+?(?:\s*\*+)?)\s*\b(?P<name>\w+)(?:\[(?P<length>\d+)\])?;"
    r"(?:\s*/\*(?P<comment>.*?)\*/)?\s*?$", re.MULTILINE | re.DOTALL)
_MACRO = re.compile(
    "^" + _COMMENT + r"(?:#if[^\n]*\n)?#define (?P<name>\w+)(?P<arguments>\([^)]*\))?"
    r"(?:[ \t]+(?P<value>(?:[^\n\\]|\\\n|\\)+))?$", re.MULTILINE | re.DOTALL)
_PACKED = re.compile(r"^#pragma pack\(push, 1\)$.*?^#pragma pack\(pop\)$", re.MULTILINE | re.DOTALL)


@dataclasses.dataclass(frozen=True)
class Parameter:
    """`type` is spelled as in the header, its stars included: `const char*`."""
    type: str
    name: str


@dataclasses.dataclass(frozen=True)
class Function:
    """`comment` holds the lines above the declaration, without what marks them as a comment.

    `checked`: who ignores the result is warned. `nonnull`: the parameters, counted from 1, that fault
    when they are NULL.
    """
    name: str
    family: str
    result: str
    parameters: Tuple[Parameter, ...]
    comment: Tuple[str, ...]
    checked: bool
    nonnull: Tuple[int, ...]

    @property
    def releases(self) -> bool:
        """Whether it frees what a getter returned."""
        return self.name.startswith("VDRZAX_Release")

    @property
    def is_command(self) -> bool:
        """Whether it reaches the device: all do that return something."""
        return self.result != "void"

    @property
    def prototype(self) -> str:
        parameters = ", ".join(f"{each.type} {each.name}" for each in self.parameters)
        return f"{self.result} {self.name}({parameters or 'void'});"


@dataclasses.dataclass(frozen=True)
class Field:
    """`length` is that of an array, None where there is none."""
    type: str
    name: str
    length: Optional[int]
    comment: Tuple[str, ...]


@dataclasses.dataclass(frozen=True)
class Record:
    """`packed`: its fields follow one another without gaps, so that some may be unaligned."""
    name: str
    family: str
    fields: Tuple[Field, ...]
    comment: Tuple[str, ...]
    packed: bool


@dataclasses.dataclass(frozen=True)
class Macro:
    """`value` is the text that it stands for; `arguments` is None where it takes none.

    Macros that directly follow one another share the comment above the first.
    """
    name: str
    family: str
    arguments: Optional[str]
    value: str
    comment: Tuple[str, ...]

    @property
    def number(self) -> Optional[int]:
        return int(self.value) if self.value.isdigit() else None


@dataclasses.dataclass(frozen=True)
class Header:
    """One header; its family is its name, `comment` what stands at its top."""
    family: str
    comment: Tuple[str, ...]
    functions: Tuple[Function, ...]
    records: Tuple[Record, ...]
    macros: Tuple[Macro, ...]


def read(include) -> List[Header]:
    """The headers of the directory `include`, in the order of the umbrella."""
    return [_header(pathlib.Path(include) / name) for name in _included(umbrella_text(include))]


def umbrella(include) -> Tuple[str, ...]:
    """The rules for all functions, which stand at the top of the umbrella."""
    return _opening(umbrella_text(include))


def umbrella_text(include) -> str:
    return (pathlib.Path(include) / "vdrzax.h").read_text()


def functions(include) -> List[Function]:
    """All functions, in the order of the headers."""
    return [function for header in read(include) for function in header.functions]


def records(include) -> List[Record]:
    """All records, in the order of the headers."""
    return [record for header in read(include) for record in header.records]


def _included(text):
    return re.findall(r"^#include <(vdrzax/\w+\.h)>$", text, re.MULTILINE)


def _header(path):
    text = path.read_text()
    family = path.stem
    return Header(family, _opening(text),
                  tuple(_function(match, family) for match in _FUNCTION.finditer(text)),
                  _records(text, family), _macros(text, family))


def _opening(text):
    return _lines(re.match(r"/\*(.*?)\*/", text, re.DOTALL).group(1))


def _lines(comment):
    """The text of a comment as lines, blank ones between its paragraphs."""
    if comment is None:
        return ()
    lines = [re.sub(r"^(?: \*(?: |$)|   )", "", line).rstrip() for line in comment.split("\n")]
    lines[0] = lines[0].strip()
    while lines and not lines[0]:
        lines.pop(0)
    while lines and not lines[-1]:
        lines.pop()
    return tuple(lines)


def _function(match, family):
    nonnull = match["nonnull"] or ""
    return Function(match["name"], family, match["result"], _parameters(match["parameters"]),
                    _lines(match["comment"]), match["checked"] is not None,
                    tuple(int(number) for number in nonnull.split(",") if number))


def _parameters(text):
    if text == "void":
        return ()
    declared = [re.fullmatch(r"(.*?)\s*\b(\w+)", " ".join(each.split())) for each in text.split(",")]
    return tuple(Parameter(*each.groups()) for each in declared)


def _records(text, family):
    packed = [range(*match.span()) for match in _PACKED.finditer(text)]
    return tuple(
        Record(match["name"], family, tuple(map(_field, _FIELD.finditer(match["fields"]))),
               _lines(match["comment"]), any(match.start("name") in area for area in packed))
        for match in _RECORD.finditer(text))


def _field(match):
    length = match["length"]
    return Field(match["type"], match["name"], int(length) if length else None,
                 _lines(match["comment"]))


def _macros(text, family):
    """Those that mean something: not the one that guards the header. Of two, the first."""
    found = {}
    comment, end = (), None
    for match in _MACRO.finditer(text):
        if match["comment"] is not None or end != match.start():
            comment = _lines(match["comment"])
        end = match.end() + 1
        if match["name"] == f"VDRZAX_{family.upper()}_H":
            continue
        value = re.sub(r"\s*\\\n\s*", " ", match["value"] or "").strip()
        found.setdefault(match["name"],
                         Macro(match["name"], family, match["arguments"], value, comment))
    return tuple(found.values())
