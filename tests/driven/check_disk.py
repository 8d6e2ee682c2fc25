"""Files of others, and disks that are slow or gone: the window goes on, and nothing is overwritten unasked."""
import os
import pathlib
import subprocess
import sys
import time

from driven import BUILD, PatientApp, UiError, cli_json, equal, folder, run, started, stored

CALL_MS = 500  # a save takes more than ten of the calls that are slow


def slow_started(place, **options):
    """The program with a disk under `place` that can be made slow."""
    shim = folder() / "slow_disk.so"
    source = pathlib.Path(__file__).with_name("slow_disk.c")
    subprocess.run(["cc", "-shared", "-fPIC", "-O1", "-o", str(shim), str(source), "-ldl"], check=True)
    return started(env={"LD_PRELOAD": str(shim), "ORVA_SLOW_FOLDER": str(place), "ORVA_SLOW_MS": str(CALL_MS)},
                   **options)


def make_slow(place, slow=True):
    switch = pathlib.Path(f"{place}.slow")
    switch.touch() if slow else switch.unlink()


def calls_of_window(place):
    calls = pathlib.Path(f"{place}.calls")
    return calls.read_text() if calls.exists() else ""


def save_as(app, path):
    app.action("mnuSaveAs")
    app.choose_file(str(path))
    app.wait(lambda: path.exists() and not app.get("frmMain", "windowModified"), "the saved file")


def cradle(path):
    return round(cli_json("show", path)["array"]["CradleCoord"][0], 3)


def edit(app, width):
    app.tab("Main_SSTab", 1)
    app.enter("Cradle_txt(0)", width)


def answers_while(app, test):
    """The longest time until an answer of the window while `test` holds not yet."""
    longest = 0
    while not test():
        began = time.monotonic()
        app.get("frmMain", "windowTitle")
        longest = max(longest, time.monotonic() - began)
        time.sleep(0.01)
    return longest


def slow_saves():
    place = folder()
    app = slow_started(place)
    project = place / "a.lad"
    edit(app, "3")
    save_as(app, project)
    make_slow(place)
    edit(app, "4")
    app.action("mnuSave")
    app.wait(lambda: "disk" in app.text("lblStatusText"), "that it waits")
    edit(app, "5")
    app.action("mnuSave")
    edit(app, "6")
    equal(app.get("frmMain", "windowModified"), True)
    longest = answers_while(app, lambda: cradle(project) == 4)
    longest = max(longest, answers_while(app, lambda: cradle(project) == 5))
    assert longest < CALL_MS / 1000, f"no answer for {longest:.2f} s"
    app.wait(lambda: "disk" not in app.text("lblStatusText"), "that it no longer waits")
    equal(app.get("frmMain", "windowModified"), True, "an edit since")
    print(f"        longest answer while saving {longest * 1000:.0f} ms")

    app.action("mnuSave")
    app.action("mnuExit")  # waits for the save, and asks nothing
    app.wait_window("frmCalculating")
    app.wait_exit()
    equal(cradle(project), 6)
    equal(calls_of_window(place), "", "file calls in the window's thread")


def slow_opening():
    place = folder()
    app = slow_started(place)
    project = place / "a.lad"
    save_as(app, project)
    edit(app, "3")
    app.action("mnuSave")
    make_slow(place)
    app.action("mnuMRU(0)")
    app.wait_window("frmCalculating")
    app.click("Abort_cmb")
    app.wait_no_window("frmCalculating")
    edit(app, "4")
    time.sleep(4 * CALL_MS / 1000)
    equal(app.text("Cradle_txt(0)"), "4", "what was given up does not come")
    app.action("mnuMRU(0)")
    app.answer("No")
    app.wait(lambda: app.text("Cradle_txt(0)") == "3", "the opened project")
    equal(calls_of_window(place), "", "file calls in the window's thread")
    make_slow(place, False)
    app.close()


def come_back(app):
    """The window gets the focus again, and asks."""
    try:
        app.action("mnuAbout", patience=2)
        app.key("Escape")
    except UiError:  # it asks already
        pass
    app.wait_window("dlgOutside")


def changed_outside():
    place = folder()
    project, other = place / "a.lad", place / "b.lad"
    first, second = started(), started()
    edit(first, "3")
    save_as(first, project)
    second.action("mnuOpen")
    second.choose_file(str(project))
    second.wait(lambda: "a.lad" in second.get("frmMain", "windowTitle"), "the project")

    edit(second, "4")
    edit(first, "5")
    first.action("mnuSave")
    first.wait(lambda: cradle(project) == 5, "the save")
    second.action("mnuSave")
    second.wait_window("dlgOutside")
    equal(cradle(project), 5, "not overwritten unasked")
    second.key("Escape")
    second.wait_no_window("dlgOutside")
    equal((cradle(project), second.get("frmMain", "windowModified")), (5, True))
    second.action("mnuSave")
    second.wait_window("dlgOutside")
    second.click("cmdReload")
    second.wait(lambda: second.text("Cradle_txt(0)") == "5", "what the other one saved")
    equal(second.get("frmMain", "windowModified"), False)

    edit(second, "6")
    second.action("mnuSave")
    second.wait(lambda: cradle(project) == 6, "the save")
    edit(first, "7")
    first.action("mnuSave")
    first.wait_window("dlgOutside")
    first.click("cmdKeepMine")
    first.wait(lambda: cradle(project) == 7, "the other one was overwritten, asked")
    equal(first.get("frmMain", "windowModified"), False)

    come_back(second)
    second.click("cmdOutsideSaveAs")
    second.choose_file(str(other))
    second.wait(other.exists, "the other file")
    equal((cradle(other), cradle(project)), (6, 7))

    project.unlink()
    come_back(first)
    equal(first.exists("cmdReload"), False)
    first.click("cmdKeepMine")
    equal(first.get("frmMain", "windowModified"), True)
    first.action("mnuSave")
    first.wait(project.exists, "the file again")
    first.close()
    second.close()


def session():
    home, place = str(folder()), folder()
    app = started(home=home, display="xvfb")
    app.set("frmMain", "geometry", [60, 40, 1100, 700])
    save_as(app, place / "a.lad")
    save_as(app, place / "b.lad")
    app.tab("Main_SSTab", 2)
    app.action("mnuExit")
    app.wait_exit()
    (place / "a.lad").unlink()

    app = PatientApp([str(BUILD / "orva"), "--no-splash", "--language", "en"], home=home, display="xvfb")
    app.wait_window("frmNewCorS")
    app.click("OKButton")
    app.wait_window("frmMain")
    equal(app.get("frmMain", "geometry"), [60, 40, 1100, 700])
    equal(app.get("Main_SSTab", "currentIndex"), 2)
    app.menu("File")
    app.wait(lambda: app.get("mnuMRU(1)", "text").endswith("(not there)"), "the missing file is marked")
    equal(app.get("mnuMRU(0)", "text"), str(place / "b.lad"))
    app.menu("Remove missing files from the list")
    app.wait(lambda: not app.get("mnuMRU(1)", "visible"), "the missing file is gone")
    equal(stored(home)["MRUFiles"]["1"], "")
    equal(stored(home)["Session"]["FolderProjects"], str(place))
    app.close()


if __name__ == "__main__":
    sys.exit(run([slow_saves, slow_opening, changed_outside, session]))
