#!/usr/bin/env python3
"""Checks that the tests can fail: applies each mutant of tests/mutants/*.mutants, builds, and runs its tests.

A mutant is a faulty change of one or a few lines that a user would notice. One of the tests that it names must fail. Works
on a copy of the tree in build/mutants; the sources are not changed. Exits with 1 if a mutant survives, with 2 if a mutant
does not apply or the tree does not build.
"""

import argparse
import os
import re
import shutil
import subprocess
import sys
import time
from dataclasses import dataclass, field
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
MUTANTS = PROJECT / "tests" / "mutants"
WORK = PROJECT / "build" / "mutants"
SOURCE = WORK / "source"
BUILD = SOURCE / "build" / "dev"

# Seconds. A test that hangs counts as failed; the limit is far above the time of a test on a slow machine.
TEST_SECONDS = 300


class Fault(Exception):
    """An error in a list of mutants or in the tree, as one line."""


@dataclass
class Mutant:
    title: str
    place: str
    file: str = ""
    old: list[str] = field(default_factory=list)
    new: list[str] = field(default_factory=list)
    tests: list[str] = field(default_factory=list)
    function: str = ""
    survives: str = ""

    def check(self):
        if not self.title or not self.file or not self.old:
            raise Fault(f"{self.place}: a mutant needs a title, a file and at least one '-' line")
        if bool(self.tests) == bool(self.survives):
            raise Fault(f"{self.place}: a mutant needs either tests or a reason why it survives")

    def applied_to(self, text):
        """Returns the text of the file with the change."""
        lines = text.split("\n")
        stripped = [line.strip() for line in lines]
        count = len(self.old)
        starts = [i for i in range(len(lines) - count + 1) if stripped[i : i + count] == self.old]
        if len(starts) != 1:
            raise Fault(f"{self.place}: its '-' lines occur {len(starts)} times in {self.file}, not once")
        start = starts[0]
        lines[start : start + count] = self.new
        return "\n".join(lines)


def parse_block(lines, place):
    mutant = Mutant(title="", place=place)
    for line in lines:
        key, _, value = line.partition(" ")
        value = value.strip()
        match key:
            case "#":
                mutant.title = f"{mutant.title} {value}".strip()
            case "file:":
                mutant.file = value
            case "-":
                mutant.old.append(value)
            case "+":
                mutant.new.append(value)
            case "tests:":
                mutant.tests = value.replace(",", " ").split()
            case "function:":
                mutant.function = value
            case "survives:":
                mutant.survives = value
            case _:
                raise Fault(f"{place}: cannot read the line '{line}'")
    mutant.check()
    return mutant


def read_mutants(path):
    """Returns the mutants of one list. Empty lines separate the blocks."""
    mutants = []
    block = []
    for number, line in enumerate([*path.read_text(encoding="utf-8").splitlines(), ""], start=1):
        if line.strip():
            block.append(line)
        elif block:
            mutants.append(parse_block(block, f"{path.name}:{number - len(block)}"))
            block = []
    return mutants


def tracked_files():
    listed = subprocess.run(
        ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
        cwd=PROJECT, check=True, capture_output=True,
    ).stdout
    return [name for name in listed.decode().split("\0") if name and (PROJECT / name).is_file()]


def copy_tree():
    """Updates the copy. Does not touch unchanged files, so that they are not built again."""
    wanted = set(tracked_files())
    for name in wanted:
        source, copy = PROJECT / name, SOURCE / name
        if not copy.is_file() or copy.read_bytes() != source.read_bytes():
            copy.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy2(source, copy)
            copy.touch()
    for copy in SOURCE.rglob("*"):
        name = copy.relative_to(SOURCE)
        if copy.is_file() and name.parts[0] != "build" and str(name) not in wanted:
            copy.unlink()


def check_test(mutant, source):
    """Checks that the test program and the functions exist; an unknown function fails and would kill every mutant."""
    if not source.is_file():
        raise Fault(f"{mutant.place}: no such test: {source.stem}")
    text = source.read_text(encoding="utf-8")
    for function in mutant.function.split():
        name = function.partition(":")[0]
        if f"::{name}()" not in text:
            raise Fault(f"{mutant.place}: {source.stem} has no function {name}")


def build(targets):
    """Returns whether the targets build. Writes the output to build/mutants/build.log."""
    with open(WORK / "build.log", "w", encoding="utf-8") as log:
        command = ["cmake", "--build", str(BUILD), "--target", *targets]
        return subprocess.run(command, stdout=log, stderr=subprocess.STDOUT, check=False).returncode == 0


def configure():
    with open(WORK / "configure.log", "w", encoding="utf-8") as log:
        # A mutant may leave a variable unused.
        command = ["cmake", "--preset", "dev", "-DQUILLORY_WARNINGS_AS_ERRORS=OFF"]
        if subprocess.run(command, cwd=SOURCE, stdout=log, stderr=subprocess.STDOUT, check=False).returncode:
            raise Fault(f"configuring failed, see {WORK / 'configure.log'}")


def passes(test, function):
    # timeout also ends the programs that a hanging test has started.
    command = ["timeout", "--kill-after=5", str(TEST_SECONDS), str(BUILD / "tests" / test)]
    environment = {**os.environ, "QT_QPA_PLATFORM": "offscreen"}
    with open(WORK / "test.log", "w", encoding="utf-8") as log:
        return subprocess.run(
            [*command, *function.split()], cwd=BUILD / "tests", env=environment, stdin=subprocess.DEVNULL,
            stdout=log, stderr=subprocess.STDOUT, check=False,
        ).returncode == 0


def check_unchanged_tree(mutants):
    """Checks that all tests pass without a mutant; a test that fails anyway would kill every mutant."""
    runs = sorted({(test, mutant.function) for mutant in mutants for test in mutant.tests})
    if not build(sorted({test for test, _ in runs})):
        raise Fault(f"the unchanged tree does not build, see {WORK / 'build.log'}")
    for test, function in runs:
        if not passes(test, function):
            raise Fault(f"{test} {function} fails on the unchanged tree, see {WORK / 'test.log'}")


def run_mutant(mutant):
    """Returns the result: 'killed by ...' or 'SURVIVED ...'."""
    copy = SOURCE / mutant.file
    original = copy.read_text(encoding="utf-8")
    copy.write_text(mutant.applied_to(original), encoding="utf-8")
    try:
        if not build(mutant.tests):
            shutil.copy2(WORK / "build.log", WORK / "unbuilt.log")
            return f"SURVIVED: it does not build, see {WORK / 'unbuilt.log'}"
        for test in mutant.tests:
            if not passes(test, mutant.function):
                return f"killed by {test}"
        return f"SURVIVED {' '.join(mutant.tests)}"
    finally:
        copy.write_text(original, encoding="utf-8")


def run(mutants):
    WORK.mkdir(parents=True, exist_ok=True)
    copy_tree()
    configure()
    check_unchanged_tree(mutants)
    survivors = 0
    for number, mutant in enumerate(mutants, start=1):
        start = time.monotonic()
        outcome = run_mutant(mutant)
        survivors += outcome.startswith("SURVIVED")
        seconds = time.monotonic() - start
        print(f"{number}/{len(mutants)} {mutant.place} {mutant.title}: {outcome} ({seconds:.0f} s)", flush=True)
    print(f"{len(mutants) - survivors} killed, {survivors} survived")
    return 1 if survivors else 0


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("pattern", nargs="?", default="", help="run only mutants whose file, title or location matches")
    parser.add_argument("--check", action="store_true", help="only check that all mutants apply to the sources and that their tests exist")
    options = parser.parse_args()
    mutants = [mutant for path in sorted(MUTANTS.glob("*.mutants")) for mutant in read_mutants(path)]
    for mutant in mutants:
        path = PROJECT / mutant.file
        if not path.is_file():
            raise Fault(f"{mutant.place}: no such file: {mutant.file}")
        mutant.applied_to(path.read_text(encoding="utf-8"))
        for test in mutant.tests:
            check_test(mutant, PROJECT / "tests" / f"{test}.cpp")
    print(f"{len(mutants)} mutants, {sum(1 for mutant in mutants if mutant.survives)} of them expected to survive")
    if options.check:
        return 0
    wanted = re.compile(options.pattern)
    chosen = [m for m in mutants if m.tests and wanted.search(f"{m.place} {m.title} {m.file}")]
    if not chosen:
        raise Fault(f"no mutant matches '{options.pattern}'")
    return run(chosen)


if __name__ == "__main__":
    try:
        sys.exit(main())
    except Fault as fault:
        print(f"tools/mutants/run.py: {fault}", file=sys.stderr)
        sys.exit(2)
