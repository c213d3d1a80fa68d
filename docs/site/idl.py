"""What the interface definitions declare: classes, their members and events, enumerations, each with its help string."""

import dataclasses
import re

TYPES = {"BSTR": "String", "long": "Long", "short": "Integer", "VARIANT_BOOL": "Boolean", "VARIANT": "Variant",
         "OLE_COLOR": "OLE_COLOR", "IFontDisp": "StdFont", "IPictureDisp": "StdPicture", "IUnknown": "Unknown",
         "double": "Double", "float": "Single", "unsigned char": "Byte", "IDispatch": "Object"}


@dataclasses.dataclass
class Member:
    name: str
    kind: str  # method, property or event
    helps: list  # help strings: one, or another for writing
    parameters: list  # (name, type, by_reference, optional)
    result: str
    access: set  # of a property: get, put, putref
    hidden: bool
    number: str
    context: str  # its number in the help page

    @property
    def help(self):
        return "; when written: ".join(self.helps)


@dataclasses.dataclass
class Interface:
    name: str
    help: str
    identifier: str
    context: str
    members: dict


@dataclasses.dataclass
class Class:
    name: str
    help: str
    identifier: str
    context: str
    interface: Interface
    events: Interface | None
    control: bool


@dataclasses.dataclass
class Enumeration:
    name: str
    help: str
    context: str
    values: list  # (name, number, help)


def split(text, separator=","):
    """At separators outside of brackets and strings."""
    parts, depth, quoted, start = [], 0, False, 0
    for i, character in enumerate(text):
        if character == '"':
            quoted = not quoted
        elif not quoted:
            depth += (character in "([{") - (character in ")]}")
            if character == separator and depth == 0:
                parts.append(text[start:i].strip())
                start = i + 1
    return [part for part in parts + [text[start:].strip()] if part]


def closing(text, start):
    """Where the bracket at `start` is closed."""
    depth, quoted = 0, False
    for i in range(start, len(text)):
        if text[i] == '"':
            quoted = not quoted
        elif not quoted:
            depth += (text[i] in "([{") - (text[i] in ")]}")
            if depth == 0:
                return i
    raise ValueError("a bracket is not closed: " + text[start:start + 60])


def attributes(text):
    found = {}
    for part in split(text):
        name, _, value = part.partition("(")
        found[name.strip()] = value[:-1].strip().strip('"') if value else ""
    return found


class Library:
    def __init__(self, folder):
        self.interfaces, self.classes, self.enumerations = {}, [], []
        for path in sorted(folder.glob("*.idl")):
            if path.name not in ("oaidl.idl", "ocidl.idl", "stdole2.idl"):
                self.read(re.sub(r"//[^\n]*|/\*.*?\*/", "", path.read_text(encoding="utf-8"), flags=re.S))
        enumerated = {enumeration.name for enumeration in self.enumerations}
        self.types = TYPES | {name: name for name in enumerated}

    def read(self, text):
        text = re.sub(r"^\s*(?:import|importlib|#include)\b.*$", "", text, flags=re.M)
        heads = r"\b(?:(interface|dispinterface|coclass)\s+(\w+)\s*(?::\s*\w+\s*)?|typedef\s+(\[[^{]*\]\s*)?enum\s*(\w*)\s*)\{"
        for match in re.finditer(heads, text):
            end = closing(text, match.end() - 1)
            body = text[match.end():end]
            if not match[1]:
                self.enumeration(attributes((match[3] or "[]").strip()[1:-1]), re.match(r"\s*(\w+)", text[end + 1:])[1], body)
                continue
            start = text.rfind("]", 0, match.start())
            opening = start
            while closing(text, opening) != start:
                opening = text.rfind("[", 0, opening)
            self.block(match[1], match[2], attributes(text[opening + 1:start]), body)

    def enumeration(self, about, name, body):
        values, next_number = [], 0
        for part in split(body):
            described = re.match(r"\[(.*)\]\s*(.*)", part, re.S)
            help_text = attributes(described[1]).get("helpstring", "") if described else ""
            value, _, number = (described[2] if described else part).partition("=")
            number = int(number.strip(), 0) if number.strip() else next_number
            values.append((value.strip(), number, help_text))
            next_number = number + 1
        self.enumerations.append(Enumeration(name, about.get("helpstring", ""), about.get("helpcontext", ""), values))

    def block(self, what, name, about, body):
        if what == "coclass":
            events = re.search(r"source\]\s*dispinterface\s+(\w+)", body)
            default = re.search(r"\[default\]\s*interface\s+(\w+)", body)
            if not default or default[1] not in self.interfaces:
                return  # of a system's interface only
            self.classes.append(Class(name, about["helpstring"], about["uuid"], about.get("helpcontext", ""),
                                      self.interfaces[default[1]], self.interfaces[events[1]] if events else None,
                                      "control" in about))
            return
        interface = Interface(name, about.get("helpstring", ""), about.get("uuid", ""), about.get("helpcontext", ""), {})
        self.interfaces[name] = interface
        body = re.sub(r"\b(?:properties|methods)\s*:", "", body)
        position = 0
        while (position := body.find("[", position)) >= 0:
            end = closing(body, position)
            declared = re.match(r"\s*(\w+)\s+(\w+)\s*\(", body[end + 1:])
            opening = end + declared.end()
            last = closing(body, opening)
            self.member(interface, attributes(body[position + 1:end]), declared[2], body[opening + 1:last],
                        what == "dispinterface")
            position = last

    def member(self, interface, about, name, parameters, event):
        helps = [about["helpstring"]] if about.get("helpstring") else []
        access = {kind for kind in ("get", "put", "putref") if "prop" + kind in about}
        given, result = [], ""
        for part in split(parameters):
            end = closing(part, 0)
            flags, (kind, parameter) = attributes(part[1:end]), re.match(r"(.*?)\**(\w+)$", part[end + 1:].strip(), re.S).groups()
            if "retval" in flags:
                result = kind.strip()
            else:
                given.append((parameter, kind.strip(), "out" in flags, "optional" in flags or "defaultvalue" in flags))
        if access - {"get"}:
            result = given.pop()[1]
        present = interface.members.get(name)
        if present and access:
            present.access |= access
            present.helps += [said for said in helps if said not in present.helps]
            return
        kind = "event" if event else "property" if access else "method"
        interface.members[name] = Member(name, kind, helps, given, result, access,
                                         bool({"hidden", "restricted"} & about.keys()), about.get("id", ""),
                                         about.get("helpcontext", ""))

    def type_name(self, kind):
        array = re.match(r"SAFEARRAY\((.*)\)", kind)
        if array:
            return self.type_name(array[1]) + "()"
        kind = kind.rstrip("* ").strip()
        return self.types.get(kind, kind[1:] if kind.startswith("I") else kind)

    def signature(self, member):
        """As object browsers show it."""
        given = ", ".join(("Optional " if optional else "") + ("ByRef " if by_reference else "ByVal ") + name + " As " +
                          self.type_name(kind) for name, kind, by_reference, optional in member.parameters)
        result = f" As {self.type_name(member.result)}" if member.result else ""
        if member.kind == "property":
            given = f"({given})" if given else ""
            rights = "" if len(member.access) > 1 else "   ' read only" if "get" in member.access else "   ' write only"
            return f"Property {member.name}{given}{result}{rights}"
        word = "Event" if member.kind == "event" else "Function" if result else "Sub"
        return f"{word} {member.name}({given}){result}"
