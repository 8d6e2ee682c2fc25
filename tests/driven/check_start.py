"""How the window starts: with a file, without questions, with another language, with its settings set aside."""
import subprocess
import sys

from driven import BUILD, ROOT, equal, folder, run, started, stored
from driven import PatientApp


def orva(*arguments, home=None):
    app = PatientApp([str(BUILD / "orva"), *map(str, arguments)], home=home, cwd=str(ROOT))
    app.wait_window("frmMain")
    app.wait_idle()
    return app


def with_a_file():
    file = ROOT / "examples" / "theatre.lad"
    for argument in (file, "examples/theatre.lad", f"file://{file}"):
        app = orva(argument)
        app.wait(lambda app=app: "theatre.lad" in app.get("frmMain", "windowTitle"), "the project")
        equal(app.text("RoomWidth_txt"), "34")
        equal(app.get("frmMain", "windowModified"), False)
        app.close()
    app = orva("--language", "de", "--", "no such file.lad")
    assert "no such file.lad" in app.message()["text"]
    app.answer("Ok")
    equal(app.get("Main_SSTab", "currentIndex") in range(4), True)
    app.close()


def without_a_display():
    def call(*arguments):
        done = subprocess.run([BUILD / "orva", *arguments], capture_output=True, text=True, check=False,
                              env={"PATH": "/usr/bin", "HOME": str(folder())})
        return done.returncode, done.stdout, done.stderr
    status, text, _ = call("--help")
    equal(status, 0)
    assert "--no-splash" in text
    status, text, _ = call("--version")
    equal((status, text.startswith("orva ")), (0, True))
    status, _, text = call("--fast")
    equal(status, 2)
    assert "--fast: unknown option" in text
    _, _, text = call()
    assert "no Qt platform plugin could be initialized" in text, text


def settings_set_aside():
    home = folder()
    app = started(language=1, home=str(home))
    app.action("mnuGenOptions")
    app.wait_window("frmOptions")
    app.click("Meters_opt(1)")
    app.click("Done_cmb")
    app.action("mnuExit")
    app.wait_exit()
    equal(stored(home)["MultiLang"]["LangId"], "1031")
    app = orva("--reset-settings", "--language", "en", "examples/club.lad", home=str(home))
    equal(app.text("lblUnits") if app.exists("lblUnits") else "m", "m")
    app.action("mnuExit")
    app.wait_exit()
    equal(stored(home)["Options"]["Units_Meters"], "True")
    kept = [path.name for path in (home / ".config" / "ORVA").iterdir()]
    assert any(name.endswith(".old") for name in kept), kept


if __name__ == "__main__":
    sys.exit(run([with_a_file, without_a_display, settings_set_aside]))
