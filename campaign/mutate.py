#!/usr/bin/env python3
"""Tells which faults the tests would miss: changes one place of a source file at a time, builds the
test targets and runs them.

    campaign/mutate.py orva_model_tests model/system_record.cpp model/line_array_old.cpp
    campaign/mutate.py --count 40 --seed 7 --kinds constant,call orva_app_tests app/state/settings.cpp
    campaign/mutate.py orva_model_tests,orva_drawing_tests model/system_record.cpp

Kinds of change, tried on code only (not in comments, texts or includes):
    arithmetic  + - * / and their assignments, a sign dropped
    comparison  < <= > >= == != && ||
    constant    a number by one per cent or by 1, true for false
    call        a statement of one line left out: a call or an assignment

Prints one row per change - killed, SURVIVED, or not built (which counts for nothing) - and the
figures per file. `--count` takes that many by chance, the same ones for the same seed; 0 takes all.
The file is put back whatever happens, Ctrl+C and SIGTERM included; after a SIGKILL git has it.
Some changes mean nothing (`<` for `<=` where both sides are never equal): a person must judge.
Status 1 when anything survived.
"""
import argparse
import os
import pathlib
import random
import re
import signal
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
SWAPS = {" + ": " - ", " - ": " + ", " * ": " / ", " / ": " * ", " += ": " -= ", " -= ": " += ",
         "++": "--", "--": "++"}
COMPARED = {" < ": " <= ", " <= ": " < ", " > ": " >= ", " >= ": " > ", " == ": " != ",
            " != ": " == ", " && ": " || ", " || ": " && "}
NUMBER = re.compile(r"(?<![\w.\"'])(\d+\.\d+|\d+)([fFuUlL]*)(?![\w.'])")
CALL = re.compile(r"^\s+(?!return|using|else|case|break|continue|const|auto|static|for|if|while)"
                  r"[\w:.>\[\]-]+(?:\(.*\)| [-+*|&]?= [^{]*);$")


def blanked(text):
    """The source with comments, texts and directives as blanks of the same length."""
    pattern = r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])*\'|^#[^\n]*'
    return re.sub(pattern, lambda m: re.sub(r"[^\n]", "\x01", m[0]), text, flags=re.S | re.M)


def mutations(text):
    """(kind, offset, old, new) of every change that can be tried."""
    code = blanked(text)
    for kind, table in (("arithmetic", SWAPS), ("comparison", COMPARED)):
        for old, new in table.items():
            for match in re.finditer(re.escape(old), code):
                yield kind, match.start(), old, new
    for match in re.finditer(r"(?<=[=(,{?:] )-(?=[\w(])|(?<=[({])-(?=[\w(])", code):
        yield "arithmetic", match.start(), "-", ""
    for match in NUMBER.finditer(code):
        number, suffix = match.groups()
        new = repr(float(number) * 1.01 or 0.01) if "." in number else str(int(number) + 1)
        yield "constant", match.start(), match[0], new + suffix
    for match in re.finditer(r"\b(true|false)\b", code):
        yield "constant", match.start(), match[0], "false" if match[0] == "true" else "true"
    at = 0
    for line, shown in zip(text.splitlines(keepends=True), code.splitlines(keepends=True)):
        if CALL.match(shown.replace("\x01", "_").rstrip()):
            yield "call", at, line.rstrip("\n"), " " * (len(line) - 2) + ";"
        at += len(line)


def verdict(targets, built, jobs, seconds, root=ROOT):
    """What the tests say about the tree as it is; `built` is where in it."""
    build = ["cmake", "--build", built, "-j", str(jobs), "--target", *targets]
    if subprocess.run(build, cwd=root, capture_output=True).returncode != 0:
        return "not built"
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", GTEST_FAIL_FAST="1", ORVA_PATIENCE_MS="8000")
    for target in targets:
        tests = [root / built / "tests" / target, "--gtest_brief=1"]
        try:
            done = subprocess.run(tests, cwd=root, capture_output=True, env=environment,
                                  timeout=seconds)
        except subprocess.TimeoutExpired:
            return "killed"
        if done.returncode != 0:
            return "killed"
    return "SURVIVED"


def stop(*_):
    raise KeyboardInterrupt


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", default="build/release", help="build tree (%(default)s)")
    parser.add_argument("--count", type=int, default=0, help="changes per file; 0: all")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--kinds", default="arithmetic,comparison,constant,call")
    parser.add_argument("--timeout", type=float, default=30, help="seconds of a target's tests")
    parser.add_argument("target", help="test targets, such as orva_model_tests, with commas")
    parser.add_argument("files", nargs="+", help="source files, from the top of the tree")
    options = parser.parse_args()
    signal.signal(signal.SIGTERM, stop)

    targets = options.target.split(",")
    if (first := verdict(targets, options.build, options.jobs, 600)) != "SURVIVED":
        sys.exit(f"the tree as it is: {first}")
    summary = []
    try:
        for name in options.files:
            file = ROOT / name
            original = file.read_bytes()
            text = original.decode("utf-8")
            tried = sorted((m for m in mutations(text) if m[0] in options.kinds.split(",")),
                           key=lambda m: m[1])
            if options.count and options.count < len(tried):
                chosen = random.Random(options.seed).sample(range(len(tried)), options.count)
                tried = [tried[i] for i in sorted(chosen)]
            figures = {"killed": 0, "SURVIVED": 0, "not built": 0}
            summary.append((name, figures))
            try:
                for kind, at, old, new in tried:
                    changed = text[:at] + new + text[at + len(old):]
                    file.write_bytes(changed.encode("utf-8"))
                    result = verdict(targets, options.build, options.jobs, options.timeout)
                    figures[result] += 1
                    line = text.count("\n", 0, at) + 1
                    print(f"{result:9}  {name}:{line}  {kind:10}  {old.strip()} -> "
                          f"{new.strip() or 'nothing'}", flush=True)
            finally:
                file.write_bytes(original)
    except KeyboardInterrupt:
        print("stopped; the file is as it was")
    print(f"\n{'file':40} killed survived not built")
    for name, figures in summary:
        print(f"{name:40} {figures['killed']:6} {figures['SURVIVED']:8} {figures['not built']:9}")
    sys.exit(1 if any(figures["SURVIVED"] for _, figures in summary) else 0)


if __name__ == "__main__":
    main()
