#!/usr/bin/env python3
"""Takes the snippets out of the pages, so that each is compiled, run or read by a machine as it stands there; and sees that
links lead somewhere.

A fence says after its language what is done with it; a fence that does not is an error, but for plain text:

  cpp build, cpp windows       compiled everywhere, or for Windows only
  vbscript run, javascript run run by the script host; "continue" appends to the script of the fence before
  vba run                      the same, with the types of its declarations taken out; "vba read" is only parsed
  text output                  what the script or program before it must have printed
  cpp run                      a whole program that is run too
  cmake configure, cmake build a project is configured with it, or built and run too
  sh read, xml read, python read   parsed
  ... from FILE                a piece of that sample, which is built and run: line for line, but for the indentation
  ... untried                  not tried at all; the page has to say "not tried"

What is from no file and not run is at least compared with the type library: classes, and members of variables that hold an
object of a class.

In a comment before a fence, "setup" is code that goes before it, and "answer CAPTION = NAME" what a user would type into
the dialog of that caption.

Usage: snippets.py folder page...    writes the snippets and the list of them, snippets.cmake, into the folder
"""

import pathlib
import re
import subprocess
import sys
import xml.dom.minidom

FENCE = re.compile(r"(?P<comments>(?:<!--(?:(?!-->).)*-->\s*)*)^```(?P<info>[^\n]*)\n(?P<code>.*?)^```$", re.M | re.S)
COMMENT = re.compile(r"<!--\s*(setup|answer)\s(.*?)-->", re.S)
KINDS = {"cpp": {"build", "windows", "run"}, "vbscript": {"run", "continue"}, "javascript": {"run", "continue"},
         "vba": {"run", "continue", "read"}, "cmake": {"configure", "build"}, "sh": {"read"}, "xml": {"read"}, "python": {"read"},
         "text": {"", "output"}, "ini": {""}}


class Library:
    """The classes of the type library, each with its members and events, and the names of its enumerations."""

    def __init__(self, folder):
        text = "".join(file.read_text(encoding="utf-8") for file in sorted(folder.glob("*.idl")))
        kinds = {name: set(re.findall(r"(?:HRESULT|void) (\w+)\(", body))
                 for name, body in re.findall(r"interface (\w+)(?: : \w+)? \{\n(.*?)\n\s*\}", text, re.S)}
        self.classes = {}
        for name, body in re.findall(r"coclass (\w+) \{(.*?)\}", text, re.S):
            self.classes[name] = set().union(*(kinds[kind] for kind in re.findall(r"interface (\w+)", body)))
        self.enumerations = set(re.findall(r"\} (\w+);", text))

    def unknown(self, code):
        """The first name in the code that the library does not have, if there is one."""
        code = re.sub(r"Tornby\.(?:Components|dll)|Interop\.Tornby", "", code)
        for name in re.findall(r"\bTornby\.(\w+)", code):
            if name not in self.classes and name not in self.enumerations:
                return name
        held = re.findall(r"(\w+)(?:\s*:?=|(?= As New))[^\n=]*?\b(" + "|".join(self.classes) + r")\b", code)
        for variable, kind in held:
            for member in re.findall(rf"(?<![\w.]){variable}\.(\w+)", code):
                if member not in self.classes[kind]:
                    return f"{kind}.{member}"
        return None


class Page:
    def __init__(self, path, root, folder):
        self.path, self.root, self.folder = path, root, folder
        self.text = path.read_text(encoding="utf-8")
        self.written = []  # (kind, file)
        self.script = None
        self.library = Library(root / "automation/idl")

    def fail(self, line, what):
        sys.exit(f"{self.path.name}:{line}: {what}")

    def write(self, kind, line, suffix, text):
        name = re.sub(r"\W", "_", str(self.path.relative_to(self.root).with_suffix(""))) + f"_{line}{suffix}"
        (self.folder / name).write_text(text, encoding="utf-8")
        if kind:
            self.written.append((kind, name))
        return name

    def take(self):
        end = 0
        for match in FENCE.finditer(self.text):
            if "```" in re.sub(r"`[^`\n]+`", "", self.text[end:match.start()]):
                self.fail(self.text.count("\n", 0, match.start()), "a fence is not closed")
            end = match.end()
            line = self.text.count("\n", 0, match.start("code")) + 1
            language, _, what = match["info"].partition(" ")
            comments = COMMENT.findall(match["comments"])
            setup = "".join(text.strip("\n") + "\n" for kind, text in comments if kind == "setup")
            answers = "".join(text.strip() + "\n" for kind, text in comments if kind == "answer")
            if what.startswith("from "):
                self.find(line, match["code"], self.root / what.removeprefix("from "))
                continue
            if what in ("untried", "read") and (name := self.library.unknown(match["code"])):
                self.fail(line, f"the type library has no {name}")
            if what == "untried":
                if "not tried" not in self.text.lower():
                    self.fail(line, "the page does not say that this is not tried")
                continue
            if what not in KINDS.get(language, ()):
                self.fail(line, f'nothing says what to do with "{match["info"]}"')
            self.one(language, what, line, match["code"], setup, answers)

        for link in re.findall(r"\]\((?!https?:|#)([^)#]+)", re.sub(FENCE, "", self.text)):
            if not (self.path.parent / link).exists():
                self.fail(self.text.count("\n", 0, self.text.index(link)) + 1, f"a link leads nowhere: {link}")

    def find(self, line, code, sample):
        def lines(text):
            return "".join(f"\n{part.strip()}" for part in text.splitlines()) + "\n"

        if not sample.is_file() or lines(code) not in lines(sample.read_text(encoding="utf-8")):
            self.fail(line, f"this is not in {sample.relative_to(self.root)}")

    def one(self, language, what, line, code, setup, answers):
        if language == "cpp":
            self.program = self.write("cpp_" + what, line, ".cpp", self.unit(code, setup, line))
        elif language in ("vbscript", "javascript", "vba"):
            if language == "vba":
                code, setup = (re.sub(r" As (?:New )?[\w.]+", "", part) for part in (code, setup))
                code = code.replace("Debug.Print", "WScript.Echo").replace("Private WithEvents ", "Private ")
            if what == "read":  # event handlers and other procedures, that only a form would call
                code, what = code.replace("Private Sub", "Sub"), "run"
            if what == "run":
                self.script = [language, line, ""]
            if not self.script or self.script[0] != language:
                self.fail(line, "there is nothing to continue")
            self.script[2] += setup + code
            suffix = ".js" if language == "javascript" else ".vbs"
            end = 'WScript.Echo("passed");' if suffix == ".js" else 'WScript.Echo "passed"'
            self.program = self.write(None if what == "continue" else "script", self.script[1], suffix,
                                      self.script[2] + end + "\n")
            if answers:
                (self.folder / (self.program + ".answers")).write_text(answers)
        elif (language, what) == ("text", "output"):
            (self.folder / (self.program + ".output")).write_text(code)
        elif language == "cmake":
            self.write("cmake_" + what, line, ".cmake", code)
        elif language == "sh":
            self.read_shell(line, code)
        elif language == "xml":
            xml.dom.minidom.parseString(re.sub(r"^(<\?.*?\?>)?", r"\1<page>", code, count=1) + "</page>")
        elif language == "python":
            compile(code, self.path.name, "exec")

    def unit(self, code, setup, line):
        """A translation unit: inclusions, what is set up, and the rest in a function, unless it is a program."""
        outside = r'^(?:#include|extern "C") .*$'  # cannot stand in a function
        included = "\n".join(re.findall(outside, setup + code, re.M)) + "\n"
        bare = re.sub(outside, "", code, flags=re.M)
        setup = re.sub(outside, "", setup, flags=re.M)
        placed = f'#line {line} "{self.path.name}"\n'
        if re.search(r"\b(main|WinMain)\(", code):
            return included + setup + placed + bare
        return f"{included}{setup}void snippet_{line}();\nvoid snippet_{line}() {{\n{placed}{bare}}}\n"

    def read_shell(self, line, code):
        checked = subprocess.run(["bash", "-n"], input=code, text=True, capture_output=True)
        if checked.returncode != 0:
            self.fail(line, checked.stderr)
        presets = (self.root / "CMakePresets.json").read_text()
        for preset in re.findall(r"--preset[ =](\S+)", code):
            if f'"{preset}"' not in presets:
                self.fail(line, f"there is no preset {preset}")
        for tool in re.findall(r"^(?:sudo )?((?:tools|\.ci)/\S+)", code, re.M):
            if not (self.root / tool).is_file():
                self.fail(line, f"there is no {tool}")


def main(folder, *pages):
    folder = pathlib.Path(folder)
    folder.mkdir(parents=True, exist_ok=True)
    for old in folder.iterdir():
        if old.is_file():
            old.unlink()
    root = pathlib.Path(__file__).resolve().parents[2]
    lists = {}
    for page in (Page(pathlib.Path(name).resolve(), root, folder) for name in pages):
        page.take()
        for kind, name in page.written:
            lists.setdefault(kind, []).append(name)
    if len(lists.get("script", ())) < 5 or len(lists.get("cpp_build", ())) < 3:
        sys.exit("snippets: the pages have lost their snippets, or these are not found any more")
    text = "".join(f"set(snippets_{kind} {' '.join(names)})\n" for kind, names in lists.items())
    (folder / "snippets.cmake").write_text(text)


main(*sys.argv[1:])
