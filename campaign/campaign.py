#!/usr/bin/env python3
"""What may not break, tried until a figure stands. campaign.py [PART ...] [--seconds S] [--list]

Each part is seeded, goes on where it was stopped (campaign/reached/, kept with the code since some take days), and
writes its figure with date and commit into docs/reliability.md. Without a name all run. `--seconds` ends each part
after that long. Status 1 where something broke.
"""
import argparse
import datetime
import json
import os
import pathlib
import random
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parents[1]
BUILD = ROOT / "build" / "release"
STATE = ROOT / "build" / "campaign"
REACHED = ROOT / "campaign" / "reached"
PAGE = ROOT / "docs" / "reliability.md"
CLI = BUILD / "orva-cli"


class Broke(Exception):
    """What is not as it must be."""


def require(holds, what):
    if not holds:
        raise Broke(what)


class Run:
    """A part as it goes on: `done` of `goal`, what else it keeps, and its time."""

    def __init__(self, name, goal, seconds):
        self.name, self.goal, self.ends = name, goal, time.monotonic() + seconds
        self.file = REACHED / f"{name}.json"
        self.kept = json.loads(self.file.read_text()) if self.file.exists() else {"done": 0}
        if self.kept["done"] >= goal:  # once more from the start
            self.kept = {"done": 0}

    @property
    def done(self):
        return self.kept["done"]

    def rounds(self, step=1):
        """The numbers of what is left, as long as there is time."""
        while self.done < self.goal and time.monotonic() < self.ends:
            yield self.done
            self.add(step)

    def slices(self):
        """The seconds that are left, as long as something is to be done; what was done is added by the part."""
        while self.done < self.goal and (left := int(self.ends - time.monotonic())) > 0:
            yield left

    def add(self, count):
        self.kept["done"] += count
        self.save()

    def most(self, key, value):
        self.kept[key] = max(self.kept.get(key, value), value)

    def save(self):
        REACHED.mkdir(exist_ok=True)
        self.file.write_text(json.dumps(self.kept, indent=1) + "\n")


def dice(run, number):
    return random.Random(f"{run.name} {number}")


def command(*words, env=None, status=0, **options):
    done = subprocess.run([str(w) for w in words], capture_output=True, text=True,
                          env={**os.environ, **(env or {})}, **options)
    require(status is None or done.returncode == status,
            f"status {done.returncode} of {' '.join(map(str, words))}: {done.stderr[-500:]}")
    return done


def folder():
    return pathlib.Path(tempfile.mkdtemp(prefix="orva-campaign-"))


def shim(name, source):
    """A library to be preloaded."""
    library = STATE / f"{name}.so"
    STATE.mkdir(parents=True, exist_ok=True)
    command("cc", "-shared", "-fPIC", "-O1", "-I", ROOT / "tests" / "driven", "-o", library, source, "-ldl")
    return library


def record(name, goal, figure, whole):
    """The row of the part, in place of an older one."""
    commit = command("git", "-C", ROOT, "rev-parse", "--short", "HEAD").stdout.strip()
    date = datetime.date.today().isoformat()
    row = f"| `{name}` | {goal} | {figure}{'' if whole else ' (not whole)'} | {date}, {commit} |\n"
    lines = PAGE.read_text().splitlines(keepends=True)
    at = [i for i, line in enumerate(lines) if line.startswith(f"| `{name}` |")]
    if at:
        lines[at[0]] = row
    else:
        rule = next(i for i, line in enumerate(lines) if line.startswith("|---"))
        lines.insert(rule + 1, row)
    PAGE.write_text("".join(lines))


def main():
    import batch
    import files
    import hours
    import mutants
    import window
    parts = {part.__name__.replace("_", "-"): part for module in (batch, files, window, hours, mutants) for part in module.PARTS}
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("parts", nargs="*", metavar="PART")
    parser.add_argument("--seconds", type=float, default=86400)
    parser.add_argument("--goal", type=int, help="another number of trials")
    parser.add_argument("--list", action="store_true")
    options = parser.parse_args()
    if options.list:
        for name, part in parts.items():
            print(f"{name:16} {part.goal:>10}  {part.__doc__.splitlines()[0]}")
        return 0
    unknown = set(options.parts) - set(parts)
    if unknown:
        parser.error(f"no part {', '.join(sorted(unknown))}")
    broken = 0
    for name in options.parts or parts:
        part = parts[name]
        run = Run(name, options.goal or part.goal, options.seconds)
        begun = time.monotonic()
        try:
            figure = part(run)
            run.save()
        except Broke as why:
            broken += 1
            print(f"{name}: BROKE at {run.done}: {why}", flush=True)
            continue
        print(f"{name}: {figure} ({time.monotonic() - begun:.0f} s)", flush=True)
        record(name, part.__doc__.splitlines()[0], figure, run.done >= part.goal)
    return 1 if broken else 0


if __name__ == "__main__":
    sys.path.insert(0, str(pathlib.Path(__file__).parent))
    sys.modules["campaign"] = sys.modules["__main__"]  # one of it, also for the parts
    sys.exit(main())
