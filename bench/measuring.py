"""What the benchmark scripts share: running a command once, medians, tables."""

import dataclasses
import json
import os
import pathlib
import signal
import statistics
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

# Targets that are no file: their writers open a browser or hand over to another program.
NO_FILES = ("tth", "ggm", "here", "vmm", "ttd")


@dataclasses.dataclass
class Figures:
    """Median and shortest wall time in seconds and largest peak memory in bytes of some runs."""

    seconds: float
    shortest: float
    memory: int


class Failure(Exception):
    """A command that ended with another status than 0, or not in time."""


class Tools:
    """The programs of one build folder."""

    def __init__(self, build, program=None):
        self.folder = pathlib.Path(build) / "bin"
        self.program = str(program or self.folder / "corvanemap")
        for needed in (self.program, self.folder / "measure", self.folder / "make_trip"):
            if not pathlib.Path(needed).exists():
                sys.exit(f"{needed} is missing: cmake --preset release && "
                         "cmake --build --preset release")

        # One of another day may know no such thing.
        told = subprocess.run([self.program, "--help"], check=True, capture_output=True).stdout
        self.syncs = b"--no-sync" in told

    def formats(self):
        """The rows of the format table that are files, as the program lists them."""
        listed = subprocess.run([self.program, "--formats", "--json"], check=True,
                                capture_output=True).stdout
        return [row for row in json.loads(listed) if row["extension"] not in NO_FILES]

    def make_trip(self, key, path, points, flags=()):
        """Writes an invented trip; raises Failure when that format cannot take it."""
        made = subprocess.run([self.folder / "make_trip", key, path, "--points", str(points),
                               *flags], capture_output=True, text=True)
        if made.returncode != 0:
            raise Failure(made.stderr.strip())

    def convert(self, source, key, target, synced=False):
        """The command that converts one file, and waits for the disk or not."""
        waiting = [] if synced or not self.syncs else ["--no-sync"]
        return [self.program, str(source), key, "--output", str(target), "--quiet", *waiting]

    def once(self, command, timeout=None):
        """Runs a command and returns its seconds and its peak memory in bytes."""
        measured = subprocess.Popen([self.folder / "measure", *command], stdout=subprocess.PIPE,
                                    stderr=subprocess.PIPE, text=True, start_new_session=True)
        try:
            output, errors = measured.communicate(timeout=timeout)
        except subprocess.TimeoutExpired:
            os.killpg(measured.pid, signal.SIGKILL)
            measured.communicate()
            raise Failure(f"not done after {timeout} s") from None
        if measured.returncode != 0:
            raise Failure(errors.strip())
        seconds, memory, status = output.split()
        if status != "0":
            raise Failure(f"status {status} {errors.strip()}".strip())
        return float(seconds), int(memory)

    def interleaved(self, commands, runs, timeout=None):
        """Runs every command in turn, `runs` times over, so that what else the machine does falls
        on all of them alike. Gives, by name, Figures, or a Failure instead."""
        samples = {name: [] for name in commands}
        failures = {}
        for _ in range(runs):
            for name, command in commands.items():
                if name in failures:
                    continue
                try:
                    samples[name].append(self.once(command, timeout))
                except Failure as failure:
                    failures[name] = failure
        return {name: failures.get(name) or Figures(statistics.median(s for s, _ in taken),
                                                    min(s for s, _ in taken),
                                                    max(m for _, m in taken))
                for name, taken in samples.items()}


def processes(pid):
    """A process and all below it."""
    found = [pid]
    for task in pathlib.Path(f"/proc/{pid}/task").glob("*/children"):
        try:
            children = task.read_text().split()
        except (FileNotFoundError, ProcessLookupError):
            continue
        for child in children:
            found += processes(int(child))
    return found


def memory_of(pid):
    """Bytes of a process and of all below it, each shared page counted once."""
    total = 0
    for each in processes(pid):
        try:
            rollup = pathlib.Path(f"/proc/{each}/smaps_rollup").read_text()
        except (FileNotFoundError, ProcessLookupError):
            continue
        total += sum(int(line.split()[1]) * 1024 for line in rollup.splitlines()
                     if line.startswith("Pss:"))
    return total


def copy_command(source, target):
    """Copies with plain reads and writes: cp and cat let the kernel share blocks."""
    return ["dd", f"if={source}", f"of={target}", "bs=128K", "status=none"]


def print_table(headers, rows):
    """Prints an aligned table: the first column to the left, the others to the right."""
    texts = [[str(cell) for cell in row] for row in rows]
    widths = [max(len(row[i]) for row in [headers, *texts]) for i in range(len(headers))]
    for row in [headers, *texts]:
        cells = [row[0].ljust(widths[0])]
        cells += [cell.rjust(width) for cell, width in zip(row[1:], widths[1:])]
        print("  ".join(cells).rstrip())


def print_notes(notes):
    """Prints what a table has no room for: pairs of a name and a text of one line or more."""
    for name, text in notes:
        print(f"  {name}: {text.splitlines()[0] if text else 'failed'}")


def unknown_formats(wanted, rows):
    """The keys or extensions among `wanted` that no row has."""
    known = {row["key"] for row in rows} | {row["extension"] for row in rows}
    return [key for key in wanted if key not in known]


def seconds_text(figures):
    """Seconds of Figures; a dash for what failed or was not run."""
    return f"{figures.seconds:.3f}" if isinstance(figures, Figures) else "-"


def megabytes_text(count):
    return f"{count / 1e6:.1f}"
