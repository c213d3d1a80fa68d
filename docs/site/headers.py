"""What the public headers say of a class and its members."""

import re


def paragraphs(lines, width):
    """The text, with an empty line where the writer has begun a new line though the next word would have fitted."""
    text = ""
    for line, following in zip(lines, lines[1:] + [""]):
        begun = line.endswith(".") and following and len(line) + 1 + len(following.split(" ")[0]) <= width
        text += line + ("\n\n" if begun else "\n")
    return text.strip("\n")


class Header:
    """The class of that name: `about` is the file's comment, `own` the class's, `members` maps a name to its declarations
    and what is said of them."""

    def __init__(self, path, name):
        self.path, self.name, self.members = path, name, {}
        lines = path.read_text(encoding="utf-8").splitlines()
        top = []
        for line in lines:
            if not line.startswith("//"):
                break
            top.append(line[2:].removeprefix(" "))
        start = next(i for i, line in enumerate(lines) if re.match(rf"class {name}\b.*\{{", line))
        first = start
        while lines[first - 1].startswith("///"):
            first -= 1
        self.about = paragraphs(top, 117)
        self.own = paragraphs([line[3:].removeprefix(" ") for line in lines[first:start]], 116)
        self.read(lines[start + 1:])

    def read(self, lines):
        said, declaration, public, closed = [], "", False, False
        for line in lines:
            text = line.strip()
            if line.startswith("};"):
                break
            if re.match(r"(public|private|protected):", text):
                public = text.startswith("public")
                continue
            if not public:
                continue
            if text.startswith("///"):
                said = ([] if closed else said) + [text[3:].removeprefix(" ")]
                closed = False
                continue
            if not text and not declaration:
                said = []
                continue
            code, _, behind = text.partition("///< ")
            declaration = f"{declaration} {code.strip()}".strip()
            if any(declaration.count(opened) > declaration.count(closed_by) for opened, closed_by in ("()", "{}")):
                continue
            if not re.search(r"[;}]$", declaration):
                continue
            self.take(declaration, paragraphs(said, 114) or behind)
            declaration, closed = "", True

    def take(self, declaration, said):
        shown = re.sub(r"(?<=[^=(,])\s+\{.*\}$", ";", declaration)  # the body
        shown = re.sub(r"\s*(= default)?;$", ";", shown)
        event = re.match(r"Event<.*> (\w+);", shown)
        name = event[1] if event else (re.match(r"[^(]*?(\w+)\(", shown) or [None, None])[1]
        if not name or shown.startswith(("template", "using", "enum")) or shown.endswith(" override;"):
            return
        declarations, text = self.members.setdefault(name, ([], []))
        declarations.append(shown)
        if said and said not in text:
            text.append(said)
