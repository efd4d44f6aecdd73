"""Writes pages as manual pages, with the classic macros that every reader of them knows."""
import re

from blocks import Code, Definitions, Links, Paragraph, spans


def escape(text: str) -> str:
    """A text that nothing in it is read as a command."""
    text = text.replace("\\", "\\e").replace("-", "\\-").replace("'", "\\(aq")
    return re.sub(r"^\.", r"\\&.", text, flags=re.MULTILINE)


def page(of, section: int, version: str) -> str:
    """A whole page. It bears no date, so that the same source gives the same bytes."""
    lines = [title(of.name, section, version),
             ".SH NAME", rf"{escape(of.name)} \- {escape(of.summary)}"]
    for part in of.sections:
        lines += section_lines(part)
    return "\n".join(lines) + "\n"


def title(name, section, version):
    names = {1: "User commands", 3: "Library functions", 7: "Miscellaneous"}
    return f'.TH "{escape(name)}" {section} "" "vdrzax {version}" "{names[section]}"'


def section_lines(part, macro=".SH"):
    lines = [f"{macro} {escape(part.title.upper() if macro == '.SH' else part.title)}"]
    for block in part.blocks:
        lines += _WRITERS[type(block)](block, len(lines) == 1)
    return lines


def _paragraph(block, first):
    return ([] if first else [".PP"]) + _sentences(block.text)


def _definitions(block, _):
    lines = []
    for term, text in block.entries:
        lines += [".TP", rf"\fB{escape(term)}\fR"] + _sentences(text)
    return lines


def _code(block, first):
    lines = [] if first else [".PP"]
    return lines + [".nf", *map(escape, block.text.split("\n")), ".fi"]


def _links(block, _):
    """With what each is about as a list, without as a line."""
    if any(text for _, text in block.entries):
        lines = []
        for name, text in block.entries:
            lines += [".TP", f".BR {escape(name)} {_number(name)}", *_sentences(text)]
        return lines
    last = len(block.entries) - 1
    return [f".BR {escape(name)} {_number(name)}{'' if index == last else ' ,'}"
            for index, (name, _) in enumerate(block.entries)]


_WRITERS = {Paragraph: _paragraph, Definitions: _definitions, Code: _code, Links: _links}


def _number(name):
    return "(7)" if name == "vdrzax" else "(1)" if name in ("vdrctl", "vdrsim") else "(3)"


def _sentences(text):
    """A sentence a line, as manual pages are written; none as long as checkers complain of."""
    lines = []
    for sentence in re.split(r"(?<=[.;:!]) +", text):
        lines += _wrapped(_marked(sentence))
    return lines


def _wrapped(text, width=78):
    line = ""
    for word in text.split(" "):
        if line and len(line) + 1 + len(word) > width:
            yield line
            line = ""
        line = f"{line} {word}" if line else (r"\&" + word if word[:1] in ".'" else word)
    yield line


def _marked(text):
    written = {"plain": escape, "code": lambda code: rf"\fI{escape(code)}\fR",
               "function": lambda name: rf"\fB{escape(name)}\fR(3)"}
    return "".join(written[kind](piece) for kind, piece in spans(text))
