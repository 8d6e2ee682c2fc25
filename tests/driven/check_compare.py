"""Variants, saved and opened again, and the comparison with another project, against orva-cli."""
import sys

from check_live import save_as
from check_project import open_file
from driven import ROOT, cli_json, equal, folder, near, run, started


def variants_are_saved_and_compared():
    home = folder()
    app = started()
    app.tab("Main_SSTab", 1)
    before = save_as(app, home / "before.lad")
    equal(before.stat().st_size, 632)
    app.click("cmdKeep(1)")
    app.select("cmbNumSpk", "8")
    project = save_as(app, home / "variants.lad")
    assert project.stat().st_size > 632
    app.action("mnuNewC")
    equal(app.get("cmdVariant(1)", "enabled"), False)
    open_file(app, project)
    equal(app.get("cmbNumSpk", "currentText"), "8")
    app.click("cmdVariant(1)")
    equal(app.get("cmbNumSpk", "currentText"), "12")
    app.action("mnuUndo")

    app.action("mnuCompare")
    app.choose_file(str(before))
    app.wait(lambda: "before.lad" in app.get("cmbCompare", "currentText"), "the comparison")
    app.wait_idle()
    app.mouse("move", "Main_pbx", [300, 150])
    app.wait(lambda: "difference" in app.text("lblStatusProbe"), "the difference under the pointer")
    words = app.text("lblStatusProbe").replace(",", "").replace(";", "").split()
    x, y = float(words[words.index("x") + 1]), float(words[words.index("y") + 1])
    figures = {}
    for name, file in (("now", project), ("then", before)):
        point = cli_json("spectrum", file, "--map-type", "continuous", "--a-weighted", "--at", f"{x},{y}")
        figures[name] = point["points"][0]["total"]
    shown = float(words[words.index("difference") + 1])
    near(shown, figures["now"] - figures["then"], 0.15, "difference")

    app.action("mnuCompare")
    app.choose_file(str(ROOT / "examples" / "club.lad"))
    assert "size" in app.message()["text"]
    app.answer("Ok")
    assert "before.lad" in app.get("cmbCompare", "currentText")
    app.close()


if __name__ == "__main__":
    sys.exit(run([variants_are_saved_and_compared]))
