"""Start, languages, settings, options, calculator, About: as a new user meets them."""
import shutil
import sys
import time

from driven import AppExited, BUILD, entries, equal, folder, managed, near, run, start, started, stored


def leave(app):
    app.action("mnuExit")
    equal(app.wait_exit(), 0, "exit status")
    app.close()


def first_start_and_the_next():
    home = folder()
    app = start(home=home)
    app.wait_window("LanguageSelect")
    equal(entries(app, "LanguageList"), ["English", "Deutsch"])
    equal(app.items("LanguageList")["current"], 0, "selected language")
    equal(app.get("chkShowOnStartup", "checked"), True)
    app.check("chkShowOnStartup", False)
    app.item("LanguageList", 1)
    app.click("OKButton")
    app.wait_window("frmSplashScreen")
    equal(app.text("lblTitle"), "ORVA Version 1.0.0")
    app.wait_window("frmNewCorS")
    equal(app.get("optSystem(0)", "checked"), True)
    app.click("optSystem(1)")
    app.check("chkShowOnStartup", False)
    app.click("OKButton")
    app.wait_window("frmMain")
    equal(app.get("mnuFile", "text"), "&Datei")
    equal(entries(app, "cmbNumSpk")[-1], "16", "compact system")
    leave(app)
    settings = stored(home)
    equal(settings["MultiLang"], {"LangId": "1031", "LangName": "German (Germany)", "ShowDialog": "False"})
    equal(settings["Options"]["NewCompact"], "True")
    equal(settings["Options"]["ShowNewQuery"], "False")

    app = start(home=home)
    app.wait_window("frmMain")
    equal(app.get("Stacked_chk", "text"), "Gestackt:")
    equal(entries(app, "cmbType(0)"), ["VM 306 C", "VM 415 C"])
    leave(app)


def unknown_language_is_english():
    home = folder()
    file = home / ".config" / "ORVA" / "ORVA.conf"
    file.parent.mkdir(parents=True)
    file.write_text("[MultiLang]\nLangId=1033\nShowDialog=False\n")
    app = start(home=home)
    app.wait_window("frmNewCorS")
    equal(app.get("frmNewCorS", "windowTitle"), "Select System")
    app.close_window("frmNewCorS")
    app.wait_window("frmMain")
    equal(entries(app, "cmbType(0)")[0], "VM 412 S", "closing by the frame changes nothing")
    app.close()


def no_language_selected():
    app = start()
    app.wait_window("LanguageSelect")
    app.item("LanguageList", 0, mods="Ctrl")  # takes the selection away
    app.click("OKButton")
    time.sleep(0.3)
    equal(app.exists("LanguageSelect"), True, "still open")
    app.close()


def data_files():
    for what, message, goes_on in [("missing", "system.dat", False), ("wrong", "Load data failed", True)]:
        place = folder()
        shutil.copy(BUILD / "orva", place)
        if what == "wrong":
            shutil.copytree(BUILD / "bin", place / "bin")
            (place / "bin" / "system.dat").write_text("nothing of the kind\n")
        app = start(program=place / "orva")
        app.wait_window("LanguageSelect")
        app.click("OKButton")
        app.wait(lambda: app.state()["modal"] and not app.exists("frmSplashScreen"))
        text = app.message()["text"]
        assert message in text, text
        try:
            app.answer("Ok")
        except AppExited:
            pass
        if goes_on:
            app.wait_window("frmNewCorS")
        else:
            equal(app.wait_exit(), 1, "exit status")
        app.close()


def options():
    app = started()
    app.action("mnuGenOptions")
    app.wait_window("frmOptions")

    def texts():
        return [app.text(name, window="frmOptions") for name in
                ("SPLRes_txt", "txtGridSize(0)", "txtGridSize(1)", "txtGridSize(2)", "lblUnits(3)")]

    def applies():
        return app.get("Apply_cmb", "enabled")

    equal(texts(), ["0.1", "5", "0.5", "1", "m"])
    equal(applies(), False)
    app.click("Meters_opt(1)")
    equal(texts(), ["0.328", "16.4", "1.64", "3.28", "ft"])
    equal(applies(), True)
    app.click("Meters_opt(0)")
    app.click("cmdDefault")
    equal(applies(), False)
    for typed, unit, shown in [("60", 0, "50"), ("-30,5", 0, "-20"), ("140", 1, "122"), ("69,8", 1, "69.8")]:
        app.click(f"optTempUnit({unit})")
        app.enter("txtTemp", typed)
        equal(app.text("txtTemp"), shown, typed)
    app.enter("SPLRes_txt", "0,25")
    app.enter("SPLRes_txt", "0")
    equal((app.get("pixelRes_chk", "checked"), app.text("SPLRes_txt")), (True, "Pixel."))
    app.check("pixelRes_chk", False)
    equal(app.text("SPLRes_txt"), "0.25")
    app.click("cmbLambda")
    near(float(app.text("SPLRes_txt")), 0.043, 0.0011, "lambda/8")
    app.enter("txtGridSize(0)", "-2")
    app.enter("txtGridSize(1)", "0")
    equal((app.text("txtGridSize(0)"), app.text("txtGridSize(1)")), ("2", "1"))
    app.click("Meters_opt(1)")
    app.click("Apply_cmb")
    equal(applies(), False)
    app.click("Done_cmb")
    app.tab("Main_SSTab", 0)
    equal(app.text("RoomWidth_txt"), "98.425", "30 m in feet")
    app.action("mnuGenOptions")
    equal(app.text("txtTemp"), "69.8", "temperature shown again")
    app.click("Cancel_cmb")
    leave(app)


def language_at_run_time():
    app = started()
    app.action("mnuPythCalc")
    app.wait_window("frmCalc")
    app.tab("Main_SSTab", 1)
    app.click("MapType_opt(2)")
    app.select("Average_cmb", 1)
    app.action("mnuToolsChangeLanguage")
    app.item("LanguageList", 1)
    app.click("OKButton")
    equal(app.get("frmCalc", "windowTitle"), "Tüftlers kleiner Helfer")
    equal(app.get("mnuGenOptions", "text"), "Allgemeine Optionen")
    equal(app.get("Average_cmb", "currentIndex"), 1)
    equal(entries(app, "Average_cmb")[1].strip(), "1   Oktave")
    app.action("mnuAbout")
    app.wait_window("frmAbout")
    equal(app.text("lblVersion"), "Version 1.0.0")
    app.click("cmdSysInfo")
    equal(app.message()["text"], "Systeminformationen sind derzeit nicht verfügbar")
    app.answer("Ok")
    app.click("cmdOK")
    leave(app)


def calculator():
    app = started()
    app.action("mnuPythCalc")
    app.wait_window("frmCalc")
    near(float(app.text("txtAngle")), 57.91, 0.005, "defaults")
    for sides, angle in [(("4.2426", "3", "3"), 90), (("20", "8", "8"), None), (("14", "-8", "8"), 57.91),
                         (("8", "0", "8"), 0), (("16", "8", "8"), 0), (("5", "8", "3"), 180)]:
        before = app.text("txtAngle")
        for name in ("txtLength", "txtXone", "txtXtwo"):  # sides that always make a triangle in between
            app.enter(name, "14" if name == "txtLength" else "8", window="frmCalc")
        before = app.text("txtAngle")
        for name, side in zip(("txtXone", "txtXtwo", "txtLength"), (sides[1], sides[2], sides[0])):
            app.enter(name, side, window="frmCalc")
        if angle is not None:
            near(float(app.text("txtAngle")), angle, 0.01, str(sides))
        else:
            equal(app.text("txtAngle"), before, "no triangle: the angle stays")
    app.enter("txtAngle", "1")
    near(float(app.text("txtAngle")), 180, 0.01, "typed over")
    app.action("mnuPythCalc")
    equal(len([w for w in app.windows() if w["name"] == "frmCalc"]), 1)
    leave(app)


def windows_lie_whole_on_the_screen():
    """With their frames, under a window manager, on a small screen."""
    app = managed()

    def inside(name):
        x, y, width, height = app.get(name, "frameGeometry")
        return x >= 0 and y >= 0 and x + width <= 1280 and y + height <= 720
    app.wait(lambda: app.get("frmMain", "frameGeometry") != app.get("frmMain", "geometry") and inside("frmMain"),
             "the main window with its frame on the screen")
    app.tab("Main_SSTab", 1)
    app.click("Optimize_cmd")
    app.wait_window("frmOptimize")
    app.wait(lambda: inside("frmOptimize"), "the search dialog on the screen")
    x, y, width, height = app.get("frmOptimize", "frameGeometry")
    curve = app.info("AreaSpl_pbx")
    left, top = curve["global"][:2]
    assert y + height <= top + 1 or x >= left + app.get("AreaSpl_pbx", "width"), "the dialog covers the curve"
    app.close()


def font():
    app = started()
    before = app.find("cmdAuto")[0]["geometry"][3]
    app.action("mnuFont")
    app.wait_idle()
    app.key("Tab", "Tab")
    app.type("18")
    app.key("Enter")
    app.wait_idle()
    if app.exists(cls="QFontDialog"):
        app.answer("Ok")
    app.tab("Main_SSTab", 1)
    app.wait_idle()
    assert app.find("cmdAuto")[0]["geometry"][3] > before, "controls do not grow with the font"
    app.action("mnuGenOptions")
    assert app.find("cmdDefault")[0]["geometry"][3] > before, "the font reaches a dialog opened later"
    app.close()


if __name__ == "__main__":
    sys.exit(run([first_start_and_the_next, unknown_language_is_english, no_language_selected, data_files, options,
                  language_at_run_time, calculator, font, windows_lie_whole_on_the_screen]))
