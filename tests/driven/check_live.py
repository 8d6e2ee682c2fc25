"""The live map: it follows what is done, equals Calculate and orva-cli, and never makes the pointer wait."""
import sys
import time

from driven import cli_json, equal, folder, near, run, started


def extremes(app):
    """Largest and smallest level of the map as the picture says them."""
    app.wait_idle()
    words = app.get("Main_pbx", "accessibleDescription").replace("dB", "").replace(":", "").split()
    figures = [float(word.rstrip(",")) for word in words if word.rstrip(",").lstrip("-").replace(".", "").isdigit()]
    return figures[0], figures[1]


def settled(app):
    app.wait(lambda: "Coarse" not in app.text("lblStatusText"), "the finer map")
    app.wait_idle()


def save_as(app, path):
    app.action("mnuSaveAs")
    app.choose_file(str(path))
    app.wait(path.exists, "the saved file")
    return path


def place(app, x, y):
    """Pixels of a point of the room, from what the pointer says there."""
    left, top, width, height = app.get("Main_pbx", "geometry")
    probe = {}
    for at in ((100, 100), (width - 100, height - 100)):
        app.mouse("move", "Main_pbx", list(at))
        words = app.text("lblStatusProbe").split()
        probe[at] = (float(words[1].rstrip(",")), float(words[3]))
    (x0, y0), (x1, y1) = probe.values()
    (px0, py0), (px1, py1) = probe.keys()
    return [round(px0 + (x - x0) / (x1 - x0) * (px1 - px0)), round(py0 + (y - y0) / (y1 - y0) * (py1 - py0))]


def equals_calculate_and_the_batch_program():
    home = folder()
    app = started()
    app.tab("Main_SSTab", 1)
    app.click("chkLive")
    equal(app.get("CalcBand_cmd", "enabled"), False)
    app.select("cmbNumSpk", "16")
    app.select("cmbAngle(6)", 2)
    settled(app)
    live = extremes(app)
    project = save_as(app, home / "a.lad")
    map_of_cli = cli_json("map", project, "--map-type", "continuous", "--a-weighted")
    near(live[0], map_of_cli["max"], 0.06, "largest")
    near(live[1], map_of_cli["min"], 0.06, "smallest")
    equal(app.get("Lock_chk", "checked"), False)
    app.click("chkLive")
    app.click("CalcBand_cmd")
    app.wait_idle()
    equal(app.get("Lock_chk", "checked"), True, "as ever with Live off")
    equal(extremes(app), live)
    app.close()


def follows_a_drag_without_a_wait():
    app = started(display="xvfb", size=(1500, 1000))
    app.tab("Main_SSTab", 1)
    app.select("cmbNumSpk", "24")
    app.click("chkLive")
    settled(app)
    first = extremes(app)
    start, end = place(app, 1, 7.5), place(app, 3, 6)
    app.mouse("press", "Main_pbx", start)
    waits, steps = [], 500
    for step in range(1, steps + 1):  # 125 a second
        began = time.monotonic()
        app.mouse("move", "Main_pbx", [a + (b - a) * step / steps for a, b in zip(start, end)])
        waits.append((time.monotonic() - began) * 1000)
        time.sleep(max(0, 0.008 - (time.monotonic() - began)))
    app.mouse("release", "Main_pbx", end)
    waits.sort()
    settled(app)
    assert extremes(app) != first
    equal((app.text("Cradle_txt(0)"), app.text("Cradle_txt(1)")), ("3", "6"))
    app.action("mnuUndo")
    settled(app)
    equal(extremes(app), first)
    equal((app.text("Cradle_txt(0)"), app.text("Cradle_txt(1)")), ("1", "7.5"), "one step")
    print(f"        pointer events of a drag waited {waits[steps // 2]:.1f} ms, 99 of 100 below"
          f" {waits[steps * 99 // 100]:.1f} ms")
    app.close()


if __name__ == "__main__":
    sys.exit(run([equals_calculate_and_the_batch_program, follows_a_drag_without_a_wait]))
