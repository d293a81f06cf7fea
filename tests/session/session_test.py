#!/usr/bin/env python3
"""Plays a person's session on the real program in a virtual display, with real key and mouse events.

Usage: session_test.py PROGRAM_FOLDER SAMPLE [PICTURE_FOLDER]

Opens a copy of the sample, adds three children, retitles one, drags one, undoes, redoes, saves, quits, starts again and
finds the same map; then edits once more and ends the process by SIGTERM, which must save too. Everything the program
writes lands in a temporary home. With PICTURE_FOLDER, screenshots of the steps are kept there.
"""

import json
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time

WINDOW_SIZE = (1280, 800)


def wait_until(what, condition, seconds=20.0):
    """The first true value of condition(); fails loudly when it never comes."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        value = condition()
        if value:
            return value
        time.sleep(0.05)
    raise AssertionError(f"gave up waiting: {what}")


def differences(before, after):
    """Whether two documents hold the same map, the time of the last change aside."""
    return {key for key in before.keys() | after.keys()
            if key != "updatedAt" and before.get(key) != after.get(key)}


class Display:
    def __init__(self):
        read_end, write_end = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1400x900x24", "-nolisten", "tcp"],
            pass_fds=[write_end], stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end) as pipe:
            self.name = ":" + pipe.readline().strip()

    def close(self):
        self.server.terminate()
        self.server.wait()


class Editor:
    """One running editor and the hands on it."""

    def __init__(self, session, arguments):
        self.session = session
        self.log_path = session.home / "log.txt"
        with open(self.log_path, "wb") as log:
            self.process = subprocess.Popen([str(session.programs / "quilmora"), *arguments], env=session.environment,
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

    def settled_canvas(self):
        """The canvas' place on the screen (x, y, width, height), found by its ground colour, once it stands still."""
        areas = []
        for _ in range(2):
            path = self.session.home / "canvas.png"
            self.picture(path)
            ground = self.session.document()["canvas"]["background"]
            found = subprocess.run(["convert", str(path), "-alpha", "off", "-fill", "black", "+opaque", ground, "-fill", "white",
                                    "-opaque", ground, "-trim", "-format", "%X %Y %w %h", "info:"],
                                   capture_output=True, text=True)
            areas.append([int(part) for part in found.stdout.replace("+", " ").split()] if found.returncode == 0 else None)
            time.sleep(0.6)
        steady = areas[0] == areas[1] and areas[0] and areas[0][2] >= 400 and areas[0][3] >= 300
        return tuple(areas[0]) if steady else None

    def fit(self):
        """Zooms to fit and answers the view that results: zoom and offset."""
        self.xdo("key", "ctrl+0")
        time.sleep(0.8)
        answers = self.session.ask({"do": "open", "path": str(self.session.file)},
                                   {"do": "fitToContent", "width": self.canvas[2], "height": self.canvas[3], "padding": 80},
                                   {"do": "state"})
        state = answers[-1]["result"]
        return state["canvasZoom"], state["canvasOffset"]

    def click(self, view, point, count=1):
        self.point_at(view, point)
        self.xdo("click", "--repeat", str(count), "--delay", "80", "1")
        time.sleep(0.6)

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
            time.sleep(0.05)
        self.xdo("mouseup", "1")
        time.sleep(0.3)

    def key(self, *keys):
        for key in keys:
            self.xdo("key", key)
            time.sleep(0.25)

    def save(self):
        before = self.session.file.stat().st_mtime_ns
        self.key("ctrl+s")
        wait_until("the save", lambda: self.session.file.stat().st_mtime_ns != before)
        return self.session.document()

    def wait_for_end(self):
        status = self.process.wait(timeout=20)
        assert status == 0, f"the editor ended with status {status}:\n{self.log()}"


class Session:
    def __init__(self, programs, sample, pictures):
        self.programs = pathlib.Path(programs)
        self.pictures = pictures and pathlib.Path(pictures)
        self.folder = tempfile.TemporaryDirectory(prefix="quilmora-session-")
        self.home = pathlib.Path(self.folder.name)
        (self.home / "Documents").mkdir()
        (self.home / "runtime").mkdir(mode=0o700)
        self.file = self.home / "Documents" / "trip.mindmap"
        shutil.copy(sample, self.file)
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

    def run(self):
        original = self.document()
        editor = Editor(self, [str(self.file)])
        view = editor.fit()
        self.keep_picture(editor, "1-opened")

        root = root_of(original)
        for _ in range(3):
            editor.click(view, root["position"])
            editor.key("Tab")
        grown = editor.save()
        children = grown["nodes"][len(original["nodes"]):]
        assert len(children) == 3, f"{len(children)} new topics instead of 3"
        new_edges = grown["edges"][len(original["edges"]):]
        assert [edge["from"] for edge in new_edges] == [root["id"]] * 3
        assert [edge["to"] for edge in new_edges] == [child["id"] for child in children]
        self.keep_picture(editor, "2-three-children")

        editor.click(view, children[1]["position"], count=2)
        editor.xdo("type", "--delay", "40", "Snacks for the road")
        self.keep_picture(editor, "3-editing")
        editor.key("Return")
        titled = editor.save()
        assert titled["nodes"][-2]["title"] == "Snacks for the road", titled["nodes"][-2]["title"]

        editor.drag(view, children[2]["position"], [(20, 10), (20, 10), (20, 10), (20, 10)])
        dragged = editor.save()
        zoom = view[0]
        moved = [dragged["nodes"][-1]["position"][axis] - children[2]["position"][axis] for axis in (0, 1)]
        assert abs(moved[0] - 80 / zoom) < 0.01 and abs(moved[1] - 40 / zoom) < 0.01, f"moved by {moved}"
        self.keep_picture(editor, "4-dragged")

        editor.key("ctrl+z")
        undone = editor.save()
        assert not differences(undone, titled), differences(undone, titled)
        editor.key("ctrl+shift+z")
        redone = editor.save()
        assert not differences(redone, dragged), differences(redone, dragged)

        editor.key("ctrl+q")
        editor.wait_for_end()
        assert not differences(self.document(), dragged)

        editor = Editor(self, [])
        assert f"Quilmora: loaded {len(dragged['nodes'])} nodes from trip.mindmap" in editor.log(), editor.log()
        view = editor.fit()
        self.keep_picture(editor, "5-reopened")
        assert not differences(editor.save(), dragged)

        editor.click(view, root["position"])
        editor.key("Tab")
        editor.process.send_signal(signal.SIGTERM)
        editor.wait_for_end()
        assert len(self.document()["nodes"]) == len(dragged["nodes"]) + 1, "SIGTERM lost the last edit"

    def close(self):
        self.display.close()
        self.folder.cleanup()


def root_of(document):
    targets = {edge["to"] for edge in document["edges"]}
    return next(node for node in document["nodes"] if node["id"] not in targets)


def main():
    programs, sample = sys.argv[1:3]
    session = Session(programs, sample, sys.argv[3] if len(sys.argv) > 3 else None)
    try:
        session.run()
    finally:
        session.close()
    print("the session went through")


if __name__ == "__main__":
    main()
