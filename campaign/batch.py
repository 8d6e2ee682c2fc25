"""The batch program and what is below it: other places and machines, absurd requests, no memory."""
import os
import re
import resource
import struct
import subprocess

from campaign import BUILD, CLI, ROOT, command, folder, require

THEATRE = ROOT / "examples" / "theatre.lad"
CLUB = ROOT / "examples" / "club.lad"


def results(env=None, threads=2, program=(CLI,)):
    """All that the batch program makes of two projects, as bytes."""
    place = folder()
    made = []
    for project in (THEATRE, CLUB):
        for words in (["levels", project, "--points", "50"], ["map", project, "--cell", "0.5", "--csv", "CSV", "--png", "PNG"],
                      ["rigging", project, "--language", "de", "--json", "JSON"], ["rows", project], ["report", project, "R.rtf"],
                      ["report", project, "R.pdf"], ["optimize", project, "--area", "1", "--quick", "--limit", "300",
                                                     "--points", "40"], ["suggest", project, "--budget", "2000"]):
            files = [w for w in words if str(w) in ("CSV", "PNG", "JSON", "R.rtf", "R.pdf")]
            words = [place / w if w in files else w for w in words]
            out = command(*program, *words, "--threads", threads,
                          env={"SOURCE_DATE_EPOCH": "1700000000", **(env or {})}).stdout
            made.append("\n".join(line for line in out.splitlines() if "econds" not in line and "PerSecond" not in line))
            made += [(place / w).read_bytes() for w in files]
    return made


def places(run):
    """Languages, time zones and numbers of threads change no byte"""
    locales = folder()
    for name in ("en_US", "de_DE", "tr_TR"):
        command("localedef", "-i", name, "-f", "UTF-8", locales / f"{name}.UTF-8", status=None)
        require((locales / f"{name}.UTF-8").exists(), f"no locale {name}: apt install locales")
    wanted = results({"LC_ALL": "C", "TZ": "UTC"}, 1)
    others = [({"LC_ALL": f"{name}.UTF-8", "LOCPATH": str(locales)}, 2) for name in ("en_US", "de_DE", "tr_TR")]
    others += [({"TZ": zone}, 2) for zone in ("America/St_Johns", "Pacific/Kiritimati", "Europe/Berlin")]
    others += [({}, threads) for threads in (2, 3, 16)]
    for number in run.rounds():
        env, threads = others[number]
        for i, (a, b) in enumerate(zip(wanted, results(env, threads))):
            require(a == b, f"result {i} differs with {env}, {threads} threads")
    return f"C, 3 languages, 3 time zones, 1, 2, 3 and 16 threads: the same {len(wanted)} results to the byte"


NUMBER = re.compile(rb"-?\d+\.\d+")


def vectors(run):
    """Whole runs on every set of vector instructions"""
    program = BUILD / "campaign" / "campaign_vectors"
    sets = command(program).stdout.split()
    run.goal = len(sets)
    wanted = results(program=(program, sets[0]))
    for number in run.rounds():
        for i, (a, b) in enumerate(zip(wanted, results(program=(program, sets[number])))):
            if a == b:
                continue
            a, b = (w.encode() if isinstance(w, str) else w for w in (a, b))
            if a.startswith(b"%PDF"):  # a pixel of its map
                run.kept.setdefault("maps", []).append(sets[number])
                continue
            require(NUMBER.split(a) == NUMBER.split(b), f"result {i} differs on {sets[number]}")
            run.most("off", max(abs(float(x) - float(y)) for x, y in zip(NUMBER.findall(a), NUMBER.findall(b))))
    require(run.kept.get("off", 0) < 0.01, f"levels off by {run.kept['off']:.4f} dB")
    return (f"{', '.join(sets)}: of {len(wanted)} results each, drawings and reports included, all are the same to the byte but levels, "
            f"within {run.kept.get('off', 0):.4f} dB, and maps in {len(run.kept.get('maps', []))} PDFs")


def projects(run):
    """Random projects against the plain formulas on every set of vectors, and moved elsewhere"""
    for number in run.rounds(5000):
        said = command(BUILD / "campaign" / "campaign_projects", 1 + number // 5000, 5000).stdout.strip()
        off = [float(word) for word in said.replace(",", "").split() if "e-" in word or word.startswith("0.")]
        for key, value in zip(("tables", "exact", "moved"), off):
            run.most(key, value)
    return (f"{run.done}: amplitudes off by {run.kept['tables']:.2g} with tables (bound 3e-4), {run.kept['exact']:.2g} without "
            f"(1e-5), {run.kept['moved']:.2g} when moved")


def peak(words, status, **options):
    """Runs it and returns its peak in MB."""
    process = subprocess.Popen([str(CLI), *map(str, words)], stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True,
                               **options)
    said = process.stderr.read()
    _, waited, usage = os.wait4(process.pid, 0)
    found = os.waitstatus_to_exitcode(waited)
    require(found == status, f"status {found} of {words}: {said[-300:]}")
    require(status == 0 or said.count("\n") in (1, 2), f"{words}: {said!r}")
    return usage.ru_maxrss / 1024


def absurd(run):
    """Absurd requests are refused, or done within the memory that is told"""
    place = folder()
    wide = place / "wide.lad"
    wide.write_bytes(THEATRE.read_bytes()[:32] + struct.pack("<2f", 10000, 10000) + THEATRE.read_bytes()[40:])
    refused = [["map", THEATRE, "--cell", "0.0001"], ["map", wide, "--cell", "1"], ["levels", THEATRE, "--points", "1000000000"],
               ["map", THEATRE, "--width", "1000000000", "--png", place / "x.png"]]
    done = [["map", THEATRE, "--cell", "0.00476", "--averaging", "broadband"], ["map", wide, "--cell", "3", "--averaging", "broadband"],
            ["levels", THEATRE, "--points", "1000000"], ["map", wide, "--cell", "100", "--width", "15000", "--png", place / "w.png"],
            ["suggest", wide, "--budget", "2000"], ["report", wide, place / "w.pdf"]]
    for number in run.rounds():
        if number < len(refused):
            run.most("refused", peak(refused[number], 1 if number < 2 else 2))
        else:
            words = done[number - len(refused)]
            run.kept[f"{words[0]} {' '.join(words[2:4] if words[0] != 'report' else [])}".strip()] = round(peak(words, 0))
    told = ", ".join(f"{name} {value} MB" for name, value in run.kept.items() if name not in ("done", "refused"))
    return f"4 refused (peak {run.kept['refused']:.0f} MB); done: {told}"


def no_memory(run):
    """The batch program where the memory runs out (ulimit -v), and failing allocations"""
    place = folder()
    works = [["map", THEATRE, "--cell", "0.05"], ["optimize", THEATRE, "--area", "1", "--count", "200", "--points", "50"],
             ["report", THEATRE, place / "r.pdf"], ["suggest", CLUB, "--budget", "500"]]
    for number in run.rounds():
        megabytes = 20 + 10 * (number // len(works))
        limit = megabytes * 1024 * 1024
        process = subprocess.run([str(CLI), *map(str, works[number % len(works)])], capture_output=True, text=True,
                                 preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (limit, limit)))
        kinds = {0: "whole", 1: "message", 127: "not loaded"}
        require(process.returncode in kinds, f"{megabytes} MB, {works[number % len(works)]}: status {process.returncode}, "
                                             f"{process.stderr[-300:]}")
        kind = kinds[process.returncode]
        run.kept[kind] = run.kept.get(kind, 0) + 1
    allocations = command(BUILD / "campaign" / "campaign_memory", 400).stdout
    return (f"{run.done} runs between 20 MB and {20 + 10 * (run.goal // len(works) - 1)} MB: {run.kept.get('whole', 0)} done, "
            f"{run.kept.get('message', 0)} with one line, {run.kept.get('not loaded', 0)} refused by the system's loader, none "
            f"crashed; of failed allocations so many ended the work, the others did it no harm: "
            f"{'; '.join(allocations.strip().splitlines())}")


places.goal, vectors.goal, projects.goal, absurd.goal, no_memory.goal = 9, 1, 100000, 10, 160
PARTS = [places, vectors, projects, absurd, no_memory]
