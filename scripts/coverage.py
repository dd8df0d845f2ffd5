"""Tells how many lines of the library the tests run, from the lcov records in the file of the first argument, and holds
the others against tests/uncovered.txt. A line without a word, such as a closing brace, doesn't count."""

import re
import sys
from collections import Counter
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
LISTED = "tests/uncovered.txt"
LEAST = 98  # per cent


def listed_lines():
    """Blocks of a file, the text of a line, and the reason why no test reaches it."""
    listed = Counter()
    for block in re.split(r"\n\s*\n", (ROOT / LISTED).read_text()):
        lines = [line.strip() for line in block.split("\n") if line and not line.startswith("#")]
        if lines and len(lines) < 3:
            sys.exit(f"{LISTED}: not a file, the text of a line and a reason:\n{block}")
        if lines:
            listed[lines[0], lines[1]] += 1
    return listed


def counted_lines(records):
    counts, path = {}, None
    for record in records:
        kind, _, rest = record.strip().partition(":")
        if kind == "SF":
            path = Path(rest)
        elif kind == "DA" and path.is_relative_to(ROOT / "velum"):
            number, count = map(int, rest.split(",")[:2])
            counts.setdefault(str(path.relative_to(ROOT)), {})[number] = count
    return counts


def tell(missed, total, name):
    covered = 100 * (1 - missed / max(total, 1))
    print(f"{covered:6.2f} %  {total - missed:4} of {total:4}  {name}")
    return covered


def main():
    total, missed, uncovered = 0, 0, []
    for file, counts in sorted(counted_lines(open(sys.argv[1])).items()):
        text = (ROOT / file).read_text().split("\n")
        counts = {number: count for number, count in counts.items() if re.search(r"\w", text[number - 1])}
        lines = sorted(number for number, count in counts.items() if count == 0)
        uncovered += [(file, number, text[number - 1].strip()) for number in lines]
        total, missed = total + len(counts), missed + len(lines)
        tell(len(lines), len(counts), file)
    covered = tell(missed, total, "in all")

    listed, found = listed_lines(), Counter((file, text) for file, _, text in uncovered)
    for file, number, text in uncovered:
        print(f"{file}:{number}: {text}{'' if found[file, text] <= listed[file, text] else '  (not listed)'}")
    wrong = [f"{LISTED}: this line is run, or gone: {file}: {text}" for file, text in listed - found]
    if found - listed:
        wrong.append(f"{sum((found - listed).values())} lines that no test runs aren't in {LISTED}")
    if covered < LEAST:
        wrong.append(f"less than {LEAST} % of the lines are run")
    print(*wrong, sep="\n", end="\n" if wrong else "", file=sys.stderr)
    return 1 if wrong else 0


sys.exit(main())
