"""What the checks of the window share: they start the program, drive it from outside by the names of its controls,
and compare what it shows with what orva-cli says."""
import json
import os
import pathlib
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = ROOT / "build" / "release"
sys.path.insert(0, os.environ.get("UIDRIVER", str(ROOT.parent / "shared" / "uidriver")))
from uidriver import App, AppExited, UiError  # noqa: E402,F401


class PatientApp(App):
    """Waits for states as long as the slowest machine needs; a check that hangs still ends."""

    PATIENCE = 60

    def __init__(self, command, **options):
        super().__init__(command, **{"patience": 20, "timeout": 120, **options})

    def wait(self, test, what="the condition", timeout=0):
        return super().wait(test, what, max(timeout, self.PATIENCE))


def start(home=None, program=BUILD / "orva", **options):
    return PatientApp([str(program)], home=home,
                      **{"display": os.environ.get("ORVA_DISPLAY", "offscreen"), **options})


def started(language=0, system=0, size=(1280, 720), **options):
    """The program with its main window open, past its first questions."""
    app = start(**options)
    app.wait_window("LanguageSelect")
    app.item("LanguageList", language)
    app.click("OKButton")
    app.wait_window("frmNewCorS")
    app.click(f"optSystem({system})")
    app.click("OKButton")
    app.wait_window("frmMain")
    app.set("frmMain", "geometry", [0, 0, *size])
    app.wait_idle()
    return app


def managed(screen="1280x720x24"):
    """The program under a window manager, which puts frames round its windows."""
    command = f"openbox & sleep 1; exec {BUILD / 'orva'}"
    app = PatientApp(["sh", "-c", command], display="xvfb", screen=screen)
    app.wait_window("LanguageSelect")
    app.click("OKButton")
    app.wait_window("frmNewCorS")
    app.click("OKButton")
    app.wait_window("frmMain")
    return app


def entries(app, name):
    """The texts of a list."""
    return [item["text"] for item in app.items(name)["items"]]


def cli(*arguments):
    done = subprocess.run([str(BUILD / "orva-cli"), *map(str, arguments)], capture_output=True, text=True, check=True)
    return done.stdout


def cli_json(*arguments):
    return json.loads(cli(*arguments))


def stored(home):
    """The settings file: {section: {key: value}}."""
    sections, section = {}, {}
    for line in (pathlib.Path(home) / ".config" / "ORVA" / "ORVA.conf").read_text().splitlines():
        if line.startswith("["):
            section = sections.setdefault(line[1:-1], {})
        elif "=" in line:
            key, value = line.split("=", 1)
            section[key] = value
    return sections


def equal(found, wanted, what=""):
    assert found == wanted, f"{what}: {found!r}, not {wanted!r}"


def near(found, wanted, tolerance, what=""):
    assert abs(found - wanted) <= tolerance, f"{what}: {found!r}, not {wanted!r}"


def folder():
    return pathlib.Path(tempfile.mkdtemp(prefix="orva-driven-"))


def passes(check):
    try:
        check()
        print(f"ok      {check.__name__}", flush=True)
        return True
    except Exception as error:  # a check's failure is told, and the next one runs
        print(f"FAILED  {check.__name__}: {type(error).__name__}: {error}", flush=True)
        return False


def run(checks):
    """Runs every check, and one that fails once more at the end, alone; the exit status says whether all passed."""
    again = [check for check in checks if not passes(check)]
    failed = sum(not passes(check) for check in again)
    print(f"{len(checks) - failed} passed, {failed} failed")
    return 1 if failed else 0
