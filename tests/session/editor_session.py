"""The real program in its own virtual display with a temporary home, and functions that use it as a user would."""

import json
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import time

WINDOW_SIZE = (1280, 800)


def wait_until(what, condition, seconds=20.0):
    """The first true value of condition(); fails loudly if there is none in time."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        value = condition()
        if value:
            return value
        time.sleep(0.05)
    raise AssertionError(f"gave up waiting: {what}")


def differences(before, after):
    """Whether two documents hold the same map, ignoring the time of the last change."""
    return {key for key in before.keys() | after.keys()
            if key != "updatedAt" and before.get(key) != after.get(key)}


class Display:
    def __init__(self):
        read_end, write_end = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1400x900x24", "-nolisten", "tcp", "-noreset"],
            pass_fds=[write_end], stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end) as pipe:
            self.name = ":" + pipe.readline().strip()

    def close(self):
        self.server.terminate()
        self.server.wait()


class Editor:
    """One running editor, and the keys and clicks sent to it."""

    def __init__(self, session, arguments):
        self.session = session
        self.log_path = session.home / "log.txt"
        with open(self.log_path, "wb") as log:
            self.process = subprocess.Popen([str(session.editor), *arguments], env=session.environment,
                                            stdout=log, stderr=log)
        self.window = wait_until("the window", self.find_window)
        self.xdo("windowmove", self.window, "0", "0")
        self.xdo("windowsize", self.window, *map(str, WINDOW_SIZE))
        self.xdo("windowfocus", self.window)
        self.canvas = wait_until("a settled canvas", self.settled_canvas)

    def find_window(self):
        if self.process.poll() is not None:
            raise AssertionError("the editor ended early:\n" + self.log())
        found = self.xdo("search", "--onlyvisible", "--pid", str(self.process.pid), check=False).split()
        return found[-1] if found else None

    def log(self):
        return self.log_path.read_text(errors="replace")

    def xdo(self, *arguments, check=True):
        done = subprocess.run(["xdotool", *arguments], env=self.session.environment, capture_output=True, text=True)
        if check and done.returncode != 0:
            raise AssertionError(f"xdotool {arguments}: {done.stderr}")
        return done.stdout

    def picture(self, path):
        subprocess.run(["import", "-window", "root", str(path)], env=self.session.environment, check=True)

    def screenshot(self):
        return subprocess.run(["import", "-window", "root", "rgb:-"], env=self.session.environment, check=True,
                              capture_output=True).stdout

    def settle(self):
        """Waits until the screen looks the same three times in a row, over at least a tenth of a second."""
        looks = []

        def is_still():
            looks.append(self.screenshot())
            return len(looks) > 2 and looks[-1] == looks[-2] == looks[-3]

        wait_until("a still screen", is_still)

    def settled_canvas(self):
        """The canvas's rectangle on the screen (x, y, width, height), by its background colour, once at rest."""
        self.settle()
        areas = []
        for _ in range(2):
            path = self.session.home / "canvas.png"
            self.picture(path)
            ground = self.session.document()["canvas"]["background"]
            # Its largest part: panels may contain the colour too.
            found = subprocess.run(["convert", str(path), "-alpha", "off", "-fill", "black", "+opaque", ground, "-fill", "white",
                                    "-opaque", ground, "-define", "connected-components:verbose=true", "-define",
                                    "connected-components:area-threshold=1000", "-connected-components", "4", "null:"],
                                   capture_output=True, text=True)
            parts = re.findall(r"(\d+)x(\d+)\+(\d+)\+(\d+) \S+ (\d+) (?:s?rgb\(255,255,255\)|gray\(255\))", found.stdout)
            largest = max(parts, key=lambda part: int(part[4]), default=None)
            areas.append([int(largest[place]) for place in (2, 3, 0, 1)] if largest else None)
            self.settle()
        steady = areas[0] == areas[1] and areas[0] and areas[0][2] >= 400 and areas[0][3] >= 300
        return tuple(areas[0]) if steady else None

    def fit(self):
        """Zooms to fit and returns the resulting view: zoom and offset."""
        self.xdo("key", "ctrl+0")
        self.settle()
        answers = self.session.ask({"do": "open", "path": str(self.session.file)},
                                   {"do": "fitToContent", "width": self.canvas[2], "height": self.canvas[3], "padding": 80},
                                   {"do": "state"})
        state = answers[-1]["result"]
        return state["canvasZoom"], state["canvasOffset"]

    def click(self, view, point, count=1):
        self.point_at(view, point)
        self.xdo("click", "--repeat", str(count), "--delay", "80", "1")
        self.settle()

    def point_at(self, view, point):
        zoom, offset = view
        x = round(self.canvas[0] + point[0] * zoom + offset[0])
        y = round(self.canvas[1] + point[1] * zoom + offset[1])
        self.xdo("mousemove", str(x), str(y))

    def drag(self, view, start, steps):
        self.point_at(view, start)
        self.xdo("mousedown", "1")
        for step in steps:
            self.xdo("mousemove_relative", "--", str(step[0]), str(step[1]))
        self.xdo("mouseup", "1")
        self.settle()

    def key(self, *keys):
        for key in keys:
            self.xdo("key", key)

    def save(self):
        before = self.session.file.stat().st_mtime_ns
        self.key("ctrl+s")
        wait_until("the save", lambda: self.session.file.stat().st_mtime_ns != before)
        return self.session.document()

    def wait_for_end(self):
        status = self.process.wait(timeout=20)
        assert status == 0, f"the editor ended with status {status}:\n{self.log()}"


class Session:
    """A temporary home with its own display. Without a sample the caller writes the document itself."""

    def __init__(self, programs, sample, pictures, settings=None):
        self.programs = pathlib.Path(programs)
        self.editor = self.programs / "quilmora"
        self.pictures = pictures and pathlib.Path(pictures)
        self.folder = tempfile.TemporaryDirectory(prefix="quilmora-session-")
        self.home = pathlib.Path(self.folder.name)
        (self.home / "Documents").mkdir()
        (self.home / "runtime").mkdir(mode=0o700)
        self.file = self.home / "Documents" / "trip.mindmap"
        if sample:
            shutil.copy(sample, self.file)
        self.settings_file = self.home / ".config" / "Quilmora" / "Quilmora.json"
        # The program counts as started before, unless settings are given.
        self.settings_file.parent.mkdir(parents=True)
        self.settings_file.write_text(json.dumps({"onboardingShown": True} if settings is None else settings))
        self.display = Display()
        self.environment = {key: value for key, value in os.environ.items()
                            if not key.startswith(("XDG_", "QT_", "WAYLAND_", "DBUS_"))}
        self.environment |= {"HOME": str(self.home), "DISPLAY": self.display.name,
                             "XDG_RUNTIME_DIR": str(self.home / "runtime"), "QT_QPA_PLATFORM": "xcb", "LC_ALL": "C.UTF-8"}

    def document(self):
        return json.loads(self.file.read_text())

    def ask(self, *operations):
        text = "".join(json.dumps(operation) + "\n" for operation in operations)
        done = subprocess.run([str(self.programs / "quilmora-cli"), "script"], input=text, capture_output=True, text=True,
                              check=True)
        return [json.loads(line) for line in done.stdout.splitlines()]

    def keep_picture(self, editor, name):
        if self.pictures:
            self.pictures.mkdir(parents=True, exist_ok=True)
            editor.picture(self.pictures / f"session-{name}.png")

    def close(self):
        self.display.close()
        self.folder.cleanup()
