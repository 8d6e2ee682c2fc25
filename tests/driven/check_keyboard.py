"""The tour without a mouse: a theatre with three areas and twelve boxes, aimed, searched and printed, in at most 150
keys; and every command by its key."""
import sys

from driven import cli_json, equal, folder, run, started


class Hands:
    """Presses keys and counts them."""

    def __init__(self, app):
        self.app = app
        self.pressed = 0

    def key(self, *keys):
        self.app.key(*keys)
        self.pressed += len(keys)

    def type(self, text):
        self.app.type(text)
        self.pressed += len(text)

    def tab(self, times=1):
        self.key(*["Tab"] * times)

    def fill(self, *figures):
        """Types into entries that follow each other; None leaves one as it is."""
        for figure in figures:
            if figure is not None:
                self.type(figure)
            self.tab()

    def tab_to(self, name):
        """Tab until the control has the focus."""
        for _ in range(60):
            if self.app.get(name, "focus"):
                return
            self.tab()
        raise AssertionError(f"{name} is not reached")


def theatre():
    place = folder()
    app = started(cwd=str(place))
    hands = Hands(app)
    hands.key("Alt+1")
    hands.tab_to("RoomWidth_txt")
    hands.fill("34", "13", None, None, "22", "3.1")
    hands.tab_to("txtXone(0)")
    hands.fill("6", "1.2", "16", "1.2", None, None, "16", "1.2", "29", "3.9", None, None, "21", "7", "32", "10.3")
    hands.key("Alt+2")
    hands.tab_to("Cradle_txt(0)")
    hands.fill("1.5", "11.3")
    hands.key("F7")
    equal(app.get("PinAngle_opt(1)", "checked"), True, "aimed")
    hands.tab_to("box1Angle_txt")
    hands.fill("-2")  # the top box looks to the last row
    hands.key("F3", "F3", "F3", "F6")  # round to the first area
    app.wait_window("frmOptimize")
    hands.tab_to("chkQuick")
    hands.key("Space")
    hands.tab_to("cmdOptimize")
    hands.key("Space")
    app.wait(lambda: app.get("cmdCommit", "enabled"), "results")
    hands.tab_to("cmdCommit")
    hands.key("Space")
    app.wait_no_window("frmOptimize")
    for command in ("Ctrl+S", "Ctrl+P"):
        hands.key(command)
        app.file_dialog()
        hands.type("t")
        hands.key("Enter")
        app.wait_idle()
    print(f"    {hands.pressed} keys")
    assert hands.pressed <= 150, hands.pressed
    projects = list(place.rglob("t.lad"))
    assert projects and list(place.rglob("t.rtf")), list(place.rglob("t.*"))
    shown = cli_json("show", projects[0])
    equal(shown["room"]["RoomDims"], [34, 13])
    equal(shown["room"]["AudienceArea3"][:4], [21, 7, 32, 10.3])
    equal(shown["array"]["NumSpeakers"], 12)
    app.close()


def every_command_has_a_key():
    for language in (0, 1):
        app = started(language=language)
        app.key("Ctrl+F1")
        app.wait_window("frmKeys")
        rows = app.items("tblKeys")
        assert len(rows["items"]) > 25, rows
        app.key("Escape")
        app.wait_no_window("frmKeys")
        app.key("Alt+3")
        equal(app.get("Main_SSTab", "currentIndex"), 2)
        app.key("F5")
        app.wait(lambda: app.get("Lock_chk", "checked"), "the map")
        equal(app.get("Main_SSTab", "currentIndex"), 1)
        app.key("F8")
        equal(app.get("Lock_chk", "checked"), False)
        app.key("F4", "F4")
        equal(app.get("cmbType(1)", "focus"), True)
        app.close()


if __name__ == "__main__":
    sys.exit(run([theatre, every_command_has_a_key]))
