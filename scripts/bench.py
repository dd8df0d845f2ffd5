"""Runs the benchmarks and makes of them the tables and charts of docs/performance.md: velum beside the floor and beside
other libraries, in ratios of one run. Repetitions are interleaved and medians are compared. Where valgrind is there and
two medians are nearer to each other, or to what is to be reached, than the noise of this run, instructions decide."""

import argparse
import json
import re
import subprocess
import sys
from collections import defaultdict
from pathlib import Path
from shutil import which
from statistics import median, quantiles

ROOT = Path(__file__).resolve().parent.parent
PROGRAM = ROOT / "build/bench/benchmarks/velum_contest"
PAGE = ROOT / "docs/performance.md"

# What each row is to reach: times the floor, and times each peer ("*": all others). None: only shown.
REACH = {
    "write records": (0.85, {"*": 1}),
    "read records": (1.05, {"*": 1, "cereal": 1.2}),
    "write buffers": (1.05, {}),
    "read buffers": (1.05, {}),
    "write graph": (1.5, {"*": 1}),
    "read graph": (1.5, {"*": 1}),
    "ask for an interface": (1.2, {"*": 0.3}),
    "copy an iptr": (1.05, {}),
    "intern 64 known texts": (None, {"*": 0.5}),
    "intern 64 known texts, 2 threads": (None, {"*": 0.5}),
    "intern 100,000 new texts": (1.2, {}),
    "intern a million random known texts": (None, {"*": 0.5}),
    **{f"compare {which}, {shape}": (1.3, {"*": 1})
       for which in ("equal", "nearly equal") for shape in ("flat", "1 deep", "4 deep", "16 deep")},
    "create by class identifier": (2.2, {"*": 1}),
    "create through a composite factory": (2.2, {"*": 1}),
}
SHOWN_ONLY = {"velum without locks"}


class Measured:
    def __init__(self):
        self.seconds, self.noise, self.counters, self.instructions = [], 0.0, {}, None

    @property
    def time(self):
        return median(self.seconds)


def run_benchmarks(arguments):
    out = ROOT / "build/bench/contest.json"
    subprocess.run([PROGRAM, "--benchmark_enable_random_interleaving=true", f"--benchmark_out={out}",
                    "--benchmark_out_format=json", *arguments], check=True, stdout=sys.stderr)
    rows = defaultdict(lambda: defaultdict(Measured))
    for run in json.loads(out.read_text())["benchmarks"]:
        if run["run_type"] == "iteration":
            row, name = run["run_name"].split("/")[:2]
            measured = rows[row][name]
            measured.seconds.append(run["seconds"])
            measured.counters = {key: run[key] for key in ("allocations", "bytes", "peak")}
    for names in rows.values():
        for measured in names.values():
            few = len(measured.seconds) < 3
            low, _, high = (measured.time,) * 3 if few else quantiles(measured.seconds, n=4)
            measured.noise = (high - low) / measured.time
    return rows


def instructions_of(row, name):
    """For one time more of the work, past what is prepared for it."""
    def count(runs):
        log = ROOT / "build/bench/cachegrind.out"
        done = subprocess.run(["valgrind", "--tool=cachegrind", "--cache-sim=no", f"--cachegrind-out-file={log}", PROGRAM,
                               "--runs", str(runs), f"{row}/{name}"], check=True, capture_output=True, text=True)
        return int(re.search(r"I +refs: +([\d,]+)", done.stderr)[1].replace(",", ""))
    return count(2) - count(1)


def limit_of(row, name):
    floor, peers = REACH.get(row, (None, {}))
    return None if name in SHOWN_ONLY else floor if name == "floor" else peers.get(name, peers.get("*"))


def compare(rows, with_instructions):
    """For each row and each other: velum's ratio, by what it was judged, and whether it is in reach."""
    for row in filter(rows.get, REACH):
        names = rows[row]
        own = names["velum"]
        for name, other in sorted(names.items(), key=lambda each: (each[0] != "floor", each[0])):
            if name == "velum":
                continue
            ratio, limit, by = own.time / other.time, limit_of(row, name), "time"
            noise = max(own.noise, other.noise)
            if limit and with_instructions and abs(ratio / limit - 1) < noise:
                for measured, of in (own, "velum"), (other, name):
                    if measured.instructions is None:
                        measured.instructions = instructions_of(row, of)
                ratio, by = own.instructions / other.instructions, "instructions"
            yield row, name, ratio, limit, by, noise


def contest_table(rows, results):
    lines = ["| Work | velum | Beside | velum takes | Reach | Allocations: velum, other | Bytes: velum, other |",
             "|---|---|---|---|---|---|---|"]
    for row, name, ratio, limit, by, _ in results:
        own, other = rows[row]["velum"], rows[row][name]
        reach = "" if limit is None else f"{limit:g} {'yes' if ratio <= limit else '**no**'}"
        pair = lambda key: f"{own.counters[key]:.3g}, {other.counters[key]:.3g}"
        star = "*" if by == "instructions" else ""
        lines.append(f"| {row} | {1e9 * own.time:.3g} ns | {name} | {ratio:.2f}{star} | {reach} | "
                     f"{pair('allocations')} | {pair('bytes')} |")
    return lines


def scale_table(rows):
    lines = ["| Family | Items | ns an item | times the first | peak bytes an item |", "|---|---|---|---|---|"]
    for row, sizes in rows.items():
        if row.startswith("scale"):
            ordered = sorted(sizes.items(), key=lambda each: int(each[0]))
            first = ordered[0][1].time
            lines += [f"| {row[7:]} | {int(size):,} | {1e9 * each.time:.1f} | {each.time / first:.2f} | "
                      f"{each.counters['peak']:.1f} |" for size, each in ordered]
    return lines


def memory_table():
    printed = subprocess.run([PROGRAM, "--memory"], check=True, capture_output=True, text=True).stdout
    lines = ["| What | Whose | Bytes |", "|---|---|---|"]
    for line in printed.splitlines():
        what, name, size = line.split("\t")
        lines.append(f"| {what} | {name} | {float(size):.0f} |")
    return lines


def chart(title, lines, unit):
    """Bars of the given lengths, as text for an SVG file: a label, a length, and what is written behind it."""
    most, height = max(length for _, length, _ in lines), 20 * len(lines) + 40
    parts = [f'<svg xmlns="http://www.w3.org/2000/svg" width="760" height="{height}" font-family="sans-serif" '
             f'font-size="12"><rect width="100%" height="100%" fill="white"/>'
             f'<text x="10" y="20" font-size="14">{title}</text>']
    for i, (label, length, text) in enumerate(lines):
        y, width = 34 + 20 * i, 340 * length / most
        parts.append(f'<text x="330" y="{y + 11}" text-anchor="end">{label}</text>'
                     f'<rect x="340" y="{y}" width="{width:.1f}" height="14" fill="#4a7ab5"/>'
                     f'<text x="{345 + width:.1f}" y="{y + 11}">{text}{unit}</text>')
    return "\n".join([*parts, "</svg>", ""])


def write_charts(results, rows):
    peers = [(f"{row}: {name}", min(1 / ratio, 8), f"{1 / ratio:.2f}") for row, name, ratio, *_ in results
             if name not in SHOWN_ONLY | {"floor"} and "nearly" not in row]
    (ROOT / "docs/peers.svg").write_text(chart("Time of others, as a multiple of velum's (bars end at 8)", peers, ""))
    scale = [(f"{row[7:]}: {int(size):,}", each.time * 1e9, f"{each.time * 1e9:.0f}")
             for row, sizes in sorted(rows.items()) if row.startswith("scale")
             for size, each in sorted(sizes.items(), key=lambda each: int(each[0]))]
    (ROOT / "docs/scale.svg").write_text(chart("Time for an item, by their number", scale, " ns"))


def main():
    parser = argparse.ArgumentParser(prog="bench")
    parser.add_argument("--repetitions", type=int, default=9)
    parser.add_argument("--no-instructions", action="store_true", help="compare by time alone")
    parser.add_argument("--write", action="store_true", help="put tables and charts into docs/")
    options, arguments = parser.parse_known_args()

    rows = run_benchmarks([f"--benchmark_repetitions={options.repetitions}", *arguments])
    results = list(compare(rows, which("valgrind") and not options.no_instructions))
    tables = {"contest": contest_table(rows, results), "scale": scale_table(rows), "memory": memory_table()}
    for lines in tables.values():
        print(*lines, "", sep="\n")
    if options.write:
        page = PAGE.read_text()
        for name, lines in tables.items():
            page = re.sub(rf"(<!-- {name} -->\n).*?(<!-- end -->)", lambda m: m[1] + "\n".join(lines) + "\n" + m[2], page,
                          flags=re.DOTALL)
        PAGE.write_text(page)
        write_charts(results, rows)
    missed = [f"{row}, {name}: {ratio:.2f} of {limit}" for row, name, ratio, limit, _, _ in results
              if limit and ratio > limit]
    print(*(f"out of reach: {each}" for each in missed), sep="\n")


main()
