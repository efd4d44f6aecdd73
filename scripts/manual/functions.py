"""A page for each function and each header, made from the comments of the headers."""
import re
from typing import Dict, List

import comment as comments
from blocks import Code, Definitions, Links, Page, Paragraph, Section

_ERRNO = re.compile(r"\bE[A-Z]{3,}\b")
_SAID_AT_THE_TOP = "said at the top"


class Reference:
    """Pages of the functions, the headers and the rules for all of them."""

    def __init__(self, headers, rules):
        self._headers = headers
        self._functions = {each.name: each for header in headers for each in header.functions}
        self._comments = {
            name: comments.parse(each.comment, tuple(one.name for one in each.parameters))
            for name, each in self._functions.items()}
        self._tops = {header.family: comments.parse_text(header.comment) for header in headers}
        self._rules = comments.parse_text(rules)
        self._errors = _errors(self._rules)

    def pages(self) -> List[Page]:
        return [self._overview(), *map(self._family, self._headers),
                *map(self._function, self._functions.values())]

    def _overview(self):
        families = tuple((_page_of(header.family), _first_sentence(self._tops[header.family]))
                         for header in self._headers)
        return Page("vdrzax", "control of the virtual distributed router of a host", None, [
            Section("Synopsis", [Code("#include <vdrzax.h>\n\ncc ... -lvdrzax")]),
            Section("Description", self._rules[1:]),
            Section("Headers", [Links(families)])])

    def _family(self, header):
        macros = tuple(_macros(header))
        sections = [Section("Synopsis", [Code(f"#include <vdrzax/{header.family}.h>")]),
                    Section("Description", self._tops[header.family])]
        if macros:
            sections.append(Section("Macros", [Definitions(macros)]))
        if header.records:
            sections.append(Section("Records", [block for record in header.records
                                                for block in _record(record)]))
        functions = tuple((each.name, self._summary(each)) for each in header.functions)
        sections.append(Section("Functions", [Links(functions)]))
        return Page(_page_of(header.family), _summary(_first_sentence(self._tops[header.family])),
                    header.family, sections)

    def _function(self, function):
        comment = self._comments[function.name]
        described = comment.description + ([] if function.is_command else comment.returns)
        sections = [
            Section("Synopsis", [Code(f"#include <vdrzax.h>\n\n{_declaration(function)}")]),
            Section("Description", described + self._shared(function))]
        if function.parameters:
            sections.append(Section("Parameters", self._parameters(function)))
        if function.is_command:
            sections.append(Section("Return value", self._returns(function)))
            sections.append(Section("Errors", [self._errors_of(function)]))
        sections.append(Section("See also", [Links(self._see_also(function))]))
        return Page(function.name, self._summary(function), function.family,
                    [_on_this_page(section) for section in sections], is_function=True)

    def _summary(self, function):
        return _summary(_first_sentence(self._comments[function.name].description
                                        or self._comments[function.name].returns))

    def _chain(self, function) -> List[str]:
        """The function and those whose comment holds for it too, the nearest first."""
        names = [function.name]
        for name in names:
            for each in self._comments[name].follows:
                if each not in self._functions:
                    raise ValueError(f"{name}: its comment follows {each}, which no header declares")
                if each not in names:
                    names.append(each)
        return names

    def _shared(self, function):
        """What stands at the top of the header and holds for this function: all but what is said of
        arguments that it does not have."""
        shares = any(_SAID_AT_THE_TOP in " ".join(self._functions[name].comment)
                     for name in self._chain(function))
        has = {each.name for each in function.parameters}
        shared = []
        for block in self._tops[function.family][1:]:
            text = " ".join(_texts(block))
            about = set(re.findall(r"`(\w+)`", text)[:1])
            if "this file" not in text and (not about or (shares and about <= has)):
                shared.append(block)
        return shared and [Paragraph(f"Of all functions of <vdrzax/{function.family}.h>:"), *shared]

    def _parameters(self, function):
        """What each is: first those that the function tells itself, then by whom the others are told.
        Those that follow one another and are the same stand before one text."""
        told = {}
        for each in function.parameters:
            place, meaning = self._meaning(function, each.name)
            entries = told.setdefault(place, [])
            if entries and entries[-1][1] == meaning:
                entries[-1] = (f"{entries[-1][0]}, {each.name}", meaning)
            else:
                entries.append((each.name, meaning))
        blocks = []
        for place, entries in sorted(told.items(), key=lambda each: each[0] != function.name):
            if place != function.name:
                blocks.append(Paragraph(f"As {place}, but for what is said above:"))
            blocks.append(Definitions(tuple(entries)))
        return blocks

    def _meaning(self, function, name):
        """The function that tells what a parameter is, which is one that it follows where it doesn't
        itself, and what that says."""
        chain = self._chain(function)
        for place in chain:
            for names, text in self._comments[place].parameters.items():
                if name in names.split(", "):
                    return place, text
            told = _is(name, self._sentences(place))
            if told:
                return place, told
            if function.releases:
                return place, "What is freed, or NULL."
        shared = [sentence for block in self._shared(function)
                  for sentence in comments.sentences(block.text)]
        told = _is(name, shared) or next(
            (each for each in self._sentences(function.name) if re.search(rf"\b{name}\b", each)), None)
        if not told:
            raise ValueError(f"{function.name}: nothing tells what {name} is")
        return function.name, told

    def _sentences(self, name):
        told = self._comments[name]
        return [sentence for block in told.description + told.returns
                if isinstance(block, Paragraph) for sentence in comments.sentences(block.text)]

    def _returns(self, function):
        """What it returns itself, or else what the function does whose comment holds for it too, and
        so on while one says that it does as another."""
        told = []
        for name in self._chain(function):
            returns = self._comments[name].returns
            if returns and name != function.name:
                told.append(Paragraph(f"As {name}:"))
            told += returns
            if returns and not re.search(r"\bas VDRZAX", " ".join(_texts(returns[0]))):
                break
        return told or [Paragraph("Returns 0 on success, and -1 with errno on failure.")]

    def _errors_of(self, function):
        """Each errno that is named for the function, with its reason there or in the rules."""
        returns = self._returns(function)
        listed = {term: text for block in returns if isinstance(block, Definitions)
                  for term, text in block.entries}
        text = " ".join(told for block in returns for told in _texts(block))
        if not any(self._comments[name].returns for name in self._chain(function)):
            text = " ".join(told for block in self._shared(function) for told in _texts(block))
        entries = tuple((name, listed.get(name) or _reason(name, text) or self._errors[name])
                        for name in dict.fromkeys(_ERRNO.findall(text))
                        if not re.search(rf"(?:never with|none sets|but for) {name}", text))
        return Definitions((*entries, ("other", listed.get("other") or self._errors["other"])))

    def _see_also(self, function):
        text = " ".join(self._functions[function.name].comment)
        named = [name for name in re.findall(r"\bVDRZAX_?[A-Za-z0-9]+\b", text)
                 if name in self._functions and name != function.name]
        named += [name for name in self._chain(function)[1:]]
        return tuple((name, "") for name in
                     dict.fromkeys([*named, _page_of(function.family), "vdrzax"]))


def _page_of(family):
    return f"vdrzax_{family}"


def _texts(block):
    if isinstance(block, Paragraph):
        yield block.text
    elif isinstance(block, Definitions):
        for term, text in block.entries:
            yield f"{term} {text}"


def _is(name, sentences):
    """What one of the sentences says that it is, or None."""
    for sentence in sentences:
        said = re.search(rf"`{name}` is (?!as )(\w)([^;]*(?:; NULL [^;]*)?)", sentence)
        if said:
            return f"{said[1].upper()}{said[2]}".rstrip(".") + "."
    return None


def _reason(name, text):
    """Why an errno is set, where that stands behind its name."""
    found = re.search(rf"{name} (?:\(((?:[^()]|\([^()]*\))*)\)|means that ([^.;]*))", text)
    return found and (found[1] or found[2])


def _on_this_page(section):
    """What stands at the top of the header stands on each page for which it holds."""
    def moved(text):
        return text.replace(_SAID_AT_THE_TOP, "said on this page")
    blocks = []
    for block in section.blocks:
        if isinstance(block, Paragraph):
            block = Paragraph(moved(block.text))
        elif isinstance(block, Definitions):
            block = Definitions(tuple((term, moved(text)) for term, text in block.entries))
        blocks.append(block)
    return Section(section.title, blocks)


def _errors(rules) -> Dict[str, str]:
    """The first sentence that the rules have on each errno, by its name."""
    listed = next(block for block in rules if isinstance(block, Definitions)
                  and block.entries[0][0] == "EINVAL")
    return {name: comments.sentences(text)[0].rstrip(".") for name, text in listed.entries}


def _first_sentence(blocks):
    return comments.sentences(blocks[0].text)[0]


def _summary(sentence):
    """A sentence as what stands behind a name: without the reference that ends it."""
    short = re.sub(r"[,:]? (?:all else )?\b[Aa]s VDRZAX.*", "", sentence)
    short = re.split(r": |, (?:which|a header) ", short)[0].replace("`", "").rstrip(".")
    return short if short[1:2].isupper() else short[0].lower() + short[1:]


def _declaration(function):
    """The prototype, a parameter a line where it would be long."""
    if len(function.prototype) <= 76:
        return function.prototype
    parameters = ",\n".join(f"    {each.type} {each.name}" for each in function.parameters)
    return f"{function.result} {function.name}(\n{parameters});"


def _macros(header):
    for macro in header.macros:
        value = "" if macro.number is None else f" {macro.number}"
        yield f"{macro.name}{macro.arguments or ''}{value}", " ".join(macro.comment)


def _record(record):
    lines = [f"typedef struct {record.name} {{"]
    for field in record.fields:
        array = f"[{field.length}]" if field.length else ""
        comment = f" /* {' '.join(field.comment)} */" if field.comment else ""
        lines.append(f"  {field.type} {field.name}{array};{comment}")
    lines.append(f"}} {record.name};")
    return [*comments.parse_text(record.comment), Code("\n".join(lines))]
