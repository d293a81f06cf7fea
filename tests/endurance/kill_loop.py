#!/usr/bin/env python3
"""Kills the real editor at random moments of starting, editing, saving, switching documents and quitting, and checks
what is left.

Usage: kill_loop.py PROGRAM_FOLDER KILLS [--lanes LANES] [--seed SEED]

Each round starts the editor in its own virtual display, works in it with real keys, and kills it with SIGKILL: at any
moment of the work, or shortly after a save, a switch, a quit or a start. Then both documents must be intact, and after
the next start, ended with SIGTERM, they must hold every topic that was typed more than a second before the kill, in this
round and in all earlier ones. At the end no stray file may be left. Everything that the program writes goes into a
temporary home; each lane has its own home and display. An editor that had quit before the kill came is checked in the
same way, but does not count. The last line has the figures; the exit status says whether everything passed.
"""

import argparse
import collections
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
import traceback

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "session"))
from editor_session import Display, wait_until

# A key press reaches the map through the display, which is slow on a busy machine.
GRACE = 1.0
# What a round aims at, with its weight, and the range of seconds after which the kill follows: after the start of the work
# for any moment, otherwise after the start of the step. An auto-save comes five seconds after the first change.
AIMS = {"any moment": (40, 0.0, 3.0), "auto-save": (10, 4.5, 6.5), "save": (15, 0.0, 0.15), "switch": (15, 0.0, 0.4),
        "quit": (15, 0.0, 0.08), "start": (5, 0.0, 0.5)}
LONGEST_WORK_BEFORE_STEP = 2.0


class Home:
    def __init__(self, programs, seed):
        self.programs = pathlib.Path(programs).resolve()
        self.folder = tempfile.TemporaryDirectory(prefix="quilmora-kill-", ignore_cleanup_errors=True)
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
        self.kept = set()  # titles that were in a document after a round
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

    def other(self, document):
        return next(file for file in self.files if file != document)

    def start(self, *arguments, output=subprocess.DEVNULL):
        return subprocess.Popen([str(self.programs / "quilmora"), *map(str, arguments)], env=self.environment,
                                stdout=output, stderr=output)

    def close(self):
        self.display.close()
        self.folder.cleanup()


class Run:
    """One process of the editor."""

    def __init__(self, home, arguments=()):
        self.home = home
        self.log_path = home.path / "log.txt"
        with open(self.log_path, "wb") as log:
            self.process = home.start(*arguments, output=log)

    def wait_until_shown(self):
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
                              text=True, timeout=60).stdout

    def wait_until_open(self, document):
        """Waits for the document; one whose opening was interrupted before is opened explicitly."""
        def is_open():
            log = self.log()
            return self.process.poll() is not None or "bookmark for" in log or "ended while it opened" in log
        wait_until("the document", is_open, 60)
        if "bookmark for" not in self.log():
            self.xdo("key", "Escape")
            self.open(document)

    def open(self, document):
        """Passes a document to the editor, which saves the previous one."""
        count = self.log().count("bookmark for")
        subprocess.run([str(self.home.programs / "quilmora"), str(document)], env=self.home.environment,
                       capture_output=True, timeout=60)
        wait_until("the document", lambda: self.log().count("bookmark for") > count or self.process.poll() is not None,
                   60)

    def terminate(self):
        self.process.send_signal(signal.SIGTERM)
        assert self.process.wait(timeout=60) == 0, "the editor did not end well:\n" + self.log()


class Work:
    """The work in one run until it is killed: what was typed into which document, and when."""

    def __init__(self, run, home, current, number, aim):
        self.run, self.home, self.current, self.number, self.aim = run, home, current, number, aim
        self.typed = []  # time and title
        self.begun_at = time.monotonic()
        self.steps = []
        self.is_field_open = False
        self.last = "start"
        self.timer = None
        self.ended_at = None
        self.during = None

    def kill_within(self):
        _, shortest, longest = AIMS[self.aim]

        def kill():
            self.during = self.last
            self.ended_at = time.monotonic()
            self.run.process.kill()
        self.timer = threading.Timer(self.home.random.uniform(shortest, longest), kill)
        self.timer.start()

    def is_over(self):
        return self.ended_at is not None or self.run.process.poll() is not None

    def wait_for_end(self):
        """Returns whether it was a kill; a program that had quit before does not count."""
        while not self.is_over():
            time.sleep(0.01)
        self.timer.cancel()
        self.timer.join()
        return self.run.process.wait() == -signal.SIGKILL

    def leave_field(self):
        if self.is_field_open:
            self.run.xdo("key", "Return")
            self.is_field_open = False

    def edit(self):
        self.leave_field()
        title = f"r{self.number}e{len(self.steps)}"
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
        other = self.home.other(self.current)
        second = self.home.start(other)
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

    def take(self, step):
        self.last = step
        self.steps.append(f"{step}@{time.monotonic() - self.begun_at:.2f}")
        getattr(self, step)()

    def go_on(self):
        is_at_any_moment = self.aim in ("any moment", "auto-save")
        if is_at_any_moment:
            self.kill_within()
        end = time.monotonic() + self.home.random.uniform(0.0, LONGEST_WORK_BEFORE_STEP)
        while not self.is_over() and (is_at_any_moment or time.monotonic() < end):
            self.take(self.home.random.choices(["edit", "save", "undo_and_redo", "switch"], [65, 15, 12, 8])[0])
            time.sleep(self.home.random.uniform(0.0, 0.4))
        if not is_at_any_moment:
            self.kill_within()
            self.take(self.aim)


def play(home, number, current, aim, figures):
    """One round; returns the document that is open at its end."""
    run = Run(home, [] if number else [current])
    if aim == "start":
        work = Work(run, home, current, number, aim)
        work.kill_within()
    else:
        run.wait_until_shown()
        run.wait_until_open(current)
        work = Work(run, home, current, number, aim)
        work.go_on()
    was_killed = work.wait_for_end()
    ended_at = work.ended_at if was_killed else float("inf")
    if was_killed:
        figures["kills"] += 1
        figures["during"][work.during] += 1
    else:
        assert run.process.returncode == 0, f"the editor ended with {run.process.returncode}:\n" + run.log()
        figures["had quit before"] += 1

    for file in home.files:
        home.titles(file)

    after = Run(home)
    after.wait_until_shown()
    after.wait_until_open(work.current)
    figures["recovered"] += "brought back" in after.log()
    figures["set aside"] += "set aside" in after.log()
    # If the second program became the editor, the work on the first document is in its journal.
    if work.last == "switch":
        for file in home.files:
            after.open(file)
    after.terminate()

    # A title typed while documents were switched may be in either.
    found = {title for file in home.files for title in home.titles(file)}
    figures["lost"] += [f"round {number}: {title}, there before" for title in sorted(home.kept - found)]
    for done_at, title in work.typed:
        if done_at > ended_at - GRACE:
            figures["typed in the last second"] += 1
            continue
        figures["typed before"] += 1
        if title not in found:
            figures["lost"].append(f"round {number}: {title}, typed {ended_at - done_at:.2f} s before the end "
                                   f"during {work.last}: {' '.join(work.steps)}; there are "
                                   f"{sorted(one for one in found if one.startswith(f'r{number}e'))}")
    home.kept = found
    return last_document(home) or current


def last_document(home):
    """The last document according to the settings."""
    for settings in home.path.glob(".config/*/*.json"):
        path = json.loads(settings.read_text()).get("lastSavedFilePath")
        if path:
            return pathlib.Path(path)
    return None


class Lane(threading.Thread):
    """Rounds in one home, one after another."""

    def __init__(self, programs, seed, kills, told):
        super().__init__()
        self.programs, self.seed, self.kills, self.told = programs, seed, kills, told
        self.is_ended = False
        self.failure = None
        self.figures = collections.Counter()
        self.figures["during"] = collections.Counter()
        self.figures["lost"] = []
        self.figures["strays"] = []

    def run(self):
        try:
            home = Home(self.programs, self.seed)
            try:
                self.play_all(home)
                self.figures["strays"] = [str(path) for path in home.strays()]
                self.figures["versions"] = sum(1 for _ in home.state.rglob("*.version"))
            finally:
                home.close()
        except Exception:
            self.failure = traceback.format_exc()
        self.told.set()

    def play_all(self, home):
        current = home.files[0]
        number = 0
        weights = [weight for weight, _, _ in AIMS.values()]
        while self.figures["kills"] < self.kills and not self.is_ended:
            aim = home.random.choices(list(AIMS), weights)[0] if number else "any moment"
            current = play(home, number, current, aim, self.figures)
            number += 1
            self.told.set()


def sum_of(lanes, seed):
    figures = {"seed": seed, "kills": 0, "during": collections.Counter()}
    for lane in lanes:
        for name, value in list(lane.figures.items()):
            figures[name] = figures[name] + value if name in figures else value
    return figures


def main():
    parser = argparse.ArgumentParser(usage=__doc__.split("\n\n")[1].removeprefix("Usage: "))
    parser.add_argument("programs")
    parser.add_argument("kills", type=int)
    parser.add_argument("--lanes", type=int, default=1)
    parser.add_argument("--seed", type=int, default=random.randrange(1 << 30))
    asked = parser.parse_args()

    begun_at = time.monotonic()
    told = threading.Event()
    lanes = [Lane(asked.programs, asked.seed + place, (asked.kills + place) // asked.lanes, told)
             for place in range(asked.lanes)]
    for lane in lanes:
        lane.start()
    shown = 0
    try:
        while any(lane.is_alive() for lane in lanes):
            told.wait(1.0)
            told.clear()
            figures = sum_of(lanes, asked.seed)
            if figures["kills"] >= shown + 25:
                shown = figures["kills"]
                print(json.dumps(figures), flush=True)
    except KeyboardInterrupt:
        pass
    for lane in lanes:
        lane.is_ended = True
    for lane in lanes:
        lane.join()

    figures = sum_of(lanes, asked.seed)
    figures["seconds"] = round(time.monotonic() - begun_at)
    for lane in lanes:
        if lane.failure:
            print(lane.failure, file=sys.stderr)
    print(json.dumps(figures))
    # A temporary file has a name for a few milliseconds, so a kill may leave one; it is removed ten minutes later.
    good = not figures["lost"] and len(figures["strays"]) <= max(1, asked.kills // 20)
    good = good and not any(lane.failure for lane in lanes) and figures["kills"] >= asked.kills
    sys.exit(0 if good else 1)


if __name__ == "__main__":
    main()
