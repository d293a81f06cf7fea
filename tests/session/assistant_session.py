#!/usr/bin/env python3
"""Uses the assistant of the real program, with real key events.

Usage: assistant_session.py PROGRAM_FOLDER SUPPORT_PROGRAM_FOLDER [PICTURE_FOLDER]

Generates a map, expands a topic, summarises it, chats, applies the reply to the map, and undoes each step. First with
the offline generator, then with a vendor on this machine, over TLS with a certificate made here and a key from a
gnome-keyring on a session bus of its own. With PICTURE_FOLDER, screenshots of the steps are kept there.
"""

import http.server
import json
import os
import ssl
import subprocess
import sys
import threading

sys.dont_write_bytecode = True
from editor_session import Editor, Session, differences, wait_until
from keyring import Keyring

KEY = "sk-session-0123456789"
SETTINGS = {"showSidebar": False, "showInspector": False, "onboardingShown": True, "appearance": "light"}
ROOT = "00000000-0000-4000-8000-000000000001"
SHEET = "#FFFFFF"


def first_map():
    return {
        "canvas": {"background": "#F4F6F8", "grid": False, "snap": False},
        "createdAt": "2026-01-01T00:00:00Z", "updatedAt": "2026-01-01T00:00:00Z", "title": "Drinks", "version": 1,
        "layout": "manual",
        "hierarchical": {"decayFunction": "linear", "edgeSizing": False, "leafEdgeWidth": 5, "leafFontSize": 12,
                         "leafPadding": 8, "nodeSizing": False, "rootEdgeWidth": 15, "rootFontSize": 17,
                         "rootPadding": 14},
        "nodes": [{"id": ROOT, "title": "Coffee", "notes": "", "position": [0, 0],
                   "style": {"bold": False, "fill": "#FFFFFF", "iconSize": 16, "italic": False, "shape": "rounded-rect",
                             "stroke": "#888888", "textColor": "#000000"}}],
        "edges": [], "relationships": [], "regions": [],
    }


# --- The vendor on this machine ---

def tree(title, *children):
    return json.dumps({"title": title, "children": [{"title": child} for child in children]})


def reply_to(request):
    """The model's reply, depending on the request."""
    system = request["system"]
    if system.startswith("You are expanding"):
        return tree("Coffee", "Moka", "Filter")
    if system.startswith("You summarize"):
        return json.dumps({"title": "Summary", "notes": "All about coffee."})
    if system.startswith("You are a helpful assistant"):
        return "Here it is:\n" + tree("Juice", "Apple", "Orange")
    return tree("Cocoa", "Hot", "Cold", "Dark")


class Vendor(http.server.BaseHTTPRequestHandler):
    requests = []

    def do_POST(self):
        request = json.loads(self.rfile.read(int(self.headers["content-length"])))
        Vendor.requests.append((self.path, self.headers["x-api-key"], request))
        status = 200 if self.headers["x-api-key"] == KEY else 401
        body = json.dumps({"content": [{"type": "text", "text": reply_to(request)}]}).encode()
        self.send_response(status)
        self.send_header("content-type", "application/json")
        self.send_header("content-length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def log_message(self, *_):
        pass


def start_vendor(folder):
    certificate, private_key = folder / "vendor.pem", folder / "vendor.key"
    subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", "/CN=127.0.0.1",
                    "-addext", "subjectAltName=IP:127.0.0.1", "-keyout", str(private_key), "-out", str(certificate)],
                   check=True, capture_output=True)
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Vendor)
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(certificate, private_key)
    server.socket = context.wrap_socket(server.socket, server_side=True)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    return server, certificate


# --- The user ---

class Hands:
    def __init__(self, session, editor):
        self.session = session
        self.editor = editor

    def saved_until(self, what, condition):
        """Saves until the document is as expected."""
        return wait_until(what, lambda: (lambda document: condition(document) and document)(self.editor.save()), 40)

    def type(self, text):
        self.editor.xdo("type", "--delay", "15", text)

    def undo_to(self, before, what):
        self.editor.key("ctrl+z")
        self.saved_until(f"{what} is taken back", lambda document: not differences(before, document))

    def choose_for_topic(self, row):
        """Chooses a row in the menu of the only topic, which it selects first."""
        self.editor.key("ctrl+a")
        self.editor.settle()
        self.editor.key("Menu")
        self.editor.settle()
        self.editor.key(*["Down"] * row, "Return")

    def generate(self, prompt):
        self.editor.key("ctrl+shift+g")
        self.editor.settle()
        self.type(prompt)
        self.session.keep_picture(self.editor, "sheet")
        self.editor.key("Return")
        # The sheet closes by itself, and Ctrl+S then reaches the window again.
        wait_until("the sheet goes", self.canvas_is_free)

    def canvas_is_free(self):
        before = self.session.file.stat().st_mtime_ns
        self.editor.key("ctrl+s")
        try:
            return wait_until("the save", lambda: self.session.file.stat().st_mtime_ns != before, 1)
        except AssertionError:
            return False


def titles(document):
    return [node["title"] for node in document["nodes"]]


def play(session, expected):
    editor = Editor(session, [str(session.file)])
    hands = Hands(session, editor)
    before = editor.save()

    hands.generate(expected["prompt"])
    generated = hands.saved_until("the new map", lambda document: document["title"] == expected["title"])
    assert set(expected["branches"]) <= set(titles(generated)), titles(generated)
    assert all(node["aiGenerated"] for node in generated["nodes"])
    assert generated["nodes"][0]["position"] != generated["nodes"][1]["position"]
    session.keep_picture(editor, "generated")
    hands.undo_to(before, "the new map")

    hands.choose_for_topic(4)
    expanded = hands.saved_until("the sub-topics", lambda document: len(document["nodes"]) > 1)
    assert titles(expanded)[0] == "Coffee" and set(expected["expanded"]) <= set(titles(expanded)), titles(expanded)
    assert {edge["from"] for edge in expanded["edges"]} == {ROOT}
    session.keep_picture(editor, "expanded")
    hands.undo_to(before, "the sub-topics")

    hands.choose_for_topic(5)
    hands.saved_until("the summary", lambda document: document["nodes"][0]["notes"] == expected["summary"])
    hands.undo_to(before, "the summary")

    editor.key("ctrl+shift+l")
    editor.settle()
    hands.type(expected["chat"])
    editor.key("Return")
    session.keep_picture(editor, "chat-asked")
    # Shift+Tab from the field leads to "Apply to Map" once the reply is there; before that, to nothing that Space
    # would press.
    editor.settle()
    editor.key("shift+Tab", "space")
    applied = hands.saved_until("the applied reply", lambda document: document["title"] == expected["applied"])
    assert len(applied["nodes"]) > 2
    session.keep_picture(editor, "chat-applied")
    editor.key("Escape")
    hands.undo_to(before, "the applied reply")

    editor.key("ctrl+q")
    editor.wait_for_end()
    assert KEY not in editor.log()


def new_session(programs, pictures, provider):
    session = Session(programs, None, pictures and os.path.join(pictures, provider), SETTINGS | {"ai_provider": provider})
    session.file.write_text(json.dumps(first_map()))
    return session


def run_offline(programs, pictures):
    session = new_session(programs, pictures, "demo")
    try:
        play(session, {"prompt": "Create a map about tea gardens", "title": "Tea Gardens", "branches": [],
                       "expanded": ["Espresso", "Roasting", "Latte Art"], "summary": "This branch covers: Coffee.",
                       "chat": "Create a map about space", "applied": "Space"})
    finally:
        session.close()


def run_vendor(programs, support_programs, pictures):
    session = new_session(programs, pictures, "claude")
    session.editor = support_programs / "support_vendor_editor"
    server, certificate = start_vendor(session.home)
    keyring = Keyring(session, support_programs)
    try:
        keyring.ask("save", "ai_claude_key", KEY)
        session.environment |= {"LOOPBACK_VENDOR": f"127.0.0.1:{server.server_port}",
                                "LOOPBACK_CERTIFICATE": str(certificate)}
        play(session, {"prompt": "something warm", "title": "Cocoa", "branches": ["Hot", "Cold", "Dark"],
                       "expanded": ["Moka", "Filter"], "summary": "All about coffee.",
                       "chat": "and something cold", "applied": "Juice"})
        assert [path for path, _, _ in Vendor.requests] == ["/v1/messages"] * 4, Vendor.requests
        assert {key for _, key, _ in Vendor.requests} == {KEY}
        asked = [request["messages"][-1]["content"] for _, _, request in Vendor.requests]
        assert asked[0] == "Create a detailed topic map about: something warm", asked
        assert asked[3] == "and something cold", asked
        settings = (session.home / ".config/Quilmora/Quilmora.json").read_text()
        assert KEY not in settings and KEY not in session.file.read_text()
    finally:
        keyring.close()
        server.shutdown()
        session.close()


def main():
    import pathlib
    programs, support_programs = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    pictures = sys.argv[3] if len(sys.argv) > 3 else None
    run_offline(programs, pictures)
    run_vendor(programs, support_programs, pictures)
    print("the assistant's session ended well")


if __name__ == "__main__":
    main()
