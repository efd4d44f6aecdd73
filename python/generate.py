#!/usr/bin/python3
"""Writes the parts of the module that follow from the headers and the record layouts.

usage: generate.py [--check]

`_functions.py` has what a call of each function takes, `_records.py` where the fields of each
record lie. Types, names and releases come from the public headers; limits of texts, sizes of
replies and the layouts from the tables of docs/protocol.md, which tests hold to the library. With --check
nothing is written: the exit status says whether both files are up to date.
"""
import pathlib
import re
import sys

SOURCE = pathlib.Path(__file__).resolve().parent.parent
PACKAGE = SOURCE / "python/vdrzax"
sys.path.insert(0, str(SOURCE / "scripts"))
sys.dont_write_bytecode = True

import public_header  # noqa: E402

HEADING = '"""Made by generate.py from the headers and the record layouts."""\n'
NUMBERS = {"uint8_t": (1, False), "uint16_t": (2, False), "uint32_t": (4, False),
           "uint64_t": (8, False), "int32_t": (4, True), "int": (4, True)}
# Structures that are no records of the datapath, and which the module fills or reads itself.
CONTAINERS = ("IoctlEnvelope", "RecordList", "SoftRssIndTable", "E2ITable", "VTEPTable")
C_TYPES = {"uint8_t": "c_uint8", "uint32_t": "c_uint32", "int32_t": "c_int32"}


def main():
    made = {PACKAGE / "_functions.py": functions_module(),
            PACKAGE / "_records.py": records_module()}
    if "--check" not in sys.argv[1:]:
        for path, text in made.items():
            path.write_text(text)
        return 0
    stale = [path for path, text in made.items() if path.read_text() != text]
    for path in stale:
        print(f"{path.relative_to(SOURCE)} is not what python/generate.py makes")
    return 1 if stale else 0


class Page:
    """The tables of docs/protocol.md."""

    def __init__(self, text):
        self.text = text
        self.rows = {name: (what, reply) for name, what, reply in re.findall(
            r"^\| `(VDRZAX\w+)` \| [^|]+ \| ([^|]+) \| ([^|]+) \|$", text, re.MULTILINE)}

    def nodes(self):
        return re.search(r"read-write: `(\S+)`, or\s+`(\S+)`", self.text).groups()

    def fields(self, function):
        """What each argument becomes: {name: (form, whether it may be NULL)}."""
        what = self.rows[function][0] if function in self.rows else ""
        same = re.match(r"as `(VDRZAX\w+)`", what)
        if same:
            return self.fields(same.group(1))
        return {name: (form, bool(mark or condition)) for form, mark, name, condition in re.findall(
            r"\b\d+ ([tpub]\d+|mac)(\?)? (\w+)( \()?", what)}

    def reply(self, function):
        return self.rows[function][1] if function in self.rows else "-"

    def layouts(self):
        """The tables of records that have one layout: {name: (size, rows)}."""
        found = {}
        parts = re.split(r"^### `(\w+)`( [^,]*)?, (\d+) bytes$", self.text, flags=re.MULTILINE)
        for name, variant, size, table in zip(*(parts[first::4] for first in (1, 2, 3, 4))):
            if not variant:
                found[name] = int(size), re.findall(
                    r"^\| (\d+) \| (\d+) \| `(\w+)` \| (.+) \|$", table, re.MULTILINE)
        return found


PAGE = Page((SOURCE / "docs/protocol.md").read_text())


def functions_module():
    functions = public_header.functions(SOURCE / "include")
    names = {function.name: function for function in functions}
    normal, upgrade = PAGE.nodes()
    version = version_of_header()
    lines = [HEADING, "from typing import Dict", "",
             "from ._arguments import Function, Mac, Number, Pointer, Text", "",
             f'VERSION = "{version}"', f'SONAME = "libvdrzax.so.{version.split(".")[0]}"', "",
             f'NODE = "{normal}"', f'UPGRADE_NODE = "{upgrade}"', "",
             "FUNCTIONS: Dict[str, Function] = {"]
    for function in functions:
        lines += function_row(function, names)
    return "\n".join(lines + ["}"]) + "\n"


def version_of_header():
    macros = {macro.name: macro for header in public_header.read(SOURCE / "include")
              for macro in header.macros}
    return ".".join(macros[f"VDRZAX_VERSION_{part}"].value for part in ("MAJOR", "MINOR", "PATCH"))


def function_row(function, names):
    forms = PAGE.fields(function.name)
    row = [f'    "{function.name}": Function(', "        ("]
    for parameter in function.parameters:
        row.append(f"            {parameter_kind(parameter, forms)},")
    row[-1:] = [row[-1], "        ),"] if function.parameters else ["        (),"]
    for name, value in reply_members(function, names).items():
        row.append(f"        {name}={value},")
    return row + ["    ),"]


def parameter_kind(parameter, forms):
    form, optional = forms.get(parameter.name, ("", False))
    mark = ", optional=True" if optional else ""
    if parameter.type == "const char*":
        return f'Text("{parameter.name}"{text_limit(form)}{mark})'
    if parameter.type == "const MacValue*":
        return f'Mac("{parameter.name}"{mark})'
    if parameter.type in NUMBERS:
        width, signed = NUMBERS[parameter.type]
        return f'Number("{parameter.name}", {width}{", signed=True" if signed else ""})'
    return f'Pointer("{parameter.name}")'


def text_limit(form):
    """A forced terminator takes a byte of the field; a text that is never sent has no limit."""
    if not form:
        return ""
    return f", {int(form[1:]) - (form[0] == 't')}"


def reply_members(function, names):
    members = {}
    reply = PAGE.reply(function.name)
    if function.releases:
        members["is_release"] = "True"
    if "**" in "".join(parameter.type for parameter in function.parameters):
        members["release"] = f'"{release_of(function, names)}"'
    listed = re.match(r"(\d+) x `(\w+)`", reply)
    if listed and function.parameters[-1].type == "RecordList**":
        members["record"] = f'"{listed.group(2)}"'
        members["most"] = listed.group(1)
    raw = re.search(r"raw (\d+)|packed, at most (\d+) bytes in all", reply)
    if raw:
        members["room"] = raw.group(1) or raw.group(2)
    return members


def release_of(function, names):
    comment = " ".join(function.comment)
    named = re.search(r"given to\s+(VDRZAX_Release\w+|free)", comment)
    if named:
        return named.group(1)
    return release_of(names[re.search(r"as (VDRZAX_\w+)", comment).group(1)], names)


def records_module():
    records = {record.name: record for record in public_header.records(SOURCE / "include")}
    layouts = {name: layout for name, layout in PAGE.layouts().items() if name in records}
    entries = {match for _, rows in layouts.values() for *_, how in rows
               for match in re.findall(r"of `(\w+)`", how)}
    lines = [HEADING, "import ctypes", "",
             "from ._fields import (Bytes, CountedNumbers, Entries, MacAddress, Number, Numbers, "
             "OddNumber,", "                      Record, Text)"]
    seen = [name for name in records if name in layouts or name == "StatsRecord"]
    lines += ["", "__all__ = [", *(f'    "{name}",' for name in seen), "]"]
    for name in CONTAINERS:
        lines += container(records[name])
    for name in sorted(seen, key=lambda name: name not in entries):
        lines += layout_record(records[name], *layouts[name]) if name in layouts else (
            header_record(records[name]))
    return "\n".join(lines) + "\n"


def docstring(record):
    text = " ".join(record.comment)
    first = re.match(r"(.*?[.:])(?: |$)", text)
    return f'    """{(first.group(1) if first else text).rstrip(".:")}."""' if text else None


def class_head(record, size):
    return ["", "", f"class {record.name}(Record):",
            *filter(None, [docstring(record)]), "", "    __slots__ = ()", f"    SIZE = {size}"]


def layout_record(record, size, rows):
    lines = class_head(record, size)
    for offset, width, name, how in rows:
        made = field(offset, width, how)
        if made:
            lines.append(f"    {name} = {made}")
    return lines


def field(offset, width, how):
    if how == "number":
        return f"{'Number' if width in '1248' else 'OddNumber'}({offset}, {width})"
    if how == "text":
        return f"Text({offset}, {width})"
    if how == "bytes":
        return f"Bytes({offset}, {width})"
    if how == "hardware address":
        return f"MacAddress({offset})"
    numbers = re.match(r"(\d+) numbers of (\d+) bytes", how)
    if numbers:
        return f"Numbers({offset}, {numbers.group(2)}, {numbers.group(1)})"
    counted = re.match(r"(\d+) of `(\w+)`, the first `(\w+)`", how)
    if counted:
        return counted_field(offset, width, *counted.groups())
    assert how == "skipped", how
    return None


def counted_field(offset, width, elements, entry, count):
    """Entries of one number, which have no structure in the header, are numbers."""
    _, rows = PAGE.layouts()[entry]
    if len(rows) == 1:
        return f'CountedNumbers({offset}, {int(width) // int(elements)}, {elements}, "{count}")'
    return f'Entries({offset}, {entry}, {elements}, "{count}")'


def header_record(record):
    """A record with several layouts has the fields of its structure."""
    lines, offset = [], 0
    for each in record.fields:
        width, _ = NUMBERS[each.type]
        if each.length:
            lines.append(f"    {each.name} = Numbers({offset}, {width}, {each.length})")
        else:
            lines.append(f"    {each.name} = Number({offset}, {width})")
        offset += width * (each.length or 1)
    return class_head(record, offset) + lines


def container(record):
    lines = ["", "", f"class {record.name}(ctypes.Structure):"]
    if record.packed:
        lines.append("    _pack_ = 1")
    lines.append("    _fields_ = [")
    for each in record.fields:
        kind = "c_void_p" if "*" in each.type else C_TYPES[each.type]
        times = f" * {each.length}" if each.length else ""
        lines.append(f'        ("{each.name}", ctypes.{kind}{times}),')
    return lines + ["    ]"]


if __name__ == "__main__":
    sys.exit(main())
