"""Random actions, repeatable: python3 random_actions.py [COUNT] [SEED] [PROGRAM]. Fails on an end of the program, an
answer that takes more than a second, and anything said on the console."""
import os
import pathlib
import random
import sys
import time

from driven import AppExited, BUILD, UiError, folder, start

TEXTS = ["0", "-1", "1,5", "12.25", "", "x", "1e300", "-1e300", "nan", "9999999", "0.0001", "  7 ", "200", "ÄÖ€α", "%1 {\\}"]
KEYS = ["Tab", "Enter", "Up", "Down", "PgDown", "Home", "End", "Space", "F1", "Ctrl+1", "Ctrl+2", "Ctrl+N", "Ctrl+Shift+N",
        "Left", "Right"]
ACTIONS = ["mnuNewS", "mnuNewC", "mnuOpen", "mnuSave", "mnuSaveAs", "mnuPrint", "mnuLoadData", "mnuPythCalc",
           "mnuToolsChangeLanguage", "mnuFont", "mnuGenOptions", "mnuCallHelp", "mnuAbout"]
PICTURES = ["Main_pbx", "AreaSpl_pbx", "Room_pbx", "Rigging_pbx", "picSubArray"]


def usable(app, cls):
    return [c for c in app.find(cls=cls) if c["visible"] and c["enabled"]]


class Actor:
    def __init__(self, app, seed, place):
        self.app, self.random, self.place = app, random.Random(seed), place

    def act(self):
        choose = self.random.choice
        kinds = [self.list, self.list, self.text, self.text, self.button, self.button, self.key, self.page, self.picture,
                 self.command]
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
        self.app.tab("Main_SSTab", self.random.randrange(4), patience=0)

    def picture(self):
        name = self.random.choice(PICTURES)
        points = [[self.random.randrange(5, 300), self.random.randrange(5, 200)] for _ in range(2)]
        if self.random.random() < 0.5:
            self.app.drag(name, *points, patience=0)
        else:
            self.app.click(name, pos=points[0], button=self.random.choice(["left", "right"]), patience=0)

    def command(self):
        self.app.action(self.random.choice(ACTIONS), patience=0)

    def dialog(self):
        if self.app.exists(cls="QFileDialog"):
            if self.random.random() < 0.5:
                self.app.choose_file(str(self.place / self.random.choice(["a.lad", "b.lad", "c.rtf", "nothing.lad"])),
                                     patience=0)
            else:
                self.app.cancel_file()
        elif self.app.exists(cls="QMessageBox"):
            self.app.click({"id": self.random.choice(usable(self.app, "QPushButton"))["id"]}, patience=0)
        else:
            self.app.key("Esc")


def main():
    count = int(sys.argv[1]) if len(sys.argv) > 1 else 500
    seed = int(sys.argv[2]) if len(sys.argv) > 2 else 1
    program = pathlib.Path(sys.argv[3]) if len(sys.argv) > 3 else BUILD / "orva"
    program, place = program.resolve(), folder()
    os.chdir(place)  # where files are saved that the file dialog is told by name alone
    slowest, log = 0.0, []
    with start(program=program, env={"ASAN_OPTIONS": "detect_leaks=0"}) as app:
        app.patience = 0.05
        app.wait_window("LanguageSelect", timeout=30)
        app.click("OKButton")
        app.wait_window("frmNewCorS", timeout=30)
        app.click("OKButton")
        app.wait_window("frmMain", timeout=30)
        actor = Actor(app, seed, place)
        for number in range(count):
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
        # Said by Qt itself: of the display without windows, and of a sample text in its font dialog.
        known = ("This plugin does not support", "OpenType support missing")
        said = [line for line in app.output().splitlines() if line.strip() and not any(k in line for k in known)]
        print(f"{count} actions, seed {seed}: slowest answer {slowest * 1000:.0f} ms; said: {sorted(set(said))[:10]}")
        return 1 if said else 0


if __name__ == "__main__":
    sys.exit(main())
