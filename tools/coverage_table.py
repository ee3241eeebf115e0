"""Prints a coverage report of gcovr (JSON): a table of the files, their gaps and the totals."""

import json
import sys


def ranges(numbers):
    """Formats [3, 4, 5, 9] as "3-5, 9"."""
    runs = []
    for number in numbers:
        if runs and runs[-1][1] == number - 1:
            runs[-1][1] = number
        else:
            runs.append([number, number])
    return ", ".join(f"{first}-{last}" if last > first else f"{first}" for first, last in runs)


def figures(covered, total):
    share = f"{100 * covered / total:5.1f} %" if total else "      -"
    return f"{covered:>5}/{total:<5} {share}"


def measure(file):
    """Returns (lines run, lines, branches taken, branches), the lines not run, the lines with branches not taken."""
    lines = [line for line in file["lines"] if not (line["gcovr/noncode"] or line["gcovr/excluded"])]
    branches = [branch["count"] > 0 for line in lines for branch in line["branches"]]
    missed = [line["line_number"] for line in lines if not line["count"]]
    partial = [line["line_number"] for line in lines
               if line["count"] and any(not branch["count"] for branch in line["branches"])]
    return (len(lines) - len(missed), len(lines), sum(branches), len(branches)), missed, partial


def main():
    with open(sys.argv[1], encoding="utf-8") as report:
        files = {file["file"]: measure(file) for file in json.load(report)["files"]}
    if not files:
        sys.exit("The report has no files")
    width = max(len(name) for name in files)
    gaps = [(name, missed, partial) for name, (_, missed, partial) in sorted(files.items()) if missed or partial]
    totals = [sum(column) for column in zip(*(counts for counts, _, _ in files.values()))]

    print(f"{'File':<{width}}  {'Lines':^19}  {'Branches':^19}")
    for name, (counts, _, _) in sorted(files.items()):
        print(f"{name:<{width}}  {figures(*counts[:2])}  {figures(*counts[2:])}")
    print("\nLines not run, and branches not taken in lines that were run")
    for name, missed, partial in gaps:
        print(f"{name}: lines {ranges(missed) or '-'}; branches at {ranges(partial) or '-'}")
    print(f"\n{'Total':<{width}}  {figures(*totals[:2])}  {figures(*totals[2:])}")


main()
