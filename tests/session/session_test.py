#!/usr/bin/env python3
"""Plays a user's session with the real program in a virtual display, with real key and mouse events.

Usage: session_test.py PROGRAM_FOLDER SAMPLE [PICTURE_FOLDER]

Opens a copy of the sample, adds three children, retitles one, drags one, undoes, redoes, saves, quits, starts again
and finds the same map; then edits once more and ends the process with SIGTERM, which must save too. Everything that
the program writes goes into a temporary home. With PICTURE_FOLDER, screenshots of the steps are kept there.
"""

import signal
import sys

sys.dont_write_bytecode = True
from editor_session import Editor, Session, differences


def run(session):
    original = session.document()
    editor = Editor(session, [str(session.file)])
    view = editor.fit()
    session.keep_picture(editor, "1-opened")

    root = root_of(original)
    for _ in range(3):
        editor.click(view, root["position"])
        editor.key("Tab")
        editor.settle()
    grown = editor.save()
    children = grown["nodes"][len(original["nodes"]):]
    assert len(children) == 3, f"{len(children)} new topics instead of 3"
    new_edges = grown["edges"][len(original["edges"]):]
    assert [edge["from"] for edge in new_edges] == [root["id"]] * 3
    assert [edge["to"] for edge in new_edges] == [child["id"] for child in children]
    session.keep_picture(editor, "2-three-children")

    editor.click(view, children[1]["position"], count=2)
    editor.xdo("type", "--delay", "40", "Snacks for the road")
    session.keep_picture(editor, "3-editing")
    editor.key("Return")
    titled = editor.save()
    assert titled["nodes"][-2]["title"] == "Snacks for the road", titled["nodes"][-2]["title"]

    editor.drag(view, children[2]["position"], [(20, 10), (20, 10), (20, 10), (20, 10)])
    dragged = editor.save()
    zoom = view[0]
    moved = [dragged["nodes"][-1]["position"][axis] - children[2]["position"][axis] for axis in (0, 1)]
    assert abs(moved[0] - 80 / zoom) < 0.01 and abs(moved[1] - 40 / zoom) < 0.01, f"moved by {moved}"
    session.keep_picture(editor, "4-dragged")

    editor.key("ctrl+z")
    undone = editor.save()
    assert not differences(undone, titled), differences(undone, titled)
    editor.key("ctrl+shift+z")
    redone = editor.save()
    assert not differences(redone, dragged), differences(redone, dragged)

    editor.key("ctrl+q")
    editor.wait_for_end()
    assert not differences(session.document(), dragged)

    editor = Editor(session, [])
    assert f"Quilmora: loaded {len(dragged['nodes'])} nodes from trip.mindmap" in editor.log(), editor.log()
    view = editor.fit()
    session.keep_picture(editor, "5-reopened")
    assert not differences(editor.save(), dragged)

    editor.click(view, root["position"])
    editor.key("Tab")
    editor.process.send_signal(signal.SIGTERM)
    editor.wait_for_end()
    assert len(session.document()["nodes"]) == len(dragged["nodes"]) + 1, "SIGTERM lost the last edit"


def root_of(document):
    targets = {edge["to"] for edge in document["edges"]}
    return next(node for node in document["nodes"] if node["id"] not in targets)


def main():
    programs, sample = sys.argv[1:3]
    session = Session(programs, sample, sys.argv[3] if len(sys.argv) > 3 else None)
    try:
        run(session)
    finally:
        session.close()
    print("the session went through")


if __name__ == "__main__":
    main()
