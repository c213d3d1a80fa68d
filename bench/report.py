#!/usr/bin/env python3
"""Makes the report of the benchmarks: a table a subject, and one chart of them all.

Usage: report.py [--chart file.svg] [--page page.md] title folder [title folder]...

A folder holds the figures of one system, a JSON file a program. A benchmark is named subject/who/size; ours is the one
called Tornby or like a member or class of ours. All benchmarks take turns in short rounds, and the median of the rounds
counts. Where the best rounds give another ratio, that is said: the machine had other work then.
The tables go to the output, and with --page between the page's lines <!-- figures --> and <!-- end of figures -->."""

import json
import pathlib
import re
import statistics
import sys

OURS = re.compile(r"tornby|XML_Settings|ValueCollection|cls[A-Z]\w+|api\w+|Api\w+|Calculate\w+", re.IGNORECASE)
UNITS = {"collection": "pairs", "settings": "keys", "late_binding": ""}  # by program; otherwise bytes or characters
MEMBERS = {  # by subject, where that is not the member's own name
    "add": "ValueCollection Add", "exist": "ValueCollection Exist", "key": "ValueCollection Item, by key",
    "position": "ValueCollection Item, by position", "remove": "ValueCollection Remove", "walk": "ValueCollection, a walk",
    "get": "GetSetting", "set": "SaveSetting", "load": "XML_Settings, loading", "save": "XML_Settings, saving",
    "checksum of a file": "CalculateFile", "read text": "ApiReadFile", "save text": "apiSaveFile",
    "late_bound_call": "Late-bound call", "late_bound_name": "Late-bound name",
    "late_bound_property": "Late-bound property",
}
LESS = re.compile(r"unsafely|not summed|memory alone")  # peers that do less: in the tables, not in the chart
PART = re.compile(r"memory alone")  # of our own work: its time alone
NANOSECONDS = {"s": 1e9, "ms": 1e6, "us": 1e3, "ns": 1}
UNSTEADY = 1.2  # the ratio of the medians and that of the best rounds differ by so much
SHORTEST = 1e6  # rounds shorter than this, their length having been guessed in a bad moment, tell nothing


class Rounds:
    """The nanoseconds that one benchmark took."""

    def __init__(self, times):
        self.median = statistics.median(times)
        self.best = min(times)

    def times_as_fast_as(self, other):
        return other.median / self.median, other.best / self.best


def load(folder):
    """Subject: size: who: rounds, in the order of the programs."""
    subjects = {}
    for path in sorted(pathlib.Path(folder).glob("*.json")):
        rounds = {}
        for entry in json.loads(path.read_text(encoding="utf-8"))["benchmarks"]:
            if entry["run_type"] == "iteration" and not entry.get("error_occurred"):
                name, wall, _ = entry["run_name"].partition("/real_time")
                time = entry["real_time" if wall else "cpu_time"] * NANOSECONDS[entry["time_unit"]]
                rounds.setdefault(name, []).append((time, time * entry["iterations"]))
        for name in sorted(rounds, key=lambda name: name.split("/")[0]):
            subject, who, size = (name.split("/") + ["0"])[:3]
            times, lengths = zip(*rounds[name])
            if statistics.median(lengths) < SHORTEST:
                continue
            sizes = subjects.setdefault(MEMBERS.get(subject, subject), (UNITS.get(path.stem, "B"), {}))[1]
            sizes.setdefault(int(size), {})[who] = Rounds(times)
    return subjects


def ours_of(row):
    return next((who for who in row if OURS.match(who)), None)


def size_text(size, unit):
    if size < 0:
        return f"1 to {-size} {unit}"
    for factor, name in ((1 << 20, "Mi"), (1 << 10, "Ki")):
        if unit == "B" and size >= factor and size % factor == 0:
            return f"{size // factor} {name}B"
    return f"{size:,} {unit}".strip() if unit else ""


def time_text(nanoseconds):
    rounded = float(f"{nanoseconds:.3g}")
    unit = next((unit for unit, factor in NANOSECONDS.items() if rounded >= factor), "ns")
    return f"{rounded / NANOSECONDS[unit]:.3g} {unit}"


def ratio_text(ratio):
    return f"{ratio:.2f}" if ratio < 9.95 else f"{ratio:.0f}"


def is_unsteady(median, best):
    return max(median / best, best / median) > UNSTEADY


def peer_text(ours, who, peer):
    if PART.search(who):
        return time_text(peer.median)
    median, best = ours.times_as_fast_as(peer)
    best_text = f" (best {ratio_text(best)})" if is_unsteady(median, best) else ""
    return f"{time_text(peer.median)}, {ratio_text(median)} times{best_text}"


def ratios(systems):
    """Of the medians and of the best rounds, ours with every peer."""
    for _, found in systems:
        for _, sizes in found.values():
            for row in sizes.values():
                if ours := row.get(ours_of(row)):
                    yield from (ours.times_as_fast_as(peer) for who, peer in row.items()
                                if not OURS.match(who) and not PART.search(who))


def processor():
    """As far as the system tells: a virtual machine may keep the model's name to itself."""
    told = {}
    for line in pathlib.Path("/proc/cpuinfo").read_text(encoding="utf-8").splitlines():
        name, _, value = line.partition(":")
        told.setdefault(name.strip(), value.strip())
    return "{model name} (family {cpu family}, model {model}, stepping {stepping})".format_map(told)


def tables(systems):
    measured = list(ratios(systems))
    unsteady = sum(is_unsteady(*ratio) for ratio in measured)
    yield (f"Measured on {processor()}, one thread. Behind the time of each peer stands how many times as fast as the peer "
           "Tornby is; \"best\" is that ratio of the best rounds, where it differs by more than a fifth. That it does in "
           f"{unsteady} of {len(measured)} ratios, because the machine had other work at times.")
    subjects = dict.fromkeys(subject for _, found in systems for subject in found)
    for subject in subjects:
        everyone = dict.fromkeys(who for _, found in systems for row in found.get(subject, ("", {}))[1].values()
                                 for who in sorted(row) if not OURS.match(who))
        yield f"\n## {subject}\n"
        yield "| Size | System | Tornby | " + " | ".join(everyone) + " |"
        yield "|---:|---|---:|" + "---:|" * len(everyone)
        rows = [(size, title, unit, row) for title, found in systems if subject in found
                for unit, sizes in [found[subject]] for size, row in sizes.items()]
        for size, title, unit, row in sorted(rows, key=lambda entry: entry[0]):
            ours = row.get(ours_of(row))
            if ours is None:
                continue
            cells = [peer_text(ours, who, row[who]) if who in row else "" for who in everyone]
            yield f"| {size_text(size, unit)} | {title} | {time_text(ours.median)} | " + " | ".join(cells) + " |"


def draw(systems, path):
    import matplotlib
    matplotlib.use("svg")
    matplotlib.rcParams["svg.hashsalt"] = "tornby"  # the same figures make the same file
    from matplotlib import pyplot

    def peers_in(row):
        return [rounds.median for who, rounds in row.items() if not OURS.match(who) and not LESS.search(who)]

    subjects = list(dict.fromkeys(subject for _, found in systems for subject, (_, sizes) in found.items()
                                  if any(map(peers_in, sizes.values()))))
    figure, axes = pyplot.subplots(figsize=(9, 1.5 + 0.27 * len(subjects)), layout="constrained")
    for at, (title, found) in enumerate(systems):
        points = []
        for subject, (_, sizes) in found.items():
            for row in sizes.values():
                ours, peers = ours_of(row), peers_in(row)
                if ours and peers:
                    points.append((min(peers) / row[ours].median, subjects.index(subject) + 0.15 * (2 * at - 1)))
        axes.scatter(*zip(*points), label=title, s=18, alpha=0.7)
    axes.axvline(1, color="black", linewidth=0.8)
    axes.set_xscale("log")
    axes.set_xticks(ticks := [0.1, 0.2, 0.5, 1, 2, 5, 10, 20, 50, 100])
    axes.set_xticklabels([f"{tick:g}" for tick in ticks])
    axes.set_yticks(range(len(subjects)), subjects)
    axes.invert_yaxis()
    axes.grid(axis="x", alpha=0.3)
    axes.set_xlabel(f"times as fast as the best peer of its subject: a dot a size, 1 is level\n({processor()})")
    axes.legend(loc="lower center", bbox_to_anchor=(0.5, 1), ncols=len(systems), frameon=False)
    figure.savefig(path, metadata={"Date": None})


def main(arguments):
    options = {}
    while arguments and arguments[0].startswith("--"):
        options[arguments[0]] = arguments[1]
        arguments = arguments[2:]
    if not arguments or len(arguments) % 2 or options.keys() - {"--chart", "--page"}:
        sys.exit(__doc__)
    systems = [(title, load(folder)) for title, folder in zip(arguments[::2], arguments[1::2])]
    report = "\n".join(tables(systems))
    print(report)
    if "--chart" in options:
        draw(systems, options["--chart"])
    if "--page" in options:
        page = pathlib.Path(options["--page"])
        first, last = "<!-- figures -->\n", "<!-- end of figures -->"
        before, _, rest = page.read_text(encoding="utf-8").partition(first)
        after = rest.partition(last)[2]
        page.write_text(before + first + "\n" + report + "\n\n" + last + after, encoding="utf-8")


main(sys.argv[1:])
