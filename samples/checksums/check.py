#!/usr/bin/env python3
"""Checks the table of checksums.vbs, read from standard input, against zlib and binascii. Usage: check.py file..."""

import binascii
import os
import re
import sys
import zlib


def crc32_of(path):
    value = 0
    with open(path, "rb") as file:
        while block := file.read(1 << 24):
            value = zlib.crc32(block, value)
    return f"{value:08X}"


def main(paths):
    output = sys.stdin.read()
    wrong = []
    for label, expected in (("CRC-32 of", f"{zlib.crc32(b'123456789'):08X}"),
                            ("CRC-16 of", f"{binascii.crc_hqx(b'123456789', 0):04X}"),
                            ("CRC-32 in", f"{zlib.crc32(b'123456789'):08X}")):
        found = re.search(rf"^{label}.*: +([0-9A-F]+)\s*$", output, re.M)
        if not found or found.group(1) != expected:
            wrong.append(label)
    for path in paths:
        name = os.path.basename(path)
        row = re.search(rf"^{re.escape(name)} +(\d+) +(\S+) ", output, re.M)
        if not row or int(row.group(1)) != os.path.getsize(path) or row.group(2) != crc32_of(path):
            wrong.append(name)
    if wrong:
        sys.exit("checksums: zlib does not agree on " + ", ".join(wrong))
    print(f"checksums: zlib and binascii agree on all {len(paths) + 3} figures")


main(sys.argv[1:])
