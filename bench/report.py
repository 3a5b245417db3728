#!/usr/bin/env python3
"""Turns what the benchmarks measured into the tables of bench/README.md and a plot per area.

    bench/report.py DIRECTORY AREA…      reads DIRECTORY/AREA.json

A row is named <case>/<who> or <case>/<size>/<who>. Only the tables are written, each between its
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
    """{case: {who: median time in ns}}, cases and ways as the program has them, sizes together."""
    times = {}
    runs = json.loads(file.read_text())["benchmarks"]
    for run in sorted(runs, key=lambda each: each["family_index"]):
        name = re.sub(r"/(real_time|manual_time|iterations:\d+|repeats:\d+|min_time:[\d.]+)", "", run["run_name"])
        if "error_occurred" in run:
            sys.exit(f"{file}: {name}: {run['error_message']}")
        if run["run_type"] != "iteration":
            continue
        case, _, who = name.rpartition("/")
        real = re.search("/(real|manual)_time", run["run_name"])
        scale = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}[run["time_unit"]]
        time = run["real_time" if real else "cpu_time"] * scale
        times.setdefault(case, {}).setdefault(who, []).append(time)
    kinds = list(dict.fromkeys(without_size(case) for case in times))
    return {case: {who: statistics.median(each) for who, each in times[case].items()}
            for case in sorted(times, key=lambda each: kinds.index(without_size(each)))}


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


def ratio_text(ratio, goal, missed, sign):
    if goal is None:
        return f"{ratio:.2f}"
    text = f"{ratio:.2f} ({sign} {goal:g})"
    return f"**{text}**" if missed else text


def ways_of(times):
    """Ours, the reference, then the peers as they come."""
    seen = {who: None for ways in times.values() for who in ways}
    first = [who for who in ("ours", "reference") if who in seen]
    return first + [who for who in seen if who not in first]


def table(area, times):
    peers = [who for who in ways_of(times) if who not in ("ours", "reference")]
    head = ["case", "ours", "reference", "ours / reference", *peers, "best peer / ours"]
    lines = [head]
    for case, ways in times.items():
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
        cells = [ways.get(who) for who in ("ours", "reference")]
        cells = [time_text(each) if each else "" for each in cells] + [to_reference]
        cells += [time_text(ways[peer]) if peer in ways else "" for peer in peers] + [to_peer]
        lines.append([case, *cells])
    # Only the columns that something is in.
    columns = [i for i in range(len(head)) if any(line[i] for line in lines[1:])]
    rows = ["| " + " | ".join(line[i] for i in columns) + " |" for line in lines]
    return "\n".join([rows[0], "|---" + "|---:" * (len(columns) - 1) + "|", *rows[1:]])


def plot(area, times):
    """A line for each case, a dot for each way, on a logarithmic scale of time."""
    ways = ways_of(times)
    colours = {who: COLOURS[i % len(COLOURS)] for i, who in enumerate(ways)}
    every = [time for each in times.values() for time in each.values()]
    low, high = math.floor(math.log10(min(every))), math.ceil(math.log10(max(every)))
    left, width, step, top = 24 + 7 * max(map(len, times)), 620, 22, 50
    bottom = top + step * len(times)

    def x_of(logarithm):
        return left + width * (logarithm - low) / max(1, high - low)

    out = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{left + width + 40}" '
           f'height="{bottom + 30}" font-family="sans-serif" font-size="12">',
           '<rect width="100%" height="100%" fill="#fff"/>']
    x = 10
    for who in ways:
        out.append(f'<circle cx="{x}" cy="16" r="5" fill="{colours[who]}"/>'
                   f'<text x="{x + 9}" y="20">{who}</text>')
        x += 30 + 7 * len(who)
    for exponent in range(low, high + 1):
        x = x_of(exponent)
        out.append(f'<path d="M{x:.1f} {top - 12}V{bottom}" stroke="#ddd"/>'
                   f'<text x="{x:.1f}" y="{bottom + 18}" text-anchor="middle">'
                   f'{time_text(10.0 ** exponent)}</text>')
    for line, (case, each) in enumerate(times.items()):
        y = top + step * line
        out.append(f'<text x="{left - 12}" y="{y + 4}" text-anchor="end">{case}</text>'
                   f'<path d="M{left} {y}h{width}" stroke="#eee"/>')
        for who in reversed([way for way in ways if way in each]):
            out.append(f'<circle cx="{x_of(math.log10(each[who])):.1f}" cy="{y}" r="5" '
                       f'fill="{colours[who]}"><title>{who}: {time_text(each[who])}</title></circle>')
    (BENCH / "plots").mkdir(exist_ok=True)
    (BENCH / "plots" / f"{area}.svg").write_text("\n".join(out + ["</svg>"]) + "\n")


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
        times = measured(pathlib.Path(directory) / f"{area}.json")
        plot(area, times)
        text = put(text, area, f"{table(area, times)}\n\n![{area}](plots/{area}.svg)")
    readme.write_text(text)


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    main(sys.argv[1], sys.argv[2:])
