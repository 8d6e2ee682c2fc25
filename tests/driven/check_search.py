"""The search dialog, auto aim and the sub-array page against orva-cli."""
import sys
import time

from check_edit import options, save_as
from driven import cli_json, entries, equal, folder, near, run, started


def opened(app):
    app.click("Optimize_cmd")
    app.wait_window("frmOptimize")
    equal(app.get("frmOptimize", "windowTitle"), "Setup Optimization")
    equal((app.text("lblBestRMS"), app.get("cmdCommit", "enabled"), entries(app, "cmbConfigs")), ("_", False, []))


def finished(app, timeout=60):
    app.wait_prop("frmOptimize", "windowTitle", "Setup Optimization: Select desired configuration.", timeout=timeout)


def best_three_equal_the_batch_program():
    place = folder()
    for measure, name in ((1, "smooth"), (0, "line")):
        app = started()
        app.tab("Main_SSTab", 1)
        project = save_as(app, place / f"{name}.lad")
        opened(app)
        app.click(f"optMeasure({measure})")
        app.enter("txtNumPts", "60.9")
        equal(app.text("txtNumPts"), "60")
        app.enter("txtNumPts", "word")
        equal(app.text("txtNumPts"), "60")
        app.check("chkArea", False)
        app.check("chkNeighbor", True)
        total = int(app.text("lblToTest"))
        app.click("cmdOptimize")
        finished(app)
        result = cli_json("optimize", project, "--area", 1, "--points", 60, "--measure", name, "--all-speakers",
                          "--neighbours", "--map-type", "continuous", "--a-weighted")
        equal(result["configurations"], total)
        equal(app.text("lblTested"), str(total))
        wanted = [f"{k + 1}: RMS: {result['best'][k]['rms']:.2f}dB(A)" for k in range(3)] + ["4: Original Setup"]
        equal(entries(app, "cmbConfigs"), wanted)
        equal((app.get("chkShowSetup", "checked"), app.get("cmdOptimize", "enabled")), (True, False))
        app.select("cmbConfigs", 1)
        app.click("cmdCommit")
        app.wait_no_window("frmOptimize")
        equal(app.get("frmMain", "windowModified"), True)
        second = result["best"][1]["angles"]
        for joint in range(11):
            near(float(app.text(f"cmbAngle({joint})").rstrip("°")), 1.5 * second[joint + 1], 0.01, f"joint {joint}")
        app.close()


def pause_look_continue():
    app = started()
    app.tab("Main_SSTab", 1)
    before = [app.text(f"cmbAngle({joint})") for joint in range(11)]
    opened(app)
    app.check("chkArea", False)
    app.enter("txtNumPts", "2000")
    app.click("cmdOptimize")
    app.wait(lambda: int(app.text("lblTested")) > 0, "progress")
    equal(app.get("frmOptimize", "windowTitle"), "Setup Optimization: Calculating...")
    for name in ("chkArea", "chkNeighbor", "txtNumPts", "fraMeasure", "cmdCancel"):
        equal(app.get(name, "enabled"), False, name)
    begun = time.monotonic()
    for _ in range(20):
        app.get("cmdOptimize", "text")
    answer = (time.monotonic() - begun) / 20
    assert answer < 1, f"an answer takes {answer:.3f} s"
    app.click("cmdOptimize")
    app.wait_prop("frmOptimize", "windowTitle", "Setup Optimization: Interrupted; "
                  "Select desired configuration or continue calculation.", timeout=3)
    equal((app.get("cmdOptimize", "text"), app.get("cmdCommit", "enabled")), ("Continue Calc.", False))
    tested = int(app.text("lblTested"))
    equal(len(entries(app, "cmbConfigs")), 4)
    app.select("cmbConfigs", 0)
    equal(app.get("cmdCommit", "enabled"), True)
    app.click("cmdOptimize")
    app.wait(lambda: int(app.text("lblTested")) > tested, "more progress")
    app.click("cmdOptimize")
    app.wait_prop("cmdOptimize", "text", "Continue Calc.")
    app.select("cmbConfigs", 3)
    app.click("cmdCommit")
    app.wait_no_window("frmOptimize")
    equal([app.text(f"cmbAngle({joint})") for joint in range(11)], before, "the original changes nothing")
    equal(app.get("frmMain", "windowModified"), False)

    app.click("Optimize_cmd")
    app.check("chkArea", False)
    app.click("cmdOptimize")
    app.wait(lambda: int(app.text("lblTested")) > 0, "progress")
    app.close_window("frmOptimize")
    app.wait_no_window("frmOptimize", timeout=2)
    equal(app.get("frmMain", "windowModified"), False)
    app.close()


def quick_search_first():
    app = started(language=1)
    app.tab("Main_SSTab", 1)
    app.click("Optimize_cmd")
    app.check("chkQuick", True)
    app.click("cmdOptimize")
    app.wait_prop("frmOptimize", "windowTitle", lambda title: "auswählen" in title or "wählen" in title, timeout=60)
    equal(len(entries(app, "cmbConfigs")), 5)
    assert "nach" in app.text("lblQuick") and app.text("lblQuick").endswith("bewiesen"), app.text("lblQuick")
    app.click("cmdCancel")
    app.close()


def no_box_aims_there():
    app = started()
    app.tab("Main_SSTab", 0)
    app.enter("txtYone(0)", "7.9")
    app.tab("Main_SSTab", 1)
    app.click("Optimize_cmd")
    equal(app.message()["text"],
          "No speakers are aimed at selected area.  Select another area or adjust array.")
    app.answer("Ok")
    app.close()


def auto_aim_and_sub_array():
    place = folder()
    for system, feet in [(0, False), (1, True)]:
        app = started(system=system)
        if feet:
            options(app, feet="Meters_opt(1)")
        app.tab("Main_SSTab", 1)
        project = save_as(app, place / f"aim{system}.lad")
        app.click("cmdAuto")
        near(float(app.text("box1Angle_txt")), cli_json("aim", project)["angle"], 0.051, "auto aim")
        app.tab("Main_SSTab", 3)
        app.enter("OpenAng_txt", "300")
        equal(app.text("OpenAng_txt"), "270")
        app.enter("OpenAng_txt", "90")
        app.enter("SubArray_txt(0)", "-32,8" if feet else "-10")
        app.action("mnuSave")
        figures = cli_json("subarray", project)
        for i in (0, 4, 9):
            near(float(app.text(f"VirtDist_txt({i})")), figures["virtualDistance"][i] * (3.28084 if feet else 1), 0.02)
            near(float(app.text(f"SubDelay_txt({i})")), figures["delay"][i], 0.02)
        app.close()


if __name__ == "__main__":
    sys.exit(run([best_three_equal_the_batch_program, pause_look_continue, quick_search_first, no_box_aims_there,
                  auto_aim_and_sub_array]))
