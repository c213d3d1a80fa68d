#!/usr/bin/env python3
"""Checks the table of checksums.vbs, read from standard input, against zlib and binascii.
Usage: check.py calculate-file file...    calculate-file: "yes" where CalculateFile computes, "no" where it does not"""

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


def main(calculates, *paths):
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
        row = re.search(rf"^{re.escape(name)} +(\d+) +(\S+) +\S+  (.+)$", output, re.M)
        crc = crc32_of(path)
        expected = (str(os.path.getsize(path)), crc, crc if calculates == "yes" else "(none here)")
        if not row or row.groups() != expected:
            wrong.append(name)
    if wrong:
        sys.exit("checksums: zlib does not agree on " + ", ".join(wrong))
    print(f"checksums: zlib and binascii agree on all {len(paths) + 3} figures")


main(*sys.argv[1:])
