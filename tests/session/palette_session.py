#!/usr/bin/env python3
"""Plays a user's first minutes with the real program in a virtual display, with real key and mouse events.

Usage: palette_session.py PROGRAM_FOLDER [PICTURE_FOLDER]

The first start shows the quick start, which leads to a starter map. Another one is opened from the menu, the palette
applies a theme and a layout to it, a click on a row of the palette undoes the layout, and auto-save writes both
documents. The second start shows the map at once; the Help menu brings the sheet back.
"""

import json
import signal
import sys

sys.dont_write_bytecode = True
from editor_session import Editor, Session, WINDOW_SIZE, wait_until


# The middle of the first row: the palette's top, its header, and half a row.
FIRST_ROW = WINDOW_SIZE[1] // 8 + 45 + 6 + 20


class FirstMinutes(Editor):
    """An editor whose canvas is below a sheet at first."""

    def settled_canvas(self):
        self.settle()
        return (0, 0, 0, 0)

    def title(self):
        return self.xdo("getwindowname", self.window).strip()

    def wait_for_title(self, text):
        wait_until(f"the window of {text}", lambda: self.title().startswith(text))

    def open_palette(self):
        """Its field has a blinking cursor, so that the screen is never still."""
        before = self.screenshot()
        self.key("ctrl+k")
        wait_until("the palette", lambda: self.screenshot() != before)

    def run_command(self, query):
        self.open_palette()
        self.xdo("type", "--delay", "30", query)
        self.key("Return")
        self.settle()


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
    editor.run_command("vertical")
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


def second_start(session):
    editor = FirstMinutes(session, [])
    editor.wait_for_title("Meeting Notes")
    # No sheet takes the key.
    editor.key("ctrl+n")
    editor.key("Escape")
    editor.key("alt+h", "s")
    editor.settle()
    session.keep_picture(editor, "palette-6-again")
    editor.key("ctrl+n")
    editor.key("Escape")
    editor.settle()
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
