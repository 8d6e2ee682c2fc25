"""Random actions, repeatable: python3 random_actions.py [COUNT] [SEED] [PROGRAM]. Fails on an end of the program, an
answer that takes more than a second, and anything said on the console. Prints what the memory grew by after the
first half."""
import os
import pathlib
import random
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "tests" / "driven"))
from driven import AppExited, BUILD, UiError, folder, start

TEXTS = ["0", "-1", "1,5", "12.25", "", "x", "1e300", "-1e300", "nan", "9999999", "0.0001", "  7 ", "200", "ÄÖ€α", "%1 {\\}"]
KEYS = ["Tab", "Enter", "Up", "Down", "PgDown", "Home", "End", "Space", "F1", "Ctrl+1", "Ctrl+2", "Ctrl+N", "Ctrl+Shift+N",
        "Left", "Right", "Ctrl+Z", "Ctrl+Shift+Z", "Esc", "Shift+Up"]
ACTIONS = ["mnuNewS", "mnuNewC", "mnuOpen", "mnuSave", "mnuSaveAs", "mnuPrint", "mnuLoadData", "mnuPythCalc",
           "mnuToolsChangeLanguage", "mnuFont", "mnuGenOptions", "mnuCallHelp", "mnuAbout", "mnuUndo", "mnuUndo", "mnuRedo",
           "mnuCompare", "mnuPdf", "mnuKeys", "mnuForgetMissing", "mnuMRU(0)", "mnuFiguresCsv", "mnuFiguresJson",
           "mnuPictureCopy", "mnuPicturePng", "mnuPictureSvg"]
PICTURES = ["Main_pbx", "AreaSpl_pbx", "Room_pbx", "Rigging_pbx", "picSubArray", "Strip_pbx", "Spectrum_pbx"]


def usable(app, cls):
    return [c for c in app.find(cls=cls) if c["visible"] and c["enabled"]]


class Actor:
    def __init__(self, app, seed, place):
        self.app, self.random, self.place = app, random.Random(seed), place

    def act(self):
        choose = self.random.choice
        kinds = [self.list, self.list, self.text, self.text, self.button, self.button, self.key, self.page, self.picture,
                 self.wheel, self.command]
        kind = self.dialog if self.app.state()["modal"] and self.random.random() < 0.4 else choose(kinds)
        try:
            kind()
        except (UiError, TimeoutError) as error:
            if isinstance(error, AppExited):
                raise
        return kind.__name__

    def list(self):
        boxes = usable(self.app, "QComboBox")
        if boxes:
            box = self.random.choice(boxes)
            count = len(self.app.items({"id": box["id"]})["items"])
            if count:
                self.app.select({"id": box["id"]}, self.random.randrange(count), patience=0)

    def text(self):
        edits = usable(self.app, "QLineEdit")
        if edits:
            self.app.enter({"id": self.random.choice(edits)["id"]}, self.random.choice(TEXTS),
                           commit=self.random.choice(["Tab", "Enter", None]), patience=0)

    def button(self):
        buttons = [b for b in usable(self.app, "QAbstractButton") if b["name"] not in ("qt_toolbar_ext_button",)]
        if buttons:
            self.app.click({"id": self.random.choice(buttons)["id"]}, patience=0)

    def key(self):
        self.app.key(self.random.choice(KEYS))

    def page(self):
        self.app.tab("Main_SSTab", self.random.randrange(5), patience=0)

    def picture(self):
        name = self.random.choice(PICTURES)
        points = [[self.random.randrange(5, 300), self.random.randrange(5, 200)] for _ in range(2)]
        if self.random.random() < 0.5:
            self.app.drag(name, *points, patience=0)
        else:
            self.app.click(name, pos=points[0], button=self.random.choice(["left", "right"]), patience=0)

    def wheel(self):
        self.app.wheel(self.random.choice(PICTURES), dy=self.random.choice([-240, -120, 120, 240]),
                       mods=self.random.choice(["", "ctrl", "shift"]))

    def command(self):
        self.app.action(self.random.choice(ACTIONS), patience=0)

    def dialog(self):
        if self.app.exists(cls="QFileDialog"):
            if self.random.random() < 0.5:
                self.app.choose_file(str(self.place / self.random.choice(["a.lad", "b.lad", "c.rtf", "d.csv", "e.png", "nothing.lad"])),
                                     patience=0)
            else:
                self.app.cancel_file()
        elif self.app.exists(cls="QMessageBox"):
            self.app.click({"id": self.random.choice(usable(self.app, "QPushButton"))["id"]}, patience=0)
        else:
            self.app.key("Esc")


def resident_mb(app):
    pages = pathlib.Path(f"/proc/{app.process.pid}/statm").read_text().split()[1]
    return int(pages) * os.sysconf("SC_PAGE_SIZE") / 1e6


def main():
    count = int(sys.argv[1]) if len(sys.argv) > 1 else 500
    seed = int(sys.argv[2]) if len(sys.argv) > 2 else 1
    program = pathlib.Path(sys.argv[3]) if len(sys.argv) > 3 else BUILD / "orva"
    program, place = program.resolve(), folder()
    os.chdir(place)  # where files are saved that the file dialog is told by name alone
    slowest, log, before = 0.0, [], 0
    with start(program=program, env={"ASAN_OPTIONS": "detect_leaks=0"}) as app:
        app.patience = 0.05
        app.wait_window("LanguageSelect", timeout=30)
        app.click("OKButton")
        app.wait_window("frmNewCorS", timeout=30)
        app.click("OKButton")
        app.wait_window("frmMain", timeout=30)
        actor = Actor(app, seed, place)
        for number in range(count):
            if number == count // 2:
                before = resident_mb(app)
            begun = time.monotonic()
            try:
                what = actor.act()
                log.append(what)
                begun = time.monotonic()
                app.state()
            except AppExited as error:
                print(f"ended after {number} actions ({log[-5:]}): {error}")
                return 1
            answer = time.monotonic() - begun
            slowest = max(slowest, answer)
            if answer > 1:
                print(f"action {number} ({what}): no answer for {answer:.1f} s")
                return 1
        grown = resident_mb(app) - before
        # Said by Qt itself: of the display without windows, and of a sample text in its font dialog.
        known = ("This plugin does not support", "OpenType support missing")
        said = [line for line in app.output().splitlines() if line.strip() and not any(k in line for k in known)]
        print(f"{count} actions, seed {seed}: slowest answer {slowest * 1000:.0f} ms; grown by {grown:.0f} MB; said: {sorted(set(said))[:10]}")
        return 1 if said else 0


if __name__ == "__main__":
    sys.exit(main())
