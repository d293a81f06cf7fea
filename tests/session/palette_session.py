#!/usr/bin/env python3
"""Plays a user's first minutes with the real program in a virtual display, with real key and mouse events.

Usage: palette_session.py PROGRAM_FOLDER [PICTURE_FOLDER]

The first start shows the quick start, which leads to a starter map. Another one is opened from the menu, the palette
applies a theme and a layout to it, a click on a row of the palette undoes the layout, and auto-save writes both
documents. The second start shows the map at once; the Help menu brings the sheet back.
"""

import json
import signal
import subprocess
import sys

sys.dont_write_bytecode = True
from editor_session import Editor, Session, WINDOW_SIZE, wait_until


# The middle of the first row: the palette's top, its header, and half a row.
FIRST_ROW = WINDOW_SIZE[1] // 8 + 45 + 6 + 20
# The dots of the quick start sheet, which is 420 high in the middle of the window: half their row above its margin.
DOT_STEP = 16
DOT_HEIGHT = WINDOW_SIZE[1] // 2 + 210 - 16 - 14
PAGE_HEAD = f"480x90+{WINDOW_SIZE[0] // 2 - 240}+{WINDOW_SIZE[1] // 2 - 205}"


class FirstMinutes(Editor):
    """An editor whose canvas is below a sheet at first."""

    def settled_canvas(self):
        self.settle()
        return (0, 0, 0, 0)

    def click_dot(self, page):
        """A dot below the pages, in the middle of the bottom of the sheet."""
        self.xdo("mousemove", str(WINDOW_SIZE[0] // 2 + (page - 2) * DOT_STEP), str(DOT_HEIGHT), "click", "1")
        self.rest_pointer()

    def rest_pointer(self):
        """A place with nothing below it."""
        self.xdo("mousemove", str(WINDOW_SIZE[0] // 2), str(WINDOW_SIZE[1] - 6))
        self.settle()

    def page_head(self):
        """The title of the page, in letters on the screen."""
        done = subprocess.run(["import", "-window", "root", "-crop", PAGE_HEAD, "+repage", "rgb:-"],
                              env=self.session.environment, check=True, capture_output=True)
        return done.stdout

    def title(self):
        return self.xdo("getwindowname", self.window).strip()

    def wait_for_title(self, text):
        wait_until(f"the window of {text}", lambda: self.title().startswith(text))

    def open_palette(self):
        """Its field has a blinking cursor, so that the screen is never still."""
        before = self.screenshot()
        self.key("ctrl+k")
        wait_until("the palette", lambda: self.screenshot() != before)

    def run_command(self, query, *keys):
        self.open_palette()
        self.xdo("type", "--delay", "30", query)
        self.key(*keys, "Return")
        self.settle()

    def shows(self, *keys):
        """The screen once the keys have changed it."""
        before = self.screenshot()
        self.key(*keys)
        wait_until(f"another picture after {keys}", lambda: self.screenshot() != before)
        self.settle()
        return self.screenshot()


def settings_of(session):
    return json.loads(session.settings_file.read_text())


def saved(session, name):
    path = session.home / "Documents" / "Quilmora" / f"{name}.mindmap"
    return json.loads(path.read_text()) if path.exists() else None


def titles(document):
    return [node["title"] for node in document["nodes"]]


def first_start(session):
    editor = FirstMinutes(session, [])
    session.keep_picture(editor, "palette-1-welcome")
    # Keys of menus do not reach the map below the sheet.
    editor.key("ctrl+n")
    editor.key("Return", "Right", "Right", "Right")
    editor.settle()
    session.keep_picture(editor, "palette-2-ready")
    editor.key("Return")
    editor.wait_for_title("Brainstorm")
    wait_until("the flag in the settings", lambda: settings_of(session).get("onboardingShown") is True)
    editor.settle()
    session.keep_picture(editor, "palette-3-brainstorm")

    # The canvas has the keyboard again.
    editor.key("ctrl+n")
    editor.xdo("type", "--delay", "30", "Mine")
    editor.key("Return")
    wait_until("the first document", lambda: saved(session, "Brainstorm"))
    assert titles(saved(session, "Brainstorm")) == ["Brainstorm", "Ideas", "Research", "Questions", "Inspiration", "Next Steps",
                                                    "Mine"], saved(session, "Brainstorm")
    return editor


def templates_and_commands(session, editor):
    editor.key("alt+f", "t", "m")
    editor.wait_for_title("Meeting Notes")
    wait_until("the forgotten place", lambda: "lastSavedFilePath" not in settings_of(session))
    # A new history: nothing to undo.
    editor.key("ctrl+z")
    editor.settle()
    assert editor.title().startswith("Meeting Notes"), editor.title()

    editor.open_palette()
    session.keep_picture(editor, "palette-4-open")
    editor.key("Escape")
    editor.run_command("theme: ocean")
    # The second of the four, after a look at the third.
    editor.run_command("layout", "Down", "Down", "Up")
    document = wait_until("the second document", lambda: saved(session, "Meeting Notes"))
    assert titles(document) == ["Meeting Notes", "Agenda", "Decisions", "Action Items", "Follow-ups"], titles(document)
    assert document["canvas"]["themeId"] == "ocean", document["canvas"]
    assert document["layout"] == "verticalTree", document["layout"]
    heights = {node["position"][1] for node in document["nodes"][1:]}
    assert len(heights) == 1, heights

    # The first row of "undo", by the pointer.
    editor.open_palette()
    editor.xdo("type", "--delay", "30", "undo")
    editor.xdo("mousemove", str(WINDOW_SIZE[0] // 2), str(FIRST_ROW))
    session.keep_picture(editor, "palette-5-hover")
    editor.xdo("click", "1")
    editor.settle()
    editor.key("ctrl+q")
    editor.wait_for_end()
    document = saved(session, "Meeting Notes")
    assert document["layout"] == "manual" and document["canvas"]["themeId"] == "ocean", document
    assert settings_of(session)["lastSavedFilePath"].endswith("Meeting Notes.mindmap"), settings_of(session)


def leave_the_first_minute_by_every_way(session, editor):
    map_alone = editor.screenshot()

    def leaves(*keys):
        return editor.shows(*keys) == map_alone

    editor.shows("alt+h", "s")
    session.keep_picture(editor, "palette-6-again")
    editor.key("ctrl+n")
    assert leaves("Escape"), "Escape"
    editor.shows("alt+h", "s")
    assert leaves("alt+s"), "Skip"

    editor.shows("alt+h", "s")
    heads = [editor.page_head()]
    for _ in range(4):
        editor.shows("Return")
        heads.append(editor.page_head())
    assert len(set(heads)) == 5
    for page in (1, 3, 0, 4):
        editor.click_dot(page)
        assert editor.page_head() == heads[page], f"dot {page}"
    # Before the first template are the other two beginnings.
    assert leaves("shift+Tab", "Return"), "Start Blank"
    editor.shows("alt+h", "s")
    editor.click_dot(4)
    editor.shows("shift+Tab", "shift+Tab", "Return")
    session.keep_picture(editor, "palette-7-generate")
    assert editor.page_head() not in heads, "the sheet that asks for a prompt does not show"
    assert leaves("Escape"), "Generate with AI"


def second_start(session):
    editor = FirstMinutes(session, [])
    editor.wait_for_title("Meeting Notes")
    # No sheet takes the key.
    editor.key("ctrl+n")
    editor.key("Escape")
    editor.rest_pointer()
    leave_the_first_minute_by_every_way(session, editor)
    editor.process.send_signal(signal.SIGTERM)
    editor.wait_for_end()
    assert len(saved(session, "Meeting Notes")["nodes"]) == 6, saved(session, "Meeting Notes")
    assert settings_of(session)["onboardingShown"] is True


def main():
    session = Session(sys.argv[1], None, sys.argv[2] if len(sys.argv) > 2 else None, settings={})
    try:
        templates_and_commands(session, first_start(session))
        second_start(session)
    finally:
        session.close()
    print("the first minutes went through")


if __name__ == "__main__":
    main()
