#!/usr/bin/env python3
"""printers_test.py TRANSCRIPT PREFIX SCRIPT TESTS COMPILER [OPTION...]

Builds the program beside this file against an installed velum, and gives gdb the commands of the transcript, which must
say what stands there. gdb has to find velum's printers in the prefix by itself; SCRIPT is the one of its own folder.
Ends with 77, for a test that was skipped, where there is no gdb that can run a program.
"""

import difflib
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

SKIPPED = 77
HERE = Path(__file__).parent


def gdb(*arguments):
    done = subprocess.run(["gdb", "-nx", "-batch", "-ex", "set host-charset UTF-8", *arguments],
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL, encoding="utf-8",
                          errors="backslashreplace")
    return done.stdout


def skip_without_gdb():
    works = "42" in gdb("-ex", "python print(6 * 7)") if shutil.which("gdb") else False
    if works and "exited normally" in gdb("-ex", "run", "/bin/true"):
        return
    print("SKIPPED: there is no gdb with Python that can run a program (scripts/setup debugger installs one)")
    sys.exit(SKIPPED)


def build(program, prefix, tests, compiler, options):
    library = next(prefix.glob("lib*/**/libvelum.so")).parent
    subprocess.run([compiler, "-std=c++20", "-g", "-O0", *options, f"-I{prefix}/include", f"-I{tests}",
                    HERE / "program.cpp", f"-L{library}", "-lvelum", f"-Wl,-rpath,{library}", "-o", program], check=True)


def transcript(program, prefix, commands):
    with tempfile.NamedTemporaryFile("w", suffix=".gdb") as script:
        script.writelines(f"echo > {command.replace(chr(34), chr(92) + chr(34))}\\n\n"
                          f"python\ntry: gdb.execute({command!r})\nexcept gdb.error as e: print(f'error: {{e}}', end='')\n"
                          "end\necho \\n\n" for command in commands)
        script.flush()
        said = gdb("-iex", f"set auto-load safe-path {prefix}", "-ex", "break here_gdb_looks", "-ex", "run", "-ex", "up",
                   "-ex", f"source {script.name}", program)
    return re.sub(r"(?<!nan\()0x[0-9a-f]+", "0x...", re.sub(r"\n+", "\n", said[said.find("\n> ") + 1:]))


def started_by_script(program, prefix):
    with tempfile.NamedTemporaryFile("w", suffix=".py") as script:
        script.write("import gdb\nfor command in 'break here_gdb_looks', 'run', 'up', 'info locals': gdb.execute(command)\n")
        script.flush()
        return gdb("-iex", f"set auto-load safe-path {prefix}", "-x", script.name, program)


def main(expected, prefix, script, tests, compiler, *options):
    skip_without_gdb()
    wanted = Path(expected).read_text()
    commands = [line.removeprefix("> ") for line in wanted.splitlines() if line.startswith("> ")]
    with tempfile.TemporaryDirectory() as folder:
        program = Path(folder) / "program"
        build(program, Path(prefix), tests, compiler, options)
        said = transcript(program, prefix, commands)
        by_script = started_by_script(program, prefix)
    difference = list(difflib.unified_diff(wanted.splitlines(True), said.splitlines(True), "expected", "gdb"))
    sys.stdout.writelines(difference)
    if "ModuleNotFoundError" in by_script or "velum::" not in by_script:
        difference.append(by_script)
        print(f"no printers in a program that a script started: {by_script}")
    in_folder = gdb("-ex", f"source {script}", "-ex", "info pretty-printer global velum")
    if "\n  velum\n" not in in_folder:
        difference.append(in_folder)
        print(f"the script of gdb's folder brings no printers: {in_folder}")
    sys.exit(1 if difference else 0)


if __name__ == "__main__":
    main(*sys.argv[1:])
