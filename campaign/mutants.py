"""Changes of the code by chance: does a test notice?"""
import concurrent.futures
import functools
import os
import queue
import sys
import time

import mutate
from campaign import ROOT, STATE, Broke, command, dice

# Whose tests run first where a file of a folder is changed; then those of the rest.
NEAREST = {"painting": ["app"], "ui": ["window"], "version": ["cli"]}
FOLDERS = ["lang", "model", "engine", "optimize", "drawing", "painting", "report", "document", "app", "cli", "ui"]
TESTS = ["model", "document", "report", "drawing", "lang", "app", "cli", "window", "engine", "optimize", "painting", "systems"]
INNER = ("model", "engine", "optimize", "document")
CORES = os.cpu_count() or 1


def trees(commit):
    """A clone of that commit for each core, built, and found whole by all tests."""
    made = []
    for number in range(CORES):
        tree = STATE / f"tree-{number}"
        if not tree.exists():
            command("git", "clone", "-q", ROOT, tree)
        command("git", "-C", tree, "fetch", "-q", "origin")
        command("git", "-C", tree, "reset", "-q", "--hard", commit)
        command("cmake", "--preset", "release", "-DCMAKE_CXX_FLAGS_RELEASE=-O1", cwd=tree)
        command("cmake", "--build", "--preset", "release", "--target", *[f"orva_{name}_tests" for name in TESTS], cwd=tree)
        made.append(tree)
    for name in TESTS:
        if (verdict := mutate.verdict([f"orva_{name}_tests"], "build/release", CORES, 600, made[0])) != "SURVIVED":
            raise Broke(f"the tests of {name}, as the code is: {verdict}")
    return made


def chosen(run, number, tree):
    """The file and its change of that number, `(kind, offset, old, new)`."""
    random = dice(run, number)
    sources = command("git", "-C", tree, "ls-files", *[f"{folder}/*.cpp" for folder in FOLDERS]).stdout.split()
    sizes = [(tree / source).stat().st_size for source in sources]
    while True:
        name = random.choices(sources, sizes)[0]
        text = (tree / name).read_text("utf-8")
        if changes := sorted(mutate.mutations(text), key=lambda change: change[1]):
            return name, text, random.choice(changes)


@functools.cache
def made_of(tree, tests):
    """The sources that a test program is linked from."""
    inputs = command("ninja", "-C", "build/release", "-t", "inputs", f"tests/orva_{tests}_tests", cwd=tree).stdout.split("\n")
    return {os.path.relpath(line, tree) for line in inputs if line.startswith(f"{tree}/")}


def judged(tree, name, text, change):
    """What the tests of a tree say of the change; the nearest first."""
    _, at, old, new = change
    folder = name.split("/")[0]
    nearest = NEAREST.get(folder, [folder])
    file = tree / name
    file.write_text(text[:at] + new + text[at + len(old):], "utf-8")
    try:
        for tests in nearest + [other for other in TESTS if other not in nearest]:
            if name not in made_of(tree, tests):
                continue
            verdict = mutate.verdict([f"orva_{tests}_tests"], "build/release", 1, 120, tree)
            if verdict != "SURVIVED":
                return verdict
        if folder == "ui" and "UIDRIVER" in os.environ:
            return driven(tree)
        if folder == "cli":
            return scripted(tree)
    finally:
        file.write_text(text, "utf-8")
    return "SURVIVED"


def scripted(tree):
    """What the tests say that call the batch program itself."""
    command("cmake", "--build", "--preset", "release", "--target", "orva-cli", cwd=tree)
    done = command("ctest", "--test-dir", "build/release", "-R", r"^cli\.(desktop|completion)", cwd=tree, status=None)
    return "killed" if done.returncode != 0 else "SURVIVED"


def driven(tree):
    """What the shorter checks of the real window say."""
    command("cmake", "--build", "--preset", "release", "--target", "orva", "orva-cli", cwd=tree)
    def fails(check):
        return command(sys.executable, tree / "tests" / "driven" / f"check_{check}.py", status=None).returncode != 0

    # Twice: a machine that does much else may be too slow once.
    killed = any(fails(check) and fails(check) for check in ("start", "keyboard", "edit"))
    return "killed" if killed else "SURVIVED"


def told(name, text, change):
    """What a person needs to judge the change, and to find it again in a file that has moved on."""
    kind, at, old, new = change
    begin = text.rfind("\n", 0, at) + 1
    line = text[begin:text.find("\n", at)]
    return {"file": name, "row": text.count("\n", 0, at) + 1, "line": line, "column": at - begin, "kind": kind, "old": old, "new": new}


def found_again(tree, row):
    """The change of a survivor in the file as it is now; none where its line has gone."""
    file = tree / row["file"]
    text = file.read_text("utf-8") if file.exists() else ""
    begins = [at for at in range(len(text)) if (at == 0 or text[at - 1] == "\n") and text.startswith(row["line"] + "\n", at)]
    if not begins:
        return text, None
    nearest = min(begins, key=lambda at: abs(text.count("\n", 0, at) + 1 - row["row"]))
    return text, (row["kind"], nearest + row["column"], row["old"], row["new"])


def mutants(run):
    """Changes of the code by chance that the tests notice"""
    commit = command("git", "-C", ROOT, "rev-parse", "HEAD").stdout.strip()
    ready = queue.Queue()
    for tree in trees(commit):
        ready.put(tree)
    figures = run.kept.setdefault("figures", {})
    survivors = run.kept.setdefault("survivors", [])

    def trial(work):
        tree = ready.get()
        try:
            return work(tree)
        finally:
            ready.put(tree)

    def counted(name, verdict, by=1):
        key = f"{name.split('/')[0]} {verdict}"
        figures[key] = figures.get(key, 0) + by

    def once_more(row):
        def work(tree):
            text, change = found_again(tree, row)
            return (row, judged(tree, row["file"], text, change)) if change else (row, "gone")
        return trial(work)

    def fresh(number):
        def work(tree):
            name, text, change = chosen(run, number, tree)
            return told(name, text, change), judged(tree, name, text, change)
        return trial(work)

    with concurrent.futures.ThreadPoolExecutor(CORES) as pool:
        if run.kept.get("commit", commit) != commit:  # tests may have come
            for row, verdict in pool.map(once_more, [row for row in survivors if "meaningless" not in row]):
                if verdict == "SURVIVED":
                    continue
                survivors.remove(row)
                counted(row["file"], "SURVIVED", -1)
                if verdict == "killed":
                    counted(row["file"], "killed")
                print(f"now {verdict:9} {row['file']}:{row['row']}", flush=True)
        run.kept["commit"] = commit
        run.save()
        while run.done < run.goal and time.monotonic() < run.ends:
            for row, verdict in pool.map(fresh, range(run.done, min(run.done + 2 * CORES, run.goal))):
                counted(row["file"], verdict)
                if verdict == "SURVIVED":
                    survivors.append(row)
                print(f"{verdict:9} {row['file']}:{row['row']}  {row['line'].strip()}  [{row['old'].strip()} -> {row['new'].strip()}]",
                      flush=True)
                run.add(1)

    def share(folders):
        killed = sum(figures.get(f"{folder} killed", 0) for folder in folders)
        meaningless = sum("meaningless" in row for row in survivors if row["file"].split("/")[0] in folders)
        all_ = killed + sum(figures.get(f"{folder} SURVIVED", 0) for folder in folders) - meaningless
        return f"{killed} of {all_} ({100 * killed / max(1, all_):.1f} %)"
    return (f"{run.done} tried; noticed of those that compile and mean anything: {share(FOLDERS)}; in model, engine, optimize and "
            f"document {share(INNER)}; the others and why: `campaign/reached/mutants.json`")


mutants.goal = 400
PARTS = [mutants]
