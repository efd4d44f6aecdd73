"""What pages are made of, whatever they are written as.

A text may hold `code` and names of functions; each writer marks these in its own way.
"""
import dataclasses
import re
from typing import Iterator, List, Optional, Tuple, Union

_CODE = r"`(?P<code>[^`]+)`"
_FUNCTION = r"(?P<function>\bVDRZAX_?[A-Z][A-Za-z0-9]*[a-z0-9][A-Za-z0-9]*\b)(?!\.h)"
_MARKED = re.compile(f"{_CODE}|{_FUNCTION}")


@dataclasses.dataclass(frozen=True)
class Paragraph:
    text: str


@dataclasses.dataclass(frozen=True)
class Definitions:
    """Terms, each with its text."""
    entries: Tuple[Tuple[str, str], ...]


@dataclasses.dataclass(frozen=True)
class Code:
    text: str


@dataclasses.dataclass(frozen=True)
class Links:
    """Other pages: the name of each, and what it is about where that is told."""
    entries: Tuple[Tuple[str, str], ...]


Block = Union[Paragraph, Definitions, Code, Links]


@dataclasses.dataclass(frozen=True)
class Section:
    title: str
    blocks: List[Block]


@dataclasses.dataclass(frozen=True)
class Page:
    """`name` is what it is looked up by, `family` the header that it is made from."""
    name: str
    summary: str
    family: Optional[str]
    sections: List[Section]
    is_function: bool = False


def spans(text: str) -> Iterator[Tuple[str, str]]:
    """The text as pieces of kind "plain", "code" and "function"."""
    end = 0
    for match in _MARKED.finditer(text):
        if match.start() > end:
            yield "plain", text[end:match.start()]
        yield match.lastgroup, match[match.lastgroup]
        end = match.end()
    if end < len(text):
        yield "plain", text[end:]
