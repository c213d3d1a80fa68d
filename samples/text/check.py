#!/usr/bin/env python3
"""Deciphers what text.vbs saved, by other means. Usage: check.py text-file enciphered-file web-file key"""

import base64
import itertools
import sys


def xor(data, key):
    return bytes(a ^ b for a, b in zip(data, itertools.cycle(key)))


def characters(data):
    """Windows-1252 as Windows has it: five codes that Python leaves out are control characters."""
    return "".join(bytes([b]).decode("cp1252", "ignore") or chr(b) for b in data)


def main(original, enciphered, web, key):
    original, enciphered, web = (open(name, "rb").read() for name in (original, enciphered, web))
    stored = xor(bytes.fromhex(enciphered.decode("ascii")), key.encode("utf-16-le"))
    if stored.decode("utf-16-le") != characters(original):
        sys.exit("text: the enciphered file holds something else")
    if xor(base64.b64decode(web.removesuffix(b"\r\n"), validate=True), key.encode("cp1252")) != original:
        sys.exit("text: the web form holds something else")
    print("text: an independent program deciphers both files to the same text")


main(*sys.argv[1:])
