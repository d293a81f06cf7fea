#!/usr/bin/env python3
"""Performs each gesture and key of the canvas once on the real program, with real key and mouse events.

Usage: gestures_test.py PROGRAM_FOLDER [PICTURE_FOLDER]

After each it saves and checks the document, then undoes and expects the document to be as before. With
PICTURE_FOLDER, screenshots of the steps are kept there.
"""

import json
import math
import subprocess
import sys
import time

sys.dont_write_bytecode = True
from editor_session import Editor, Session, differences, wait_until

DOUBLE_CLICK_SECONDS = 0.45
ACCENT = "#0A6CFF"
SETTINGS = {"showSidebar": False, "showInspector": False, "onboardingShown": True, "appearance": "light"}

POSITIONS = {"Alpha": (0, 0), "Beta": (300, -120), "Gamma": (300, 120), "Delta": (0, 320), "Echo": (300, 320)}
REGION = [[-420, 180], [240, 160]]
FREE = (-300, -120)  # a point with nothing on it


def identifier(number):
    return f"00000000-0000-4000-8000-{number:012d}"


IDS = {title: identifier(number) for number, title in enumerate(POSITIONS, 1)}


def small_map():
    style = {"bold": False, "fill": "#FFFFFF", "iconSize": 16, "italic": False, "shape": "rounded-rect",
             "stroke": "#888888", "textColor": "#000000"}
    edge_style = {"arrowHead": "none", "color": "#444444", "dashed": False,
                  "taper": {"easing": "linear", "startWidth": 8, "endWidth": 8}}
    return {
        "canvas": {"background": "#F4F6F8", "grid": False, "snap": False},
        "createdAt": "2026-01-01T00:00:00Z", "updatedAt": "2026-01-01T00:00:00Z", "title": "Gestures", "version": 1,
        "layout": "manual",
        "hierarchical": {"decayFunction": "linear", "edgeSizing": False, "leafEdgeWidth": 5, "leafFontSize": 12,
                         "leafPadding": 8, "nodeSizing": False, "rootEdgeWidth": 15, "rootFontSize": 17,
                         "rootPadding": 14},
        "nodes": [{"id": IDS[title], "title": title, "notes": "", "position": list(position), "style": style}
                  for title, position in POSITIONS.items()],
        "edges": [{"id": identifier(10 + number), "from": IDS["Alpha"], "to": IDS[title], "label": "",
                   "style": edge_style} for number, title in enumerate(("Beta", "Gamma"))],
        "relationships": [],
        "regions": [{"id": identifier(20), "label": "Zone", "color": "#7C4DFF", "rect": REGION}],
    }


def middle(first, second):
    (ax, ay), (bx, by) = POSITIONS[first], POSITIONS[second]
    return ((ax + bx) / 2, (ay + by) / 2)


def node(document, title):
    return next((found for found in document["nodes"] if found["id"] == IDS[title]), None)


def ends(document):
    titles = {value: key for key, value in IDS.items()}
    return {(titles.get(edge["from"], "new"), titles.get(edge["to"], "new")) for edge in document["edges"]}


def is_near(point, wanted):
    return math.dist(point, wanted) < 0.02


class Hands:
    """What a user does on the canvas. Points are canvas units, distances of drags screen pixels."""

    def __init__(self, session, editor):
        self.session = session
        self.editor = editor
        self.last_click = 0.0
        self.fit()
        self.base = editor.save()

    def fit(self):
        self.zoom, self.offset = self.editor.fit()

    def on_screen(self, point):
        left, top = self.editor.canvas[:2]
        return (round(left + point[0] * self.zoom + self.offset[0]), round(top + point[1] * self.zoom + self.offset[1]))

    def do(self, *commands, hold=None):
        words = [str(word) for command in commands for word in command]
        if hold:
            words = ["keydown", hold, *words, "keyup", hold]
        self.editor.xdo(*words)

    def click(self, point, hold=None, button=1, count=1):
        # Two clicks on one topic would be a double-click, wherever it is by now.
        time.sleep(max(0.0, self.last_click + DOUBLE_CLICK_SECONDS - time.monotonic()))
        self.do(("mousemove", *self.on_screen(point)), ("click", "--repeat", count, "--delay", 60, button), hold=hold)
        self.last_click = time.monotonic()

    def click_title(self, title, **arguments):
        self.click(POSITIONS[title], **arguments)

    def drag(self, start, by, hold=None, button=1, last=None):
        x, y = self.on_screen(start)
        steps = [("mousemove", round(x + by[0] * part), round(y + by[1] * part)) for part in (0.2, 0.6, 1.0, 1.0)]
        pauses = [word for step in steps for word in (step, ("sleep", 0.02))]
        self.do(("mousemove", x, y), ("sleep", 0.02), ("mousedown", button), *pauses, *(last or []),
                ("mouseup", button), hold=hold)

    def drag_to(self, start, end, **arguments):
        (x, y), (to_x, to_y) = self.on_screen(start), self.on_screen(end)
        self.drag(start, (to_x - x, to_y - y), **arguments)

    def key(self, *keys):
        for key in keys:
            self.do(("key", key))

    def type(self, text):
        self.do(("type", "--delay", 15, text))

    def menu(self, point, *keys):
        """Opens the menu of what is there and walks through it with keys."""
        before = self.editor.screenshot()
        self.click(point, button=3)
        wait_until("the menu", lambda: self.editor.screenshot() != before)
        self.key(*keys)

    def save(self):
        return self.editor.save()

    def undo(self, most=4, fits=True):
        """Undoes everything. New topics may have moved the view, so it is fitted again."""
        for _ in range(most):
            self.key("ctrl+z")
            if not (left := differences(self.base, self.save())):
                return self.fit() if fits else None
        raise AssertionError(f"still different after {most} steps back: {left}")

    def unchanged(self):
        assert not differences(self.base, document := self.save()), differences(self.base, document)

    def probe(self, title):
        """Checks that the topic is where the view should show it, by deleting it for a moment."""
        self.click_title(title)
        self.key("Delete")
        assert node(self.save(), title) is None, f"{title} is not where it was looked for"
        self.undo(fits=False)

    def connection_handle(self, title):
        """Its centre in canvas units: the disc is the farthest thing in the accent colour beside the topic."""
        self.click_title(title)
        self.editor.settle()
        path = self.session.home / "handle.png"
        self.editor.picture(path)
        x, y = self.on_screen(POSITIONS[title])
        found = subprocess.run(["convert", str(path), "-crop", f"250x30+{x}+{y - 15}", "+repage", "-alpha", "off", "-fill",
                                "black", "+opaque", ACCENT, "-fill", "white", "-opaque", ACCENT, "-trim", "-format",
                                "%X %w", "info:"], capture_output=True, text=True, check=True).stdout
        left, width = (int(part) for part in found.replace("+", " ").split())
        return (POSITIONS[title][0] + (left + width) / self.zoom - 11, POSITIONS[title][1])


# --- Each of these leaves the document as it was ---


def taps_and_titles(hands):
    hands.click_title("Echo", count=2)
    hands.type("Foxtrot")
    hands.key("Return")
    assert node(hands.save(), "Echo")["title"] == "Foxtrot"
    hands.undo()
    # The keyboard is back on the canvas, and Escape in the field leaves the title alone.
    hands.click_title("Echo")
    hands.key("F2")
    hands.type("Never")
    hands.key("Escape", "Tab")
    document = hands.save()
    assert node(document, "Echo")["title"] == "Echo" and ("Echo", "new") in ends(document)
    hands.undo()
    # Delete belongs to the text while there is one.
    hands.click_title("Echo", count=2)
    hands.key("Delete", "E", "Return")
    document = hands.save()
    assert node(document, "Echo")["title"] == "E" and len(document["nodes"]) == 5
    hands.undo()
    hands.click_title("Delta")
    hands.click_title("Echo", hold="shift")
    hands.key("Delete")
    assert len(hands.save()["nodes"]) == 3
    hands.undo()
    hands.click_title("Delta")
    hands.click(FREE)
    hands.key("Delete")
    hands.unchanged()


def typing(hands):
    # On a selected topic, and at once on a new one.
    hands.click_title("Echo")
    hands.type("Golf")
    hands.key("Return")
    assert node(hands.save(), "Echo")["title"] == "Golf"
    hands.undo()
    hands.click_title("Echo")
    hands.type("Never")
    hands.key("Escape")
    hands.unchanged()
    hands.click_title("Gamma")
    hands.do(("key", "ctrl+n"), ("type", "--delay", 15, "Hotel"))
    hands.key("Return")
    document = hands.save()
    assert document["nodes"][-1]["title"] == "Hotel" and ("Alpha", "new") in ends(document), document["nodes"][-1]
    hands.undo()
    hands.click(FREE)


def group_drags(hands):
    """A parent with its child, then everything: connectors are selected too, and topics still take the press."""
    def moved(document, title, by):
        wanted = [POSITIONS[title][0] + by[0] / hands.zoom, POSITIONS[title][1] + by[1] / hands.zoom]
        assert is_near(node(document, title)["position"], wanted), (title, node(document, title)["position"])

    hands.drag_to((-130, -170), (430, 40))
    hands.drag(POSITIONS["Beta"], (-21, 42))
    document = hands.save()
    for title in ("Alpha", "Beta"):
        moved(document, title, (-21, 42))
    assert ends(document) == {("Alpha", "Beta"), ("Alpha", "Gamma")}
    hands.undo()
    hands.click(FREE)
    hands.key("ctrl+a")
    hands.drag(POSITIONS["Alpha"], (30, 21))
    document = hands.save()
    for title in POSITIONS:
        moved(document, title, (30, 21))
    hands.undo(most=6)
    hands.click(FREE)


def box_and_topic_drags(hands):
    hands.drag_to((-120, 270), (420, 400))
    hands.drag(POSITIONS["Delta"], (42, -21))
    document = hands.save()
    for title in ("Delta", "Echo"):
        wanted = [POSITIONS[title][0] + 42 / hands.zoom, POSITIONS[title][1] - 21 / hands.zoom]
        assert is_near(node(document, title)["position"], wanted), node(document, title)["position"]
    assert node(document, "Gamma")["position"] == list(POSITIONS["Gamma"])
    hands.undo()
    hands.click(FREE)
    hands.drag(POSITIONS["Gamma"], (30, 30))
    assert is_near(node(hands.save(), "Gamma")["position"], [300 + 30 / hands.zoom, 120 + 30 / hands.zoom])
    hands.undo()
    hands.click_title("Delta")
    hands.drag(POSITIONS["Gamma"], (0, 30), hold="shift")
    document = hands.save()
    assert is_near(node(document, "Delta")["position"], [0, 320 + 30 / hands.zoom])
    hands.undo()
    hands.drag(POSITIONS["Gamma"], (40, 40), last=[("key", "Escape")])
    hands.unchanged()
    hands.click(FREE)
    hands.drag_to(POSITIONS["Echo"], (20, 330), hold="ctrl")
    document = hands.save()
    assert ("Delta", "Echo") in ends(document) and node(document, "Echo")["position"] == list(POSITIONS["Echo"])
    hands.undo()


def connections(hands):
    handle = hands.connection_handle("Delta")
    hands.click(handle)
    assert ("Delta", "new") in ends(hands.save())
    hands.undo()
    # Grabbed near its edge: the connection follows the pointer.
    rim = (handle[0] + 6, handle[1] - 6)
    hands.click_title("Delta")
    hands.drag_to(rim, POSITIONS["Echo"])
    assert ("Delta", "Echo") in ends(hands.save())
    hands.undo()
    hands.click_title("Delta")
    hands.drag(rim, (105, 42))
    document = hands.save()
    assert ("Delta", "new") in ends(document), ends(document)
    place = document["nodes"][-1]["position"]
    x, y = hands.on_screen(rim)
    assert math.dist(hands.on_screen(place), (x + 105, y + 42)) <= 1, place
    hands.undo()


def relationships(hands):
    handle = hands.connection_handle("Delta")
    hands.drag_to(handle, POSITIONS["Echo"], hold="shift")
    document = hands.save()
    assert [(link["from"], link["to"]) for link in document["relationships"]] == [(IDS["Delta"], IDS["Echo"])]
    # The curve bends by a fifth of its length, so its middle is a tenth of the length below the straight line.
    curve_middle = (150, 350)
    hands.click(curve_middle)
    hands.editor.settle()
    hands.drag(curve_middle, (0, 42))
    bend = hands.save()["relationships"][0]["controlPointOffset"]
    assert is_near(bend, [0, 42 / hands.zoom]), bend
    hands.session.keep_picture(hands.editor, "gestures-relationship")
    hands.click((150, 350 + bend[1] / 2 - 15))
    assert hands.save()["relationships"] == []
    hands.undo()


def edges(hands):
    hands.click(middle("Alpha", "Beta"))
    hands.drag_to(POSITIONS["Beta"], POSITIONS["Delta"])
    assert ends(hands.save()) == {("Alpha", "Delta"), ("Alpha", "Gamma")}
    hands.undo()
    hands.click(middle("Alpha", "Gamma"))
    hands.drag_to(POSITIONS["Alpha"], POSITIONS["Delta"])
    assert ends(hands.save()) == {("Alpha", "Beta"), ("Delta", "Gamma")}
    hands.undo()
    hands.click(middle("Alpha", "Beta"))
    hands.editor.settle()
    hands.drag(middle("Alpha", "Beta"), (21, 42))
    bend = hands.save()["edges"][0]["controlPointOffset"]
    assert is_near(bend, [21 / hands.zoom, 42 / hands.zoom]), bend
    hands.session.keep_picture(hands.editor, "gestures-edge")
    hands.undo()


def branch_mode(hands):
    hands.click_title("Alpha")
    hands.key("ctrl+e")
    hands.session.keep_picture(hands.editor, "gestures-branch-mode")
    hands.click_title("Delta")
    hands.click_title("Echo")  # the mode has ended
    assert (made := ends(hands.save())) == {("Alpha", "Beta"), ("Alpha", "Gamma"), ("Alpha", "Delta")}, made
    hands.undo()
    hands.click_title("Alpha")
    hands.key("ctrl+f", "ctrl+e")
    hands.click_title("Echo")
    assert ("Alpha", "Echo") in ends(hands.save())
    hands.key("Escape")
    hands.undo()
    hands.click_title("Alpha")
    hands.key("ctrl+e", "Escape")
    hands.click_title("Delta")
    hands.unchanged()


def menus_of_topics(hands):
    hands.menu(POSITIONS["Gamma"], "Down", "Return")
    assert ("Gamma", "new") in ends(hands.save())
    hands.undo()
    hands.menu(POSITIONS["Alpha"], "Down", "Down", "Down", "Down", "Return")
    hands.click_title("Gamma")  # hidden in the branch: free canvas
    hands.key("Delete")
    hands.unchanged()
    hands.menu(POSITIONS["Alpha"], "Up", "Up", "Up", "Up", "Return")  # above the assistant's entries
    # After a menu is closed, the next key goes to the canvas.
    hands.click_title("Gamma")
    hands.menu(POSITIONS["Gamma"], "Escape", "Delete")
    assert node(hands.save(), "Gamma") is None
    hands.undo()
    hands.menu(POSITIONS["Gamma"], "Up", "Return")
    assert node(hands.save(), "Gamma") is None
    hands.undo()


def regions(hands):
    (x, y), (width, height) = REGION
    center = (x + width / 2, y + height / 2)
    hands.drag(center, (42, 21))
    moved = hands.save()["regions"][0]["rect"]
    assert is_near(moved[0], [x + 42 / hands.zoom, y + 21 / hands.zoom]) and moved[1] == [width, height], moved
    hands.undo()
    hands.click(center)
    hands.drag((x + width, y + height), (21, 42))
    sized = hands.save()["regions"][0]["rect"]
    assert sized[0] == [x, y] and is_near(sized[1], [width + 21 / hands.zoom, height + 42 / hands.zoom]), sized
    hands.undo()
    hands.click(center)
    hands.drag((x + width, y + height), (-230, -230))
    assert hands.save()["regions"][0]["rect"] == [[x, y], [80, 60]]
    hands.undo()
    hands.menu(center, "Down", "Return")
    hands.type("Work")
    hands.key("Return")
    assert hands.save()["regions"][0]["label"] == "Work"
    hands.undo()
    hands.menu(center, "Down", "Down", "Right", "Down", "Return")
    assert hands.save()["regions"][0]["color"] == "#FF7043"
    hands.undo()
    hands.menu(center, "Up", "Return")
    assert hands.save()["regions"] == []
    hands.undo()


def drag_in(hands, path, to):
    """Another program drags a file to this place of the screen."""
    session = hands.session
    x, y = 1310, 100  # beside the editor's window
    program = session.programs.parent / "support_programs" / "support_drag_a_file"
    source = subprocess.Popen([str(program), str(path), str(x), str(y)], env=session.environment)
    try:
        wait_until("the window to drag from", lambda: hands.editor.xdo("search", "--onlyvisible", "--pid", str(source.pid),
                                                                       check=False))
        to_x, to_y = to
        hands.do(("mousemove", x + 30, y + 30), ("sleep", 0.1), ("mousedown", 1), ("sleep", 0.1), ("mousemove", x, y + 50),
                 ("sleep", 0.1), ("mousemove", to_x + 5, to_y), ("sleep", 0.1), ("mousemove", to_x, to_y), ("sleep", 0.1),
                 ("mouseup", 1), ("sleep", 0.3))
    finally:
        source.terminate()
        source.wait()


def image_drop(hands):
    """A picture dropped onto a topic, whose menu then removes it."""
    picture = hands.session.home / "picture.png"
    subprocess.run(["convert", "-size", "60x40", "xc:#C03030", str(picture)], check=True)
    drag_in(hands, picture, hands.on_screen(POSITIONS["Gamma"]))
    assert node(hands.save(), "Gamma").get("imageData"), "the picture did not arrive"
    hands.menu(POSITIONS["Gamma"], "Down", "Down", "Down", "Return")
    assert not node(hands.save(), "Gamma").get("imageData"), "the picture is still there"
    hands.undo()


def map_drop(hands):
    """An outline dropped onto a topic is imported, like one dropped anywhere else."""
    outline = hands.session.home / "dropped.opml"
    outline.write_text('<opml><outline text="Dropped"/></opml>')
    drag_in(hands, outline, hands.on_screen(POSITIONS["Gamma"]))
    titles = [topic["title"] for topic in hands.save()["nodes"]]
    assert titles == ["Dropped"], titles


def panning_and_zooming(hands):
    def pan(by):
        hands.offset = [hands.offset[0] + by[0], hands.offset[1] + by[1]]

    hands.drag(FREE, (90, 60), hold="alt")
    pan((90, 60))
    hands.probe("Echo")
    hands.drag(POSITIONS["Gamma"], (-70, -80), button=2)
    pan((-70, -80))
    hands.probe("Echo")
    hands.do(("mousemove", *hands.on_screen((150, 0))), ("click", 5), ("click", 5))
    pan((0, -60))
    hands.probe("Echo")
    hands.do(("mousemove", *hands.on_screen(POSITIONS["Alpha"])), ("click", 4), hold="ctrl")
    anchor = [POSITIONS["Alpha"][axis] * hands.zoom + hands.offset[axis] for axis in (0, 1)]
    hands.offset = [(1 - 1.15) * anchor[axis] + 1.15 * hands.offset[axis] for axis in (0, 1)]
    hands.zoom *= 1.15
    hands.probe("Echo")
    hands.probe("Beta")
    hands.fit()


def keys_and_cards(hands):
    hands.click_title("Alpha")
    hands.key("Right", "Tab")
    assert ("Beta", "new") in ends(hands.save())
    hands.undo()
    hands.key("ctrl+f")
    hands.type("echo")
    hands.session.keep_picture(hands.editor, "gestures-search")
    hands.key("Return", "Escape", "Tab")
    assert ("Echo", "new") in ends(hands.save())
    hands.undo()
    hands.fit()
    hands.click_title("Delta")
    hands.editor.settle()
    before = hands.editor.screenshot()
    hands.key("space")
    wait_until("the quick look", lambda: hands.editor.screenshot() != before)
    hands.editor.settle()
    hands.session.keep_picture(hands.editor, "gestures-quick-look")
    hands.key("Escape")
    wait_until("the picture as it was before the quick look", lambda: hands.editor.screenshot() == before)
    hands.key("Escape", "Delete")  # nothing is selected any more
    hands.unchanged()
    hands.key("ctrl+a", "Delete")
    assert hands.save()["nodes"] == []
    hands.undo()


def presentation(hands):
    hands.key("ctrl+shift+p", "Right", "Delete")
    hands.unchanged()
    hands.session.keep_picture(hands.editor, "gestures-presentation")
    hands.key("Escape", "Delete")
    document = hands.save()
    assert len(document["nodes"]) == 4 and node(document, "Beta") is None
    hands.undo()
    hands.fit()
    hands.probe("Echo")


STEPS = [taps_and_titles, typing, box_and_topic_drags, group_drags, connections, relationships, edges, branch_mode, menus_of_topics, regions,
         image_drop, panning_and_zooming, keys_and_cards, presentation, map_drop]


def main():
    programs = sys.argv[1]
    session = Session(programs, None, sys.argv[2] if len(sys.argv) > 2 else None, settings=SETTINGS)
    session.file.write_text(json.dumps(small_map()))
    try:
        hands = Hands(session, Editor(session, [str(session.file)]))
        for step in STEPS:
            start = time.monotonic()
            step(hands)
            print(f"{step.__name__}: {time.monotonic() - start:.1f} s", flush=True)
        hands.key("ctrl+q")
        hands.editor.wait_for_end()
    except AssertionError:
        if session.pictures:
            session.keep_picture(hands.editor, "gestures-failed")
        raise
    finally:
        session.close()
    print("every gesture went through")


if __name__ == "__main__":
    main()
