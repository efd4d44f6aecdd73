"""Makes the manual pages and the HTML reference from the headers, the tools and the documentation,
and what completes the command lines of vdrctl.

usage: make.py man|html|completions SOURCE_DIRECTORY OUTPUT_DIRECTORY [VDRCTL VDRSIM]
Without the tools, as where they can't run because they are built for another machine, their manual
pages are not made.
"""
import pathlib
import re
import shutil
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))
import functions
import hypertext
import markdown
import program
import public_header
import roff
from blocks import Code, Links, Section


class Source:
    """The tree that pages are made from."""

    def __init__(self, directory):
        include = directory / "include"
        headers = public_header.read(include)
        self.pages = functions.Reference(headers, public_header.umbrella(include)).pages()
        self.documents = {path.stem: path.read_text()
                          for path in sorted((directory / "docs").glob("*.md"),
                                             key=lambda each: each.stem)}
        self.memcheck = (directory / "tools/memcheck/vdrzax-memcheck.in").read_text()
        numbers = {macro.name: macro.value for header in headers for macro in header.macros}
        self.version = ".".join(numbers[f"VDRZAX_VERSION_{part}"]
                                for part in ("MAJOR", "MINOR", "PATCH"))


def write_man(source, output, tools):
    overview, *pages = source.pages
    for page in pages:
        _write(output / f"man3/{page.name}.3", roff.page(page, 3, source.version))
    documents = "".join(markdown.man(source.documents[name]) for name in ("protocol", "guarantees"))
    _write(output / "man7/vdrzax.7",
           roff.page(overview, 7, source.version) + documents + _see_also("vdrctl", "vdrsim"))
    if tools:
        vdrctl, vdrsim = tools
        _write(output / "man1/vdrctl.1", _said(vdrctl, "reference", "man"))
        _write(output / "man1/vdrsim.1", _vdrsim(vdrsim, source))
        _write(output / "man1/vdrzax-memcheck.1", _memcheck(source))


def _vdrsim(program_file, source):
    """What it says of itself, then how it works: its page and those on parts of it."""
    whole, *commands = program.sections(program_file, "vdrsim")
    usage, about, *options = whole.blocks
    lines = _head(source, "vdrsim", "run programs against a simulated datapath of the virtual "
                                    "distributed router")
    for section in (Section("Synopsis", [usage]), Section("Description", [about]),
                    Section("Options", options)):
        lines += roff.section_lines(section)
    lines.append(".SH COMMANDS")
    for section in commands:
        lines += roff.section_lines(section, ".SS")
    documents = "".join(markdown.man(text) for name, text in source.documents.items()
                        if name.partition("-")[0] == "vdrsim")
    return "\n".join(lines) + "\n" + documents + _see_also("vdrctl", "vdrzax")


def _memcheck(source):
    """How it is called, as it says itself, then its page."""
    usage = re.search(r"^# usage: (.*)", source.memcheck, re.MULTILINE)[1]
    lines = _head(source, "vdrzax-memcheck", "run a program that uses libvdrzax under memcheck")
    lines += roff.section_lines(Section("Synopsis", [Code(usage)]))
    return ("\n".join(lines) + "\n" + markdown.man(source.documents["memcheck"])
            + _see_also("vdrsim", "vdrzax"))


def _head(source, name, summary):
    return [roff.title(name, 1, source.version), ".SH NAME", rf"{roff.escape(name)} \- {summary}"]


def _see_also(*names):
    links = Links(tuple((name, "") for name in names))
    return "\n".join(roff.section_lines(Section("See also", [links]))) + "\n"


def write_html(source, output):
    for page in source.pages:
        _write(output / f"{page.name}.html", hypertext.page(page))
    known = {*source.documents, *(page.name for page in source.pages)}
    for name, text in source.documents.items():
        body = markdown.html(text, known)
        _write(output / f"{name}.html", hypertext.frame(markdown.title(text), body))
    _write(output / "index.html", hypertext.index("libvdrzax", [
        ("The library", _listed(page for page in source.pages if not page.is_function)),
        ("Pages", tuple((name, markdown.title(text)) for name, text in source.documents.items())),
        ("Functions", _listed(page for page in source.pages if page.is_function))]))
    _write(output / "style.css", hypertext.STYLE)


def write_completions(output, vdrctl):
    """Each where its shell looks below the directory for data."""
    for shell, place in (("bash", "bash-completion/completions/vdrctl"),
                         ("zsh", "zsh/site-functions/_vdrctl"),
                         ("fish", "fish/vendor_completions.d/vdrctl.fish")):
        _write(output / place, _said(vdrctl, "completion", shell))


def _listed(pages):
    return tuple(sorted((page.name, page.summary) for page in pages))


def _said(*command):
    return subprocess.run(command, text=True, stdout=subprocess.PIPE, check=True).stdout


def _write(path, text):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text)


def main(form, source, output, *tools):
    output = pathlib.Path(output)
    shutil.rmtree(output, ignore_errors=True)
    if form == "completions":
        write_completions(output, tools[0])
        return
    source = Source(pathlib.Path(source))
    if form == "man":
        write_man(source, output, tools)
    else:
        write_html(source, output)


if __name__ == "__main__":
    main(*sys.argv[1:])
