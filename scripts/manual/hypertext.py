"""Writes pages as HTML."""
import html
import re

from blocks import Code, Definitions, Links, Paragraph, spans

STYLE = """\
body { max-width: 50em; margin: 2em auto; padding: 0 1em; font-family: sans-serif; line-height: 1.4; }
code, pre { font-family: monospace; }
pre { background: #f4f4f4; padding: 0.7em; overflow: auto; }
table { border-collapse: collapse; }
td, th { border: 1px solid #bbb; padding: 0.2em 0.5em; text-align: left; vertical-align: top; }
dt { font-weight: bold; margin-top: 0.4em; }
"""


def page(of) -> str:
    parts = [f"<p>{_marked(of.summary)}</p>"]
    for section in of.sections:
        parts.append(f"<h2>{html.escape(section.title)}</h2>")
        parts += [_WRITERS[type(block)](block) for block in section.blocks]
    return frame(of.name, f"<h1>{html.escape(of.name)}</h1>\n" + "\n".join(parts))


def frame(title: str, body: str) -> str:
    """A whole page around a body."""
    return f"""<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>{html.escape(title)} - libvdrzax</title>
<link rel="stylesheet" href="style.css">
</head>
<body>
<p><a href="index.html">libvdrzax</a></p>
{body}
</body>
</html>
"""


def index(title: str, lists) -> str:
    """A page of links: `lists` has a heading and the names with what each is about."""
    parts = [f"<h1>{html.escape(title)}</h1>"]
    for heading, entries in lists:
        parts += [f"<h2>{html.escape(heading)}</h2>", _links(Links(entries))]
    return frame(title, "\n".join(parts))


def _definitions(block):
    entries = "\n".join(f"<dt>{_marked(term)}</dt>\n<dd>{_marked(text)}</dd>"
                        for term, text in block.entries)
    return f"<dl>\n{entries}\n</dl>"


def _links(block):
    entries = "\n".join(f"<li>{_link(name)}{': ' + _marked(text) if text else ''}</li>"
                        for name, text in block.entries)
    return f"<ul>\n{entries}\n</ul>"


_WRITERS = {Paragraph: lambda block: f"<p>{_marked(block.text)}</p>",
            Definitions: _definitions,
            Code: lambda block: f"<pre>{html.escape(block.text)}</pre>",
            Links: _links}


def _link(name):
    return f'<a href="{name}.html">{html.escape(re.sub("[.]html$", "", name))}</a>'


def _marked(text):
    written = {"plain": html.escape, "code": lambda code: f"<code>{html.escape(code)}</code>",
               "function": _link}
    return "".join(written[kind](piece) for kind, piece in spans(text))
