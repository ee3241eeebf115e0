#!/usr/bin/env python3
"""Runs clang-tidy on the source files of a build folder: tools/lint.py BUILD-FOLDER [REGEX]

Skips generated files. Skips files that have passed before, unless their command, a header of the project, a .clang-tidy
file or the version of clang-tidy, gcc or Qt has changed. REGEX selects files by their path in the project.
"""

import concurrent.futures
import functools
import hashlib
import json
import os
import re
import shlex
import shutil
import subprocess
import sys
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[1]
# System headers whose contents change with the version of Qt or gcc.
VERSION_HEADERS = ("/qtcoreversion.h", "/c++config.h")


@functools.cache
def digest(path):
    try:
        return hashlib.sha256(Path(path).read_bytes()).hexdigest()
    except OSError:
        return ""


def program(name):
    # The version that tools/packages.txt installs on Debian 12. Newer versions have other checks.
    return shutil.which(f"{name}-14") or shutil.which(name) or sys.exit(f"tools/lint.py: {name} is missing")


class Lint:
    def __init__(self, build):
        self.build = build
        self.folder = build / "lint"
        self.folder.mkdir(exist_ok=True)
        self.clang_tidy = program("clang-tidy")
        configs = [PROJECT / ".clang-tidy", *sorted(PROJECT.glob("*/.clang-tidy"))]
        version = subprocess.run([self.clang_tidy, "--version"], capture_output=True, text=True, check=True).stdout
        self.setup = [version, *map(digest, configs)]

    def commands(self, pattern):
        """Returns the compile commands by source file and writes them to a database for clang-tidy."""
        entries = json.loads((self.build / "compile_commands.json").read_text(encoding="utf-8"))
        for entry in entries:
            # clang cannot read the precompiled headers of gcc. Without them, it also finds missing includes.
            entry["command"] = re.sub(r" -Winvalid-pch -include \S*cmake_pch\.hxx", "", entry["command"])
        (self.folder / "compile_commands.json").write_text(json.dumps(entries), encoding="utf-8")
        sources = {Path(entry["file"]): entry for entry in entries}
        return {path: entry for path, entry in sources.items()
                if path.is_relative_to(PROJECT) and not path.is_relative_to(PROJECT / "build")
                and not path.is_relative_to(self.build) and re.search(pattern, str(path.relative_to(PROJECT)))}

    def dependencies(self, entry):
        """Returns the source file, its headers in the project and its VERSION_HEADERS."""
        command = shlex.split(entry["command"])
        output = command.index("-o")
        rule = subprocess.run([*command[:output], *command[output + 2:], "-M"], cwd=entry["directory"],
                              capture_output=True, text=True, check=False).stdout
        names = [os.path.join(entry["directory"], name) for name in rule.replace("\\\n", " ").split()[1:]]
        return [name for name in names
                if name.startswith((f"{PROJECT}/", f"{self.build}/")) or name.endswith(VERSION_HEADERS)]

    def has_passed(self, stamp, entry):
        try:
            passed = json.loads(stamp.read_text(encoding="utf-8"))
        except (OSError, ValueError):
            return False
        return (passed["setup"] == self.setup and passed["command"] == entry["command"]
                and all(digest(path) == known for path, known in passed["files"].items()))

    def check(self, path, entry):
        """Returns None if the file has passed before, otherwise the findings of clang-tidy: empty if there are none."""
        stamp = self.folder / (str(path.relative_to(PROJECT)).replace("/", "_") + ".json")
        if self.has_passed(stamp, entry):
            return None
        stamp.unlink(missing_ok=True)
        # Before clang-tidy runs, so that a file that changes meanwhile is checked again.
        files = {name: digest(name) for name in self.dependencies(entry)}
        run = subprocess.run([self.clang_tidy, "-quiet", "-p", str(self.folder), str(path)],
                             capture_output=True, text=True, check=False)
        if run.returncode != 0 or run.stdout.strip():
            return run.stdout + run.stderr
        if str(path) in files:
            passed = {"setup": self.setup, "command": entry["command"], "files": files}
            stamp.write_text(json.dumps(passed), encoding="utf-8")
        return ""


def main():
    if len(sys.argv) not in (2, 3) or not (Path(sys.argv[1]) / "compile_commands.json").is_file():
        sys.exit("usage: tools/lint.py BUILD-FOLDER [REGEX] (the folder must be configured)")
    lint = Lint(Path(sys.argv[1]).resolve())
    commands = lint.commands(sys.argv[2] if len(sys.argv) == 3 else "")
    if not commands:
        sys.exit("tools/lint.py: no source file matches")
    checked = failed = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as threads:
        for findings in threads.map(lint.check, commands.keys(), commands.values()):
            checked += findings is not None
            if findings:
                failed += 1
                print(findings, flush=True)
    print(f"{len(commands)} files: {checked} checked, {len(commands) - checked} unchanged, {failed} with findings")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
