#!/usr/bin/env python3
"""Turns what the benchmarks measured into the tables of bench/README.md and a plot per area.

    bench/report.py DIRECTORY AREA…      reads DIRECTORY/AREA.json

A row is named <case>/<who> or <case>/<size>/<who>. One with a counter "bytes" tells these and not its
time; a counter "peak" is the memory that it took besides its time. Only the tables are written, each between its
"<!-- AREA -->" and "<!-- end -->"; the text around them stays. The table of a new area comes last.
"""

import fnmatch
import json
import math
import pathlib
import platform
import re
import statistics
import subprocess
import sys

BENCH = pathlib.Path(__file__).resolve().parent
COLOURS = ["#0b6", "#333", "#d62", "#28c", "#a3c", "#c80", "#0aa", "#888"]


def without_size(case):
    return re.sub(r"/\d+$", "", case)


def measured(file):
    """(case, who, run) of each measurement, as the program has them."""
    runs = json.loads(file.read_text())["benchmarks"]
    for run in sorted(runs, key=lambda each: each["family_index"]):
        name = re.sub(r"/(real_time|manual_time|iterations:\d+|repeats:\d+|min_time:[\d.]+)", "", run["run_name"])
        if "error_occurred" in run:
            sys.exit(f"{file}: {name}: {run['error_message']}")
        if run["run_type"] == "iteration":
            case, _, who = name.rpartition("/")
            yield case, who, run


def time_of(run):
    """In ns."""
    real = re.search("/(real|manual)_time", run["run_name"])
    return run["real_time" if real else "cpu_time"] * {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}[run["time_unit"]]


def medians(runs, quantity):
    """{case: {who: median}} of what has that quantity, the sizes of a case together."""
    values = {}
    for case, who, run in runs:
        value = quantity(run)
        if value is not None:
            values.setdefault(case, {}).setdefault(who, []).append(value)
    kinds = list(dict.fromkeys(without_size(case) for case in values))
    return {case: {who: statistics.median(each) for who, each in values[case].items()}
            for case in sorted(values, key=lambda each: kinds.index(without_size(each)))}


def goals(area, case):
    """The ratios ours/reference and peer/ours aimed at; nothing where there is none."""
    for line in (BENCH / "goals").read_text().splitlines():
        fields = line.split()
        if fields and fields[0] == area and fnmatch.fnmatch(case, fields[1]):
            return tuple(None if each == "-" else float(each) for each in fields[2:4])
    return None, None


def time_text(time):
    for unit, size in (("s", 1e9), ("ms", 1e6), ("µs", 1e3)):
        if time >= size:
            return f"{time / size:.3g} {unit}" if time < 1000 * size else f"{time / size:.0f} {unit}"
    return f"{time:.3g} ns"


def bytes_text(number):
    for unit, size in (("GB", 1e9), ("MB", 1e6), ("kB", 1e3)):
        if number >= size:
            return f"{number / size:.3g} {unit}" if number < 999.5 * size else f"{number / size:.0f} {unit}"
    return f"{number:.3g} B"


def ratio_text(ratio, goal, missed, sign):
    if goal is None:
        return f"{ratio:.2f}"
    text = f"{ratio:.2f} ({sign} {goal:g})"
    return f"**{text}**" if missed else text


def ways_of(values):
    """Ours, the reference, then the peers as they come."""
    seen = {who: None for ways in values.values() for who in ways}
    first = [who for who in ("ours", "reference") if who in seen]
    return first + [who for who in seen if who not in first]


def table(area, values, text, peaks):
    """Times or bytes, as `text` puts them, and the memory that ours took for it."""
    peers = [who for who in ways_of(values) if who not in ("ours", "reference")]
    head = ["case", "ours", "memory", "reference", "ours / reference", *peers, "best peer / ours"]
    lines = [head]
    for case, ways in values.items():
        most, least = goals(area, case)
        ours, reference = ways.get("ours"), ways.get("reference")
        best = min((ways[peer] for peer in peers if peer in ways), default=None)
        to_reference = to_peer = ""
        if ours and reference:
            ratio = ours / reference
            to_reference = ratio_text(ratio, most, most and round(ratio, 2) > most, "≤")
        if ours and best:
            ratio = best / ours
            to_peer = ratio_text(ratio, least, least and round(ratio, 2) < least, "≥")
        cells = {who: text(value) for who, value in ways.items()}
        memory = bytes_text(peaks[case]["ours"]) if case in peaks else ""
        lines.append([case, cells.get("ours", ""), memory, cells.get("reference", ""), to_reference,
                      *(cells.get(peer, "") for peer in peers), to_peer])
    # Only the columns that something is in.
    columns = [i for i in range(len(head)) if any(line[i] for line in lines[1:])]
    rows = ["| " + " | ".join(line[i] for i in columns) + " |" for line in lines]
    return "\n".join([rows[0], "|---" + "|---:" * (len(columns) - 1) + "|", *rows[1:]])


def axis(values, start, length):
    """Where a value stands on a logarithmic axis, and the powers of ten on it."""
    low, high = math.floor(math.log10(min(values))), math.ceil(math.log10(max(values)))

    def place(value):
        return start + length * (math.log10(value) - low) / max(1, high - low)
    return place, [10.0 ** exponent for exponent in range(low, high + 1)]


def write_plot(area, width, height, shapes):
    head = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" '
            f'font-family="sans-serif" font-size="12">', '<rect width="100%" height="100%" fill="#fff"/>']
    (BENCH / "plots").mkdir(exist_ok=True)
    (BENCH / "plots" / f"{area}.svg").write_text("\n".join([*head, *shapes, "</svg>"]) + "\n")


def plot(area, values, text):
    """A line for each case, a dot for each way, on a logarithmic scale."""
    ways = ways_of(values)
    colours = {who: COLOURS[i % len(COLOURS)] for i, who in enumerate(ways)}
    left, width, step, top = 24 + 7 * max(map(len, values)), 620, 22, 50
    bottom = top + step * len(values)
    x_of, powers = axis([value for each in values.values() for value in each.values()], left, width)
    out = []
    x = 10
    for who in ways:
        out.append(f'<circle cx="{x}" cy="16" r="5" fill="{colours[who]}"/>'
                   f'<text x="{x + 9}" y="20">{who}</text>')
        x += 30 + 7 * len(who)
    for power in powers:
        x = x_of(power)
        out.append(f'<path d="M{x:.1f} {top - 12}V{bottom}" stroke="#ddd"/>'
                   f'<text x="{x:.1f}" y="{bottom + 18}" text-anchor="middle">{text(power)}</text>')
    for line, (case, each) in enumerate(values.items()):
        y = top + step * line
        out.append(f'<text x="{left - 12}" y="{y + 4}" text-anchor="end">{case}</text>'
                   f'<path d="M{left} {y}h{width}" stroke="#eee"/>')
        for who in reversed([way for way in ways if way in each]):
            out.append(f'<circle cx="{x_of(each[who]):.1f}" cy="{y}" r="5" '
                       f'fill="{colours[who]}"><title>{who}: {text(each[who])}</title></circle>')
    write_plot(area, left + width + 40, bottom + 30, out)


def growth(values):
    """{case: [(size, value of ours), …]}"""
    lines = {}
    for case, ways in values.items():
        kind, _, size = case.rpartition("/")
        if ways["ours"] > 0:
            lines.setdefault(kind, []).append((int(size), ways["ours"]))
    return lines


def growth_panel(lines, text, colours, left):
    """What grows with size: a line for each case, on logarithmic scales."""
    bottom, side, points = 450, 430, sum(lines.values(), [])
    x_of, sizes = axis([size for size, _ in points], left, side)
    y_of, powers = axis([value for _, value in points], bottom, -side)
    out = [f'<path d="M{x_of(size):.1f} {bottom}v{-side}" stroke="#ddd"/>'
           f'<text x="{x_of(size):.1f}" y="{bottom + 18}" text-anchor="middle">{size:,.0f}</text>'
           for size in sizes]
    out += [f'<path d="M{left} {y_of(power):.1f}h{side}" stroke="#ddd"/>'
            f'<text x="{left - 8}" y="{y_of(power) + 4:.1f}" text-anchor="end">{text(power)}</text>'
            for power in powers]
    for case, line in lines.items():
        places = " ".join(f"{x_of(size):.1f},{y_of(value):.1f}" for size, value in line)
        out.append(f'<polyline points="{places}" fill="none" stroke="{colours[case]}" stroke-width="2">'
                   f'<title>{case}</title></polyline>')
    return out


def plot_growth(area, times, peaks):
    """Time against size, beside it memory against size."""
    kinds = list(growth(times))
    colours = {kind: f"hsl({360 * i // len(kinds)},80%,{35 + i % 2 * 15}%)" for i, kind in enumerate(kinds)}
    out = growth_panel(growth(times), time_text, colours, 70)
    out += growth_panel(growth(peaks), bytes_text, colours, 600)
    for i, kind in enumerate(kinds):
        out.append(f'<path d="M1060 {30 + 20 * i}h20" stroke="{colours[kind]}" stroke-width="3"/>'
                   f'<text x="1086" y="{34 + 20 * i}">{kind}</text>')
    write_plot(area, 1100 + 7 * max(map(len, kinds)), 480, out)


def output(*command):
    return subprocess.run(command, capture_output=True, text=True, check=False).stdout.strip()


def conditions():
    """The machine, the compiler, the packages."""
    processor = re.search(r"model name\s*: (.*)", pathlib.Path("/proc/cpuinfo").read_text())
    packages = (BENCH / "packages").read_text().split()
    versions = output("dpkg-query", "-W", "-f", "${Package} ${Version}\n", *packages)
    compiler = (output("g++", "--version").splitlines() or ["?"])[0]
    count = len(re.findall(r"^processor", pathlib.Path("/proc/cpuinfo").read_text(), re.M))
    return "\n".join([
        f"- Machine: {count} × {processor[1] if processor else platform.machine()}, "
        f"Linux {platform.release()}",
        f"- Compiler: {compiler}, -O3",
        "- Packages: " + ", ".join(versions.splitlines())])


def put(text, section, content):
    begin, end = f"<!-- {section} -->", "<!-- end -->"
    block = f"{begin}\n{content}\n{end}"
    pattern = re.compile(re.escape(begin) + ".*?" + re.escape(end), re.S)
    if pattern.search(text):
        return pattern.sub(lambda _: block, text, count=1)
    return f"{text.rstrip()}\n\n## {section.capitalize()}\n\n{block}\n"


def main(directory, areas):
    readme = BENCH / "README.md"
    text = put(readme.read_text(), "conditions", conditions())
    for area in areas:
        runs = list(measured(pathlib.Path(directory) / f"{area}.json"))
        values, as_text = medians(runs, lambda run: run.get("bytes")), bytes_text
        if not values:
            values, as_text = medians(runs, time_of), time_text
        peaks = medians(runs, lambda run: run.get("peak"))
        if peaks:
            plot_growth(area, values, peaks)
        else:
            plot(area, values, as_text)
        text = put(text, area, f"{table(area, values, as_text, peaks)}\n\n![{area}](plots/{area}.svg)")
    readme.write_text(text)


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    main(sys.argv[1], sys.argv[2:])
