"""Runs one command and prints, separated by tabs: seconds, bytes it has asked the kernel to read, its peak memory in
KiB. What the command prints goes to a file: measure_run.py FILE COMMAND [ARGUMENT...]
"""

import os
import subprocess
import sys
import time


def bytes_read():
    """By this process and by those it has waited for."""
    with open("/proc/self/io", encoding="ascii") as counters:
        return int(counters.readline().split()[1])


def main():
    with open(sys.argv[1], "wb") as output:
        read_before = bytes_read()
        start = time.perf_counter()
        process = subprocess.Popen(sys.argv[2:], stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT)
        _, status, usage = os.wait4(process.pid, 0)
        seconds = time.perf_counter() - start
        read = bytes_read() - read_before
    if status != 0:
        sys.exit(f"measure_run.py: {sys.argv[2]} failed: {sys.argv[1]}")
    print(f"{seconds:.4f}\t{read}\t{usage.ru_maxrss}")


main()
