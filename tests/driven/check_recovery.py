"""Work outlives the program: after a kill, a signal, a lost display the next start offers it; after a proper end it
offers nothing. ORVA_KILLS: how many random moments are tried."""
import os
import pathlib
import random
import signal
import sys
import time

from driven import BUILD, PatientApp, equal, folder, run, started, stored

KILLS = int(os.environ.get("ORVA_KILLS", "6"))


def left(home):
    return sorted(file.name for file in (pathlib.Path(home) / ".local/state/ORVA/recovery").glob("*"))


def used_home():
    """Where the program has run before."""
    home = folder()
    started(home=str(home)).close()
    return home


def again(home, **options):
    app = PatientApp([str(BUILD / "orva"), "--no-splash", "--language", "en"], home=str(home), **options)
    app.wait(lambda: app.exists("dlgRecover") or app.exists("frmNewCorS") or
             (app.exists("frmMain") and app.get("frmMain", "visible")), "a window")
    return app


def new_project(app):
    app.wait_window("frmNewCorS")
    app.click("OKButton")
    app.wait_window("frmMain")
    app.wait_idle()
    return app


def begun(home, **options):
    """A start that offers nothing."""
    app = again(home, **options)
    assert not app.exists("dlgRecover")
    return new_project(app)


def recovered(app):
    app.wait_window("dlgRecover")
    app.click("cmdRecover")
    app.wait_window("frmMain")
    app.wait_idle()


def give_up(app):
    """A proper end without saving."""
    app.action("mnuExit")
    app.answer("No")
    app.wait_exit()


def end(app, signal_number):
    os.kill(app.process.pid, signal_number)
    app.process.wait(timeout=30)


def kills():
    random.seed(7)
    home = used_home()
    for kill in range(KILLS):
        app = begun(home)
        app.tab("Main_SSTab", 1)
        edits, until = [], time.monotonic() + random.uniform(0.3, 4)
        while time.monotonic() < until:
            width = f"{random.randint(3001, 3399) / 100:g}"  # no part of it is the first value
            app.enter("Cradle_txt(0)", width)
            edits.append((time.monotonic(), width))
        died = time.monotonic()
        end(app, signal.SIGKILL)
        allowed = {width for when, width in edits if died - when < 2.0}
        last_before = [width for when, width in edits if died - when >= 2.0][-1:]
        app = again(home)
        if app.exists("dlgRecover"):
            recovered(app)
            found = app.text("Cradle_txt(0)")
            whole = allowed | set(last_before)  # or the beginning of one, being typed
            assert any(width.startswith(found) for width in whole), f"kill {kill}: {found} is more than 2 s old"
            equal(app.get("frmMain", "windowModified"), True)
            give_up(app)
        else:
            assert not last_before, f"kill {kill}: nothing offered after {died - edits[0][0]:.1f} s"
            app.close()
        equal(left(home), [], "after a proper end")


def signals():
    home = used_home()
    for number in (signal.SIGTERM, signal.SIGHUP):
        app = begun(home)
        app.action("mnuGenOptions")
        app.wait_window("frmOptions")
        app.click("Meters_opt(1)" if number == signal.SIGTERM else "Meters_opt(0)")
        app.click("Done_cmb")
        app.tab("Main_SSTab", 1)
        app.enter("Cradle_txt(0)", "7")
        end(app, number)
        equal(stored(home)["Options"]["Units_Meters"], "False" if number == signal.SIGTERM else "True")
        app = again(home)
        app.wait_window("dlgRecover")
        app.click("cmdRecoverLater")
        new_project(app)
        second = again(home)  # the first one no longer looks
        second.wait_window("dlgRecover")
        second.click("cmdDiscard")
        second.answer("Yes")
        new_project(second)
        for window in (app, second):
            window.action("mnuExit")
            window.wait_exit()
        equal(left(home), [])


def two_windows():
    home = used_home()
    windows = [begun(home), begun(home)]
    for window, name in zip(windows, ("first", "second")):
        window.tab("Main_SSTab", 0)
        window.enter("ProjectName_txt", name)
    time.sleep(2)
    for window in windows:
        end(window, signal.SIGKILL)
    names = set()
    for _ in windows:
        app = again(home)
        recovered(app)
        names.add(app.text("ProjectName_txt").strip())
        give_up(app)
    equal(names, {"first", "second"})
    equal(left(home), [])


def lost_display():
    home = used_home()
    app = begun(home, display="xvfb", screen="1280x800x24")
    app.tab("Main_SSTab", 1)
    app.enter("Cradle_txt(0)", "7")
    app.xvfb.kill()
    app.process.wait(timeout=30)
    app = again(home)
    recovered(app)
    equal(app.text("Cradle_txt(0)"), "7")
    give_up(app)


def no_place():
    home = used_home()
    state = pathlib.Path(home) / ".local/state/ORVA/recovery"
    state.parent.mkdir(parents=True, exist_ok=True)
    state.write_text("no folder")
    app = begun(home)
    app.tab("Main_SSTab", 1)
    app.enter("Cradle_txt(0)", "7")
    app.wait(lambda: "recovery" in app.text("lblStatusText"), "that it cannot be written")
    app.enter("Cradle_txt(0)", "8")
    equal(app.text("Cradle_txt(0)"), "8", "editing goes on")
    app.close()


if __name__ == "__main__":
    signal.signal(signal.SIGHUP, signal.SIG_DFL)  # under nohup the program would ignore it, as it should
    sys.exit(run([signals, lost_display, two_windows, no_place, kills]))
