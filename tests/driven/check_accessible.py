"""What the window says to those who hear it read: each control has a name of its own, which says what and where it is.
Walks the tree that assistive programs see, on a session bus of its own."""
import os
import sys

from driven import equal, run, started

TOLD = {"push button", "check box", "radio button", "combo box", "text", "entry", "password text", "slider",
        "scroll bar", "list", "table", "page tab list", "page tab", "toggle button", "drawing area", "menu",
        "menu item", "check menu item", "spin button"}


def own_bus():
    if os.environ.get("ORVA_OWN_BUS"):
        return
    os.environ["ORVA_OWN_BUS"] = "1"
    os.execvp("dbus-run-session", ["dbus-run-session", "--", "/usr/bin/python3", *sys.argv])


def walk(node, place=()):
    role = node.getRoleName()
    yield node, role, place
    if role in {"list", "table", "combo box"}:
        return  # its items are what they are
    for child in node:
        if child is not None:
            yield from walk(child, (*place, node.name or role))


def program():
    import pyatspi
    desktop = pyatspi.Registry.getDesktop(0)
    return [application for application in desktop if application is not None and "orva" in application.name.lower()]


def named_once(language):
    os.environ["ORVA_DISPLAY"] = "xvfb"
    bus = os.environ["DBUS_SESSION_BUS_ADDRESS"]
    app = started(language=language, env={"DBUS_SESSION_BUS_ADDRESS": bus, "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"})
    app.wait(program, "the program in the tree")
    nodes = controls = 0
    for page in range(4):
        app.tab("Main_SSTab", page)
        app.wait_idle()
        import pyatspi
        seen = {}
        for node, role, place in walk(program()[-1]):
            nodes += 1
            if role not in TOLD or not node.getState().contains(pyatspi.STATE_SHOWING):
                continue
            name = node.name.strip()
            assert name, f"a nameless {role} in {' / '.join(place)}"
            assert (role, name) not in seen, f"two {role} are called {name!r}: {place} and {seen[role, name]}"
            seen[role, name] = place
        controls += len(seen)
    assert controls > 100 and nodes > 300, (controls, nodes)
    splay = {0: "Splay angle between boxes 3 and 4", 1: "Winkel zwischen Box 3 und 4"}[language]
    area = {0: "Area 2, X1", 1: "Fläche 2, X1"}[language]
    names = {node.name for node, _, _ in walk(program()[-1])}
    assert splay in names, splay
    assert area in names, area
    app.close()


def english():
    named_once(0)


def german():
    named_once(1)


def invalid_entries_say_why():
    os.environ["ORVA_DISPLAY"] = "xvfb"
    app = started(env={"DBUS_SESSION_BUS_ADDRESS": os.environ["DBUS_SESSION_BUS_ADDRESS"],
                       "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"})
    app.tab("Main_SSTab", 0)
    app.enter("FOHX_txt", "99")
    app.wait_idle()
    app.wait(program, "the program in the tree")
    found = [node.description for node, _, _ in walk(program()[-1]) if node.name == "FOH, X"]
    equal(found, ["This lies outside the room."])
    app.close()


if __name__ == "__main__":
    own_bus()
    sys.exit(run([english, german, invalid_entries_say_why]))
