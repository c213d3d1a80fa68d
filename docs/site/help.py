#!/usr/bin/env python3
"""Writes the help page that lies beside the DLL: the type library names it, and the numbers of its help contexts are the
anchors there. What it says comes from the interface definitions and the public headers, as in the reference.

Usage: help.py folder file    `folder` is that of the repository
"""

import html
import pathlib
import re
import sys

from headers import Header
from idl import Library
from reference import FOLDERS, HEADER_OF

PROPERTY_PAGE = 1400  # as automation/controls/pages has it
STYLE = """body { font: 15px/1.5 "Segoe UI", Tahoma, sans-serif; max-width: 50em; margin: 1em auto 100vh; padding: 0 1em; }
h2 { border-bottom: 1px solid #aaa; margin-top: 2.5em; } h3 { margin: 2em 0 0.3em; }
pre { background: #f2f4f7; padding: 0.4em 0.7em; margin: 0.4em 0; overflow-x: auto; }
table { border-collapse: collapse; } td, th { border: 1px solid #bbb; padding: 0.2em 0.6em; text-align: left; vertical-align: top; }
:target { background: #fff3c4; }"""


class Prose:
    """A header's comment as the page shows it: paragraphs, tables, and what is indented as it stands."""

    def __init__(self, anchors):
        self.anchors = anchors  # of the names that can be linked to

    def line(self, text):
        def word(match):
            name = match[1] or match[2]
            said = f"<code>{name}</code>" if match[1] else name
            return f'<a href="#{self.anchors[name]}">{said}</a>' if name in self.anchors else said
        return re.sub(r"`([^`]+)`|\b([a-z]+[A-Z]\w*|[A-Z]\w*[a-z][A-Z]\w*)\b", word, html.escape(text, quote=False))

    def table(self, lines):
        rows = []
        for line in lines:
            cells = re.split(r"(?<!\\)\|", line.strip())[1:-1]
            if all(cell and set(cell.strip()) <= set("-:") for cell in cells):
                continue
            if rows and cells[0].startswith("   "):  # the cell above goes on
                rows[-1] = [f"{above} {cell.strip()}".strip() for above, cell in zip(rows[-1], cells)]
            else:
                rows.append([cell.strip().replace("\\|", "|") for cell in cells])
        return "<table>\n" + "".join("<tr>" + "".join(f"<td>{self.line(cell)}</td>" for cell in row) + "</tr>\n"
                                     for row in rows) + "</table>"

    def format(self, text):
        kinds = (("|", self.table), ("  ", lambda lines: "<pre>" + html.escape("\n".join(line[2:] for line in lines)) + "</pre>"),
                 ("", lambda lines: "<p>" + self.line("\n".join(lines)) + "</p>"))
        shown, run, making = [], [], None
        for line in text.split("\n") + [""]:
            make = next(made for start, made in kinds if line.startswith(start)) if line.strip() else None
            if make is not making and run:
                shown.append(making(run))
                run = []
            making = make
            if make:
                run.append(line)
        return "\n".join(shown)


class Page:
    def __init__(self, root):
        self.root = root
        self.library = Library(root / "automation" / "idl")
        self.anchors = set()
        self.lines = []

    def anchor(self, what, owner):
        if not what.context.isdigit() or what.context in self.anchors:
            sys.exit(f"help: {owner} {what.name} has no help context of its own")
        self.anchors.add(what.context)
        return what.context

    def heading(self, level, what, owner=""):
        self.lines.append(f'<h{level} id="{self.anchor(what, owner)}">{html.escape(what.name)}</h{level}>')

    def header(self, name):
        paths = (self.root / folder / f"{HEADER_OF.get(name, name)}.h" for folder in FOLDERS)
        path = next((path for path in paths if path.exists()), None)
        return Header(path, name) if path else None

    def interface(self, interface, header, title):
        prose = Prose({member.name: member.context for member in interface.members.values()})
        self.lines.append(f'<p id="{self.anchor(interface, "interface")}">{title}: '
                          + ", ".join(f'<a href="#{member.context}">{member.name}</a>' for member in interface.members.values()) + ".</p>")
        for member in interface.members.values():
            self.heading(3, member, interface.name)
            self.lines.append(f"<pre>{html.escape(self.library.signature(member))}</pre>")
            said = "\n\n".join(header.members[member.name][1]) if header and member.name in header.members else ""
            self.lines.append(prose.format(said or member.help + "."))

    def describe(self, described):
        header = self.header(described.name)
        self.heading(2, described)
        self.lines.append(Prose({}).format((header.own if header else "") or described.help + "."))
        self.interface(described.interface, header, "Members")
        if described.events:
            self.interface(described.events, header, "Events")

    def enumeration(self, enumeration):
        self.heading(3, enumeration)
        self.lines.append(f"<p>{html.escape(enumeration.help)}.</p>\n<table>")
        self.lines += [f"<tr><td><code>{name}</code></td><td>{number}</td></tr>" for name, number, _ in enumeration.values]
        self.lines.append("</table>")

    def write(self, file):
        listed = sorted(self.library.classes, key=lambda described: int(described.context))
        for described in listed:
            self.describe(described)
        classed = {described.interface.name for described in listed} | {
            described.events.name for described in listed if described.events}
        for interface in self.library.interfaces.values():
            if interface.name not in classed:
                self.lines.append(f"<h2>{interface.name.removeprefix('I')}</h2>\n<p>{html.escape(interface.help)}.</p>")
                self.interface(interface, None, "Members")
        self.lines.append(f"""<h2 id="{PROPERTY_PAGE}">The property page of the controls</h2>
<p>Forms show it with the verb Properties. It has a field for each property of the control that is a text, a number or one of
several names, and a box for each that is True or False. A property that is not the same for all selected controls is shown
empty, its box grey, and stays as it is unless you change it. Below the fields stands what is to be said of the one with the
focus; F1 leads to its place on this page.</p>
<p>Apply writes what you have changed, all of it or, when a control refuses something, nothing. Revert puts the fields back to
what the controls had when the page was opened; Apply then writes that. Cancel leaves the controls as they are. Ctrl+Enter
begins a new line in a text.</p>""")
        self.lines.append("<h2>Enumerations</h2>")
        for enumeration in self.library.enumerations:
            self.enumeration(enumeration)
        contents = ", ".join(f'<a href="#{described.context}">{described.name}</a>' for described in listed)
        file.write_text(f"""<!DOCTYPE html>
<html lang="en">
<head><meta charset="utf-8"><title>Tornby help</title><style>
{STYLE}
</style></head>
<body>
<h1 id="1">Tornby component library</h1>
<p>{contents}.</p>
""" + "\n".join(self.lines) + "\n</body>\n</html>\n", encoding="utf-8")


if __name__ == "__main__":
    Page(pathlib.Path(sys.argv[1])).write(pathlib.Path(sys.argv[2]))
