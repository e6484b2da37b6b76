#!/usr/bin/env python3
"""Runs random programs in the machine and in the reference interpreter, and compares the screens row by row in 64, 32
and 16 columns:  compare.py folder-to-write-into quollrun [--folder folder-of-the-ROMs]
QUOLL_PROGRAMS: how many (40); QUOLL_SEED: of the first."""
import os
import subprocess
import sys

from faults import Unsettled
from generator import Generator
from machine import Machine
from numbers40 import Constants

WIDTHS = (64, 32, 16)
HERE = os.path.dirname(os.path.abspath(__file__))
LONGEST = 240


class Case:
    """A program and the screens that it should leave; Unsettled if that can't be told."""

    def __init__(self, seed):
        self.seed = seed
        lines, self.lines, answers = Generator(seed).program()
        if max(map(len, self.lines)) > LONGEST:
            raise Unsettled("a line too long")
        self.screens, used = [], set()
        Constants.doubtful = False
        for width in WIDTHS:
            machine = Machine(lines, answers, width)
            self.screens.append(machine.run())
            used.add(machine.used)
        if len(used) > 1:
            raise Unsettled("answers that depend on the width")
        self.answers = answers[:used.pop()]

    def text(self):
        parts = ["P"] + ["L " + line for line in self.lines]
        return "\n".join(parts + ["K " + answer.replace("\r", "\\r") for answer in self.answers]) + "\n"


def make(wanted, seed):
    cases, left_out = [], {}
    while len(cases) < wanted:
        try:
            cases.append(Case(seed))
        except Unsettled as reason:
            left_out[str(reason)] = left_out.get(str(reason), 0) + 1
        seed += 1
    return cases, left_out


def screens(path):
    """{(program from 1, width): rows}, and what the machine refused."""
    found, troubles, rows = {}, [], None
    with open(path, encoding="latin-1") as file:
        for line in file.read().split("\n"):
            if line.startswith("S "):
                rows = []
                found[tuple(map(int, line.split()[1:]))] = rows
            elif line.startswith("|"):
                rows.append(line[1:])
            elif line.startswith("E "):
                troubles.append(line)
    return found, troubles


def show(case, width, wanted, got):
    print(f"\nprogram {case.seed}, {width} columns")
    print("\n".join(case.lines))
    for answer in case.answers:
        print("answer: " + answer.strip())
    for row, (a, b) in enumerate(zip(wanted, got)):
        if a != b:
            print(f"  row {row}: machine   |{b}|\n          reference |{a}|")


def main():
    folder, quollrun = sys.argv[1], sys.argv[2:]
    cases, left_out = make(int(os.environ.get("QUOLL_PROGRAMS", 40)), int(os.environ.get("QUOLL_SEED", 1)))
    programs, output = os.path.join(folder, "programs.txt"), os.path.join(folder, "screens.txt")
    with open(programs, "w", encoding="latin-1") as file:
        file.writelines(case.text() for case in cases)
    subprocess.run([*quollrun, os.path.join(HERE, "machine_run.lua"), programs, output], check=True)
    found, troubles = screens(output)
    compared = rows = filled = different = failed = 0
    for number, case in enumerate(cases, 1):
        good = True
        for width, wanted in zip(WIDTHS, case.screens):
            got = found[number, width]
            wrong = sum(a != b for a, b in zip(wanted, got)) + abs(len(wanted) - len(got))
            rows += len(wanted)
            filled += sum(row != "" for row in wanted)
            different += wrong
            if wrong and good and failed < 40:
                show(case, width, wanted, got)
            good = good and not wrong
        compared += 1
        failed += not good
    for trouble in troubles:
        print(trouble)
    for reason, times in sorted(left_out.items()):
        print(f"left out {times}: {reason}")
    print(f"{compared} programs in {len(WIDTHS)} widths, {rows} rows ({filled} not empty): "
          f"{different} rows in {failed} programs differ")
    sys.exit(1 if failed or troubles or not compared else 0)


main()
