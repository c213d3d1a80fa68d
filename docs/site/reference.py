#!/usr/bin/env python3
"""Writes the reference: a page for each class, out of the interface definitions, whose help strings are those of the type
library, and the public headers, which say the rest. Of what the headers lack the help string says all; a member without one
is an error.

Usage: reference.py folder    writes the pages into folder/reference, and links the other pages there with them: what stands
                              between marks there and is the name of a class, or of a member of one class only
       reference.py --list    prints what the type library must hold: interface, member or value, help string
"""

import pathlib
import re
import sys

from headers import Header
from idl import Library, split

ROOT = pathlib.Path(__file__).resolve().parents[2]
GROUPS = {"Checksums and text": ["clsCRC", "clsApi", "clsEncryptXOR", "clsWebEncryption"],
          "Settings and values": ["XML_Settings", "ValueCollection", "PropertyClass", "PathClass"],
          "Dialogs": ["clsDIALOGS"],
          "Controls": ["kelLabel", "kelHyperLabel", "kelBrowseButton"]}
FOLDERS = ("checksums", "settings", "dialogs", "controls")
HEADER_OF = {"PropertyClass": "ValueCollection"}
PAGES = {"clsCRC": "checksums", "clsApi": "text", "clsEncryptXOR": "text", "clsWebEncryption": "text",
         "XML_Settings": "settings", "ValueCollection": "settings", "PropertyClass": "settings", "PathClass": "folders",
         "clsDIALOGS": "dialogs", "kelLabel": "controls", "kelHyperLabel": "controls", "kelBrowseButton": "controls"}
ONLY_AUTOMATION = {"LastDllError"}  # of the control objects, not of the classes
PICTURES = {"strGetOpenFileName": "open", "strGetSaveFileName": "save", "fstrBrowseForFolder": "folder",
            "blnChooseFont": "font", "blnPageSetup": "page", "blnPrintDialog": "print", "flngShowAbout": "about",
            "blnShowErrorMessages": "error"}


def anchor(name):
    return name.lower()


def escape(text):
    """Of plain text, what would be a sign of its form elsewhere."""
    parts = re.split(r"(`[^`]*`)", text)
    return "".join(part if part.startswith("`") else re.sub(r"([\\*_<>\[\]|$])", r"\\\1", part) for part in parts)


def header_of(name):
    header = HEADER_OF.get(name, name)
    path = next((path for path in (ROOT / folder / f"{header}.h" for folder in FOLDERS) if path.exists()), None)
    return Header(path, name) if path else None


def parameter_count(declaration):
    """Of a function or an event."""
    opened, closed = "<>" if declaration.startswith("Event<") else "()"
    given = declaration[declaration.index(opened) + 1:declaration.rindex(closed)]
    return len(split(re.sub(r"<[^<>]*>", "", given)))


class Prose:
    """A header's comment as a page shows it."""

    def __init__(self, names):
        self.names = names  # what can be linked to, on the same page

    def linked(self, text):
        def link(match):
            name = match[1] or match[2]
            if name in self.names:
                return f"[`{name}`](#{anchor(name)})"
            return f"`{name}`" if match[1] else match[0]
        obvious = r"`([^`]+)`|\b([a-z]+[A-Z]\w*|[A-Z]\w*[a-z][A-Z]\w*)\b"  # in marks, or a capital inside
        return re.sub(obvious, link, escape(text))

    def table(self, lines):
        rows = []
        for line in lines:
            cells = [cell for cell in re.split(r"(?<!\\)\|", line.strip())[1:-1]]
            if rows and cells[0].startswith("   "):  # the cell above goes on
                rows[-1] = [f"{above} {cell.strip()}".strip() for above, cell in zip(rows[-1], cells)]
            else:
                rows.append([cell.strip() for cell in cells])
        return "\n".join("| " + " | ".join(cell if set(cell) <= set("-:") and cell else self.linked(cell) for cell in row) + " |"
                         for row in rows)

    def format(self, text):
        shown = []
        for block in re.split(r"\n\s*\n", text):
            lines = block.split("\n")
            while lines:
                if lines[0].startswith("|"):
                    count = next((i for i, line in enumerate(lines) if not line.startswith("|")), len(lines))
                    shown.append(self.table(lines[:count]))
                elif lines[0].startswith("  "):
                    count = next((i for i, line in enumerate(lines) if not line.startswith("  ")), len(lines))
                    shown.append("```text\n" + "\n".join(line[2:] for line in lines[:count]) + "\n```")
                else:
                    count = next((i for i, line in enumerate(lines) if line.startswith(("|", "  "))), len(lines))
                    shown.append(self.linked("\n".join(lines[:count])))
                lines = lines[count:]
        return "\n\n".join(shown)


class Reference:
    def __init__(self):
        self.library = Library(ROOT / "automation" / "idl")
        self.classes = {described.name: described for described in self.library.classes}
        listed = {name for names in GROUPS.values() for name in names}
        if listed - self.classes.keys():
            sys.exit(f"reference: the type library has no {listed - self.classes.keys()}")
        rest = [name for name in self.classes if name not in listed]
        self.groups = GROUPS | ({"More classes": rest} if rest else {})

    def list(self):
        for interface in self.library.interfaces.values():
            for member in interface.members.values():
                yield f"{interface.name} {member.name} {member.helps[0]}"  # browsers are told the first of two
        for enumeration in self.library.enumerations:
            for name, number, said in enumeration.values:
                yield f"{enumeration.name} {name} {number}"

    def members_table(self, members):
        rows = "".join(f"| [{escape(member.name)}](#{anchor(member.name)}) | {escape(member.help)} |\n" for member in members)
        return "| Name | In short |\n|---|---|\n" + rows

    def member(self, described, header, member, prose):
        lines = [f"### {escape(member.name)}", ""]
        lines += ["```vb", self.library.signature(member), "```", ""]
        said = ""
        if header and member.name in header.members:
            declarations, texts = header.members[member.name]
            lines += ["```cpp", *declarations, "```", ""]
            said = prose.format("\n\n".join(texts))
        lines += [said or escape(member.help) + "."]
        lines += ["", *(f"Values: [{name}](others.md#{anchor(name)})." for name in self.values_of(described, member))]
        if member.hidden:
            lines += ["", "Object browsers hide this member."]
        if member.name in PICTURES:
            lines += ["", f"![The dialog](../images/dialogs-{PICTURES[member.name]}.png)", "", "*Under Wine.*"]
        return "\n".join(lines) + "\n"

    def disagreements(self, name, header, members):
        """Where interface and header of a class contradict each other."""
        published = {name for name in header.members if name not in (header.name, "operator") and name != name.lower()}
        for member in sorted(published - {member.name for member in members}):
            yield f"{name}.{member} is in the header, not in the interface"
        for member in members:
            if member.name not in header.members:
                if member.name not in ONLY_AUTOMATION:
                    yield f"{name}.{member.name} is in the interface, not in the header"
                continue
            declarations, texts = header.members[member.name]
            given = len(member.parameters)
            wanted = {given + (way != "get") for way in member.access} if member.access else {given}
            declared = {parameter_count(declaration) for declaration in declarations}
            if not wanted <= declared:
                yield f"{name}.{member.name} takes other parameters in the header: {declarations}"
            for parameter, *_ in member.parameters if member.kind != "event" else ():
                words = re.sub(r"(?<!^)(?=[A-Z])", "_", parameter).lower()
                if not any(re.search(rf"\b{words}\b", declaration, re.I) for declaration in declarations):
                    yield f"{name}.{member.name}: the header calls {parameter} by another name"
            said = " ".join([*texts, header.own, header.about])
            for number in re.findall(r"(?<!\w)-?\d+\b", member.help):
                if not re.search(rf"(?<!\w){number}\b", said):
                    yield f"{name}.{member.name}: the header does not say {number}, as the help string does: {member.help}"

    def check(self):
        found = [f"{interface.name}.{member.name} has no help string" for interface in self.library.interfaces.values()
                 for member in interface.members.values() if not member.help]
        for name, described in self.classes.items():
            header = header_of(name)
            if header:
                events = described.events.members if described.events else {}
                found += self.disagreements(name, header, [*described.interface.members.values(), *events.values()])
            elif name in PAGES:
                found.append(f"{name} has no header")
        if found:
            sys.exit("\n".join(f"reference: {fault}" for fault in found))

    def values_of(self, described, member):
        """The enumerations whose help string begins with that member."""
        return [each.name for each in self.library.enumerations
                if re.match(rf"{getattr(described, 'name', '')}\.{member.name}\b", each.help)]

    def page(self, name):
        described = self.classes[name]
        header = header_of(name)
        members = list(described.interface.members.values())
        events = list(described.events.members.values()) if described.events else []
        prose = Prose({member.name for member in members + events})
        text = [f"# {escape(name)}", ""]
        if (ROOT / "docs" / "images" / f"{name}.png").exists():
            text += [f"![{name}](../images/{name}.png)", "", "*In each of its looks, as Wine draws it.*", ""]
        said = ""
        if header:
            said = (header.about + "\n\n" if name not in HEADER_OF else "") + header.own
        text += [prose.format(said.strip()) or escape(described.help) + ".", ""]
        if name in PAGES:
            text += [f"With examples: [{PAGES[name]}](../{PAGES[name]}.md).", ""]
        for kind, title in (("property", "Properties"), ("method", "Methods")):
            chosen = [member for member in members if member.kind == kind]
            if chosen:
                text += [f"## {title}", "", self.members_table(chosen)]
                text += [self.member(described, header, member, prose) for member in chosen]
        if events:
            text += ["## Events", "", self.members_table(events)]
            text += [self.member(described, header, event, prose) for event in events]
        text += ["## Identifiers", "", "| Of | Identifier |", "|---|---|", f"| Name for scripts | `Tornby.{name}` |",
                 f"| Class | `{{{described.identifier}}}` |", f"| Interface `{described.interface.name}` | `{{{described.interface.identifier}}}` |"]
        if described.events:
            text += [f"| Events `{described.events.name}` | `{{{described.events.identifier}}}` |"]
        text += [f"| Header | `<tornby/{header.path.relative_to(ROOT)}>` |"] if header else []
        text += [""]
        return "\n".join(text)

    def others(self):
        """Interfaces of objects that only members give, and the enumerations."""
        owned = {each.interface.name for each in self.library.classes} | {
            each.events.name for each in self.library.classes if each.events}
        text = ["# Other objects and enumerations", ""]
        for interface in self.library.interfaces.values():
            if interface.name in owned:
                continue
            text += [f"## {escape(interface.name.removeprefix('I'))}", "", f"{escape(interface.help)}.", "",
                     f"Interface `{interface.name}`, `{{{interface.identifier}}}`. Members give such objects; none can be created.", ""]
            prose = Prose(set())
            text += [self.member(interface, None, member, prose) for member in interface.members.values()]
        for enumeration in self.library.enumerations:
            text += [f"## {escape(enumeration.name)}", "", f"{escape(enumeration.help)}.", ""]
            explained = any(said for _, _, said in enumeration.values)
            text += ["| Name | Value | Meaning |", "|---|---:|---|"] if explained else ["| Name | Value |", "|---|---:|"]
            text += [f"| `{name}` | {number} |" + (f" {escape(said)} |" if explained else "")
                     for name, number, said in enumeration.values] + [""]
        return "\n".join(text)

    def index(self):
        text = ["# Reference", "", "Every class and member. The first line of each entry is the signature as automation clients see it, the "
                "second the C++ declaration.", ""]
        for group, names in self.groups.items():
            text += [f"## {group}", "", "| Class | In short |", "|---|---|"]
            text += [f"| [{escape(name)}]({name}.md) | {escape(self.classes[name].help)} |" for name in names] + [""]
        text += ["## Others", "", "[StringCollection and the enumerations](others.md).", "", "```{toctree}", ":hidden:", ""]
        text += [name for names in self.groups.values() for name in names] + ["others", "```", ""]
        return "\n".join(text)

    def targets(self):
        """Where a name leads to. Of a name that several classes have, nobody can tell which is meant."""
        owners = {}
        for name, described in self.classes.items():
            for interface in (described.interface, described.events):
                for member in interface.members if interface else ():
                    owners.setdefault(member, set()).add(name)
        found = {member: f"{names.pop()}.md#{anchor(member)}" for member, names in owners.items() if len(names) == 1}
        return found | {name: f"{name}.md" for name in self.classes}

    def link(self, page, way, targets):
        """In running text and tables; not in headings, fences, comments and links."""
        kept = r"(^```.*?^```$|<!--.*?-->|^#.*?$|!?\[[^\]]*\]\([^)]*\))"
        parts = re.split(kept, page.read_text(encoding="utf-8"), flags=re.M | re.S)
        for i in range(0, len(parts), 2):
            parts[i] = re.sub(r"`(\w+)`", lambda match: f"[{match[0]}]({way}{targets[match[1]]})" if match[1] in targets
                              else match[0], parts[i])
        page.write_text("".join(parts), encoding="utf-8")

    def write(self, pages):
        self.check()
        targets = self.targets()
        for page in pages.rglob("*.md"):
            self.link(page, "reference/" if page.parent == pages else "../reference/", targets)
        folder = pages / "reference"
        folder.mkdir(parents=True, exist_ok=True)
        for name in self.classes:
            (folder / f"{name}.md").write_text(self.page(name), encoding="utf-8")
        (folder / "others.md").write_text(self.others(), encoding="utf-8")
        (folder / "index.md").write_text(self.index(), encoding="utf-8")


if __name__ == "__main__":
    if sys.argv[1] == "--list":
        print("\n".join(sorted(Reference().list())))
    else:
        Reference().write(pathlib.Path(sys.argv[1]))
