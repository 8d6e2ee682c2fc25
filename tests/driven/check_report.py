"""Create Print Version against orva-cli."""
import sys

from check_project import open_file
from driven import ROOT, equal, folder, run, started


def print_version():
    place = folder()
    app = started(language=1)
    open_file(app, ROOT / "examples" / "theatre.lad")
    app.action("mnuPrint")
    equal(app.file_dialog()["title"], "Projekt als RTF speichern")
    app.choose_file(str(place / "report.rtf"))
    app.wait((place / "report.rtf").exists)
    app.wait_idle()
    if app.exists(cls="QMessageBox"):
        assert "report.rtf" in app.message()["text"]
        app.answer("Ok")
    equal(app.get("Main_SSTab", "currentIndex"), 2)
    text = (place / "report.rtf").read_bytes()
    assert text.startswith(b"{\\rtf1") and b"\\pngblip" in text and b"RTF-Dokument" in text
    equal(app.get("frmMain", "windowModified"), False)

    app.action("mnuPrint")
    (place / "device.rtf").symlink_to("/dev/full")
    app.choose_file(str(place / "device.rtf"))
    app.answer("Yes")  # the file dialog asks before it overwrites
    equal(app.message()["text"], "Das RTF-Dokument konnte nicht erstellt werden!")
    app.answer("Ok")
    app.close()


if __name__ == "__main__":
    sys.exit(run([print_version]))
