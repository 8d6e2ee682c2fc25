"""Maps, projects, the save question, recent files and import, against orva-cli and the files on disk."""
import base64
import json
import random
import re
import shutil
import subprocess
import sys
import time

from driven import BUILD, ROOT, AppExited, cli, cli_json, equal, folder, near, run, started, stored

SAMPLES = [ROOT / "examples" / "theatre.lad", ROOT / "examples" / "club.lad"]


def open_file(app, path):
    app.action("mnuOpen")
    app.choose_file(str(path))
    app.wait_idle()


def map_extremes(app):
    app.wait_idle()
    return [float(x) for x in re.findall(r"M(?:ax|in): (-?[\d.]+)dB", app.get("Main_pbx", "accessibleDescription"))]


def map_equals_the_batch_program():
    for sample in SAMPLES:
        app = started()
        open_file(app, sample)
        app.tab("Main_SSTab", 1)
        app.click("MapType_opt(0)")
        app.click("CalcBand_cmd")
        app.wait(lambda: map_extremes(app), "the map")
        equal(app.get("Lock_chk", "checked"), True)
        equal(app.get("chkAiming", "enabled"), True)

        def same(*choice):
            result = cli_json("map", sample, *choice)
            found = map_extremes(app)
            near(found[0], result["max"], 0.051, f"{sample.name} {choice} max")
            near(found[1], result["min"], 0.051, f"{sample.name} {choice} min")

        same("--averaging", "broadband", "--map-type", "continuous", "--a-weighted")
        app.click("MapType_opt(1)")
        same("--averaging", "broadband", "--map-type", "peak", "--a-weighted")
        app.check("chkAWeight", False)
        same("--averaging", "broadband", "--map-type", "peak")
        app.click("MapType_opt(2)")
        app.select("Average_cmb", 1)
        app.select("cmbTerzOktave", " 2000Hz")
        same("--averaging", "octave", "--map-type", "detailed", "--band", "2000")
        app.check("chkAiming", True)
        assert map_extremes(app), "aiming lines keep the map"
        app.check("Lock_chk", False)
        assert map_extremes(app), "unlocking keeps the map"
        app.select("cmbAngle(0)", len(app.items("cmbAngle(0)")["items"]) - 1) if sample.name == "club.lad" else \
            app.enter("Cradle_txt(0)", "1.6")
        equal(map_extremes(app), [], "an edit clears the map")
        equal(app.get("chkAiming", "enabled"), False)
        app.select("cmbTerzOktave", " 1000Hz")
        equal(map_extremes(app), [], "nothing is cached after an edit")
        app.close()


def aborting_leaves_no_map():
    app = started(size=(3840, 2160))  # long enough on any machine
    app.action("mnuGenOptions")
    app.check("pixelRes_chk", True)
    app.click("Done_cmb")
    app.tab("Main_SSTab", 1)
    app.select("cmbNumSpk", "24")
    app.click("CalcBand_cmd")
    app.wait_window("frmCalculating")
    app.key("Esc")
    app.wait_no_window("frmCalculating", timeout=2)
    equal(map_extremes(app), [])
    equal(app.get("Lock_chk", "checked"), False, "without a map nothing is locked")
    app.click("MapType_opt(2)")
    app.click("CalcBand_cmd")
    app.wait(lambda: map_extremes(app), "the map of a band", timeout=60)
    band = map_extremes(app)
    app.click("CalcAll_cmd")
    app.wait_window("frmCalculating")
    app.key("Esc")
    app.wait_no_window("frmCalculating", timeout=2)
    equal(map_extremes(app), band, "a map that still holds stays")
    equal(app.get("Lock_chk", "checked"), True)
    app.close()


def save_question():
    """Each command, each answer: (the project is saved, the command is carried out)."""
    place = folder()
    for command, answer, saved, done in [("mnuNewC", "Yes", True, False), ("mnuNewC", "No", False, True),
                                         ("mnuNewC", "Cancel", False, False), ("mnuOpen", "Yes", True, False),
                                         ("mnuExit", "Yes", True, True), ("mnuExit", "No", False, True),
                                         ("mnuExit", "Cancel", False, False), ("close", "Yes", True, True),
                                         ("close", "No", False, True)]:
        project = place / "question.lad"
        shutil.copy(SAMPLES[0], project)
        app = started()
        open_file(app, project)
        app.tab("Main_SSTab", 0)
        app.enter("ProjectName_txt", "Changed")
        equal(app.get("frmMain", "windowModified"), True)
        if command == "close":
            app.close_window("frmMain")
        else:
            app.action(command)
        message = app.message()
        equal(message["text"], "Save changes made to current project?")
        equal(len(message["buttons"]), 2 if command == "close" else 3)
        try:
            app.answer(answer)
            app.wait_idle()
        except AppExited:
            pass
        equal(cli_json("show", project)["room"]["ProjectName"].strip() == "Changed", saved, f"{command} {answer}")
        if command in ("mnuExit", "close"):
            ended = app.process.poll() is not None or done and app.wait_exit() == 0
            equal(ended, done, f"{command} {answer}")
        else:
            equal(app.exists(cls="QFileDialog"), False, "no dialog follows")
            equal(app.text("ProjectName_txt"), "" if done else "Changed", f"{command} {answer}")
        app.close()


def files_of_every_kind():
    place = folder()
    app = started()
    files = []
    for case in sorted((ROOT.parent / "shared" / "reference" / "cases").glob("*.json")):
        for name, content in json.loads(case.read_text()).get("files", {}).items():
            if name.endswith(".lad"):
                files.append(place / f"{case.stem}-{name}")
                files[-1].write_bytes(base64.b64decode(content))
    opened = refused = 0
    for file in files:
        shown = subprocess.run([str(BUILD / "orva-cli"), "show", str(file)], capture_output=True)
        app.tab("Main_SSTab", 0)
        before = (app.text("ProjectName_txt"), app.text("RoomWidth_txt"), app.get("frmMain", "windowTitle"))
        open_file(app, file)
        if shown.returncode == 0:
            equal(app.exists(cls="QMessageBox"), False, file.name)
            opened += 1
        else:
            message = app.message()
            equal((message["text"], message["title"]),
                  ("The file is either corrupt or invalid.", "Error: File Load failed."), file.name)
            app.answer("Ok")
            equal((app.text("ProjectName_txt"), app.text("RoomWidth_txt"), app.get("frmMain", "windowTitle")), before,
                  file.name)
            refused += 1
    print(f"        {opened} files opened, {refused} refused")
    open_file(app, SAMPLES[1])
    app.action("mnuSaveAs")
    app.choose_file(str(place / "copy.lad"))
    app.wait((place / "copy.lad").exists)
    equal((place / "copy.lad").read_bytes(), SAMPLES[1].read_bytes(), "a saved copy")
    app.close()


def recent_files():
    home, place = folder(), folder()
    names = [place / f"{letter}.lad" for letter in "abcdef"]
    for name in names:
        shutil.copy(SAMPLES[0], name)
    app = started(home=home)
    for name in names:
        open_file(app, name)
    names[3].unlink()
    app.action("mnuMRU(2)")
    equal(app.message()["text"], f"The file, {names[3]} does not exist.")
    app.answer("Ok")
    app.action("mnuMRU(4)")
    app.wait_idle()
    equal(app.get("mnuMRU(0)", "text"), str(names[1]))
    app.action("mnuExit")
    app.wait_exit()
    listed = stored(home)["MRUFiles"]
    equal([listed[str(i)] for i in range(5)], [str(names[i]) for i in (1, 5, 4, 3, 2)])
    app.close()


def saving_that_fails():
    place = folder()
    subprocess.run(["mount", "-t", "tmpfs", "-o", "size=16k", "tmpfs", str(place)], check=True)
    try:
        shutil.copy(SAMPLES[0], place / "kept.lad")
        old = (place / "kept.lad").read_bytes()
        app = started()
        open_file(app, place / "kept.lad")
        app.tab("Main_SSTab", 0)
        app.enter("Author_txt", "Somebody")
        for what in ("full", "read-only"):
            if what == "full":
                with open(place / "filler", "wb", buffering=0) as filler:
                    try:
                        while filler.write(bytes(512)):
                            pass
                    except OSError:
                        pass
            else:
                subprocess.run(["mount", "-o", "remount,ro", str(place)], check=True)
            app.action("mnuSave")
            equal(app.message()["text"], "Save failed.", what)
            app.answer("Ok")
            equal((place / "kept.lad").read_bytes(), old, what)
            equal(app.get("frmMain", "windowModified"), True, what)
        app.close()
    finally:
        subprocess.run(["umount", "-l", str(place)], check=True)


def imported_data():
    place = folder()
    app = started()
    shutil.copy(BUILD / "bin" / "systemsm.dat", place / "other.xhn")
    text = (BUILD / "bin" / "system.dat").read_bytes()
    (place / "part.xhn").write_bytes(text[: len(text) // 2])
    app.action("mnuLoadData")
    app.choose_file(str(place / "other.xhn"))
    app.wait_idle()
    equal(app.text("lblStatusText"), f"Directivity imported from {place}/other.xhn")
    app.action("mnuLoadData")
    app.choose_file(str(place / "part.xhn"))
    equal(app.message()["text"], "Load data failed")
    app.answer("Ok")
    equal(app.text("lblStatusText"), f"Directivity partly imported from {place}/part.xhn")
    app.action("mnuToolsChangeLanguage")
    app.item("LanguageList", 1)
    app.click("OKButton")
    equal(app.text("lblStatusText"), f"Richtwirkung teilweise importiert aus {place}/part.xhn")
    app.action("mnuNewS")
    equal(app.text("lblStatusText"), "", "a new project has the built-in data")
    app.close()


def killed_while_saving():
    """Whatever moment a save is killed at, there is a whole old or a whole new file."""
    place = folder()
    whole = []
    for system in ("standard", "compact"):
        cli("new", place / f"{system}.lad", "--system", system)
        whole.append((place / f"{system}.lad").read_bytes())
    target = place / "target.lad"
    target.write_bytes(whole[0])
    chance = random.Random(3)
    for save in range(300):
        process = subprocess.Popen([str(BUILD / "orva-cli"), "new", str(target), "--system",
                                    ("standard", "compact")[save % 2]])
        time.sleep(chance.random() * 0.02)
        process.kill()
        process.wait()
        assert target.read_bytes() in whole, f"save {save}"


def help_file():
    place = folder()
    shutil.copy(BUILD / "orva", place)
    shutil.copytree(BUILD / "bin", place / "bin")
    app = started(program=place / "orva")
    app.action("mnuCallHelp")
    equal(app.message()["text"], "Error: Help File cannot be found.")
    app.answer("Ok")
    app.close()


if __name__ == "__main__":
    sys.exit(run([map_equals_the_batch_program, aborting_leaves_no_map, save_question, files_of_every_kind,
                  recent_files, saving_that_fails, imported_data, killed_while_saving, help_file]))
