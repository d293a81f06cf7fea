#!/usr/bin/env python3
"""Starts the real program with settings damaged in every way, and works in it each time.

Usage: damaged_settings_session.py PROGRAM_FOLDER SAMPLE [PICTURE_FOLDER]

Each time the window has to come, a topic has to be made and saved by keys, the settings window and the palette have to open and
close, and the program has to end by its key with status 0. With PICTURE_FOLDER, a screenshot of each start is kept there.
"""

import base64
import json
import pathlib
import re
import shutil
import sys

sys.dont_write_bytecode = True
from editor_session import Editor, Session, wait_until

KEYS_HEADER = pathlib.Path(__file__).parents[2] / "src" / "platform" / "SettingsKeys.h"
TEN_MEGABYTES = 10_000_000


def every_key():
    keys = re.findall(r'inline const QString \w+ = QStringLiteral\("(\w+)"\)', KEYS_HEADER.read_text())
    assert len(keys) >= 20, keys
    return keys


def as_bytes(data):
    return {"bytes": base64.b64encode(data).decode()}


def theme(number, **changes):
    color = {"fill": "#AA0000", "stroke": "#BB0000", "textColor": "#FFFFFF"}
    return {"id": f"00000000-0000-4000-8000-{number:012}", "name": f"Theme {number}", "background": "#FFFFFF",
            "edgeColor": "#112233", "nodeColors": [color] * 5} | changes


def many_themes():
    text = json.dumps([theme(number) for number in range(TEN_MEGABYTES // len(json.dumps(theme(0))))])
    return text.encode()


def damages():
    """Names, each with the content of the settings file, as a text or as a value for JSON."""
    kinds = {"number": 7, "flag": True, "text": "\u2603 what is this", "list": [1, {"a": []}], "object": {"bytes": 3},
             "null": None, "bytes": as_bytes(b"\0\xff rubbish"), "list of bytes": {"bytesList": ["AAAA", "/w=="]}}
    for name, value in kinds.items():
        yield f"every value a {name}", {key: value for key in every_key()}
    yield "unknown words", {"appearance": "purple", "defaultLayout": "spiral", "defaultTheme": "custom_nobody",
                            "selected_theme": "no theme", "defaultExportFormat": "png", "sidebarDefaultTab": "games",
                            "ai_provider": "nobody", "local_model_address": "http://[", "local_model_name": "\n\0",
                            "nodeCornerRadius": 1e308, "edgeThicknessScale": -5, "windowPlace": "1e9 x 7 7",
                            "lastSavedFilePath": "/dev/zero/\udcff", "somethingElse": {"of": "another version"}}
    yield "places beyond every screen", {"windowPlace": "99999 -99999 99999 99999", "windowIsMaximized": "no"}
    yield "themes without colours", {"customThemes": as_bytes(json.dumps(
        [theme(1, nodeColors=[]), theme(2, background="", edgeColor="blue?", name="")]).encode())}
    yield "ten megabytes of themes", {"customThemes": as_bytes(many_themes()), "selected_theme": "custom_" + theme(3)["id"]}
    yield "a theme's name of ten megabytes", {"customThemes": as_bytes(
        json.dumps([theme(1, name="x" * TEN_MEGABYTES)]).encode())}
    yield "ten megabytes of rubbish for themes", {"customThemes": as_bytes(b"[{" * (TEN_MEGABYTES // 2))}
    yield "no JSON", "{{{{"
    yield "an empty file", ""
    yield "ten megabytes of brackets", "[" * TEN_MEGABYTES


class DamagedStart(Editor):
    """An editor that may start with the quick start sheet open, and with any look."""

    def settled_canvas(self):
        self.settle()
        return (0, 0, 0, 0)

    def open_and_close(self, key):
        before = self.screenshot()
        self.key(key)
        wait_until(f"what {key} opens", lambda: self.screenshot() != before)
        self.key("Escape")
        self.xdo("windowfocus", self.window)
        self.settle()


def work(session, name):
    editor = DamagedStart(session, [str(session.file)])
    session.keep_picture(editor, "damaged-" + name.replace(" ", "-").replace("'", ""))
    # If the flag of the quick start is damaged, its sheet is open.
    editor.key("Escape")
    editor.settle()
    topics = len(session.document()["nodes"])
    editor.key("ctrl+n")
    editor.xdo("type", "--delay", "20", "Alive")
    editor.key("Return")
    nodes = editor.save()["nodes"]
    assert len(nodes) == topics + 1 and nodes[-1]["title"] == "Alive", (name, len(nodes), nodes[-1])
    editor.open_and_close("ctrl+comma")
    editor.open_and_close("ctrl+k")
    editor.key("ctrl+q")
    editor.wait_for_end()


def main():
    programs, sample = sys.argv[1:3]
    session = Session(programs, sample, sys.argv[3] if len(sys.argv) > 3 else None)
    try:
        for name, settings in damages():
            shutil.copy(sample, session.file)
            session.settings_file.write_text(settings if isinstance(settings, str) else json.dumps(settings))
            print("settings:", name, flush=True)
            work(session, name)
    finally:
        session.close()
    print("damaged settings session passed")


main()
