#!/usr/bin/env python3
"""Prints how long the editor takes from the start of its process until the map is on the screen.

Usage: start_time.py PROGRAM_FOLDER [RUNS [TOPICS...]]

Runs the real program in a virtual display with a home of its own: without a document, and with maps of 1,000, 10,000
and 100,000 topics, or of as many topics as given. The clock stops when the fill colour of the topics first appears on the screen. Polling the screen
adds up to about 15 ms. Also prints the memory in use at that moment.
"""

import json
import os
import pathlib
import random
import statistics
import struct
import subprocess
import sys
import tempfile
import time
import uuid

BLANK_MAP_FILL = "#4A148C"
FILL = "#00B84A"
BUDGETS = {0: 0.10, 10_000: 0.3, 100_000: 0.6, 1_000_000: 4.0}


def write_map(programs, topics, path):
    """A tree with two to six children per topic, laid out by the batch tool."""
    chance = random.Random(topics)
    ids = [str(uuid.UUID(int=chance.getrandbits(128), version=4)).upper() for _ in range(topics)]
    words = ["market", "budget", "design", "launch", "week", "review", "customer", "idea", "risk", "partner", "garden"]
    style = {"fill": FILL, "stroke": "#006B2B", "textColor": "#FFFFFF", "shape": "rounded-rect", "iconSize": 16}
    edge_style = {"color": "#7B5EA7", "dashed": False, "arrowHead": "triangle",
                  "taper": {"startWidth": 6, "endWidth": 2, "easing": "quadraticIn"}}
    document = {
        "version": 1, "title": f"{topics} topics", "createdAt": "2026-01-01T00:00:00Z", "updatedAt": "2026-01-01T00:00:00Z",
        "layout": "manual", "canvas": {"background": "#F8F0FF", "grid": True, "snap": True},
        "nodes": [{"id": id_, "title": " ".join(chance.choices(words, k=chance.randint(1, 4))), "position": [0, 0],
                   "style": style} for id_ in ids],
        "edges": [{"id": str(uuid.UUID(int=chance.getrandbits(128), version=4)).upper(), "label": "", "style": edge_style,
                   "from": ids[max(0, (n - 1) // chance.randint(2, 6))], "to": ids[n]} for n in range(1, topics)],
    }
    raw = path.with_suffix(".json")
    raw.write_text(json.dumps(document))
    subprocess.run([str(programs / "quilmora-cli"), "layout", "tree", str(raw), str(path)], check=True)


class Display:
    def __init__(self):
        read_end, write_end = os.pipe()
        self.server = subprocess.Popen(["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1920x1080x24", "-nolisten", "tcp"],
                                       pass_fds=[write_end], stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end) as pipe:
            self.name = ":" + pipe.readline().strip()

    def shows(self, color):
        picture = subprocess.run(["xwd", "-root", "-silent", "-display", self.name], capture_output=True).stdout
        header, colors = struct.unpack(">I", picture[:4])[0], struct.unpack(">I", picture[76:80])[0]
        wanted = bytes([int(color[5:7], 16), int(color[3:5], 16), int(color[1:3], 16)])
        return wanted in picture[header + 12 * colors:]


def resident_megabytes(process):
    for line in pathlib.Path(f"/proc/{process.pid}/status").read_text().splitlines():
        if line.startswith("VmRSS:"):
            return int(line.split()[1]) / 1024
    return 0.0


def measure(programs, display, home, document, color):
    environment = {key: value for key, value in os.environ.items() if not key.startswith(("XDG_", "QT_", "WAYLAND_"))}
    environment |= {"HOME": str(home), "XDG_RUNTIME_DIR": str(home), "DISPLAY": display.name, "QT_QPA_PLATFORM": "xcb"}
    start = time.monotonic()
    process = subprocess.Popen([str(programs / "quilmora"), *document], env=environment, stderr=subprocess.DEVNULL)
    while not display.shows(color):
        if time.monotonic() - start > 60 or process.poll() is not None:
            raise SystemExit("the map never came to the screen")
        time.sleep(0.002)
    seconds = time.monotonic() - start
    time.sleep(1.0)
    memory = resident_megabytes(process)
    process.terminate()
    process.wait()
    return seconds, memory


def main():
    programs = pathlib.Path(sys.argv[1]).resolve()
    runs = int(sys.argv[2]) if len(sys.argv) > 2 else 7
    sizes = [int(size) for size in sys.argv[3:]] or [0, 1_000, 10_000, 100_000]
    display = Display()
    try:
        print(f"{'map':>16} {'median s':>10} {'worst s':>10} {'budget s':>10} {'memory MB':>10} {'bytes a topic':>14}")
        empty_memory = 0.0
        for topics in sizes:
            results = []
            with tempfile.TemporaryDirectory(prefix="quilmora-start-") as folder:
                home = pathlib.Path(folder)
                document = []
                if topics:
                    path = home / "map.mindmap"
                    write_map(programs, topics, path)
                    document = [str(path)]
                for _ in range(runs):
                    settings = home / ".config" / "Quilmora"
                    settings.mkdir(parents=True, exist_ok=True)
                    (settings / "Quilmora.json").write_text('{"onboardingShown": true}')
                    results.append(measure(programs, display, home, document, FILL if topics else BLANK_MAP_FILL))
            times = sorted(seconds for seconds, _ in results)
            memory = statistics.median(megabytes for _, megabytes in results)
            if not topics:
                empty_memory = memory
            a_topic = f"{(memory - empty_memory) * 1048576 / topics:.0f}" if topics and empty_memory else ""
            budget = BUDGETS.get(topics, "")
            print(f"{f'{topics:,} topics' if topics else 'empty':>16} {statistics.median(times):10.3f} {times[-1]:10.3f} "
                  f"{budget:>10} {memory:10.0f} {a_topic:>14}")
    finally:
        display.server.terminate()
        display.server.wait()


if __name__ == "__main__":
    main()
