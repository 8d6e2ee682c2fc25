"""Create Print Version against orva-cli."""
import subprocess
import sys

from check_project import open_file
from driven import ROOT, cli, equal, folder, run, started


def report_saved(app, command, title, file):
    app.action(command)
    equal(app.file_dialog()["title"], title)
    app.choose_file(str(file))
    app.wait(file.exists)
    app.wait_idle()
    if app.exists(cls="QMessageBox"):
        assert file.name in app.message()["text"]
        app.answer("Ok")


def print_version():
    place = folder()
    app = started(language=1)
    open_file(app, ROOT / "examples" / "theatre.lad")
    report_saved(app, "mnuPrint", "Projekt als RTF speichern", place / "report.rtf")
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


def pages_say_what_the_sheet_says():
    place = folder()
    for project, language, units in (("theatre", "en", "m"), ("theatre", "de", "ft"), ("club", "de", "m")):
        lad = ROOT / "examples" / f"{project}.lad"
        pdf = place / "report.pdf"
        options = ["--language", language, "--units", units]
        cli("report", lad, pdf, *options)
        said = subprocess.run(["pdftotext", "-layout", "-f", "3", "-l", "3", pdf, "-"], check=True,
                              capture_output=True, text=True).stdout
        said = "".join(said.split())
        for line in cli("rigging", lad, *options).splitlines():
            assert "".join(line.split()) in said, line
    app = started(language=1)
    open_file(app, ROOT / "examples" / "club.lad")
    report_saved(app, "mnuPdf", "Bericht als PDF speichern", place / "window.pdf")
    assert (place / "window.pdf").read_bytes().startswith(b"%PDF")
    app.close()


if __name__ == "__main__":
    sys.exit(run([print_version, pages_say_what_the_sheet_says]))
