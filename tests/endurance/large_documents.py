#!/usr/bin/env python3
"""Opens and writes documents that are too large for the tests: a map of 1,000,000 topics, and one topic of 600 MB.

  tests/endurance/large_documents.py FOLDER_OF_PROGRAMS

Takes some gigabytes of memory and of the temporary folder, and prints seconds and the peak of memory of each step.
"""

import json
import resource
import subprocess
import sys
import tempfile
import time
import uuid
from pathlib import Path


def node(number, title):
    return {
        "id": str(uuid.UUID(int=number + 1, version=4)).upper(),
        "title": title,
        "notes": "",
        "position": [number % 1000 * 200, number // 1000 * 80],
        "style": {
            "fill": "#FFFFFF", "stroke": "#000000", "textColor": "#000000", "shape": "rounded-rect", "iconSize": 20,
            "bold": False, "italic": False,
        },
    }


def write_map(path, nodes):
    head = {
        "version": 1, "title": path.stem, "createdAt": "2024-01-02T03:04:05Z", "updatedAt": "2024-01-02T03:04:05Z",
        "layout": "manual", "edges": [], "relationships": [], "regions": [],
        "canvas": {"background": "#FFFFFF", "grid": False, "snap": False},
    }
    text = json.dumps(head)
    with open(path, "w") as file:
        file.write(text[:-1] + ', "nodes": [')
        for number, record in enumerate(nodes):
            file.write((",\n" if number else "\n") + json.dumps(record))
        file.write("]}\n")


def convert(programs, source, target):
    """Reads one document and writes it as another."""
    begin = time.monotonic()
    subprocess.run([programs / "quilmora-cli", "convert", source, target], check=True)
    peak = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss // 1024
    size = source.stat().st_size >> 20
    print(f"{source.name}: {size} MB, read and written in {time.monotonic() - begin:.1f} s, at most {peak} MB so far")


def main(arguments):
    if len(arguments) != 1:
        sys.exit(__doc__)
    programs = Path(arguments[0]).resolve()
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        cases = {
            "million": (node(number, f"Topic {number}") for number in range(1_000_000)),
            "record": (node(0, "x" * 600_000_000) for _ in range(1)),
        }
        for case, nodes in cases.items():
            source, written, again = (folder / f"{case}{part}.mindmap" for part in ("", "-written", "-again"))
            write_map(source, nodes)
            convert(programs, source, written)
            convert(programs, written, again)
            if written.read_bytes() != again.read_bytes():
                sys.exit(f"{case}: what was written did not open as the same map")
            for path in (source, written, again):
                path.unlink()


if __name__ == "__main__":
    main(sys.argv[1:])
