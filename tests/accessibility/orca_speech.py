#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Tavlo used with the keyboard alone while Orca speaks, and what Orca says.

Everything a blind person's desktop has runs here on its own: a virtual
display (Xvfb) with a window manager (openbox), the accessibility bus
(at-spi2-core's bus launcher) on the private session bus that
dbus-run-session gives this script, speech-dispatcher speaking with
espeak-ng into ALSA's null device, and Orca itself, whose debug log (written
line by line) holds every sentence it speaks. The keys are pressed with
xdotool into the app's window.

    dbus-run-session -- tests/accessibility/orca_speech.py TAVLO_BINARY

With --explore it only prints what Orca says after each of a few keys.
Without Orca installed it is skipped (status 77): scripts/install-deps
installs it.
"""

import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time

TAVLO = os.path.realpath(sys.argv[1]) if len(sys.argv) > 1 else ""
SPEECH = re.compile(r"SPEECH OUTPUT: '(.*)' ?\{'established")

ORCA_SETTINGS = {
    "general": {
        "enableSpeech": True,
        "speechServerFactory": "speechdispatcherfactory",
        "speechServerInfo": None,
        "enableKeyEcho": False,
        "enableTutorialMessages": False,
        "onlySpeakDisplayedText": False,
        "enableBraille": False,
        "enableSound": False,
        "speechVerbosityLevel": 1,
        "verbalizePunctuationStyle": 1,
        "profile": ["Default", "default"],
        "activeProfile": ["Default", "default"],
        "startingProfile": ["Default", "default"],
    },
    "profiles": {"default": {"profile": ["Default", "default"], "pronunciations": {},
                             "keybindings": {}}},
    "pronunciations": {},
    "keybindings": {},
}


class Failure(Exception):
    pass


class Desktop:
    """The display, the accessibility bus, the window manager, Orca."""

    def __init__(self):
        self.dir = tempfile.mkdtemp(prefix="tavlo-orca-")
        home = self.home = os.path.join(self.dir, "home")
        for sub in (".config/speech-dispatcher", ".local/share/orca", "run"):
            os.makedirs(os.path.join(home, sub))
        os.chmod(os.path.join(home, "run"), 0o700)
        # Into the null device: without a sound card speech-dispatcher
        # otherwise gives up after the first sentences, and Orca with it.
        with open(os.path.join(home, ".asoundrc"), "w") as f:
            f.write("pcm.!default { type null }\nctl.!default { type hw card 0 }\n")
        with open(os.path.join(home, ".config/speech-dispatcher/speechd.conf"), "w") as f:
            f.write('AudioOutputMethod "alsa"\n'
                    'AddModule "espeak-ng" "sd_espeak-ng" "espeak-ng.conf"\n'
                    'DefaultModule espeak-ng\n')
        self.env = dict(os.environ)
        self.env.update({"HOME": home, "XDG_RUNTIME_DIR": os.path.join(home, "run"),
                         "XDG_CONFIG_HOME": os.path.join(home, ".config"),
                         "XDG_DATA_HOME": os.path.join(home, ".local/share"),
                         "LANG": "C.UTF-8", "LC_ALL": ""})
        self.processes = []
        try:
            self.start_all()
        except BaseException:
            self.close()
            self.tell_what_ran()
            if not os.environ.get("TAVLO_KEEP_ORCA_LOG"):
                shutil.rmtree(self.dir, ignore_errors=True)
            raise

    def start_all(self):
        # An Xvfb started beside another one can lose the display it named
        # a moment later; openbox then finds no display. A new pair, then.
        for _ in range(3):
            xvfb = self.start_display()
            window_manager = self.start(["openbox"])
            if self.window_manager_ready(window_manager):
                break
            for process in (window_manager, xvfb):
                process.terminate()
                process.wait(5)
        else:
            raise Failure("openbox did not take the screen")
        self.start(["/usr/libexec/at-spi-bus-launcher", "--launch-immediately"])
        # What a desktop's accessibility switch says; Orca and the toolkits read it.
        subprocess.run(["gsettings", "set", "org.gnome.desktop.a11y.applications",
                        "screen-reader-enabled", "true"], env=self.env, check=False)
        self.log_path = os.path.join(self.dir, "orca.log")
        self.start(["/usr/bin/python3", os.path.abspath(__file__), "--run-orca", self.log_path])
        self.seen = 0
        self.wait_for_speech("Screen reader on", 30)

    def start_display(self):
        read, write = os.pipe()
        xvfb = self.start(["Xvfb", "-displayfd", str(write), "-screen", "0", "480x900x24",
                           "-nolisten", "tcp"], pass_fds=(write,))
        os.close(write)
        display = b""
        while not display.endswith(b"\n"):
            chunk = os.read(read, 16)
            if not chunk:
                raise Failure("Xvfb did not start")
            display += chunk
        os.close(read)
        self.env["DISPLAY"] = ":" + display.decode().strip()
        return xvfb

    def window_manager_ready(self, window_manager):
        """On a busy machine openbox takes a while to claim the screen; until
        it does, activating the app's window fails and Orca hears nothing."""
        end = time.monotonic() + 30
        while "_NET_ACTIVE_WINDOW" not in subprocess.run(
                ["xprop", "-root", "_NET_SUPPORTED"], env=self.env, capture_output=True,
                text=True).stdout:
            if window_manager.poll() is not None or time.monotonic() > end:
                return False
            time.sleep(0.1)
        return True

    def tell_what_ran(self):
        """The last words of every process started, for a start that failed."""
        for name in sorted(os.listdir(self.dir)):
            if name.endswith(".out") or name == "orca.log":
                with open(os.path.join(self.dir, name), errors="replace") as f:
                    lines = f.readlines()[-12:]
                print(f"-- {name}:", *(line.rstrip() for line in lines), sep="\n  ",
                      file=sys.stderr)

    def start(self, command, env=None, **kwargs):
        log = open(os.path.join(self.dir, os.path.basename(command[0]) + ".out"), "ab")
        process = subprocess.Popen(command, env=env or self.env, stdout=log, stderr=log, **kwargs)
        self.processes.append(process)
        return process

    def close(self):
        for process in reversed(self.processes):
            process.terminate()
        for process in self.processes:
            try:
                process.wait(5)
            except subprocess.TimeoutExpired:
                process.kill()
        # What Orca started for itself (speech-dispatcher and its voice) runs
        # on with our folder in its command line; nobody else's is touched.
        subprocess.run(["pkill", "-f", self.dir], env=self.env, check=False)

    def spoken(self):
        """Every sentence Orca has spoken so far."""
        try:
            with open(self.log_path, encoding="utf-8", errors="replace") as f:
                return [m.group(1) for m in map(SPEECH.search, f) if m]
        except FileNotFoundError:
            return []

    def mark(self):
        self.seen = len(self.spoken())

    def since(self):
        return self.spoken()[self.seen:]

    def wait_for_speech(self, pattern, timeout=8.0):
        """Waits until Orca says something that matches pattern after the
        last mark; returns everything said since the mark."""
        end = time.monotonic() + timeout
        while True:
            said = self.since()
            if any(re.search(pattern, line) for line in said):
                return said
            if time.monotonic() > end:
                raise Failure(f"Orca did not say /{pattern}/; it said {said}")
            time.sleep(0.1)

    def quiet(self, seconds=1.0):
        """What Orca says in the next moments."""
        time.sleep(seconds)
        return self.since()

    def keys(self, *keys):
        self.mark()
        for key in keys:
            subprocess.run(["xdotool", "key", "--delay", "150", key], env=self.env, check=True)
            time.sleep(0.25)

    def type(self, text):
        subprocess.run(["xdotool", "type", "--delay", "60", text], env=self.env, check=True)


class App:
    def __init__(self, desktop, settings):
        self.desktop = desktop
        config = os.path.join(desktop.dir, "app-config")
        os.makedirs(os.path.join(config, "tavlo"))
        with open(os.path.join(config, "tavlo", "tavlo.conf"), "w") as f:
            f.write(settings)
        self.env = dict(desktop.env)
        self.env.update({"XDG_CONFIG_HOME": config, "TAVLO_APPEARANCE": "dark",
                         "QT_QPA_PLATFORM": "xcb", "QT_QUICK_BACKEND": "software",
                         "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "LANGUAGE": "en",
                         "LANG": "en_US.UTF-8"})
        desktop.mark()
        self.process = desktop.start([TAVLO], env=self.env)
        end = time.monotonic() + 30
        while True:
            found = subprocess.run(["xdotool", "search", "--name", "^Tavlo$"], env=self.env,
                                   capture_output=True, text=True).stdout.split()
            if found:
                break
            if time.monotonic() > end:
                raise Failure("no Tavlo window")
            time.sleep(0.2)
        self.window = found[0]
        self.activate()

    def activate(self):
        subprocess.run(["xdotool", "windowactivate", "--sync", self.window], env=self.env,
                       check=False)

    def wait_until_heard(self, pattern):
        """The first words of the app: on a busy machine the window manager
        can miss the first activation, and Orca then hears nothing."""
        try:
            return self.desktop.wait_for_speech(pattern, 12)
        except Failure:
            self.activate()
            return self.desktop.wait_for_speech(pattern, 20)

    def favorites(self):
        out = subprocess.run([TAVLO, "favorites", "list", "--json"], env=self.env,
                             capture_output=True, text=True, check=True).stdout
        return [json.loads(line) for line in out.splitlines()]


def explore(desktop):
    _app = App(desktop, "[General]\nfirstStart2=true\nmoreDetails=true\n\n[person]\n"
                       "1\\1=Anna\n1\\2=12 3 1985\n1\\size=2\n"
                       "2\\1=Bob\n2\\2=1 1 2000\n2\\size=2\nsize=2\n")
    print("start:", desktop.quiet(3))
    for key in sys.argv[3:] or ["Tab", "Tab", "Tab", "Tab", "Up", "Tab", "Return"]:
        desktop.keys(key)
        print(f"{key}:", desktop.quiet(1.5))


def tab_to(desktop, pattern, back=False, most=14):
    """Presses Tab (or Shift+Tab) until Orca names a control that matches."""
    for _ in range(most):
        desktop.keys("shift+Tab" if back else "Tab")
        try:
            return desktop.wait_for_speech(pattern, 3)
        except Failure:
            continue
    raise Failure(f"Tab never reached /{pattern}/; Orca said {desktop.spoken()[-6:]}")


def press(desktop, key, pattern, timeout=8.0):
    desktop.keys(key)
    return desktop.wait_for_speech(pattern, timeout)


def tasks(desktop):
    """The main tasks, with the keyboard alone, and what Orca says."""
    app = App(desktop, "[General]\nfirstStart2=true\nmoreDetails=true\n\n[person]\n"
                       "1\\1=Anna\n1\\2=12 3 1985\n1\\size=2\n"
                       "2\\1=Bob\n2\\2=1 1 2000\n2\\size=2\nsize=2\n")
    # The window opens on the report, and Orca says it unasked.
    app.wait_until_heard(r"Select your date of birth label")

    # Set a date: a wheel's turn says the entry and the new age at once.
    tab_to(desktop, r"^Day \d+\. .*spin button")
    press(desktop, "Up", r"^\d+\. Your age is: \d+ Years, \d+ Months & \d+ Days")
    tab_to(desktop, r"^Month [A-Z][a-z]+\. Your age is")
    press(desktop, "Down", r"^[A-Z][a-z]+\. Your age is")
    # Page Down steps to a favorite and says its report.
    press(desktop, "Next", r"notification (Anna|Bob)'s age is: \d+ Years")

    # Add: the dialog is named, the name typed, and the keyboard comes back.
    tab_to(desktop, r"Add this birthday to favorites push button")
    press(desktop, "Return", r"Enter a Name dialog")
    desktop.type("Carla")
    # Back on "+", which opened the dialog.
    press(desktop, "Return", r"^Add this birthday to favorites push button\.$")
    if not any(f["name"] == "Carla" for f in app.favorites()):
        raise Failure("Carla was not saved")

    # Open the favorites: the first row, its place in the list.
    tab_to(desktop, r"^Favorites push button")
    press(desktop, "Return", r"^Anna, .*, age \d+, Pisces, 1 of 3\.$")
    # Rename: the dialog says whom it edits and the name the field holds.
    press(desktop, "F2", r"Edit Anna dialog")
    desktop.wait_for_speech(r"^Anna\.$")
    desktop.type("X")
    press(desktop, "Return", r"^AnnaX, ")
    # Delete and undo.
    press(desktop, "Delete", r"notification AnnaX deleted\. Undo with Control\+Z\.")
    press(desktop, "ctrl+z", r"^AnnaX, .*1 of 3\.$")
    if len(app.favorites()) != 3:
        raise Failure(f"undo did not bring AnnaX back: {app.favorites()}")
    # Sort: the menu starts on its first choice; the choice is said.
    tab_to(desktop, r"^Sort push button", back=True)
    press(desktop, "Return", r"Sort by name push button")
    press(desktop, "Return", r"notification Sort by name")

    # Back, then a setting: the switch says its new state.
    press(desktop, "Escape", r"label\.$")
    tab_to(desktop, r"^Settings push button")
    press(desktop, "Return", r"Show more details check box checked")
    press(desktop, "space", r"not checked")
    # The info panel: named, and its text read.
    tab_to(desktop, r"About Tavlo push button", back=True)
    press(desktop, "Return", r"About Tavlo dialog Tavlo\. Turn the wheels")
    press(desktop, "shift+Tab", r"^Tavlo\. Turn the wheels .* label\.$")
    press(desktop, "Escape", r"About Tavlo push button")
    print("Orca said:", *desktop.spoken(), sep="\n  ")


def run_orca(log_path):
    """Orca, with its debug log written line by line: it holds what Orca
    says, and is read while Orca runs (a whole buffer of it would come
    late)."""
    import builtins
    import runpy
    plain_open = builtins.open

    def line_buffered(file, mode="r", buffering=-1, *args, **kwargs):
        if file == log_path and "w" in mode:
            buffering = 1
        return plain_open(file, mode, buffering, *args, **kwargs)

    builtins.open = line_buffered
    sys.argv = ["orca", "--debug-file=" + log_path]
    command = runpy.run_path("/usr/bin/orca", run_name="orca_command")
    # Orca refuses to start, or with --replace kills, when any process of
    # this user is called "orca": those of other runs on other buses too.
    # This one has a bus and a display of its own.
    command["main"].__globals__["otherOrcas"] = lambda: []
    sys.exit(command["main"]())


def main():
    if sys.argv[1] == "--run-orca":
        run_orca(sys.argv[2])
        return 0
    if not shutil.which("orca") or not shutil.which("openbox"):
        print("orca_speech: Orca or openbox is missing; scripts/install-deps installs them")
        return 77
    desktop = Desktop()
    try:
        if "--explore" in sys.argv:
            explore(desktop)
            return 0
        tasks(desktop)
        print("orca_speech: every task was spoken")
        return 0
    except Failure as failure:
        print("FAIL:", failure, file=sys.stderr)
        print("Orca said:", *desktop.spoken()[-40:], sep="\n  ", file=sys.stderr)
        return 1
    finally:
        desktop.close()
        if os.environ.get("TAVLO_KEEP_ORCA_LOG"):
            print("kept", desktop.dir)
        else:
            shutil.rmtree(desktop.dir, ignore_errors=True)


if __name__ == "__main__":
    sys.exit(main())
