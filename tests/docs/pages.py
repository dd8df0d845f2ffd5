#!/usr/bin/env python3
"""What the manual says, held against what is there.

  pages.py programs OUT PAGE...        makes programs of the C++ in the pages and prints their names
  pages.py run EXPECTED PROGRAM...     runs a program, which must print what its page says
  pages.py links ROOT                  every link, anchor and path in the pages leads somewhere
  pages.py texts ROOT                  docs/errors.md has the texts that the library throws, and no others
  pages.py version ROOT                velum/version.hpp alone states the version, CHANGELOG.md has it, and pages are up to date

A block of C++ with a `main` is a program. All others of a page make one together: they are statements, whose variables
last to the next heading, or, behind `<!-- cpp: outside -->`, declarations that last to the end of the page. A comment
`<!-- cpp: outside` or `<!-- cpp: inside` that goes on in further lines is such a block that readers don't see. Behind `<!-- cpp: no -->` a
block isn't compiled. A block of text behind one of C++ is what it prints, a block of bytes the same in hexadecimal
digits, with remarks behind them.
"""

import difflib
import re
import subprocess
import sys
from pathlib import Path

LANGUAGES = {"cpp", "text", "bytes", "cmake", "sh"}
ITEM = re.compile(
    r"^```(?P<language>[^\n]*)\n(?P<code>.*?)^```$"
    r"|^<!-- cpp: (?P<place>\w+)(?: -->|\n(?P<hidden>.*?)^-->)$"
    r"|^#+ (?P<heading>[^\n]*)$",
    re.MULTILINE | re.DOTALL,
)


def items(page):
    text = page.read_text()
    for match in ITEM.finditer(text):
        yield match, text.count("\n", 0, match.start()) + 1


def put(path, text):
    """Leaves a file alone that has the text already, so that nothing is built again."""
    if not path.exists() or path.read_text() != text:
        path.write_text(text)


def bytes_of(block):
    pairs = []
    for line in block.splitlines():
        pairs += re.match(r"(?:[0-9A-F]{2} {1,2})*(?:[0-9A-F]{2}(?= |$))?", line).group().split()
    return " ".join(pairs) + "\n"


class Fragments:
    """The program that the blocks without a `main` make together."""

    def __init__(self):
        self.outside, self.section, self.sections, self.printed = '#include "prelude.hpp"\n', "", 0, ""

    def add(self, place, code, page, line):
        if place == "outside":
            self.outside += code
        elif place == "inside":
            self.section += code
        else:
            sys.exit(f"{page}:{line}: a block goes outside or inside, but not {place}")

    def prints(self, text):
        self.printed += text

    def end_section(self):
        if self.section:
            self.sections += 1
            self.outside += f"static void section_{self.sections}() {{\n{self.section}}}\n"
            self.section = ""

    def source(self):
        calls = "".join(f"    section_{i}();\n" for i in range(1, self.sections + 1))
        return f"{self.outside}int main() {{\n{calls}}}\n"


def programs(out, pages):
    out.mkdir(parents=True, exist_ok=True)
    names = []

    def add(name, source, printed):
        put(out / f"{name}.cpp", source)
        put(out / f"{name}.txt", printed)
        names.append(name)

    for page in pages:
        name = page.stem.lower()
        together, whole, place, last = Fragments(), [], None, None
        for match, line in items(page):
            language, code = match["language"], match["code"]
            here = f'#line {line + 1} "{page}"\n'
            if match["heading"]:
                together.end_section()
                last = None
            elif match["hidden"]:
                together.add(match["place"], here + match["hidden"], page, line)
                last = together.prints
            elif match["place"]:
                place = match["place"]
            elif language not in LANGUAGES:
                sys.exit(f"{page}:{line}: a block of what? Known are {', '.join(sorted(LANGUAGES))}")
            elif language != "cpp":
                printed = bytes_of(code) if language == "bytes" else code
                if last is not None and language in ("text", "bytes"):
                    last(printed)
                elif language == "bytes":
                    sys.exit(f"{page}:{line}: bytes that no program prints")
                last = None
            elif place == "no":
                place = last = None
            elif re.search(r"^int main\(", code, re.MULTILINE):
                whole.append([here + code, ""])
                last = lambda printed, program=whole[-1]: program.__setitem__(1, program[1] + printed)
            else:
                together.add(place or "inside", here + code, page, line)
                place = None
                last = together.prints
        together.end_section()
        for number, (source, printed) in enumerate(whole, 1):
            add(f"{name}_{number}", source, printed)
        if together.sections:
            add(name, together.source(), together.printed)
    print(";".join(names), end="")


def run(expected, *program):
    done = subprocess.run(program, stdout=subprocess.PIPE, text=True)
    said = Path(expected).read_text()
    sys.stdout.writelines(difflib.unified_diff(said.splitlines(True), done.stdout.splitlines(True), "the page", "the program"))
    if done.returncode != 0 or done.stdout != said:
        sys.exit(f"{program[-1]} ended with {done.returncode}")


def anchors(page):
    found = set()
    for match, _ in items(page):
        if match["heading"]:
            slug = re.sub(r"[^\w\- ]", "", match["heading"].lower()).replace(" ", "-")
            count = sum(1 for other in found if re.fullmatch(re.escape(slug) + r"(-\d+)?", other))
            found.add(f"{slug}-{count}" if count else slug)
    return found


def manual(root):
    pages = [*sorted(root.glob("*.md")), *sorted((root / "docs").glob("*.md"))]
    return pages + sorted((root / "examples").glob("*.md"))


def links(root):
    wrong = []
    tops = "|".join(sorted(path.name for path in root.iterdir() if path.is_dir() and path.name not in ("build", ".git")))
    for page in manual(root):
        prose = re.sub(r"^```.*?^```$", "", page.read_text(), flags=re.MULTILINE | re.DOTALL)
        for target in re.findall(r"\]\(([^)\s]+)\)", prose):
            path, _, anchor = target.partition("#")
            to = page.parent / path if path else page
            if not to.exists() or (anchor and anchor not in anchors(to)):
                wrong.append(f"{page}: {target} leads nowhere")
        for path in re.findall(rf"`((?:{tops})/[\w./+-]*\w)`", prose):
            if not (root / path).exists() and not (root / f"{path}.in").exists():  # which the build makes
                wrong.append(f"{page}: there is no {path}")
    reached, last = set(), None
    while reached != last:
        last = set(reached)
        for page in {root / "README.md", *reached}:
            targets = re.findall(r"\]\(([^)#\s]+\.md)", page.read_text())
            reached |= {(page.parent / target).resolve() for target in targets if (page.parent / target).exists()}
    wrong += [f"{page}: no way leads here from README.md" for page in manual(root)[1:] if page.resolve() not in reached]
    sys.exit("\n".join(wrong) if wrong else 0)


def texts(root):
    thrown = set()
    for source in [*root.glob("velum/**/*.cpp"), *root.glob("velum/**/*.hpp")]:
        code = re.sub(r"^\s*//.*$", "", source.read_text(), flags=re.MULTILINE)
        thrown |= set(re.findall(r'(?:_error\(\(?(?:\w+ \? )?|required\([^"\n;]*?)"([^"]+)"', code))
        thrown |= set(re.findall(r'_error\(\(\w+ \? "[^"]*" : "([^"]+)"', code))
        thrown |= set(re.findall(r'what\(\) const noexcept \{\s*return "([^"]+)"', code))
    table = re.findall(r'^\| "([^"]+)"', (root / "docs/errors.md").read_text(), re.MULTILINE)
    said = {re.sub(r"\*.*", "", text) for text in table}
    wrong = [f"docs/errors.md lacks: {text}" for text in sorted(thrown - said)]
    wrong += [f"docs/errors.md has what nobody throws: {text}" for text in sorted(said - thrown)]
    sys.exit("\n".join(wrong) if wrong else 0)


def files(root):
    for path in sorted(root.iterdir()):
        if path.is_file():
            yield path
        elif not path.name.startswith(("build", ".")):
            yield from (file for file in sorted(path.rglob("*")) if file.is_file())


def version(root):
    stated, changes = root / "velum/version.hpp", root / "CHANGELOG.md"
    *number, abi = re.findall(r"^#define VELUM_(?:VERSION_[MP]\w+|ABI) (\d+)", stated.read_text(), re.MULTILINE)
    number = ".".join(number)
    newest = re.search(r"^## (.*)\n\n.*ABI (\d+)\.$", changes.read_text(), re.MULTILINE)
    wrong = [] if newest.groups() == (number, abi) else [f"{changes}: the newest isn't {number} with ABI {abi}"]
    repeated = re.compile(rf"(?<![\w.]){re.escape(number)}(?!\.?\d)")
    for path in files(root):
        if path not in (stated, changes) and repeated.search(path.read_text(errors="replace")):
            wrong.append(f"{path} repeats {number}")
    says = [(r"find_package\(velum ([\d.]+)", number.rpartition(".")[0]), (r"libvelum(?:\.so\.)?(\d+)", abi)]
    for page in manual(root):
        for pattern, now in says:
            wrong += [f"{page}: {said} is {now} now" for said in re.findall(pattern, page.read_text()) if said != now]
    sys.exit("\n".join(wrong) if wrong else 0)


def main(command, *arguments):
    paths = [Path(argument).absolute() for argument in arguments]
    if command == "programs":
        programs(paths[0], paths[1:])
    elif command == "run":
        run(*arguments)
    else:
        {"links": links, "texts": texts, "version": version}[command](*paths)


main(*sys.argv[1:])
