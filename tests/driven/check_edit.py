"""The pages: edits, red marks, auto-correct, and figures against orva-cli."""
import re
import sys

from driven import cli, cli_json, entries, equal, folder, near, run, started


def invalid(app, name):
    return bool(app.props(name).get("invalid"))


def options(app, **clicks):
    app.action("mnuGenOptions")
    app.wait_window("frmOptions")
    for name in clicks.values():
        app.click(name, window="frmOptions")
    app.click("Done_cmb")
    app.wait_no_window("frmOptions")


def save_as(app, path):
    app.action("mnuSaveAs")
    app.choose_file(str(path))
    app.wait(path.exists, "the saved file")
    return path


def shown_levels(app):
    """FOH level, and largest and smallest level of the curve with its number of points."""
    app.wait_idle()
    foh = re.search(r"(-?[\d.]+) dB", app.get("Main_pbx", "accessibleDescription"))
    curve = re.findall(r": ?(-?[\d.]+)dB", app.get("AreaSpl_pbx", "accessibleDescription"))
    width = app.get("AreaSpl_pbx", "width")
    return float(foh.group(1)), [float(level) for level in curve], (width - 70) // 2 + 1


def auto_correct_off_reports():
    app = started()
    options(app, off="AutoCor_opt(1)")
    app.tab("Main_SSTab", 1)
    equal(app.exists("Warning_fra"), False)
    app.select("cmbType(0)", "VM 412 T")
    equal(invalid(app, "cmbAngle(0)"), False, "0° is allowed between T and S")
    equal(invalid(app, "cmbNumSpk"), False)
    app.select("cmbType(1)", "VM 412 T")
    equal(invalid(app, "cmbAngle(0)"), True)
    equal(invalid(app, "cmbAngle(1)"), False)
    equal(app.exists("Warning_fra"), True)
    assert "One or more Angles" in app.text("Warning_lbl"), app.text("Warning_lbl")
    equal((app.get("CalcBand_cmd", "enabled"), app.get("CalcAll_cmd", "enabled")), (False, False))
    app.select("cmbType(11)", "VM 415 F")
    equal((invalid(app, "cmbNumSpk"), invalid(app, "cmbNumBass")), (True, True))
    app.action("mnuSaveAs")
    equal(app.message()["text"], "The current setup is invalid.  Please adjust invalid entries before saving.")
    app.answer("Ok")
    app.select("cmbType(11)", "VM 412 T")
    app.select("cmbType(1)", "VM 412 S")
    equal(app.exists("Warning_fra"), False)
    equal(app.get("CalcBand_cmd", "enabled"), True)
    assert "centre of gravity" in app.text("Counts_lbl"), "one straight box less than the number says"
    app.select("cmbType(0)", "VM 412 S")
    app.select("cmbType(11)", "VM 412 T")
    equal(app.exists("Counts_fra"), False)
    app.close()


def auto_correct_on_snaps():
    app = started()
    app.tab("Main_SSTab", 1)
    app.select("cmbType(1)", "VM 412 T")
    app.select("cmbType(0)", "VM 412 T")
    equal(app.text("cmbAngle(0)"), "4.5°", "0° becomes the first allowed angle")
    equal((app.text("cmbNumGer"), app.text("cmbNumSch"), app.text("cmbNumSpk")), ("4", "8", "12"))
    app.select("cmbNumSpk", "14")
    equal((app.text("cmbType(12)"), app.text("cmbType(13)")), ("VM 412 T", "VM 412 S"))
    app.select("cmbNumBass", "2")
    equal((app.text("cmbType(0)"), app.text("cmbType(1)"), app.text("cmbType(2)")),
          ("VM 415 F", "VM 415 F", "VM 412 T"))
    equal((app.text("cmbAngle(0)"), app.text("cmbAngle(1)")), ("0°", "4.5°"))
    app.select("cmbNumBass", "20")
    equal((app.text("cmbNumBass"), app.text("cmbNumSpk")), ("18", "14"), "32 boxes at most")
    app.select("cmbNumBass", "0")
    app.select("cmbNumSpk", "1")
    equal(app.exists("cmbType(1)"), False)
    equal(app.exists("Warning_fra"), False)
    app.close()


def figures_equal_the_batch_program():
    place = folder()
    for system, feet in [(0, False), (1, True)]:
        app = started(system=system)
        if feet:
            options(app, feet="Meters_opt(1)")
        app.tab("Main_SSTab", 1)
        app.select("cmbType(2)", 0)
        app.select("cmbAngle(3)", 0)
        app.enter("Cradle_txt(1)", "23,5" if feet else "7,2")
        app.select("PinNumber_cmb", "3")
        project = save_as(app, place / f"pin{system}.lad")
        geometry = cli_json("geometry", project)
        near(float(app.text("PinAngle_lbl").rstrip("°")), geometry["firstAngle"], 0.051, "pin angle")
        near(cli_json("show", project)["array"]["CradleCoord"][1], 23.5 * 0.3048 if feet else 7.2, 1e-4, "cradle")
        foh, curve, points = shown_levels(app)
        levels = cli_json("levels", project, "--averaging", "broadband", "--map-type", "continuous",
                          "--a-weighted", "--points", points)
        near(foh, levels["foh"], 0.051, "FOH")
        near(curve[0], levels["areas"][0]["max"], 0.051, "largest")
        near(curve[1], levels["areas"][0]["min"], 0.051, "smallest")

        app.click("PinAngle_opt(1)")
        app.enter("box1Angle_txt", "-3,26")
        equal(app.text("box1Angle_txt"), "-3.3")
        project = save_as(app, place / f"angle{system}.lad")
        geometry = cli_json("geometry", project)
        near(geometry["firstAngle"], 3.3, 1e-4, "first angle")
        equal(int(app.text("AnglePin_lbl")), geometry["pinPoint"] + 1, "closest pin")
        near(float(app.text("RemAng_lbl")), geometry["pinRemainder"], 0.051, "remainder")
        app.tab("Main_SSTab", 2)
        sheet = cli("rigging", project, "--units", "ft" if feet else "m").replace("\r", "")
        equal(app.get("rigText_txt", "plainText"), sheet, "rigging sheet")
        app.close()


def room_entries():
    app = started()
    app.tab("Main_SSTab", 0)
    app.enter("txtXtwo(0)", "8")
    app.enter("txtYtwo(0)", "4.7")
    equal((app.text("txtLength(0)"), app.text("txtAngle(0)")), ("4.24", "45"))
    app.enter("txtAngle(0)", "0")
    equal((app.text("txtXone(0)"), app.text("txtXtwo(0)"), app.text("txtYtwo(0)")), ("5", "9.24", "1.7"))
    app.enter("txtXone(0)", "6")
    equal(app.text("txtXtwo(0)"), "10.24")
    app.enter("RoomWidth_txt", "0")
    equal(app.text("RoomWidth_txt"), "30", "a refused value returns")
    app.enter("FOHX_txt", "31")
    equal(invalid(app, "FOHX_txt"), True)
    app.tab("Main_SSTab", 1)
    assert "out of the bounds of the room" in app.text("Warning_lbl"), app.text("Warning_lbl")
    equal(app.get("CalcBand_cmd", "enabled"), True)
    app.tab("Main_SSTab", 0)
    app.enter("FOHX_txt", "20")
    equal(invalid(app, "FOHX_txt"), False)
    app.select("numAreas_cmb", "1")
    equal((app.get("txtXone(0)", "enabled"), app.get("txtXone(1)", "enabled")), (True, False))
    equal(app.get("frmMain", "windowModified"), True)
    app.close()


def lock_and_selection():
    app = started()
    app.tab("Main_SSTab", 1)
    app.check("Lock_chk", True)
    for name in ("Cradle_txt(0)", "cmbNumSpk", "cmbNumBass", "PinNumber_cmb", "Stacked_chk", "PinAngle_opt(0)",
                 "cmdAuto", "BassBox_txt(1)", "optBassYesNo(0)", "cmbType(0)", "cmbAngle(10)"):
        equal(app.get(name, "enabled"), False, name)
    app.check("Lock_chk", False)
    equal(app.get("cmbType(0)", "enabled"), True)
    # Area 3 runs through the upper right of the room.
    width, height = app.get("Main_pbx", "width"), app.get("Main_pbx", "height")
    app.click("Main_pbx", pos=[int(width * 0.78), int(height * 0.42)])
    app.wait_idle()
    assert app.get("AreaSpl_pbx", "accessibleDescription").startswith("Area:   3"), "area 3 is selected"
    app.click("Main_pbx", pos=[3, 3])
    app.wait_idle()
    assert app.get("AreaSpl_pbx", "accessibleDescription").startswith("Area:   3"), "a click outside selects nothing"
    app.close()


def level_choice():
    app = started()
    app.tab("Main_SSTab", 1)
    equal((app.get("Average_cmb", "enabled"), app.text("cmbTerzOktave"), app.exists("CalcAll_cmd")),
          (False, " All avgd.", False))
    app.click("MapType_opt(2)")
    equal(app.get("CalcBand_cmd", "text"), "Calculate Band")
    equal(len(entries(app, "cmbTerzOktave")), 22)
    app.select("cmbTerzOktave", " 1000Hz")
    app.select("Average_cmb", 3)
    equal((app.text("cmbTerzOktave"), app.get("cmbTerzOktave", "enabled")), (" All avgd.", False))
    app.select("Average_cmb", 0)
    equal(app.text("cmbTerzOktave"), " 1000Hz")
    app.close()


if __name__ == "__main__":
    sys.exit(run([auto_correct_off_reports, auto_correct_on_snaps, figures_equal_the_batch_program, room_entries,
                  lock_and_selection, level_choice]))
