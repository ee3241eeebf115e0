"""Turns the measurements of compare.sh into the tables of docs/benchmarks.md.

compare_table.py --check FILE           fails unless the file has the two marks between which the tables belong
compare_table.py --into FILE FOLDER     writes the tables of the measurements in FOLDER between the marks
compare_table.py --print FOLDER         prints the tables
"""

import collections
import datetime
import os
import re
import statistics
import subprocess
import sys

BEGIN = "<!-- written by bench/compare.sh: begin -->"
END = "<!-- written by bench/compare.sh: end -->"

CORPORA = {
    "usr": "A system tree: /usr",
    "small": "200,000 small files",
    "large": "2,000 files of 1 MiB",
    "pairs": "Two pairs of 2 GiB",
    "photos": "A collection of photos",
    "given": "The given folders",
}

TOOLS = {
    "quillory": "**Quillory's engine**",
    "quillory-find": "**`quillory-cli find`**",
    "lower-bound": "`bench/lower_bound`",
    "jdupes-TT": "`jdupes -TT`",
    "rdfind": "`rdfind -dryrun`",
    "jdupes": "`jdupes`",
    "fdupes": "`fdupes`",
    "rmlint": "`rmlint`",
    "read-all": "`bench/read_all`",
    "find": "`find -type f`",
}

WORK = """\
| program | what it reads of a file whose size is not unique | result |
|---|---|---|
| Quillory's engine | up to 4 KiB all, up to 8 KiB the first 4 KiB, otherwise the first and the last 4 KiB; SHA-256 | equal **samples**, of any size |
| `quillory-cli find` | the first 16 KiB, then the files that are equal so far in parallel, until they differ | **compares** all bytes |
| `bench/lower_bound` | the same as the engine, one file at a time on each core, with plain system calls and without progress reports | equal **samples**, of any size |
| `jdupes -TT` | the first 4 KiB, a 64-bit hash | **samples**: equal size and beginning |
| `rdfind -dryrun` | the first and the last 64 bytes, then all of the files that are equal so far, SHA-1 | **compares** by hash |
| `jdupes` | the first 4 KiB, then all for a 64-bit hash, then all again byte by byte | **compares** |
| `fdupes` | the first 4 KiB, then all for MD5, then all again byte by byte | **compares** |
| `rmlint` | all of the files that are equal so far, in pieces, BLAKE2b | **compares** by hash |
| `bench/read_all` | every file once, on all cores, and discards it | nothing |
| `find -type f` | nothing, it only lists the folders | names only |

"Quillory takes" is the engine's median as a multiple of the program's: below 1, the engine is faster. "`find` takes"
is that of `quillory-cli find`. "Work" is the CPU time of all cores. "Reads" is the number of bytes that the kernel
returned. The memory of small programs cannot be measured.

A program that compares samples groups some files that differ outside the samples; the engine and the lower bound also
group files of different sizes. Only the ratios to `jdupes -TT` and `bench/lower_bound` compare equal work. The other
ratios compare how long a user waits for a result.

All programs but Quillory, rmlint, `read_all` and the lower bound use one core. Quillory requests the samples of
several files that are not in memory before it waits for the first one; the others, including the lower bound, wait
for each file. No program follows symbolic links. All count each hard link as a file (`-H`, `-removeidentinode false`)
and empty files as copies of each other (`-z`, `-ignoreempty false`); `quillory-cli find` and `rmlint` count a file
with several names once. All but `rdfind` skip hidden files (`-A`, `-prune`). The engine lists the folders twice,
because it counts the files first to report a percentage.
"""

GROWTH = """\
### Growth

The same kind of small files, up to eight times as many, warm. Nothing is quadratic if the work per file is constant.
The figures of the lower bound show how the machine itself scales.

| files | Quillory, s | work, us per file | lower bound, s | work, us per file | Quillory's bytes per file | of these for the path |
|--:|--:|--:|--:|--:|--:|--:|
"""

WINDOW = """\
### The window

The table shows the longest times between two beats of a 5 ms timer on the GUI thread, which is how long the window
takes to respond. "CPU time" is the part of such a gap during which the thread was running. Measured with
`gui_heartbeat /usr`.
"""

Run = collections.namedtuple("Run", "seconds work read peak")


def output_of(folder, corpus, tool):
    """The output of the last run of a program on a corpus."""
    with open(f"{folder}/{corpus}.{tool}.txt", encoding="utf-8", errors="replace") as output:
        return output.read()


def number_before(text, pattern):
    found = re.search(pattern, text)
    return int(found.group(1)) if found else 0


def files_with_copies(tool, text):
    """The number of files in groups, or None for a program that does not form groups."""
    if tool in ("quillory", "lower-bound"):
        return number_before(text, r"duplicates (\d+)")
    if tool == "rdfind":
        return number_before(text, r"have (\d+) files that are not unique")
    if tool == "quillory-find":
        return len([line for line in text.split("\n") if line])
    if tool in ("rmlint", "read-all", "find"):
        return None
    sets = re.search(r"(\d+) duplicate files \(in (\d+) sets\)", text)
    return int(sets.group(1)) + int(sets.group(2)) if sets else 0


def read_runs(folder):
    """The runs by corpus, state and program."""
    runs = collections.defaultdict(list)
    with open(f"{folder}/runs.tsv", encoding="utf-8") as lines:
        for line in lines:
            corpus, state, tool, seconds, work, read, peak = line.rstrip("\n").split("\t")
            runs[corpus, state, tool].append(Run(float(seconds), float(work), int(read), int(peak)))
    return runs


def median(runs, field="seconds"):
    return statistics.median(getattr(run, field) for run in runs)


def comparison(folder, corpus, title, runs):
    """The tables of all programs on one corpus."""
    facts = output_of(folder, corpus, "quillory")
    files = number_before(facts, r"files +(\d+)")
    candidates = number_before(facts, r"candidates +(\d+)")
    text = f"### {title}\n\n{files:,} files, {candidates:,} of them with a size that is not unique.\n"
    for state in ("warm", "cold"):
        own = runs[corpus, state, "quillory"]
        command = runs[corpus, state, "quillory-find"]
        if not own:
            continue
        text += (f"\n| {state}, rounds: {len(own)} | median, s | fastest to slowest, s | Quillory takes "
                 "| `find` takes | work, s | reads, MiB | peak memory, MiB | files with copies |\n"
                 "|---|--:|--:|--:|--:|--:|--:|--:|--:|\n")
        for tool in TOOLS:
            text += row(tool, runs[corpus, state, tool], {"quillory": own, "quillory-find": command},
                        files_with_copies(tool, output_of(folder, corpus, tool)))
    return text


def row(tool, some, own, found):
    """The table row of one program on one corpus, with its ratios to the engine and to `quillory-cli find`."""
    seconds = [run.seconds for run in some]
    peak = median(some, "peak")
    cells = [TOOLS[tool], f"{median(some):.2f}", f"{min(seconds):.2f} to {max(seconds):.2f}",
             *("" if tool == name else f"{median(mine) / median(some):.2f} x" for name, mine in own.items()),
             f"{median(some, 'work'):.2f}",
             f"{median(some, 'read') / 2**20:,.0f}", f"{peak / 1024:,.0f}" if peak else "small",
             "" if found is None else f"{found:,}"]
    return "| " + " | ".join(cells) + " |\n"


def growth(folder, runs):
    """The table of time and memory by number of files."""
    text = GROWTH
    own, least = ({parts: runs[f"growth-{parts}", "warm", tool] for parts in (1, 2, 4, 8)}
                  for tool in ("quillory", "lower-bound"))
    for parts in own:
        facts = output_of(folder, f"growth-{parts}", "quillory")
        files = number_before(facts, r"files +(\d+)")
        beside, path = re.search(r"per file +(\d+) bytes and (\d+) bytes of path", facts).groups()
        text += (f"| {files:,} | {median(own[parts]):.2f} | {median(own[parts], 'work') / files * 1e6:.1f} "
                 f"| {median(least[parts]):.2f} | {median(least[parts], 'work') / files * 1e6:.1f} "
                 f"| {int(beside) + int(path)} | {path} |\n")
    times, works = ([median(some[8], field) / median(some[1], field) for some in (own, least)]
                    for field in ("seconds", "work"))
    command = [median(runs[f"growth-{parts}", "warm", "quillory-find"]) for parts in (1, 8)]
    return text + (f"\nEight times the files take Quillory {times[0]:.2f} times as long and {works[0]:.2f} times the "
                   f"work;\nthe lower bound {times[1]:.2f} times as long and {works[1]:.2f} times the work;\n"
                   f"`quillory-cli find` {command[1] / command[0]:.2f} times as long.\n")


def window(folder):
    """How long the window takes to respond."""
    with open(f"{folder}/window.txt", encoding="utf-8") as output:
        return f"{WINDOW}\n```text\n{output.read().strip()}\n```\n"


def first_line(*command):
    done = subprocess.run(command, capture_output=True, text=True, check=False)
    return (done.stdout or done.stderr).strip().split("\n")[0]


def machine():
    with open("/proc/cpuinfo", encoding="utf-8") as lines:
        model = next((line.split(":")[1].strip() for line in lines if line.startswith("model name")), "unknown")
    with open("/proc/meminfo", encoding="utf-8") as lines:
        memory = int(next(lines).split()[1]) / 2**20
    versions = {name: first_line("dpkg-query", "--show", "--showformat=${Version}", name)
                for name in ("jdupes", "rdfind", "fdupes", "rmlint", "findutils", "libssl3", "libqt6core6")}
    system = first_line("sh", "-c", ". /etc/os-release && echo $PRETTY_NAME")
    disk = first_line("findmnt", "-no", "FSTYPE", "-T", "/usr")
    return (f"{datetime.date.today()}: {len(os.sched_getaffinity(0))} cores ({model}), {memory:.0f} GB of memory, "
            f"{system}, Linux {os.uname().release},\n`/usr` on {disk}; commit "
            f"{first_line('git', 'describe', '--always', '--dirty')};\n"
            + ", ".join(f"{name} {version}" for name, version in versions.items()) + ".\n")


def tables(folder):
    runs = read_runs(folder) if os.path.exists(f"{folder}/runs.tsv") else {}
    parts = ["## Comparison with other programs\n", machine(), WORK]
    for corpus, title in CORPORA.items():
        if (corpus, "warm", "quillory") in runs:
            parts.append(comparison(folder, corpus, title, runs))
    if ("growth-8", "warm", "quillory") in runs:
        parts.append(growth(folder, runs))
    if os.path.exists(f"{folder}/window.txt"):
        parts.append(window(folder))
    return "\n".join(parts)


def read_document(path):
    """The text before, between and after the marks of the document."""
    with open(path, encoding="utf-8") as document:
        text = document.read()
    if text.count(BEGIN) != 1 or text.count(END) != 1 or text.index(BEGIN) > text.index(END):
        sys.exit(f"compare.sh: {path} has no marks for the tables: it must contain the lines '{BEGIN}' and '{END}'")
    before, rest = text.split(BEGIN)
    between, behind = rest.split(END)
    return before, between, behind


def main():
    action, *arguments = sys.argv[1:]
    if action == "--check":
        read_document(arguments[0])
    elif action == "--print":
        print(tables(arguments[0]))
    else:
        path, folder = arguments
        text = tables(folder)
        before, behind = "# Benchmarks\n\n", "\n"
        if os.path.exists(path):
            before, _, behind = read_document(path)
        with open(path, "w", encoding="utf-8") as document:
            document.write(f"{before}{BEGIN}\n\n{text}\n{END}{behind}")


main()
