"""The pages of the documentation, turned by lowdown."""
import itertools
import re
import subprocess

import roff
from blocks import Definitions, Paragraph, Section

_CELLS = re.compile(r"(?<!\\)\|")
_LINK = re.compile(r"\[([^\]]+)\]\(([^)]+)\)")


def man(text: str) -> str:
    """The body of a manual page: its headings are sections, its links their texts alone, and a table is
    a list of its rows, because on a terminal its columns would be too narrow."""
    body = []
    for is_table, lines in itertools.groupby(_LINK.sub(r"\1", text).split("\n"),
                                             lambda line: line.startswith("|")):
        body.append(_rows(list(lines)) if is_table else _prose("\n".join(lines)))
    # A paragraph needs no sign where a section begins.
    return re.sub(r"^(\.S[HS]\n.*\n)\.[LP]P\n", r"\1", "\n".join(body) + "\n", flags=re.MULTILINE)


def _prose(text):
    body = _run("man", text)
    # Fonts that every reader of manual pages has.
    return re.sub(r"\\f(?:C|\(CR)", r"\\fB", body).rstrip("\n")


def _rows(lines):
    """The first cell of a row is the term; the others stand behind it with what heads their column.
    Where it is empty the term is that of the row before."""
    heads, _, *rows = [[cell.strip().replace("\\|", "|") for cell in _CELLS.split(line)[1:-1]]
                       for line in lines]
    entries, term = [], ""
    for first, *cells in rows:
        term = first or term
        told = cells if len(cells) == 1 else [
            f"{head}: {cell}" for head, cell in zip(heads[1:], cells) if cell not in ("", "-")]
        entries.append((term.replace("`", ""), "; ".join(told)))
    blocks = [Paragraph(f"{heads[0]}:"), Definitions(tuple(entries))]
    return "\n".join([".PP", *roff.section_lines(Section("", blocks))[1:]])


def html(text: str, pages) -> str:
    """The body of an HTML page; a link to a page that is not among `pages` is its text alone."""
    def link(match):
        target, hash_, place = match[2].partition("#")
        name = {"../include/vdrzax.h": "vdrzax"}.get(target, re.sub(r"\.md$", "", target))
        if target and name not in pages:
            return match[1]
        return f"[{match[1]}]({name + '.html' if name else ''}{hash_}{place})"
    return _run("html", _LINK.sub(link, text))


def title(text: str) -> str:
    return re.match(r"# (.*)", text)[1].replace("`", "")


def _run(form, text):
    return subprocess.run(["lowdown", f"-t{form}", "--out-no-smarty"], input=text, text=True,
                          stdout=subprocess.PIPE, check=True).stdout
