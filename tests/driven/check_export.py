"""Figures that controls give away by their context menus, against those of orva-cli."""
import json
import sys

from check_project import map_extremes, open_file
from driven import ROOT, cli, equal, folder, run, started

ENTRIES = {"csv": "Save Figures as CSV...", "json": "Save Figures as JSON..."}


def given(app, control, kind, file):
    file.unlink(missing_ok=True)
    app.click(control, button="right", mods="Ctrl")
    app.menu(ENTRIES[kind])
    app.choose_file(str(file))
    app.wait(file.exists)
    app.wait_idle()
    return file.read_text()


def figures_are_those_of_the_batch_program():
    place = folder()
    lad = ROOT / "examples" / "theatre.lad"
    app = started()
    open_file(app, lad)
    heard = ["--map-type", "continuous", "--a-weighted"]
    for page, control, command in [
        ((1, 0), "AreaSpl_pbx", ["levels", lad, *heard]),
        ((1, 3), "tblRows", ["rows", lad, "--area", "1", *heard]),
        ((2, None), "Rigging_pbx", ["rigging", lad]),
        ((2, None), "rigText_txt", ["rigging", lad]),
        ((3, None), "picSubArray", ["subarray", lad]),
    ]:
        app.tab("Main_SSTab", page[0])
        if page[1] is not None:
            app.click("MapType_opt(0)")
            app.tab("Curve_tab", page[1])
        for kind in ENTRIES:
            wanted = place / f"wanted.{kind}"
            cli(*command, f"--{kind}", wanted)
            equal(given(app, control, kind, place / f"given.{kind}"), wanted.read_text())
        if command[0] in ("levels", "rows"):
            table = [line.split(",") for line in (place / "given.csv").read_text().splitlines()]
            rows = json.loads((place / "given.json").read_text())["rows"]
            equal([[float(row[name]) for name in table[0]] for row in rows],
                  [[float(cell) for cell in line] for line in table[1:]])

    app.tab("Main_SSTab", 1)
    app.click("Main_pbx", button="right")
    equal([e["enabled"] for e in app.items("mnuPicture")["items"] if "Figures" in e["text"]], [False, False])
    app.key("Esc")
    app.click("CalcBand_cmd")
    low, high = sorted(app.wait(lambda: map_extremes(app), "the map"))
    levels = json.loads(given(app, "Main_pbx", "json", place / "map.json"))
    rows = [[float(cell) for cell in line.split(",")]
            for line in given(app, "Main_pbx", "csv", place / "map.csv").splitlines()]
    equal(levels["levels"], rows)
    equal((len(rows), len(rows[0])), (levels["rows"], levels["columns"]))
    equal((round(min(map(min, rows)), 1), round(max(map(max, rows)), 1)), (low, high))
    app.close()


if __name__ == "__main__":
    sys.exit(run([figures_are_those_of_the_batch_program]))
