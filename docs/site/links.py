#!/usr/bin/env python3
"""Sees that every link and picture of the pages leads to a file that is there, and every fragment to a place in it. What
leads out of the folder is left to readers. Usage: links.py folder"""

import html.parser
import pathlib
import sys
import urllib.parse


class Page(html.parser.HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.places, self.links = {"", "top"}, []
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if name == "id":
                self.places.add(value)
            elif name in ("href", "src") and value is not None:
                self.links.append(value)


root = pathlib.Path(sys.argv[1]).resolve()
pages = {path: Page(path) for path in root.rglob("*.html")}
broken = checked = 0
for path, page in pages.items():
    for link in page.links:
        parts = urllib.parse.urlsplit(link)
        if parts.scheme or parts.netloc:
            continue
        checked += 1
        target = (path.parent / urllib.parse.unquote(parts.path)).resolve() if parts.path else path
        place = urllib.parse.unquote(parts.fragment)
        if not target.is_file() or (target in pages and place not in pages[target].places):
            broken += 1
            print(f"links: {path.relative_to(root)} leads to {link}, which is not there", file=sys.stderr)
if broken or not checked:
    sys.exit(f"links: {broken} of {checked} are broken")
print(f"links: {checked} in {len(pages)} pages lead somewhere")
