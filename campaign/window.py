"""The window: a day of work, random hands, disks that fail. Needs the driver (../shared/uidriver) but for the day."""
import errno
import os
import re
import subprocess
import sys
import time

from campaign import BUILD, ROOT, command, folder, require
from files import FailingDisk

sys.path.insert(0, str(ROOT / "tests" / "driven"))
os.environ.setdefault("UIDRIVER_BUILD", "/tmp/uidriver-build")


def day(run):
    """A working day: edits with live map, saves, searches"""
    for _ in run.rounds(run.goal):
        run.kept["figure"] = command(BUILD / "campaign" / "campaign_day", run.goal, env={"QT_QPA_PLATFORM": "offscreen"}
                                     ).stdout.strip().splitlines()[-1]
    return run.kept["figure"]


def acted(run, program):
    for number in run.rounds():
        done = subprocess.run([sys.executable, ROOT / "campaign" / "random_actions.py", "2500", str(number + 1), program],
                              capture_output=True, text=True)
        require(done.returncode == 0, f"seed {number + 1}: {done.stdout[-400:]}{done.stderr[-400:]}")
        run.most("slowest", int(re.search(r"slowest answer (\d+) ms", done.stdout)[1]))
        run.kept.setdefault("grown", []).append(int(re.search(r"grown by (-?\d+) MB", done.stdout)[1]))
    return f"{run.done} x 2,500, slowest answer {run.kept['slowest']} ms, no crash, nothing said by the toolkit"


def hands(run):
    """Random actions in the window, under the sanitizers, 2,500 with each seed"""
    return acted(run, ROOT / "build" / "sanitize" / "orva")


def hands_release(run):
    """Random actions in the window as it is released, 2,500 with each seed"""
    said = acted(run, BUILD / "orva")
    grown = sorted(run.kept["grown"])
    return f"{said}; memory grown in the second half by {grown[len(grown) // 2]} MB (median), {grown[-1]} MB at most"


def answers(app, test):
    """Waits for `test`; the longest time that the window took to answer meanwhile, ms."""
    longest, ends = 0, time.monotonic() + 30
    while True:
        began = time.monotonic()
        require(began < ends, "the window does not come to it")
        app.get("frmMain", "windowTitle")
        longest = max(longest, time.monotonic() - began)
        if test():
            return round(1000 * longest)


def window_disks(run):
    """Disks that are full, read-only, over quota or broken, below the window's files"""
    import driven
    disk = FailingDisk()
    project = disk.place / "p.lad"
    app = driven.started(env=disk.environment)
    app.action("mnuSaveAs")
    app.choose_file(str(project))
    app.wait(project.exists)
    app.tab("Main_SSTab", 1)
    reasons = [errno.ENOSPC, errno.EROFS, errno.EDQUOT, errno.ENOENT, errno.EIO]
    files = {"mnuSave": project, "mnuPrint": disk.place / "r.rtf", "mnuPdf": disk.place / "r.pdf"}
    trials = [(action, reason, nth, reason != errno.EIO) for action in files for reason in reasons
              for nth in (range(1, 12) if reason == errno.EIO else (1, 3))]
    try:
        for number in run.rounds():
            action, reason, nth, all_after = trials[number]
            target = files[action]
            disk.well()
            if action != "mnuSave":
                target.write_bytes(b"old")
            else:
                app.enter("Cradle_txt(0)", str(2 + number / 100))
            old = target.read_bytes()
            disk.fail(nth, reason, all_after)
            app.action(action)
            if action != "mnuSave":
                app.choose_file(str(target))
                if app.exists(cls="QMessageBox"):
                    app.answer("Yes")
            run.most("slowest", answers(app, lambda: app.state()["modal"] or target.read_bytes() != old))
            failed = target.read_bytes() == old
            if app.exists(cls="QMessageBox"):
                app.answer(app.message()["buttons"][0]["text"] if failed else "Ok")
            disk.well()
            app.wait_idle()
            if action == "mnuSave" and failed:
                require(app.get("frmMain", "windowModified"), f"trial {number}: counts as saved")
            run.kept["failed"] = run.kept.get("failed", 0) + failed
            while app.exists(cls="QMessageBox"):
                app.key("Escape")
    finally:
        app.close()
    return (f"{run.done} trials, {run.kept['failed']} failed with a message and the old file whole; longest answer "
            f"{run.kept['slowest']} ms")


def slow_disk(run):
    """A disk whose every call takes half a second, below the window"""
    for _ in run.rounds():
        said = command(sys.executable, ROOT / "tests" / "driven" / "check_disk.py").stdout
        run.kept["longest"] = int(re.search(r"longest answer while saving (\d+) ms", said)[1])
    return f"the window answers within {run.kept['longest']} ms, makes no file call in its own thread, and nothing is lost"


def huge_screen(run):
    """The window over a screen of 8k with ratio 3: 24 boxes, live map, every page"""
    import driven
    for _ in run.rounds():
        with driven.started(env={"QT_SCALE_FACTOR": "3"}) as app:
            app.set("frmMain", "geometry", [0, 0, 2560, 1440])
            app.tab("Main_SSTab", 1)
            app.select("cmbNumSpk", "24")
            app.click("chkLive")
            slowest = 0
            for page in range(4):
                app.tab("Main_SSTab", page)
                slowest = max(slowest, answers(app, lambda: True))
            app.tab("Main_SSTab", 1)
            for to in range(12):
                app.select("cmbAngle(5)", to % 4)
                slowest = max(slowest, answers(app, lambda: True))
            status = open(f"/proc/{app.process.pid}/status").read()
            run.kept["peak"] = int(re.search(r"VmHWM:\s+(\d+)", status)[1]) // 1024
            run.kept["slowest"] = slowest
    return f"7680 x 4320 pixels: peak {run.kept['peak']} MB, slowest answer {run.kept['slowest']} ms"


day.goal, hands.goal, hands_release.goal = 20000, 20, 20
window_disks.goal, slow_disk.goal, huge_screen.goal = 3 * (4 * 2 + 11), 1, 1
PARTS = [day, window_disks, slow_disk, huge_screen, hands, hands_release]
