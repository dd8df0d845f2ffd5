"""Makes small faults in the library, one at a time, and runs the ordinary tests on each: a fault that no test notices
shows what they leave open. A seed always takes the same faults; one that doesn't compile, or makes no other program, is
replaced. Those that no test can notice stand in tests/mutation_survivors.txt. Every job has a copy and a build of the
tree in build/mutation/<job>. Some tests measure time: with more jobs than idle processors the results are wrong.
Exit status: 1 when a fault survives that isn't in the list, or the list is wrong."""

import argparse
import hashlib
import os
import random
import re
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from collections import namedtuple
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
KNOWN = "tests/mutation_survivors.txt"
SOURCES = {"velum/wire/detail": "reader writer sources sinks blocks arrivals fill",
           "velum/serial": "serializer object_tables",
           "velum/core": "counted aggregatable iptr destruction atomic_count", "velum/values": "compare",
           "velum/values/detail": "type_tag"}
COPIED = ["CMakeLists.txt", "cmake", "velum", "tests", "fuzz", "examples/plugin"]
SLOW = "*nesting*:*large*:*hostile*"  # as in --gtest_filter; they run last, each on its own
MEMORY = 6 << 30  # bytes of address space for a test program; the suite gets by with 2 GiB
SETTINGS = ["-DCMAKE_BUILD_TYPE=", "-DCMAKE_CXX_FLAGS=-O1 -D_GLIBCXX_ASSERTIONS", "-DVELUM_INSTALL=OFF",
            "-DVELUM_BUILD_EXAMPLES=OFF", "-DVELUM_BUILD_TOOLS=OFF",
            "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON"]

SWAPS = {
    "comparison": {"==": ["!="], "!=": ["=="], "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="],
                   ">=": [">", "<"]},
    "arithmetic": {"+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "+=": ["-="], "-=": ["+="], "<<": [">>"]},
    "logic": {"&&": ["||"], "||": ["&&"]},
}
CHANGES = [  # operator, where on a line, what becomes of it
    *((name, rf"(?<= )({'|'.join(map(re.escape, sorted(table, key=len, reverse=True)))})(?= |$)", table.get)
      for name, table in SWAPS.items()),
    ("step", r"(\+\+|--)", lambda text: ["--" if text == "++" else "++"]),
    ("truth", r"\b(true|false)\b", lambda text: ["false" if text == "true" else "true"]),
    ("number", r"(?<![\w.'])(\d+)(?=[uU]?[lL]{0,2}\b)(?![.'])", lambda text: [str(int(text) + n) for n in (1, -1)]),
    ("limit", r"\bstd::(min|max)\b", lambda text: ["max" if text == "min" else "min"]),
    ("not", r"(!)(?=[\w(*:])", lambda text: [""]),
    ("condition", r"\b(?:if|while) \((?:[^;]*; )?([^=;]*(?:[=!<>]=[^=;]*)*)\) \{$",
     lambda text: [] if SIMPLE.search(text) else [f"!({text})"]),
    ("statement", r"^ *((?:[\w:.>*()\[\]-]+ [-+|&]?= .*|(?:\+\+|--)?[\w:.>-]+(?:<[\w:, *]+>)?(?:\(.*\))?|throw .*|"
                  r"[\w:<>]+ const \w+\(.*\));)$", lambda text: [";"]),
    ("statement", r"\{ ((?!return\b|using\b|throw;)[^{};]+;) \}", lambda text: [";"]),
]
SIMPLE = re.compile(r"^!\w+$|^(?!.*(&&|\|\|)).* ([=!<>]=|<|>) ")  # the other operators negate these
NOT_CODE = re.compile(r"//[^\n]*|/\*.*?\*/|\"(?:\\.|[^\"\\\n])*\"|(?<!\w)'(?:\\.|[^'\\\n])*'", re.DOTALL)
LEFT_ALONE = re.compile(r"^\s*(#|template|using|friend class|return;|break;|continue;|throw;)|assert|VELUM_|"
                        r"\bvirtual\b|= (0|default|delete);$")


Mutant = namedtuple("Mutant", "file number changed key text")


def all_mutants():
    stems = (f"{folder}/{name}.*" for folder, names in SOURCES.items() for name in names.split())
    for path in (path for stem in stems for path in sorted(ROOT.glob(stem))):
        text, begins = path.read_text(), True  # begins: whether a statement can begin on the line
        code = NOT_CODE.sub(lambda m: re.sub(r"[^\n]", " " if m[0][0] == "/" else "\1", m[0]), text)
        for number, (line, bare) in enumerate(zip(text.split("\n"), map(str.rstrip, code.split("\n"))), 1):
            if not LEFT_ALONE.search(bare):
                yield from line_mutants(str(path.relative_to(ROOT)), number, line, bare, begins)
            begins = not bare or bare[-1] in ";{}:"


def line_mutants(file, number, line, bare, begins):
    for operator, match, becomes in ((o, m, b) for o, pattern, b in CHANGES for m in re.finditer(pattern, bare)):
        whole = operator != "statement" or (begins and bare.count("(") == bare.count(")")) or match[0][0] == "{"
        for after in becomes(match[1]) if whole else []:
            changed = line[:match.start(1)] + after + line[match.end(1):]
            text = f"{file}:{number}: {operator}: {line[slice(*match.span(1))]} -> {after or 'nothing'}"
            yield Mutant(file, number, changed, (file, line.strip(), changed.strip()), text)


class Workshop:
    """A copy of the tree and its build."""

    def __init__(self, job, cores):
        place = ROOT / f"build/mutation/{job}"
        self.tree, self.build, self.cores = place / "tree", place / "build", cores
        self.copy_tree()
        subprocess.run(["cmake", "-S", self.tree, "-B", self.build, "-G", "Ninja", *SETTINGS], check=True, stdout=2)
        if not self.compiles("all"):
            sys.exit("the library doesn't build as it is")
        self.programs = self.fingerprint()
        listed = subprocess.run([self.build / "tests/velum_tests", "--gtest_list_tests", f"--gtest_filter={SLOW}"],
                                check=True, text=True, capture_output=True).stdout
        slow = [suite + name for suite, names in re.findall(r"^(\S+\.).*\n((?:  .*\n)+)", listed, re.MULTILINE)
                for name in re.findall(r"^  (\S+)", names, re.MULTILINE)]
        self.limits = {}  # the programs and their tests in the order of running, each with its seconds
        for run in ("velum_internal_tests", "*"), *(("velum_tests", tests) for tests in (f"-{SLOW}", *slow)):
            start = time.monotonic()
            if failure := self.fails(run, 600):
                sys.exit(f"the tests fail as they are: {failure}")
            self.limits[run] = 10 + 5 * (time.monotonic() - start)

    def copy_tree(self):
        def files(top):
            paths = (path for name in COPIED for path in (top / name, *(top / name).rglob("*")))
            return {path.relative_to(top) for path in paths if path.is_file()}
        for name in files(self.tree) - files(ROOT):
            (self.tree / name).unlink()
        for name in files(ROOT):  # what hasn't changed keeps its time, or all would be built again
            source, target = ROOT / name, self.tree / name
            if not target.exists() or target.read_bytes() != source.read_bytes():
                target.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(source, target)

    def compiles(self, *targets):
        return subprocess.run(["cmake", "--build", self.build, "--parallel", str(self.cores), "--target", *targets],
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0

    def fingerprint(self):
        built = (path for path in sorted(self.build.glob("*/**/*velum*")) if path.suffix in (".so", ""))
        return [hashlib.sha256(path.read_bytes()).digest() for path in built if path.is_file()]

    def fails(self, run, limit):
        """None, or what went wrong."""
        def limited():
            for kind, most in (resource.RLIMIT_AS, MEMORY), (resource.RLIMIT_CORE, 0), (resource.RLIMIT_FSIZE, 1 << 30):
                resource.setrlimit(kind, (most, most))
        program, tests = self.build / "tests" / run[0], run[1]
        with tempfile.TemporaryFile("w+", errors="replace") as out:
            child = subprocess.Popen([program, f"--gtest_filter={tests}", "--gtest_fail_fast"], cwd=program.parent,
                                     stdout=out, stderr=subprocess.STDOUT, start_new_session=True, preexec_fn=limited)
            try:
                status, late = child.wait(limit), False
            except subprocess.TimeoutExpired:
                os.killpg(child.pid, signal.SIGKILL)
                status, late = child.wait(), True
            out.seek(0)
            text = out.read()
        begun, failed = (re.findall(rf"^\[ {word} \] ([^\s,]+)", text, re.M) for word in ("RUN     ", " FAILED "))
        if failed:  # those after the first were skipped
            return f"killed by {failed[0]}"
        how = "timeout in" if late else "crash in" if status < 0 else "killed by"
        return f"{how} {begun[-1] if begun else program.name}" if status else None

    def judge(self, mutant):
        """What became of it, or None for one that doesn't count."""
        path = self.tree / mutant.file
        text = path.read_text()
        lines = text.split("\n")
        path.write_text("\n".join([*lines[:mutant.number - 1], mutant.changed, *lines[mutant.number:]]))
        programs, built = self.programs, []
        try:
            # Most faults show when the library alone is built anew, which spares the tests that include a header of it.
            for targets in ("velum", "velum_internal_tests"), ("all",):
                built += targets
                if not self.compiles(*targets):
                    return None
                before, programs = programs, self.fingerprint()
                failure = programs != before and next(filter(None, (self.fails(*run) for run in self.limits.items())), None)
                if failure:
                    return failure
            return "SURVIVED" if programs != self.programs else None
        finally:
            path.write_text(text)
            if "all" in built and not path.suffix == ".cpp":
                self.compiles("all")


def known_survivors():
    """Blocks of a file, the line (-), what becomes of it (+), and the reason."""
    known = set()
    for block in re.split(r"\n\s*\n", (ROOT / KNOWN).read_text()):
        lines = [line for line in block.split("\n") if line and not line.startswith("#")]
        if lines and (len(lines) < 4 or lines[1][:2] != "- " or lines[2][:2] != "+ "):
            sys.exit(f"{KNOWN}: not a file, a line, what becomes of it and a reason:\n{block}")
        known |= {(lines[0], lines[1][2:], lines[2][2:])} if lines else set()
    return known


def main():
    parser = argparse.ArgumentParser(prog="mutate")
    for option, default in ("--seed", 1), ("--count", 100), ("--jobs", 1):
        parser.add_argument(option, type=int, default=default)
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--match", default="", help="of the sample only what this expression is found in")
    options = parser.parse_args()

    mutants, known = list(all_mutants()), known_survivors()
    wrong = [f"{KNOWN}: there is no such fault any more: {key}" for key in known - {m.key for m in mutants}]
    random.Random(options.seed).shuffle(mutants)
    if options.match:
        mutants = [m for m in mutants[:options.count] if re.search(options.match, m.text)]
    if options.list:
        print(*sorted(m.text for m in mutants[:options.count]), sep="\n")
        return 0

    cores = max(1, os.cpu_count() // options.jobs)
    with ThreadPoolExecutor(options.jobs) as pool:
        shops = list(pool.map(lambda job: Workshop(job, cores), range(options.jobs)))
    results, dropped = {}, 0

    def work(shop, share):
        for mutant in share:
            result = shop.judge(mutant)
            if result == "SURVIVED" and mutant.key in known:
                result = "survived, as it must"
            results[mutant] = result
            if result:
                print(f"{mutant.text}: {result}\n", end="", flush=True)

    while mutants and len(results) - dropped < options.count:
        missing = options.count - len(results) + dropped
        batch, mutants = sorted(mutants[:missing], key=lambda m: (m.file, m.number)), mutants[missing:]
        size = -(-len(batch) // options.jobs)  # neighbours go to one job: they build the same things again
        with ThreadPoolExecutor(options.jobs) as pool:
            list(pool.map(lambda job: work(shops[job], batch[job * size:(job + 1) * size]), range(options.jobs)))
        dropped = sum(result is None for result in results.values())

    ends = {mutant: result for mutant, result in results.items() if result}
    wrong += [f"{KNOWN}: a test notices this: {mutant.text}" for mutant, result in ends.items()
              if mutant.key in known and "survived" not in result]
    lost = sorted(mutant.text for mutant, result in ends.items() if result == "SURVIVED")
    must = sum(result == "survived, as it must" for result in ends.values())
    judged = len(ends) - must
    print(*(f"survived: {text}" for text in lost), *wrong, sep="\n")
    noticed = judged - len(lost)
    print(f"seed {options.seed}: {noticed} of {judged} noticed ({100 * noticed / max(judged, 1):.1f} %), "
          f"{must} can't be, {dropped} didn't compile or were the same program")
    return bool(lost or wrong)


sys.exit(main())
