#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Tavlo as a screen reader meets it: the real app in a window on a virtual
display, its accessibility tree read and driven over the real AT-SPI bus
(at-spi2-core's bus launcher on the private session bus that
dbus-run-session gives this script), in English and in Russian.

It walks every screen, presses buttons through their Press action, reads and
turns the date wheels through the Value interface, toggles a switch, chooses
a theme, edits and deletes a favorite through a row's own buttons, closes
dialogs with Escape, and checks the outcome in the settings file and with
`tavlo favorites list --json`.

    dbus-run-session -- tests/accessibility/screenreader.py TAVLO_BINARY
"""

import datetime
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time
import warnings

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib  # noqa: E402

# The interface getters this uses are the ones bookworm's libatspi has.
warnings.filterwarnings("ignore", category=DeprecationWarning)
TAVLO = os.path.realpath(sys.argv[1])
S = Atspi.StateType

# What a screen reader must say for some controls, in each language.
WORDS = {
    "en": {
        "favorites": "Favorites", "settings": "Settings", "add": "Add this birthday to favorites",
        "day": "Day", "year": "Year", "sort": "Sort", "sortByName": "Sort by name",
        "back": "Done", "close": "Close", "info": "About Tavlo", "cancel": "Cancel",
        "edit": "Edit Bob", "delete": "Delete Bob", "details": "Show more details",
        "theme3": "Colour theme 3", "coming": "birthday still to come", "bobSign": "Capricorn",
        "favoritesTitle": "Favorites", "age": "age",
    },
    "ru": {
        "favorites": "Избранные", "settings": "Настройки", "add": "Добавить этот день рождения",
        "day": "День", "year": "Год", "sort": "Сортировать", "sortByName": "Сортировать по имени",
        "back": "назад", "close": "Закрыть", "info": "О Tavlo", "cancel": "Отменить",
        "edit": "Изменить: Bob", "delete": "Удалить: Bob",
        "details": "Показать больше информации", "theme3": "Цветовая тема 3",
        "coming": "день рождения впереди", "bobSign": "Козерог", "favoritesTitle": "Избранные",
        "age": "возраст",
    },
}
# Control roles whose name a screen reader speaks; each must have one.
CONTROLS = {"push button", "check box", "radio button", "spin button", "list item", "text",
            "entry", "toggle button"}


class Failure(Exception):
    pass


def pump():
    context = GLib.MainContext.default()
    while context.pending():
        context.iteration(False)


def wait_for(condition, what, timeout=10.0):
    """Polls until condition() gives something true; returns it."""
    end = time.monotonic() + timeout
    while True:
        pump()
        try:
            result = condition()
        except GLib.Error:
            result = None
        if result:
            return result
        if time.monotonic() > end:
            raise Failure("timed out waiting for " + what)
        time.sleep(0.05)


class Node:
    def __init__(self, acc):
        self.acc = acc
        self.role = acc.get_role_name()
        self.name = acc.get_name() or ""
        self.states = acc.get_state_set()

    def has(self, state):
        return self.states.contains(state)

    def actions(self):
        action = self.acc.get_action_iface()
        return [action.get_action_name(i) for i in range(action.get_n_actions())] if action else []

    def do(self, name):
        names = self.actions()
        if name not in names:
            raise Failure(f"{self.role} '{self.name}' offers no {name} action, only {names}")
        if not self.acc.get_action_iface().do_action(names.index(name)):
            raise Failure(f"{name} on '{self.name}' failed")

    def value(self):
        return self.acc.get_value_iface().get_current_value()

    def text(self):
        text = self.acc.get_text_iface()
        if text is None:
            raise Failure(f"{self.role} '{self.name}' has no Text interface")
        return text.get_text(0, text.get_character_count())

    def __repr__(self):
        return f"{self.role} '{self.name}'"


class App:
    def __init__(self, language, home):
        self.language = language
        self.words = WORDS[language]
        self.home = home
        self.values_announced = []
        env = dict(os.environ)
        env.update({
            "XDG_CONFIG_HOME": f"{home}/config", "XDG_DATA_HOME": f"{home}/data",
            "LANGUAGE": language, "LANG": "ru_RU.UTF-8" if language == "ru" else "en_US.UTF-8",
            "LC_ALL": "", "TAVLO_APPEARANCE": "dark", "QT_QPA_PLATFORM": "xcb",
            "QT_QUICK_BACKEND": "software", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
        })
        self.env = env
        self.settings_file = f"{home}/config/tavlo/tavlo.conf"
        self.log = open(f"{home}/app.log", "w")
        self.process = subprocess.Popen([TAVLO], env=env, stdout=self.log, stderr=self.log)
        self.app = wait_for(self.find_app, "the app on the accessibility bus", 20)
        listener = Atspi.EventListener.new(self.on_value)
        listener.register("object:property-change:accessible-value")
        self.listener = listener
        window = wait_for(lambda: subprocess.run(
            ["xdotool", "search", "--name", "^Tavlo$"], capture_output=True, text=True,
            env=env).stdout.split(), "the window")[0]
        subprocess.run(["xdotool", "windowfocus", "--sync", window], env=env, check=True)

    def find_app(self):
        desktop = Atspi.get_desktop(0)
        for i in range(desktop.get_child_count()):
            app = desktop.get_child_at_index(i)
            if app is not None and app.get_process_id() == self.process.pid:
                return app
        return None

    def on_value(self, event):
        self.values_announced.append(event.source.get_name())

    def quit(self):
        self.process.terminate()
        self.process.wait(10)
        self.log.close()

    # The tree as a screen reader sees it now: everything showing.
    def showing(self):
        self.app.clear_cache()
        found = []

        def walk(acc):
            for i in range(acc.get_child_count()):
                child = acc.get_child_at_index(i)
                if child is None:
                    continue
                node = Node(child)
                if node.has(S.SHOWING):
                    found.append(node)
                    walk(child)
        walk(self.app)
        return found

    def get(self, name, role=None):
        for node in self.showing():
            if node.name == name and (role is None or node.role == role):
                return node
        return None

    def wait(self, name, role=None, what=None):
        return wait_for(lambda: self.get(name, role), what or f"{role or 'anything'} '{name}'")

    def wait_gone(self, name, what=None):
        wait_for(lambda: self.get(name) is None, what or f"'{name}' to go")

    def press(self, name, role="push button"):
        self.wait(name, role).do("Press")

    def key(self, key):
        subprocess.run(["xdotool", "key", key], env=self.env, check=True)

    def type(self, text):
        subprocess.run(["xdotool", "type", "--delay", "30", text], env=self.env, check=True)

    def setting(self, key):
        try:
            with open(self.settings_file, encoding="utf-8") as f:
                for line in f:
                    if line.startswith(key + "="):
                        return line.rstrip("\n").split("=", 1)[1]
        except FileNotFoundError:
            pass
        return None

    def favorites(self):
        out = subprocess.run([TAVLO, "favorites", "list", "--json"], env=self.env,
                             capture_output=True, text=True, check=True).stdout
        return [json.loads(line) for line in out.splitlines()]

    # Every control on the screen has a name, and no two showing share one.
    def check_screen(self, screen):
        nodes = self.showing()
        named = [n for n in nodes if n.role in CONTROLS or n.role in ("label", "heading")]
        for node in named:
            if node.role in CONTROLS and not node.name.strip():
                raise Failure(f"{screen}: a {node.role} has no name")
        for node in nodes:
            actions = node.actions()
            if len(set(actions)) != len(actions):
                raise Failure(f"{screen}: {node} lists an action twice: {actions}")
            if node.role in CONTROLS and not re.search(r"[^\W\d_]{2}", node.name):
                raise Failure(f"{screen}: the {node.role} '{node.name}' has no words in its name")
        # Tab stops at one text at most (the report, the info text), never
        # at every label.
        focusable = [n for n in nodes if n.role in ("label", "static") and n.has(S.FOCUSABLE)]
        if len(focusable) > 1:
            raise Failure(f"{screen}: labels claim to be focusable: {focusable}")
        names = [n.name for n in named if n.name]
        twice = {name for name in names if names.count(name) > 1}
        if twice:
            raise Failure(f"{screen}: more than one control is called {sorted(twice)}")
        return nodes


def check(condition, message):
    if not condition:
        raise Failure(message)


def main_screen(app, w):
    nodes = app.check_screen("main screen")
    # At the start a greeting is shown, no report: the add button is disabled.
    add = app.wait(w["add"], "push button")
    check(not add.has(S.ENABLED) and not add.has(S.SENSITIVE), "the add button reads as enabled")
    # Texts through the Text interface: a label's text begins with what its
    # name says (the report's name is its first lines, its text all of it).
    labels = [n for n in nodes if n.role == "label"]
    check(labels and all(" ".join(n.text().split()).startswith(" ".join(n.name.split()))
                         for n in labels),
          f"a label's Text interface does not begin with its name: {labels}")
    # The wheels: spin buttons named once, with a value, whose text is the
    # entry as shown, then what the turn changed.
    wheels = [n for n in nodes if n.role == "spin button"]
    check(len(wheels) == 3, f"three date wheels expected: {wheels}")
    year = next(n for n in wheels if n.name == w["year"])
    day = next(n for n in wheels if n.name == w["day"])
    check(year.text().startswith(str(int(year.value()))), f"the year wheel reads {year.text()}")
    year.acc.get_value_iface().set_current_value(1985)

    def wheel_at(name, value):
        node = app.get(name, "spin button")
        return node is not None and int(node.value()) == value and node.text().startswith(
            str(value))
    wait_for(lambda: wheel_at(w["year"], 1985), "the year wheel at 1985")
    wait_for(lambda: app.setting("year") == "1985", "the picked year in the settings")
    wait_for(lambda: w["year"] in app.values_announced, "the new year announced")
    first_day = int(day.value())
    day.do("Increase" if first_day < 28 else "Decrease")
    moved = first_day + 1 if first_day < 28 else first_day - 1
    wait_for(lambda: wheel_at(w["day"], moved), f"the day wheel at {moved}")
    wait_for(lambda: app.setting("day") == str(moved), "the picked day in the settings")
    # A report now: it reads through the Text interface, and can be added;
    # the wheels say its first lines after their entry.
    report = wait_for(lambda: next((n for n in app.showing()
                                    if n.role == "label" and len(n.text()) > 80), None),
                      "the report")
    check(report.text().startswith(report.name.split(" ")[0]),
          "the report's name is not its beginning")
    check(report.name in app.get(w["day"], "spin button").text(),
          "the day wheel does not say the report")
    wait_for(lambda: app.get(w["add"]).has(S.ENABLED), "the add button enabled by the report")

    # The add dialog: only the dialog can be reached while it is open.
    app.press(w["add"])
    app.wait(w["cancel"], what="the add dialog")
    check(app.get(w["favorites"]) is None, "the main screen shows under the add dialog")
    app.key("Escape")
    app.wait_gone(w["cancel"], "Escape to close the add dialog")
    app.press(w["add"])
    app.wait(w["cancel"], what="the add dialog again")
    app.type("Carla")
    app.press("OK")
    wait_for(lambda: any(f["name"] == "Carla" for f in app.favorites()), "Carla saved")


def favorites_screen(app, w):
    app.press(w["favorites"])
    app.wait(w["favoritesTitle"], "heading")
    app.wait_gone(w["add"], "the main screen to go")
    rows = wait_for(lambda: [n for n in app.showing() if n.role == "list item"] or None,
                    "the favorites rows")
    app.check_screen("favorites")
    for row in rows:
        check(row.has(S.FOCUSABLE), f"{row} cannot be focused")
        check(f"{w['age']} " in row.name, f"{row} does not tell the age")
    anna = next(r for r in rows if r.name.startswith("Anna, "))
    bob = next(r for r in rows if r.name.startswith("Bob, "))
    check(w["coming"] in anna.name, f"{anna} does not tell of her birthday today")
    check(w["bobSign"] in bob.name, f"{bob} does not tell the sign")
    check("Press" in anna.actions(), f"{anna} cannot be pressed: {anna.actions()}")

    # The sort menu: Escape leaves the order as it was; a choice stores it.
    sort_before = app.setting("sort")
    app.press(w["sort"])
    app.wait(w["sortByName"], what="the sort menu")
    check(not any(n.name.startswith("Anna, ") for n in app.showing()),
          "the rows show under the sort menu")
    app.key("Escape")
    app.wait_gone(w["sortByName"], "Escape to close the sort menu")
    check(app.setting("sort") == sort_before, "closing the sort menu changed the order")
    app.press(w["sort"])
    app.press(w["sortByName"])
    wait_for(lambda: app.setting("sort") == "0", "the order by name stored")

    # A row's own buttons: edit (the wheels show Bob's date), then delete.
    # Rows are found by their beginning: their place in the list is said too.
    bob_row = lambda: next((n for n in app.showing()
                            if n.role == "list item" and n.name.startswith("Bob, ")), None)
    wait_for(bob_row, "Bob's row").do("SetFocus")
    app.press(w["edit"])
    wheels = wait_for(lambda: [n for n in app.showing() if n.role == "spin button"] or None,
                      "the edit dialog's wheels")
    check(sorted(int(n.value()) for n in wheels) == [12, 31, 1990],
          f"the edit dialog does not show Bob's date: {wheels}")
    check(bob_row() is None, "the rows show under the edit dialog")
    app.press(w["cancel"])
    wait_for(bob_row, "Bob's row again").do("SetFocus")
    app.press(w["delete"])
    wait_for(lambda: all(f["name"] != "Bob" for f in app.favorites()), "Bob deleted")
    wait_for(lambda: bob_row() is None, "Bob's row to go")

    # Choosing a row opens its report.
    wait_for(lambda: next((n for n in app.showing()
                           if n.role == "list item" and n.name.startswith("Anna, ")), None),
             "Anna's row").do("Press")
    app.wait(w["favorites"], "push button", "the main screen again")
    app.wait_gone(w["sort"], "the favorites to go")
    wait_for(lambda: any(n.role == "label" and n.text().startswith("Anna")
                         for n in app.showing()), "Anna's report")


def settings_screen(app, w):
    app.press(w["settings"])
    details = app.wait(w["details"], "check box")
    app.wait_gone(w["add"], "the main screen to go")
    app.check_screen("settings")
    check(details.has(S.CHECKED), "the details switch is off after the first start")
    details.do("Toggle")
    wait_for(lambda: app.setting("moreDetails") == "false", "the details switch stored")
    check(not app.get(w["details"]).has(S.CHECKED), "the switch still reads as on")

    themes = [n for n in app.showing() if n.role == "radio button"]
    check(len(themes) == 10, f"ten colour themes expected: {themes}")
    check([n.has(S.CHECKED) for n in themes] == [True] + [False] * 9,
          "the first theme is not the one checked")
    app.press(w["theme3"], "radio button")
    wait_for(lambda: app.setting("color") == "2", "the third theme stored")
    wait_for(lambda: app.get(w["theme3"], "radio button").has(S.CHECKED), "the third theme checked")

    # The info panel hides the settings under it; Escape closes it.
    app.press(w["info"])
    close = app.wait(w["close"], "push button")
    check(app.get(w["details"]) is None and app.get(w["back"]) is None,
          "the settings show under the info panel")
    panel_text = next(n for n in app.showing() if n.role == "label" and len(n.text()) > 400)
    check("Page Up" in panel_text.text(), "the info text is not whole in its Text interface")
    check(panel_text.has(S.FOCUSABLE), "the info text cannot be reached with Tab")
    check(close.has(S.FOCUSED), "the open panel does not take the keyboard")
    app.key("Escape")
    app.wait(w["details"], "check box", "the settings back after Escape")
    app.press(w["back"])
    app.wait(w["favorites"], "push button", "the main screen after the settings")


def run(language):
    home = tempfile.mkdtemp(prefix=f"tavlo-a11y-{language}-")
    env = dict(os.environ, XDG_CONFIG_HOME=f"{home}/config", XDG_DATA_HOME=f"{home}/data")
    today = datetime.date.today()
    # Anna's birthday is today (the star, and a greeting instead of a report),
    # Bob's on the last day of the year (the ends of the wheels).
    for name, born in (("Anna", today.replace(year=1988)), ("Bob", datetime.date(1990, 12, 31))):
        subprocess.run([TAVLO, "favorites", "add", name, born.isoformat()], env=env, check=True,
                       stdout=subprocess.DEVNULL)
    app = App(language, home)
    step = "start"
    try:
        for step, screen in (("main screen", main_screen), ("favorites", favorites_screen),
                             ("settings", settings_screen)):
            screen(app, WORDS[language])
    except Exception as error:
        app.quit()
        print(f"screenreader ({language}): {step}: {error}", file=sys.stderr)
        with open(f"{home}/app.log", encoding="utf-8", errors="replace") as log:
            sys.stderr.write(log.read()[-3000:])
        return False
    app.quit()
    shutil.rmtree(home, ignore_errors=True)
    return True


def main():
    runtime = tempfile.mkdtemp(prefix="tavlo-a11y-run-")
    os.chmod(runtime, 0o700)
    os.environ["XDG_RUNTIME_DIR"] = runtime
    # Only the private bus of this run, never a desktop's accessibility bus.
    os.environ.pop("AT_SPI_BUS_ADDRESS", None)
    display = f":{20 + os.getpid() % 60}"
    xvfb = subprocess.Popen(["Xvfb", display, "-screen", "0", "800x900x24", "-nolisten", "tcp"],
                            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    os.environ["DISPLAY"] = display
    bus = None
    try:
        wait_for(lambda: subprocess.run(["xdpyinfo"], capture_output=True).returncode == 0,
                 "the virtual display")
        bus = subprocess.Popen(["/usr/libexec/at-spi-bus-launcher", "--launch-immediately"],
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        session = Gio.bus_get_sync(Gio.BusType.SESSION)
        wait_for(lambda: session.call_sync(
            "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
            "NameHasOwner", GLib.Variant("(s)", ("org.a11y.Bus",)), None,
            Gio.DBusCallFlags.NONE, -1, None).unpack()[0], "the accessibility bus")
        Atspi.init()
        started = time.monotonic()
        ok = all([run("en"), run("ru")])
        print(f"screenreader: {'all steps passed' if ok else 'failed'} "
              f"({time.monotonic() - started:.1f} s)")
        return 0 if ok else 1
    finally:
        if bus:
            bus.terminate()
        xvfb.terminate()
        shutil.rmtree(runtime, ignore_errors=True)


if __name__ == "__main__":
    sys.exit(main())
