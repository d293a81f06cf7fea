#!/usr/bin/env python3
"""Changes settings in every tab and makes a custom theme in the real program, with real key events.

Usage: settings_session.py PROGRAM_FOLDER SAMPLE [PICTURE_FOLDER]

Checks the settings file after each step, then applies the new theme to the map with the command palette and checks
the saved document. With PICTURE_FOLDER, screenshots of the steps are kept there.
"""

import base64
import json
import sys

sys.dont_write_bytecode = True
from editor_session import Editor, Session, wait_until

SETTINGS = {"onboardingShown": True, "appearance": "light", "showInspector": False}
SECRET = "sk-session-secret"


class Hands:
    """Works in one window after another."""

    def __init__(self, session):
        self.session = session
        self.editor = Editor(session, [str(session.file)])
        self.file = session.home / ".config" / "Quilmora" / "Quilmora.json"

    def windows(self, title):
        found = self.editor.xdo("search", "--all", "--onlyvisible", "--pid", str(self.editor.process.pid), "--name", title,
                                check=False)
        return found.split()

    def enter(self, title):
        window = wait_until(f"the window {title}", lambda: self.windows(title))[-1]
        self.editor.xdo("windowfocus", window)
        self.editor.settle()

    def leave(self, title, back_to=None):
        wait_until(f"the end of the window {title}", lambda: not self.windows(title))
        if back_to:
            self.enter(back_to)
        else:
            self.editor.xdo("windowfocus", self.editor.window)
            self.editor.settle()

    def press(self, *keys):
        self.editor.key(*keys)

    def type(self, text):
        self.editor.xdo("type", "--delay", "30", text)

    def settings(self):
        return json.loads(self.file.read_text()) if self.file.exists() else {}

    def expect(self, key, value):
        wait_until(f"{key} = {value} in {self.file.name}", lambda: self.settings().get(key) == value)

    def custom_themes(self):
        stored = self.settings().get("customThemes")
        return json.loads(base64.b64decode(stored["bytes"])) if stored else []


def change_general(hands):
    hands.press("Tab", "Down")
    hands.expect("defaultLayout", "verticalTree")
    hands.press("Tab", "Home")
    hands.expect("defaultTheme", "ocean")
    hands.press("Tab", "space")
    hands.expect("sidebarDefaultOpen", False)
    hands.press("Tab", "Down")
    hands.expect("sidebarDefaultTab", "outline")
    hands.press("Tab", "End")
    hands.expect("defaultExportFormat", "md")


def change_appearance(hands):
    hands.press("ctrl+Tab", "Tab", "End")
    hands.expect("appearance", "dark")
    hands.editor.settle()
    hands.session.keep_picture(hands.editor, "settings-dark")
    hands.press("Up")
    hands.expect("appearance", "light")
    for key in ("showMiniMap", "showBreadcrumbs", "animationsEnabled"):
        hands.press("Tab", "space")
        hands.expect(key, False)
    hands.press("Tab", "Right")
    hands.expect("nodeCornerRadius", 7)
    hands.press("Tab", "Left")
    hands.expect("edgeThicknessScale", 0.9)


def make_theme(hands):
    hands.press("Tab", "Tab", "space")
    hands.editor.settle()
    hands.press("ctrl+a")
    hands.type("Dusk")
    hands.press("Tab", "space")
    hands.enter("^Background")
    hands.press("alt+h", "ctrl+a")
    hands.type("#102030")
    hands.session.keep_picture(hands.editor, "settings-color")
    hands.press("Return")
    hands.leave("^Background", back_to="^Settings")
    hands.session.keep_picture(hands.editor, "settings-theme")
    hands.press("alt+s")
    themes = wait_until("the theme in the settings", hands.custom_themes)
    assert len(themes) == 1, themes
    theme = themes[0]
    assert sorted(theme) == ["background", "edgeColor", "id", "name", "nodeColors"], theme
    assert (theme["name"], theme["background"], theme["edgeColor"]) == ("Dusk", "#102030", "#808080"), theme
    assert [row["fill"] for row in theme["nodeColors"]] == ["#1A5276", "#2980B9", "#5DADE2", "#AED6F1", "#D6EAF8"], theme
    return theme


def change_interaction_and_ai(hands):
    hands.press("ctrl+Tab")
    for key in ("editOnDoubleClick", "createChildOnTab"):
        hands.press("Tab", "space")
        hands.expect(key, False)
    hands.press("ctrl+Tab", "Tab", "Down")
    hands.expect("ai_provider", "claude")
    hands.editor.settle()
    hands.press("Tab")
    hands.type(SECRET)
    hands.session.keep_picture(hands.editor, "settings-key")
    hands.press("shift+Tab", "End")
    hands.expect("ai_provider", "demo")
    assert SECRET not in hands.file.read_text(), "a key in the settings file"


def run(session):
    before = session.document()
    hands = Hands(session)
    hands.press("ctrl+comma")
    hands.enter("^Settings")
    change_general(hands)
    change_appearance(hands)
    theme = make_theme(hands)
    change_interaction_and_ai(hands)
    hands.press("Escape")
    hands.leave("^Settings")
    assert session.document()["canvas"] == before["canvas"], "settings changed the map"

    hands.press("ctrl+k")
    hands.editor.settle()
    hands.type("Dusk")
    hands.press("Return")
    hands.editor.settle()
    canvas = hands.editor.save()["canvas"]
    assert canvas["themeId"] == "custom_" + theme["id"], canvas
    assert canvas["background"] == "#102030", canvas
    session.keep_picture(hands.editor, "settings-applied")
    hands.press("ctrl+q")
    hands.editor.wait_for_end()


def main():
    programs, sample = sys.argv[1:3]
    session = Session(programs, sample, sys.argv[3] if len(sys.argv) > 3 else None, SETTINGS)
    try:
        run(session)
    finally:
        session.close()
    print("settings session passed")


main()
