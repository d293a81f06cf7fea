#!/usr/bin/env python3
"""Uses every control of the settings and of the theme builder once, in the real program with real key events.

Usage: settings_session.py PROGRAM_FOLDER SAMPLE SUPPORT_PROGRAM_FOLDER [PICTURE_FOLDER]

Looks after each step at what the settings file holds, or the desktop's key store, then applies the new theme to the map by
the command palette and looks at the saved document. With PICTURE_FOLDER, screenshots of the steps are kept there.
"""

import base64
import json
import pathlib
import sys

sys.dont_write_bytecode = True
from editor_session import Editor, Session, wait_until
from keyring import Keyring

SETTINGS = {"onboardingShown": True, "appearance": "light", "showInspector": False}
SECRETS = {"ai_claude_key": "sk-session-secret", "ai_openai_key": "sk-another-secret"}


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
    # The theme chosen in the general settings shows here too.
    hands.press("Tab", "Down")
    hands.expect("defaultTheme", "forest")
    hands.press("End")
    hands.expect("defaultTheme", "candy")


def choose_color(hands, well, color):
    """In the dialog of the next well."""
    hands.press("Tab", "space")
    hands.enter(f"^{well}")
    hands.press("alt+h", "ctrl+a")
    hands.type(color)
    hands.session.keep_picture(hands.editor, "settings-color")
    hands.press("Return")
    hands.leave(f"^{well}", back_to="^Settings")


def open_builder(hands, *keys):
    hands.press(*keys, "space")
    hands.editor.settle()


def start_from_a_swatch(hands):
    """Saves the last built-in theme as a custom one without changes, and deletes it again."""
    open_builder(hands, "Tab")
    # Before the first control are the buttons, and before them the swatches.
    hands.press("shift+Tab", "shift+Tab", "shift+Tab", "space", "alt+s")
    themes = wait_until("the theme in the settings", hands.custom_themes)
    candy = hands.session.ask({"do": "themes"})[0]["result"][-1]
    assert [theme["name"] for theme in themes] == ["Candy Custom"], themes
    assert (themes[0]["background"], themes[0]["edgeColor"]) == (candy["background"], candy["edgeColor"]), themes
    colors = [{key: row[key] for key in ("fill", "stroke", "textColor")} for row in candy["nodeColors"]]
    assert themes[0]["nodeColors"] == colors, themes
    hands.editor.settle()
    hands.press("Tab", "space")
    wait_until("the deletion of the theme", lambda: hands.custom_themes() == [])


def cancel_a_theme(hands):
    open_builder(hands)
    hands.press("shift+Tab", "shift+Tab", "space")
    hands.editor.settle()
    assert hands.custom_themes() == []


def remove_the_root_level(hands):
    """The second level takes its place. The theme is deleted again."""
    open_builder(hands)
    hands.press("Tab", "Tab", "Tab", "Tab", "Tab", "Tab", "space", "alt+s")
    themes = wait_until("the theme without its root level", hands.custom_themes)
    fills = [row["fill"] for row in themes[0]["nodeColors"]]
    assert len(fills) == 4 and fills[1:] == ["#5DADE2", "#AED6F1", "#D6EAF8"], fills
    hands.editor.settle()
    hands.press("Tab", "space")
    wait_until("the deletion of the theme", lambda: hands.custom_themes() == [])


LEVELS = ("Root Topic", "Level 1", "Level 2", "Level 3", "Level 4")
PARTS = (("Fill", "fill"), ("Border", "stroke"), ("Text", "textColor"))


def make_theme(hands):
    open_builder(hands)
    hands.press("ctrl+a")
    hands.type("Dusk")
    choose_color(hands, "Background", "#102030")
    choose_color(hands, "Edge Color", "#405060")
    chosen = []
    for level, name in enumerate(LEVELS):
        if level > 0:
            # The button that removes the row above.
            hands.press("Tab")
        row = {key: f"#{level + 1:02X}{part:02X}AB" for part, (_, key) in enumerate(PARTS)}
        for caption, key in PARTS:
            choose_color(hands, f"{name}: {caption}", row[key])
        chosen.append(row)
    hands.session.keep_picture(hands.editor, "settings-theme")
    # Removes the last level; the keyboard goes to "Add Level", which repeats the level before it.
    hands.press("Tab", "space", "space", "alt+s")
    themes = wait_until("the theme in the settings", hands.custom_themes)
    assert len(themes) == 1, themes
    theme = themes[0]
    assert sorted(theme) == ["background", "edgeColor", "id", "name", "nodeColors"], theme
    assert (theme["name"], theme["background"], theme["edgeColor"]) == ("Dusk", "#102030", "#405060"), theme
    rows = [{key: row[key] for _, key in PARTS} for row in theme["nodeColors"]]
    assert rows[:4] == chosen[:4], rows
    assert len(rows) == 5 and rows[4]["fill"] == chosen[3]["fill"], rows
    hands.editor.settle()
    return theme


def change_interaction(hands):
    hands.press("ctrl+Tab")
    for key in ("editOnDoubleClick", "createChildOnTab"):
        hands.press("Tab", "space")
        hands.expect(key, False)


def type_key(hands, keyring, account):
    """In the key field of the vendor just chosen."""
    # The field opens when the key store has answered; it answers in turn.
    keyring.ask("read", account)
    hands.editor.settle()
    hands.press("Tab")
    hands.type(SECRETS[account])
    wait_until(f"{account} in the key store", lambda: f"key={SECRETS[account]} " in keyring.ask("read", account))


def change_ai(hands, keyring):
    hands.press("ctrl+Tab", "Tab", "Down")
    hands.expect("ai_provider", "claude")
    type_key(hands, keyring, "ai_claude_key")
    hands.session.keep_picture(hands.editor, "settings-key")
    # After the field comes "Remove Key", which returns the keyboard to it.
    hands.press("Tab", "space")
    wait_until("the key's end", lambda: SECRETS["ai_claude_key"] not in keyring.ask("read", "ai_claude_key"))
    hands.editor.settle()
    hands.press("shift+Tab", "Down")
    hands.expect("ai_provider", "openai")
    type_key(hands, keyring, "ai_openai_key")

    hands.press("shift+Tab", "Home")
    hands.expect("ai_provider", "apple")
    hands.editor.settle()
    hands.press("Tab")
    hands.type("http://127.0.0.1:9")
    hands.expect("local_model_address", "http://127.0.0.1:9")
    hands.press("Tab")
    hands.type("small")
    hands.expect("local_model_name", "small")
    hands.session.keep_picture(hands.editor, "settings-server")
    hands.press("shift+Tab", "shift+Tab", "End")
    hands.expect("ai_provider", "demo")
    for secret in SECRETS.values():
        assert secret not in hands.file.read_text(), "a key in the settings file"


def run(session, keyring):
    before = session.document()
    hands = Hands(session)
    hands.press("ctrl+comma")
    hands.enter("^Settings")
    change_general(hands)
    change_appearance(hands)
    start_from_a_swatch(hands)
    cancel_a_theme(hands)
    remove_the_root_level(hands)
    theme = make_theme(hands)
    change_interaction(hands)
    change_ai(hands, keyring)
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
    show_more_themes(session, hands.file, theme)


ROWS_AT_ONCE = 100


def show_more_themes(session, file, theme):
    """Deletes the one theme that the list of custom themes does not show at first."""
    settings = json.loads(file.read_text())
    themes = [{**theme, "id": f"many{index}", "name": f"Theme {index}"} for index in range(ROWS_AT_ONCE + 1)]
    settings["customThemes"]["bytes"] = base64.b64encode(json.dumps(themes).encode()).decode()
    file.write_text(json.dumps(settings))
    hands = Hands(session)
    hands.press("ctrl+comma")
    hands.enter("^Settings")
    hands.press("ctrl+Tab", "alt+m")
    hands.editor.settle()
    # The last control of the page, before the first one.
    hands.press("shift+Tab", "space")
    wait_until("the deletion of a theme", lambda: len(hands.custom_themes()) == ROWS_AT_ONCE)
    left = hands.custom_themes()
    assert [row["id"] for row in left] == [row["id"] for row in themes[:-1]], "another theme was deleted"
    hands.press("Escape")
    hands.leave("^Settings")
    hands.press("ctrl+q")
    hands.editor.wait_for_end()


def main():
    programs, sample, support_programs = sys.argv[1:4]
    session = Session(programs, sample, sys.argv[4] if len(sys.argv) > 4 else None, SETTINGS)
    keyring = None
    try:
        keyring = Keyring(session, pathlib.Path(support_programs))
        run(session, keyring)
    finally:
        if keyring:
            keyring.close()
        session.close()
    print("settings session passed")


main()
