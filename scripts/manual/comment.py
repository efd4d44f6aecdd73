"""The comment of a function, taken apart: what it does, its parameters, what it returns."""
import dataclasses
import re
from typing import Dict, List, Tuple

from blocks import Block, Definitions, Paragraph

_SENTENCE_END = re.compile(r"(?<=[.!?])\s+(?=[A-Za-z`*(])")
_DEFINITION = re.compile(r"  (?! )(.+?)(?:  +(.*))?")
# Where a comment says that another function's holds here too.
_FOLLOWED = re.compile(
    r"\b(?:[Aa]s(?: for| with| in)?|those of|given to|memory\s+that)\s+"
    r"(VDRZAX_?(?!Release)[A-Za-z0-9]+)")


@dataclasses.dataclass
class Comment:
    """`parameters` by their names as they stand, several before one text; `returns` is empty where
    nothing is said of it; `follows` names the functions of which all else holds."""
    description: List[Block]
    parameters: Dict[str, str]
    returns: List[Block]
    follows: List[str]


def sentences(text: str) -> List[str]:
    return _SENTENCE_END.split(text)


def parse(lines: Tuple[str, ...], parameters: Tuple[str, ...] = ()) -> Comment:
    """`parameters` are those of the function, by which their list is known from other text."""
    comment = Comment([], {}, [], [])
    for group in _groups(lines):
        if _lists(group[0], parameters):
            comment.parameters.update(_parameters(group, parameters))
        else:
            _add(comment, group)
    comment.follows = list(dict.fromkeys(_FOLLOWED.findall(" ".join(lines))))
    return comment


def parse_text(lines: Tuple[str, ...]) -> List[Block]:
    """Paragraphs and lists of a text that belongs to no function."""
    return [block for group in _groups(lines) for block in _blocks(group)]


def _groups(lines):
    group = []
    for line in (*lines, ""):
        if line:
            group.append(line)
        elif group:
            yield group
            group = []


def _names(line, parameters):
    """The parameters that a line begins with, or none."""
    names = re.split(r"  +", line)[0].split(", ")
    return names if all(name in parameters for name in names) else []


def _lists(line, parameters):
    return bool(_names(line, parameters))


def _parameters(group, parameters):
    found = {}
    term = None
    for line in group:
        if not line.startswith(" ") and _names(line, parameters):
            term = ", ".join(_names(line, parameters))
            found[term] = line[len(term):].strip()
        else:
            found[term] = f"{found[term]} {line.strip()}".strip()
    return found


def _add(comment, group):
    """A paragraph to the description, and to what is returned from where that begins."""
    blocks = _blocks(group)
    if comment.returns:
        comment.returns += blocks
        return
    if not isinstance(blocks[0], Paragraph):
        comment.description += blocks
        return
    told = sentences(blocks[0].text)
    begins = next((index for index, each in enumerate(told) if each.startswith("Returns")), None)
    if begins is None:
        comment.description += blocks
        return
    if begins > 0:
        comment.description.append(Paragraph(" ".join(told[:begins])))
    comment.returns += [Paragraph(" ".join(told[begins:])), *blocks[1:]]


def _blocks(group):
    """A paragraph; lines that are set in by two make a list of terms and texts."""
    blocks = []
    for line in group:
        definition = _DEFINITION.fullmatch(line)
        last = blocks[-1] if blocks else None
        if definition:
            entry = (definition[1], definition[2] or "")
            if isinstance(last, Definitions):
                blocks[-1] = Definitions((*last.entries, entry))
            else:
                blocks.append(Definitions((entry,)))
        elif isinstance(last, Definitions) and line.startswith("   "):
            term, text = last.entries[-1]
            blocks[-1] = Definitions((*last.entries[:-1], (term, f"{text} {line.strip()}".strip())))
        elif isinstance(last, Paragraph):
            blocks[-1] = Paragraph(f"{last.text} {line.strip()}")
        else:
            blocks.append(Paragraph(line.strip()))
    return blocks
