#!/usr/bin/env python3
"""Kills the real editor at random moments of editing, saving, switching documents and quitting, and checks what is
left.

Usage: kill_loop.py PROGRAM_FOLDER KILLS [SEED]

Each round starts the editor in its own virtual display, works in it with real keys, and kills it with SIGKILL at a
random moment. Then both documents must be intact, and after the next start, ended with SIGTERM, they must hold every
topic that was typed more than a second before the kill. At the end no stray file may be left. Everything that the
program writes goes into a temporary home. The last line has the figures; the exit status says whether everything
passed.
"""

import json
import os
import pathlib
import random
import signal
import subprocess
import sys
import tempfile
import threading
import time

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "session"))
from editor_session import Display, wait_until

# A key press reaches the map through the display, which is slow on a busy machine.
GRACE = 1.0
LONGEST_WORK = 5.0


class Home:
    def __init__(self, programs, seed):
        self.programs = pathlib.Path(programs)
        self.folder = tempfile.TemporaryDirectory(prefix="quilmora-kill-")
        self.path = pathlib.Path(self.folder.name)
        self.state = self.path / ".local" / "state" / "quilmora"
        self.documents = self.path / "Documents"
        self.documents.mkdir()
        (self.path / "runtime").mkdir(mode=0o700)
        settings = self.path / ".config" / "Quilmora"
        settings.mkdir(parents=True)
        # The quick start sheet would take the keys.
        (settings / "Quilmora.json").write_text(json.dumps({"onboardingShown": True}))
        self.display = Display()
        self.environment = {key: value for key, value in os.environ.items()
                            if not key.startswith(("XDG_", "QT_", "WAYLAND_", "DBUS_"))}
        self.environment |= {"HOME": str(self.path), "DISPLAY": self.display.name,
                             "XDG_RUNTIME_DIR": str(self.path / "runtime"), "QT_QPA_PLATFORM": "xcb",
                             "LC_ALL": "C.UTF-8"}
        self.random = random.Random(seed)
        self.files = [self.documents / "one.mindmap", self.documents / "two.mindmap"]
        for file in self.files:
            text = json.dumps({"do": "save", "path": str(file)}) + "\n"
            subprocess.run([str(self.programs / "quilmora-cli"), "script"], input=text, text=True, check=True,
                           env=self.environment, capture_output=True)

    def titles(self, file):
        """All titles of a document; fails if it is damaged."""
        document = json.loads(file.read_text())
        return [node["title"] for node in document["nodes"]]

    def strays(self):
        return [path for path in self.path.rglob("*")
                if path.name.startswith(".quilmora-") or path.suffix == ".journal"]

    def close(self):
        self.display.close()
        self.folder.cleanup()


class Run:
    """One process of the editor."""

    def __init__(self, home, arguments=()):
        self.home = home
        self.log_path = home.path / "log.txt"
        with open(self.log_path, "wb") as log:
            self.process = subprocess.Popen([str(home.programs / "quilmora"), *map(str, arguments)],
                                            env=home.environment, stdout=log, stderr=log)
        self.window = wait_until("the window", self.find_window, 60)
        self.xdo("windowfocus", "--sync", self.window)

    def log(self):
        return self.log_path.read_text(errors="replace")

    def find_window(self):
        assert self.process.poll() is None, "the editor ended early:\n" + self.log()
        found = self.xdo("search", "--onlyvisible", "--pid", str(self.process.pid)).split()
        return found[-1] if found else None

    def xdo(self, *arguments):
        return subprocess.run(["xdotool", *arguments], env=self.home.environment, capture_output=True,
                              text=True).stdout

    def wait_until_open(self, document):
        """Waits for the document; one whose opening was interrupted before is opened explicitly."""
        def is_open():
            log = self.log()
            return self.process.poll() is not None or "bookmark for" in log or "ended while it opened" in log
        wait_until("the document", is_open, 60)
        if "bookmark for" not in self.log():
            self.xdo("key", "Escape")
            subprocess.run([str(self.home.programs / "quilmora"), str(document)], env=self.home.environment,
                           capture_output=True, timeout=60)
            wait_until("the document", lambda: "bookmark for" in self.log() or self.process.poll() is not None, 60)

    def terminate(self):
        self.process.send_signal(signal.SIGTERM)
        assert self.process.wait(timeout=60) == 0, "the editor did not end well:\n" + self.log()


class Work:
    """The work in one run until it is killed: what was typed into which document, and when."""

    def __init__(self, run, home, current, number):
        self.run, self.home, self.current, self.number = run, home, current, number
        self.typed = []  # time and title
        self.begun_at = time.monotonic()
        self.steps = []
        self.is_field_open = False
        self.last = "start"
        self.killed_at = None
        self.during = None

    def kill_after(self, delay):
        def kill():
            self.during = self.last
            self.killed_at = time.monotonic()
            self.run.process.kill()
        self.timer = threading.Timer(delay, kill)
        self.timer.start()

    def is_over(self):
        return self.killed_at is not None or self.run.process.poll() is not None

    def leave_field(self):
        if self.is_field_open:
            self.run.xdo("key", "Return")
            self.is_field_open = False

    def edit(self, count):
        self.leave_field()
        title = f"r{self.number}e{count}"
        self.run.xdo("key", "ctrl+n")
        self.run.xdo("type", "--delay", "8", title)
        self.typed.append((time.monotonic(), title))
        # Half of the titles stay in their open field until the next step.
        self.is_field_open = True
        if self.home.random.random() < 0.5:
            self.leave_field()

    def undo_and_redo(self):
        self.leave_field()
        # What is undone comes back only with the redo.
        last = self.typed.pop() if self.typed else None
        self.run.xdo("key", "ctrl+z")
        self.run.xdo("key", "ctrl+shift+z")
        if last:
            self.typed.append((time.monotonic(), last[1]))

    def save(self):
        self.run.xdo("key", "ctrl+s")
        self.is_field_open = False

    def switch(self):
        other = next(file for file in self.home.files if file != self.current)
        second = subprocess.Popen([str(self.home.programs / "quilmora"), str(other)], env=self.home.environment,
                                  stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        # If the first one is killed in the meantime, the second becomes the editor and is killed too.
        while second.poll() is None and not self.is_over():
            time.sleep(0.02)
        if second.poll() is None:
            second.kill()
        if second.wait() == 0:
            self.current = other
            self.is_field_open = False
            # The selected topic is in the other document; New Topic would not find it.
            time.sleep(0.2)
            self.run.xdo("key", "Escape")

    def quit(self):
        self.run.xdo("key", "ctrl+q")
        time.sleep(0.3)

    def go_on(self):
        count = 0
        while not self.is_over():
            step = self.home.random.choices(["edit", "save", "undo_and_redo", "switch", "quit"], [60, 15, 10, 8, 7])[0]
            self.last = step
            self.steps.append(f"{step}@{time.monotonic() - self.begun_at:.2f}")
            if step == "edit":
                self.edit(count)
                count += 1
            else:
                getattr(self, step)()
            time.sleep(self.home.random.uniform(0.0, 0.4))
        self.timer.join()
        self.run.process.wait()


def play(home, number, current, figures):
    run = Run(home, [] if number else [current])
    if number:
        run.wait_until_open(current)
    work = Work(run, home, current, number)
    work.kill_after(home.random.uniform(0.0, LONGEST_WORK))
    work.go_on()
    figures["during"][work.during] = figures["during"].get(work.during, 0) + 1

    for file in home.files:
        home.titles(file)

    after = Run(home)
    after.wait_until_open(work.current)
    figures["recovered"] += "brought back" in after.log()
    figures["set aside"] += "set aside" in after.log()
    after.terminate()

    # A title typed while documents were switched may be in either.
    found = {title for file in home.files for title in home.titles(file)}
    for done_at, title in work.typed:
        if done_at > work.killed_at - GRACE:
            figures["typed in the last second"] += 1
            continue
        figures["typed before"] += 1
        if title not in found:
            figures["lost"].append(f"round {number}: {title}, typed {work.killed_at - done_at:.2f} s before the kill "
                                   f"during {work.during}: {' '.join(work.steps)}; there are "
                                   f"{sorted(one for one in found if one.startswith(f'r{number}e'))}")
    figures["kills"] += 1
    return last_document(home) or current


def last_document(home):
    """The last document according to the settings."""
    for settings in home.path.glob(".config/*/*.json"):
        path = json.loads(settings.read_text()).get("lastSavedFilePath")
        if path:
            return pathlib.Path(path)
    return None


def main():
    programs, kills = sys.argv[1], int(sys.argv[2])
    seed = int(sys.argv[3]) if len(sys.argv) > 3 else random.randrange(1 << 30)
    home = Home(programs, seed)
    figures = {"seed": seed, "kills": 0, "during": {}, "recovered": 0, "set aside": 0, "typed before": 0,
               "typed in the last second": 0, "lost": []}
    try:
        current = home.files[0]
        for number in range(kills):
            current = play(home, number, current, figures)
            if (number + 1) % 25 == 0:
                print(json.dumps(figures), flush=True)
        figures["strays"] = [str(path) for path in home.strays()]
        figures["versions"] = sum(1 for _ in home.state.rglob("*.version"))
    except KeyboardInterrupt:
        figures["strays"] = [str(path) for path in home.strays()]
    finally:
        home.close()
    print(json.dumps(figures))
    # A temporary file has a name for a few milliseconds, so a kill may leave one; it is removed ten minutes later.
    good = not figures["lost"] and len(figures["strays"]) <= max(1, kills // 20)
    sys.exit(0 if good and figures["kills"] == kills else 1)


if __name__ == "__main__":
    main()
