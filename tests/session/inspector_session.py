#!/usr/bin/env python3
"""Uses every control of the inspector once on the real program, with real key and mouse events.

Usage: inspector_session.py PROGRAM_FOLDER [PICTURE_FOLDER]

After each it saves and checks the document, then undoes the number of steps that the control should take and expects
the document to be as before. With PICTURE_FOLDER, screenshots of the steps are kept there.
"""

import base64
import json
import os
import re
import subprocess
import sys
import time

sys.dont_write_bytecode = True
from editor_session import Editor, Session, differences, wait_until
from gestures_test import FREE, POSITIONS, Hands, identifier, middle, node, small_map

OWN_THEME = {"id": "6F9619FF-8B86-D011-B42D-00C04FC964FF", "name": "Moss", "background": "#F0F0E0", "edgeColor": "#446644",
             "nodeColors": [{"fill": "#335533", "stroke": "#112211", "textColor": "#FFFFFF"}]}
SETTINGS = {"showSidebar": False, "showInspector": True, "onboardingShown": True, "appearance": "light",
            "customThemes": {"bytes": base64.b64encode(json.dumps([OWN_THEME]).encode()).decode()}}
THROTTLE_SECONDS = 0.55

TOPIC = ["Title", "Shape", "Emoji", "Badge", "Samples", "Link", "Add Image...", "Notes", "Fill", "Border", "Text",
         "Delete Topic"]
TOPIC_WITH_PICTURE = TOPIC[:6] + ["Replace Image...", "Remove"] + TOPIC[7:]
TOPICS = ["Fill", "Border", "Text", "Apply to All Selected", "Samples", "Align", "Distribute", "Delete All Selected"]
EDGE = ["Color", "Dashed", "Arrow Head", "Start Width", "End Width", "Easing", "Delete Branch"]
EDGES = ["Color", "Apply Color", "Start Width", "End Width", "Apply Taper Settings", "Delete All Selected"]
CANVAS = ["Background", "Classic", "Vibrant", "Custom", "Layout", "Edge Sizing", "Root Width", "Leaf Width", "Node Sizing",
          "Root Font", "Leaf Font", "Lens"]


class Panel:
    """The panel as used without a mouse: F6 goes to its first control, Tab moves on, Escape leaves it."""

    def __init__(self, hands):
        self.hands = hands

    def at(self, stops, name, *keys):
        """Moves from the canvas to the control and presses the keys there."""
        self.hands.key("F6", *["Tab"] * stops.index(name), *keys)

    def changed(self, steps, *expectations):
        """Saves, checks, and undoes in exactly this many steps."""
        hands = self.hands
        document = hands.save()
        for expectation in expectations:
            assert expectation(document), json.dumps(document, indent=1)
        hands.key("Escape")
        for step in range(steps):
            assert differences(hands.base, hands.save()), f"back after {step} of {steps} steps"
            hands.key("ctrl+z")
        left = differences(hands.base, hands.save())
        assert not left, f"still different after {steps} steps back: {left}"
        # So that the next throttled change takes its own snapshot.
        time.sleep(THROTTLE_SECONDS)

    def thumb(self, come_to_slider, key):
        """The middle of a slider's thumb on the screen, found by what changes at the bottom of the slider and in its label."""
        come_to_slider()
        self.hands.editor.settle()
        pictures = [self.hands.session.home / name for name in ("before.png", "after.png")]
        self.hands.editor.picture(pictures[0])
        self.hands.key(key)
        self.hands.editor.settle()
        self.hands.editor.picture(pictures[1])
        changes = ["convert", *map(str, pictures), "-compose", "difference", "-composite", "-threshold", "0", "-crop",
                   "320x800+960+0", "+repage"]

        def place(*part):
            done = subprocess.run([*changes, *part, "-format", "%@", "info:"], capture_output=True, text=True, check=True)
            return [int(number) for number in re.findall(r"\d+", done.stdout)]

        _, height, _, top = place()
        foot = top + height - 10
        width, _, left, _ = place("-crop", f"320x10+0+{foot}")
        return 960 + left + width // 2, foot

    def choose_color(self, color):
        """In the colour well's dialog, which has just been opened."""
        before = self.hands.editor.screenshot()
        self.hands.key("space")
        wait_until("the colour dialog", lambda: self.hands.editor.screenshot() != before)
        self.hands.editor.settle()
        self.hands.key("alt+h", "ctrl+a")
        self.hands.type(color)
        self.hands.key("Return")
        self.come_back()

    def come_back(self):
        """Acts as the window manager: returns the keyboard to the window when a dialog has closed."""
        self.hands.editor.settle()
        self.hands.editor.xdo("windowfocus", "--sync", self.hands.editor.window)


def style(document, title):
    return node(document, title)["style"]


def pretend_browser(session):
    """Replaces the program that opens addresses with one that records them."""
    folder = session.home / "bin"
    folder.mkdir()
    program = folder / "xdg-open"
    program.write_text(f"#!/bin/sh\necho \"$1\" >> '{session.home}/opened.txt'\n")
    program.chmod(0o755)
    session.environment["PATH"] = f"{folder}{os.pathsep}{session.environment['PATH']}"


def opened_addresses(session):
    path = session.home / "opened.txt"
    return path.read_text().split() if path.exists() else []


def fields_of_a_topic(hands, panel):
    hands.click_title("Beta")
    panel.at(TOPIC, "Title", "ctrl+a")
    hands.type("Harbour")
    hands.key("Return")
    panel.changed(1, lambda document: node(document, "Beta")["title"] == "Harbour")
    # Typed for one topic, and then another one is clicked.
    hands.click_title("Gamma")
    panel.at(TOPIC, "Title", "ctrl+a")
    hands.type("Dock")
    hands.click_title("Delta")
    panel.changed(1, lambda document: node(document, "Gamma")["title"] == "Dock",
                  lambda document: node(document, "Delta")["title"] == "Delta")
    # Saving takes what is being typed; Escape drops it.
    hands.click_title("Gamma")
    panel.at(TOPIC, "Notes")
    hands.type("By boat")
    panel.changed(1, lambda document: node(document, "Gamma")["notes"] == "By boat")
    hands.click_title("Gamma")
    panel.at(TOPIC, "Title", "ctrl+a")
    hands.type("Never")
    hands.key("Escape")
    hands.unchanged()
    hands.click_title("Gamma")
    panel.at(TOPIC, "Link")
    hands.type("https://example.org")
    hands.key("Return")
    hands.session.keep_picture(hands.editor, "inspector-topic")
    # The button that opens it has appeared after the field.
    hands.key("Tab", "space")
    wait_until("the browser", lambda: opened_addresses(hands.session) == ["https://example.org"])
    panel.changed(1, lambda document: node(document, "Gamma")["url"] == "https://example.org")


def open_emoji(hands, panel):
    before = hands.editor.screenshot()
    panel.at(TOPIC, "Emoji", "space")
    wait_until("the emoji", lambda: hands.editor.screenshot() != before)
    hands.editor.settle()


def choices_of_a_topic(hands, panel):
    hands.click_title("Gamma")
    panel.at(TOPIC, "Shape", "Down")
    panel.changed(1, lambda document: style(document, "Gamma")["shape"] == "circle")
    hands.click_title("Gamma")
    open_emoji(hands, panel)
    hands.session.keep_picture(hands.editor, "inspector-emoji")
    hands.key("Right", "Right", "space")
    panel.changed(1, lambda document: node(document, "Gamma")["emoji"] == "⚡")
    # Any other one is typed; the button that removes it comes after the grid.
    hands.click_title("Gamma")
    open_emoji(hands, panel)
    hands.key("Tab")
    hands.type("A")
    hands.key("Return")
    assert node(hands.save(), "Gamma")["emoji"] == "A"
    hands.click_title("Gamma")
    open_emoji(hands, panel)
    hands.key("Tab", "space")
    assert "emoji" not in node(hands.save(), "Gamma")
    hands.key("Escape", "ctrl+z")
    panel.changed(1, lambda document: node(document, "Gamma")["emoji"] == "A")
    hands.click_title("Gamma")
    panel.at(TOPIC, "Badge", "Down", "Down")
    panel.changed(2, lambda document: node(document, "Gamma")["badge"] == "p2")
    hands.click_title("Gamma")
    panel.at(TOPIC, "Samples", "Home", "Right", "Right", "Right", "space")
    panel.changed(1, lambda document: style(document, "Gamma")["fill"] == "#1E5631",
                  lambda document: style(document, "Gamma")["stroke"] == "#0D3320")
    for well, key in (("Fill", "fill"), ("Border", "stroke"), ("Text", "textColor")):
        hands.click_title("Gamma")
        panel.at(TOPIC, well)
        panel.choose_color("#ff0000")
        panel.changed(1, lambda document, key=key: style(document, "Gamma")[key] == "#FF0000")
    hands.click_title("Gamma")
    panel.at(TOPIC, "Delete Topic", "space")
    panel.changed(1, lambda document: node(document, "Gamma") is None)


def picture_of_a_topic(hands, panel):
    def choose(stops, button, color):
        picture = hands.session.home / f"{color[1:]}.png"
        subprocess.run(["convert", "-size", "60x40", f"xc:{color}", str(picture)], check=True)
        hands.click_title("Gamma")
        before = hands.editor.screenshot()
        panel.at(stops, button, "space")
        wait_until("the file dialog", lambda: hands.editor.screenshot() != before)
        hands.editor.settle()
        hands.key("ctrl+a")
        hands.type(str(picture))
        hands.key("Return")
        panel.come_back()
        return node(hands.save(), "Gamma").get("imageData")

    first = choose(TOPIC, "Add Image...", "#C03030")
    assert first, "the picture did not arrive"
    hands.session.keep_picture(hands.editor, "inspector-picture")
    second = choose(TOPIC_WITH_PICTURE, "Replace Image...", "#3030C0")
    assert second and second != first, "the picture is not another one"
    hands.click_title("Gamma")
    panel.at(TOPIC_WITH_PICTURE, "Remove", "space")
    hands.unchanged()
    for wanted in (second, first):
        hands.key("Escape", "ctrl+z")
        assert node(hands.save(), "Gamma").get("imageData") == wanted
    panel.changed(1)


def one_connector(hands, panel):
    def edge(document):
        return next(found for found in document["edges"] if found["id"] == identifier(10))

    def on(name, *keys):
        hands.click(middle("Alpha", "Beta"))
        panel.at(EDGE, name, *keys)

    on("Color")
    panel.choose_color("#00ff00")
    panel.changed(1, lambda document: edge(document)["style"]["color"] == "#00FF00")
    on("Dashed", "space")
    panel.changed(1, lambda document: edge(document)["style"]["dashed"])
    on("Arrow Head", "Up")
    panel.changed(1, lambda document: edge(document)["style"]["arrowHead"] == "triangle")
    on("Start Width", "Right", "Right", "Right")
    hands.session.keep_picture(hands.editor, "inspector-connector")
    panel.changed(3, lambda document: edge(document)["style"]["taper"]["startWidth"] == 9.5)
    on("End Width", "Left", "Left")
    panel.changed(2, lambda document: edge(document)["style"]["taper"]["endWidth"] == 7)
    on("Easing", "Down")
    panel.changed(1, lambda document: edge(document)["style"]["taper"]["easing"] == "quadraticIn")
    on("Delete Branch", "space")
    panel.changed(1, lambda document: len(document["edges"]) == 1)


def several_connectors(hands, panel):
    def on(name, *keys):
        hands.click(middle("Alpha", "Beta"))
        hands.click(middle("Alpha", "Gamma"), hold="shift")
        panel.at(EDGES, name, *keys)

    on("Color")
    panel.choose_color("#00ff00")
    hands.key("Tab", "space")
    panel.changed(1, lambda document: [edge["style"]["color"] for edge in document["edges"]] == ["#00FF00"] * 2)
    on("Start Width", "Right", "Tab", "Right", "Right", "Tab", "space")
    hands.session.keep_picture(hands.editor, "inspector-connectors")
    panel.changed(1, lambda document: all(edge["style"]["taper"] == {"easing": "linear", "startWidth": 8.5, "endWidth": 9}
                                          for edge in document["edges"]))
    on("Delete All Selected", "space")
    panel.changed(1, lambda document: document["edges"] == [])


def several_topics(hands, panel):
    def on(name, *keys):
        hands.click_title("Alpha")
        hands.click_title("Gamma", hold="shift")
        hands.click_title("Delta", hold="shift")
        panel.at(TOPICS, name, *keys)

    def places(document):
        return [node(document, title)["position"] for title in ("Alpha", "Gamma", "Delta")]

    for well, key, stops_to_apply in (("Fill", "fill", 3), ("Border", "stroke", 2), ("Text", "textColor", 1)):
        on(well)
        before = style(hands.base, "Beta")[key]
        panel.choose_color("#0000ff")
        hands.key(*["Tab"] * stops_to_apply, "space")
        panel.changed(1, lambda document: {style(document, title)[key] for title in ("Alpha", "Gamma", "Delta")} == {"#0000FF"},
                      lambda document: style(document, "Beta")[key] == before)
    on("Samples", "End", "space")
    panel.changed(1, lambda document: style(document, "Delta")["fill"] == "#00796B")
    moves = [([], [[0, 0], [0, 120], [0, 320]]), (["Right"], [[150, 0], [150, 120], [150, 320]]),
             (["Right", "Right"], [[300, 0], [300, 120], [300, 320]]), (["Down"], [[0, 0], [300, 0], [0, 0]]),
             (["Down", "Right"], [[0, 160], [300, 160], [0, 160]]), (["End"], [[0, 320], [300, 320], [0, 320]])]
    for keys, wanted in moves:
        on("Align", "Home", *keys, "space")
        panel.changed(1, lambda document, wanted=wanted: places(document) == wanted)
    on("Distribute", "Home", "space")
    panel.changed(1, lambda document: places(document) == [[0, 0], [300, 120], [150, 320]])
    on("Distribute", "End", "space")
    hands.session.keep_picture(hands.editor, "inspector-topics")
    panel.changed(1, lambda document: places(document) == [[0, 0], [300, 160], [0, 320]])
    on("Delete All Selected", "space")
    panel.changed(1, lambda document: len(document["nodes"]) == 2)


def canvas(hands, panel):
    def on(name, *keys):
        hands.click(FREE)
        panel.at(CANVAS, name, *keys)

    def sizing(key, value):
        return lambda document: document["hierarchical"][key] == value

    hands.click(FREE)
    hands.session.keep_picture(hands.editor, "inspector-canvas")
    on("Background")
    panel.choose_color("#ffff00")
    panel.changed(1, lambda document: document["canvas"]["background"] == "#FFFF00")
    on("Classic", "Home", "Right", "space")
    panel.changed(1, lambda document: document["canvas"]["themeId"] == "forest")
    on("Vibrant", "End", "space")
    panel.changed(1, lambda document: document["canvas"]["themeId"] == "candy")
    on("Custom", "space")
    panel.changed(1, lambda document: document["canvas"]["themeId"] == "custom_" + OWN_THEME["id"],
                  lambda document: document["canvas"]["background"] == "#F0F0E0",
                  lambda document: style(document, "Beta")["fill"] == "#335533")
    for keys, layout in ([], "tree"), (["Right"], "verticalTree"), (["Right", "Right"], "radial"), (["Down"], "leftRightTree"), \
            (["End"], "orgChart"):
        on("Layout", "Home", *keys, "space")
        panel.changed(1, lambda document, layout=layout: document["layout"] == layout)
        hands.fit()
    on("Edge Sizing", "space")
    panel.changed(1, sizing("edgeSizing", True))
    on("Root Width", "Left", "Left", "Left")
    panel.changed(1, sizing("rootEdgeWidth", 13.5))
    # A drag applies while the thumb is held.
    x, y = panel.thumb(lambda: on("Root Width"), "Left")
    hands.editor.xdo("mousemove", str(x), str(y), "mousedown", "1", "mousemove", str(x + 12), str(y), "mousemove", str(x + 30), str(y))
    held = hands.save()["hierarchical"]["rootEdgeWidth"]
    hands.editor.xdo("mouseup", "1")
    assert 15 < held < 20 and hands.save()["hierarchical"]["rootEdgeWidth"] == held, held
    hands.key("Escape")
    hands.undo()
    time.sleep(THROTTLE_SECONDS)
    on("Leaf Width", "Home")
    panel.changed(1, sizing("leafEdgeWidth", 0.5))
    on("Node Sizing", "space")
    panel.changed(1, sizing("nodeSizing", True))
    on("Root Font", "End")
    panel.changed(1, sizing("rootFontSize", 28))
    on("Leaf Font", "Left")
    panel.changed(1, sizing("leafFontSize", 11))
    hands.editor.settle()
    before = hands.editor.screenshot()
    on("Lens", "Down")
    wait_until("dimmed topics", lambda: hands.editor.screenshot() != before)
    hands.unchanged()
    hands.key("Up")
    hands.key("Escape")


STEPS = [fields_of_a_topic, choices_of_a_topic, picture_of_a_topic, one_connector, several_connectors, several_topics, canvas]


def main():
    programs = sys.argv[1]
    session = Session(programs, None, sys.argv[2] if len(sys.argv) > 2 else None, settings=SETTINGS)
    session.file.write_text(json.dumps(small_map()))
    editor = None
    try:
        pretend_browser(session)
        editor = Editor(session, [str(session.file)])
        hands = Hands(session, editor)
        panel = Panel(hands)
        for step in STEPS:
            start = time.monotonic()
            step(hands, panel)
            print(f"{step.__name__}: {time.monotonic() - start:.1f} s", flush=True)
        hands.key("ctrl+q")
        editor.wait_for_end()
    except AssertionError:
        if session.pictures and editor:
            session.keep_picture(editor, "inspector-failed")
        raise
    finally:
        session.close()
    print("every control went through")


if __name__ == "__main__":
    main()
