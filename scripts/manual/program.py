"""What a tool says of itself with --help, with all its commands, as pages have it."""
import re
import subprocess
from typing import List

from blocks import Code, Definitions, Paragraph, Section

_HEADING = re.compile(r"^(?!Usage: )(\S.*):$")
_ENTRY = re.compile(r"^  (\S.*?)(?:  +(\S.*))?$")


def sections(program: str, name: str) -> List[Section]:
    """A section for the program and for each of its commands, those of commands too."""
    return list(_sections([program], name))


def _sections(command, name):
    about, usage, lists = _parse(_help(command))
    blocks = [Code(usage.replace(command[0], name)), Paragraph(about)]
    for heading, entries in lists:
        if heading != "Subcommands":
            blocks.append(Definitions(tuple(entries)))
    yield Section(" ".join([name, *command[1:]]), blocks)
    for heading, entries in lists:
        for subcommand, _ in entries if heading == "Subcommands" else ():
            yield from _sections([*command, subcommand], name)


def _help(command):
    return subprocess.run([*command, "--help"], text=True, stdout=subprocess.PIPE, check=True).stdout


def _parse(text):
    """The text before the usage, the usage, and each list as heading and entries."""
    about, _, rest = text.partition("\nUsage: ")
    usage, _, rest = rest.partition("\n")
    lists = []
    for line in rest.split("\n"):
        heading, entry = _HEADING.match(line), _ENTRY.match(line)
        if heading:
            lists.append((heading[1], []))
        elif entry and lists:
            lists[-1][1].append((entry[1], entry[2] or ""))
        elif line.strip() and lists:
            term, told = lists[-1][1][-1]
            lists[-1][1][-1] = (term, f"{told} {line.strip()}".strip())
    return " ".join(about.split()), usage, lists
