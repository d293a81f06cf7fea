#!/usr/bin/env python3
"""Works in the outline of the real program, with real key and mouse events.

Usage: outline_session.py PROGRAM_FOLDER [PICTURE_FOLDER]

Uses every function of the outline once; each change is checked in the saved document and undone. With PICTURE_FOLDER,
a screenshot of a failed step is kept there.
"""

import json
import subprocess
import sys
import time

sys.dont_write_bytecode = True
from editor_session import Editor, Session, differences, wait_until
from gestures_test import ends, node, small_map

SETTINGS = {"showSidebar": True, "showInspector": False, "onboardingShown": True, "appearance": "light",
            "ai_provider": "demo"}
STEP_SECONDS = 0.6
SELECTED = "#DDE9FD"  # the accent at 12 % on the panel


class Outline:
    """The outline by its rows, found on the screen by the background of the selected one."""

    def __init__(self, session, editor):
        self.session = session
        self.editor = editor
        self.last_title = 0.0
        editor.key("ctrl+shift+o")
        editor.settle()
        self.base = editor.save()
        self.left, self.top = 0, editor.canvas[1]
        # A click into the list gives it the keyboard, and selects what is there.
        self.click_at(self.top + 100)
        self.key("Home")
        self.first = self.selected_row()
        self.key("Down")
        self.height = self.selected_row() - self.first

    def selected_row(self):
        """The middle of the selected row on the screen."""
        self.editor.settle()
        path = self.session.home / "outline.png"
        self.editor.picture(path)
        done = subprocess.run(["convert", str(path), "-crop", f"60x600+150+{self.top}", "+repage", "-alpha", "off",
                               "-fill", "black", "+opaque", SELECTED, "-fill", "white", "-opaque", SELECTED, "-trim",
                               "-format", "%Y %h", "info:"], capture_output=True, text=True)
        y, height = (int(part) for part in done.stdout.replace("+", " ").split())
        if not 15 < height < 60:
            self.session.keep_picture(self.editor, "outline-row")
            raise AssertionError(f"a selected row {height} high")
        return self.top + y + height / 2

    def place(self, row):
        return round(self.first + row * self.height)

    def click_at(self, y, x=150, button="1"):
        self.editor.xdo("mousemove", str(x), str(y), "click", button)
        self.editor.settle()

    def key(self, *keys):
        self.editor.key(*keys)

    def menu(self, row, *keys):
        before = self.editor.screenshot()
        self.click_at(self.place(row), button="3")
        wait_until("the menu", lambda: self.editor.screenshot() != before)
        self.key(*keys)
        self.editor.settle()

    def rename(self, text):
        # Titles typed sooner would be one undo step.
        time.sleep(max(0.0, self.last_title + STEP_SECONDS - time.monotonic()))
        self.key("F2")
        self.editor.xdo("type", "--delay", "15", text)
        self.key("Return")
        self.last_title = time.monotonic()

    def save(self):
        return self.editor.save()

    def undo(self):
        for _ in range(3):
            self.key("ctrl+z")
            if not (left := differences(self.base, self.save())):
                return
        raise AssertionError(f"still different: {left}")


# The rows: Alpha with Beta and Gamma, then Delta and Echo. Each step leaves the document as it was.


def clicks_select(outline):
    outline.click_at(outline.place(2))
    outline.rename("Third")
    assert node(outline.save(), "Gamma")["title"] == "Third"
    outline.undo()


def keys_walk(outline):
    outline.key("End")
    outline.rename("Last")
    assert node(outline.save(), "Echo")["title"] == "Last"
    outline.undo()
    outline.key("Home", "Down", "Down", "Up")
    outline.rename("Second")
    assert node(outline.save(), "Beta")["title"] == "Second"
    outline.undo()
    outline.key("Home", "d")
    outline.rename("By letter")
    assert node(outline.save(), "Delta")["title"] == "By letter"
    outline.undo()
    # Escape in the field leaves the title alone, and the next key goes to the list again.
    outline.key("Home", "F2", "x", "Escape", "Down")
    outline.rename("After Escape")
    document = outline.save()
    assert node(document, "Alpha")["title"] == "Alpha" and node(document, "Beta")["title"] == "After Escape"
    outline.undo()


def saving_keeps_what_is_typed(outline):
    time.sleep(STEP_SECONDS)
    outline.key("Home", "F2")
    outline.editor.xdo("type", "--delay", "15", "Typed")
    assert node(outline.save(), "Alpha")["title"] == "Typed"
    outline.last_title = time.monotonic()
    outline.undo()


def rows_fold(outline):
    outline.key("Home", "Left", "Down")
    outline.rename("Below the fold")
    assert node(outline.save(), "Delta")["title"] == "Below the fold"
    outline.undo()
    # The chevron of the first row expands it and selects nothing.
    outline.click_at(outline.first, x=16)
    outline.key("Home", "Right")
    outline.rename("Child")
    assert node(outline.save(), "Beta")["title"] == "Child"
    outline.undo()
    outline.click_at(outline.first, x=16)
    outline.click_at(outline.first, x=16)


def the_menu_edits(outline):
    outline.menu(3, "Down", "Return")
    document = outline.save()
    assert ("Delta", "new") in ends(document), ends(document)
    outline.undo()
    outline.menu(4, "Down", "Down", "Down", "Down", "Return")
    document = outline.save()
    assert len(document["nodes"]) == 6 and document["nodes"][-1]["title"].startswith("Echo")
    outline.undo()
    outline.menu(1, "Up", "Return")
    document = outline.save()
    assert node(document, "Beta") is None and len(document["nodes"]) == 4
    outline.undo()
    outline.click_at(outline.place(2))
    before = outline.editor.screenshot()
    outline.key("Menu")
    wait_until("the menu", lambda: outline.editor.screenshot() != before)
    outline.key("Up", "Return")
    assert node(outline.save(), "Gamma") is None
    outline.undo()


def the_menu_asks_the_assistant(outline):
    def saved_until(what, condition):
        return wait_until(what, lambda: (lambda document: condition(document) and document)(outline.save()))

    outline.menu(3, "Down", "Down", "Return")
    document = saved_until("sub-topics of Delta", lambda document: len(document["nodes"]) > 5)
    assert ends(document) > ends(outline.base) and ("Delta", "new") in ends(document), ends(document)
    outline.undo()
    outline.menu(4, "Down", "Down", "Down", "Return")
    document = saved_until("a summary of Echo", lambda document: node(document, "Echo")["notes"])
    assert "Echo" in node(document, "Echo")["notes"]
    outline.undo()


def delete_deletes(outline):
    outline.click_at(outline.place(1))
    outline.key("Delete")
    document = outline.save()
    assert node(document, "Beta") is None and node(document, "Alpha") is not None
    outline.undo()


def the_edge_is_dragged(outline):
    editor = outline.editor
    y = str(outline.top + 300)

    def canvas_left():
        editor.settle()
        return editor.settled_canvas()[0]

    assert canvas_left() == 260
    editor.xdo("mousemove", "260", y, "mousedown", "1", "mousemove", "300", y, "mousemove", "340", y, "mouseup", "1")
    assert canvas_left() == 340, canvas_left()
    editor.xdo("mousemove", "340", y, "click", "--repeat", "2", "--delay", "60", "1")
    assert canvas_left() == 260, canvas_left()
    assert not differences(outline.base, outline.save())


def its_key_hides_it(outline):
    outline.key("ctrl+shift+o")
    outline.editor.settle()
    assert outline.editor.settled_canvas()[0] == 0
    outline.key("ctrl+shift+o")
    outline.editor.settle()
    assert outline.editor.settled_canvas()[0] == 260


def tabs_are_clicked(outline):
    def below_the_bar():
        path = outline.session.home / "sidebar.png"
        outline.editor.picture(path)
        return subprocess.run(["convert", str(path), "-crop", f"250x500+0+{outline.top + 60}", "+repage", "rgb:-"],
                              check=True, capture_output=True).stdout

    def click_tab(x):
        outline.click_at(outline.top + 18, x=x)
        return below_the_bar()

    rows = click_tab(195)
    assert click_tab(65) != rows, "the chat does not show"
    click_tab(195)
    outline.click_at(outline.place(2))
    outline.rename("After the chat")
    assert node(outline.save(), "Gamma")["title"] == "After the chat"
    outline.undo()


STEPS = (clicks_select, keys_walk, saving_keeps_what_is_typed, rows_fold, the_menu_edits, the_menu_asks_the_assistant,
         delete_deletes, tabs_are_clicked, the_edge_is_dragged, its_key_hides_it)


def main():
    session = Session(sys.argv[1], None, sys.argv[2] if len(sys.argv) > 2 else None, settings=SETTINGS)
    session.file.write_text(json.dumps(small_map()))
    try:
        editor = Editor(session, [str(session.file)])
        outline = Outline(session, editor)
        for step in STEPS:
            try:
                step(outline)
            except Exception:
                session.keep_picture(editor, f"outline-{step.__name__}")
                raise
            print(step.__name__, flush=True)
        editor.key("ctrl+q")
        editor.wait_for_end()
    finally:
        session.close()
    print("the outline went through")


if __name__ == "__main__":
    main()
