#!/usr/bin/python3
"""Prints the processor milliseconds that MNE-Python takes to read a text of dipoles, FILE: the median of ROUNDS."""

import statistics
import sys
import time

import mne


def main(path, rounds):
    times = []
    for _ in range(rounds):
        start = time.process_time()
        mne.read_dipole(path, verbose="error")
        times.append((time.process_time() - start) * 1e3)
    print(statistics.median(times))


if __name__ == "__main__":
    main(sys.argv[1], int(sys.argv[2]))
