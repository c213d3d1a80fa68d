#!/usr/bin/env python3
"""Prints benchmark results as tables of ratios.

Usage: report.py title file.json [title file.json]...

A benchmark is named group/who/size. Each group becomes a table: a row a size, a column a participant, each cell the
throughput (or the time, where a benchmark counts no bytes) and how many times as fast that is as the first column."""

import json
import sys


def load(path):
    groups = {}
    with open(path, encoding="utf-8") as file:
        for entry in json.load(file)["benchmarks"]:
            group, who, size = entry["name"].split("/")[:3]
            groups.setdefault(group, {}).setdefault(int(size), {})[who] = entry
    return groups


def size_text(size):
    for unit, name in ((1 << 20, "MiB"), (1 << 10, "KiB")):
        if size >= unit and size % unit == 0:
            return f"{size // unit} {name}"
    return str(size)


def cell(entry, baseline):
    if "bytes_per_second" in entry:
        figure = f"{entry['bytes_per_second'] / 1e6:,.0f} MB/s"
    else:
        figure = f"{entry['real_time']:,.0f} {entry['time_unit']}"
    return f"{figure} ({baseline['real_time'] / entry['real_time']:.2f}x)"


def print_table(title, group, rows):
    participants = []
    for row in rows.values():
        participants += [who for who in row if who not in participants]
    print(f"\n### {group}, {title}\n")
    print("| size | " + " | ".join(participants) + " |")
    print("|---:|" + "---:|" * len(participants))
    for size, row in sorted(rows.items()):
        baseline = row[participants[0]]
        cells = [cell(row[who], baseline) if who in row else "" for who in participants]
        print(f"| {size_text(size)} | " + " | ".join(cells) + " |")


def main(arguments):
    if not arguments or len(arguments) % 2:
        sys.exit(__doc__)
    for title, path in zip(arguments[::2], arguments[1::2]):
        for group, rows in load(path).items():
            print_table(title, group, rows)


main(sys.argv[1:])
