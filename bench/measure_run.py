"""Runs a command, writes its output to a file and prints its measurements: measure_run.py FILE COMMAND [ARGUMENT...]

The measurements are separated by tabs: elapsed seconds, CPU seconds, bytes read, peak memory in KiB. The peak is 0 if
it is below that of this script, which hides it.
"""

import os
import resource
import subprocess
import sys
import time


def bytes_read():
    """Bytes read by this process and by its finished child processes."""
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
    own_peak = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss
    peak = usage.ru_maxrss if usage.ru_maxrss > own_peak else 0
    print(f"{seconds:.4f}\t{usage.ru_utime + usage.ru_stime:.4f}\t{read}\t{peak}")


main()
