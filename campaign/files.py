"""Files when things go wrong: kills, failing calls, disks that are full or gone."""
import errno
import pathlib
import shutil
import signal
import subprocess
import time

from campaign import BUILD, CLI, ROOT, command, dice, folder, require, shim

WRITER = BUILD / "campaign" / "campaign_writer"


def begun(what, place):
    process = subprocess.Popen([WRITER, what, place], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                               env={"HOME": str(place), "XDG_CONFIG_HOME": str(place / "out"), "PATH": "/usr/bin:/bin"})
    require(process.stdout.readline() == b"begun\n", f"{what} did not begin")
    return process


def killed(run, what):
    """Kills what writes, again and again, and yields its folder each time."""
    place = folder()
    (place / "out").mkdir()
    for number in run.rounds():
        process = begun(what, place)
        time.sleep(dice(run, number).uniform(0, 0.008))
        process.send_signal(signal.SIGKILL)
        process.wait()
        process.stdout.close()
        process.stderr.close()
        yield number, place
    shutil.rmtree(place)


def whole_file(run, what):
    for number, place in killed(run, what):
        require((place / "out" / "file").read_bytes() in [(place / name).read_bytes() for name in "ab"],
                f"kill {number}: {place}/out/file is neither the old nor the new one")
        if number % 20 == 19 or number + 1 == run.goal:
            command(WRITER, what, place, 1)
            require([f.name for f in (place / "out").iterdir()] == ["file"], f"kill {number}: rests in {place}/out")
    return f"{run.done} kills, each file the whole old or the whole new one; no rests after the next save"


def kill_project(run):
    """SIGKILL while a project is saved"""
    return whole_file(run, "project")


def kill_report(run):
    """SIGKILL while a report is written"""
    return whole_file(run, "report")


def kill_recovery(run):
    """SIGKILL while a recovery file is written"""
    for number, place in killed(run, "recovery"):
        left = command(WRITER, "left", place).stdout.split()
        require(left in (["first", "damaged", "0"], ["second", "damaged", "0"]), f"kill {number}: {left} in {place}")
        require(not list((place / "out").iterdir()), f"kill {number}: rests in {place}/out")
    return f"{run.done} kills, each leaves one whole state to recover; no rests after that"


def stored_rounds(place):
    """The numbers of the campaign's keys in the store: {key: round}."""
    text = (place / "ORVA" / "ORVA.conf").read_text()
    return dict(line.split("=") for line in text.splitlines() if "=" in line and not line.startswith("["))


def kill_settings(run):
    """SIGKILL while settings are stored"""
    for number, place in killed(run, "settings"):
        rounds = set(stored_rounds(place / "out").values())
        require(len(rounds) == 1, f"kill {number}: keys of {sorted(rounds)} in {place}")
    return f"{run.done} kills, all keys of one moment"


def two_windows(run):
    """Settings written by two programs at a time"""
    for _ in run.rounds(run.goal):
        place = folder()
        environment = {"HOME": str(place), "XDG_CONFIG_HOME": str(place), "PATH": "/usr/bin:/bin"}
        both = [subprocess.Popen([WRITER, "settings", name, str(run.goal)], stdout=subprocess.DEVNULL, env=environment)
                for name in ("one", "two")]
        require([process.wait() for process in both] == [0, 0], "a writer failed")
        rounds = stored_rounds(place)
        require(len(rounds) == 40 and set(rounds.values()) == {str(run.goal - 1)}, f"lost keys in {place}")
    return f"2 x {run.goal} writes of 20 keys each, all kept"


class FailingDisk:
    """A folder whose file calls fail as told."""

    def __init__(self, name="disk"):
        self.place = folder() / name
        self.place.mkdir()
        self.environment = {"LD_PRELOAD": str(shim("failing_disk", pathlib.Path(__file__).with_name("failing_disk.c"))),
                            "ORVA_FAIL_FOLDER": str(self.place)}
        self.control = pathlib.Path(f"{self.place}.fail")
        self.hit = pathlib.Path(f"{self.place}.hit")
        self.run = 0

    def fail(self, nth, error, all_after=False):
        self.run += 1
        self.hit.unlink(missing_ok=True)
        self.control.write_text(f"{self.run} {nth} {error} {int(all_after)}")

    def well(self):
        self.control.unlink(missing_ok=True)


OPERATIONS = {
    "save": (["new", "P"], ["P"]),
    "aim": (["aim", "theatre.lad", "--out", "P"], ["P"]),
    "rtf": (["report", "theatre.lad", "P.rtf"], ["P.rtf"]),
    "pdf": (["report", "theatre.lad", "P.pdf"], ["P.pdf"]),
    "map": (["map", "theatre.lad", "--cell", "2", "--csv", "P.csv", "--json", "P.json", "--png", "P.png"],
            ["P.csv", "P.json", "P.png"]),
    "rows": (["rows", "theatre.lad", "--csv", "P.csv"], ["P.csv"]),
    "search": (["optimize", "theatre.lad", "--area", "1", "--quick", "--limit", "50", "--points", "5", "--out", "P.lad"],
               ["P.lad"]),
}


def failing_calls(run):
    """Every n-th file call of every operation of the batch program fails"""
    disk = FailingDisk()
    clock = {"SOURCE_DATE_EPOCH": "1700000000"}
    for index in run.rounds():
        name, (words, outputs) = list(OPERATIONS.items())[index]
        words = [disk.place / w if w.startswith("P") else ROOT / "examples" / w if w.endswith(".lad") else w for w in words]
        disk.well()
        command(CLI, *words, env=clock)
        wanted = {o: (disk.place / o).read_bytes() for o in outputs}
        nth = 0
        while True:
            nth += 1
            for output in outputs:
                (disk.place / output).write_bytes(b"old")
            disk.fail(nth, errno.EIO)
            done = command(CLI, *words, env={**disk.environment, **clock}, status=None)
            if not disk.hit.exists():
                break
            found = {o: (disk.place / o).read_bytes() if (disk.place / o).exists() else None for o in outputs}
            what = f"{name}, call {nth} ({disk.hit.read_text()}): status {done.returncode}, {done.stderr!r}"
            if done.returncode == 0:
                require(found == wanted, f"{what}, but not what was asked for")
            else:
                require(done.returncode == 1 and done.stderr.startswith("orva-cli: ") and done.stderr.count("\n") == 1, what)
                require(set(found.values()) == {b"old"}, f"{what}, and the old file is gone")
            run.kept["failed"] = run.kept.get("failed", 0) + 1
        disk.well()
        command(CLI, *words, env=clock)
        rests = {f.name for f in disk.place.iterdir()} - set(outputs)
        require(not rests, f"{name}: {rests} stay")
        for output in outputs:
            (disk.place / output).unlink()
    return (f"{run.kept['failed']} failures in {len(OPERATIONS)} operations: the whole new files with status 0, or the "
            "whole old ones and one line that says why")


def failing_writers(run):
    """Every n-th file call while projects, reports, recovery files and settings are written fails"""
    writers = ["project", "report", "recovery", "settings"]
    for index in run.rounds():
        what = writers[index]
        disk = FailingDisk("out")
        place = disk.place.parent
        environment = {"HOME": str(place), "XDG_CONFIG_HOME": str(disk.place), "SOURCE_DATE_EPOCH": "1700000000",
                       **disk.environment}
        named = "one" if what == "settings" else place
        command(WRITER, what, named, 1, env=environment)
        nth = 0
        while True:
            nth += 1
            disk.fail(nth, errno.EIO)
            done = command(WRITER, what, named, 2, env=environment, status=None)
            if not disk.hit.exists():
                break
            said = f"{what}, call {nth} ({disk.hit.read_text()}): status {done.returncode}, {done.stderr!r}"
            require(done.returncode in (0, 1), said)
            disk.well()
            if what == "recovery":
                left = command(WRITER, "left", place, env=environment).stdout.split()
                require(left[-2:] == ["damaged", "0"], f"{said}: {left}")
            elif what == "settings":
                rounds = set(stored_rounds(disk.place).values())
                require(len(rounds) == 1 and (done.returncode == 1 or rounds == {"1"}), f"{said}: keys of {rounds}")
            else:
                found = (disk.place / "file").read_bytes()
                require(found in [(place / name).read_bytes() for name in ("b" if done.returncode == 0 else "ab")], said)
            run.kept["failed"] = run.kept.get("failed", 0) + 1
        disk.well()
        command(WRITER, what, named, 1, env=environment)
        rests = [f for f in disk.place.rglob("*") if f.is_file() and f.name not in ("file", "ORVA.conf")]
        require(what == "recovery" or not rests, f"{what}: {rests} stay")
    return f"{run.kept['failed']} failures, each said, and what was there is the whole old or the whole new one"


for part, goal in ((kill_project, 1000), (kill_report, 1000), (kill_recovery, 1000), (kill_settings, 1000), (two_windows, 1000),
                   (failing_calls, len(OPERATIONS)), (failing_writers, 4)):
    part.goal = goal
PARTS = [kill_project, kill_report, kill_recovery, kill_settings, two_windows, failing_calls, failing_writers]
