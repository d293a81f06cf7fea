"""clang-tidy over single sources, with the commands of the release build."""

import json
import subprocess
import tempfile
from pathlib import Path

CLANG_TIDY = "clang-tidy-19"


def changed_sources(root):
    """The sources that differ from the branch main, or from the last commit on main itself."""
    base = subprocess.run(["git", "merge-base", "main", "HEAD"], cwd=root, capture_output=True, text=True, check=False)
    start = base.stdout.strip() or "HEAD"
    listed = subprocess.run(
        ["git", "diff", "--name-only", "--diff-filter=d", start, "--", "src"],
        cwd=root, capture_output=True, text=True, check=True,
    )
    return [name for name in listed.stdout.split() if name.endswith(".cpp")]


def without_precompiled_header(command):
    """The compiler's own precompiled headers mean nothing to clang; the sources include what they need."""
    words = command.split()
    kept = []
    while words:
        word = words.pop(0)
        if word == "-include" and "cmake_pch" in words[0]:
            words.pop(0)
        elif word not in ("-Winvalid-pch", "-fpch-preprocess"):
            kept.append(word)
    return " ".join(kept)


def run(root, files):
    """Prints what clang-tidy finds. Returns the number of sources with a finding."""
    database = root / "build/release/compile_commands.json"
    if not database.exists():
        print("There is no build/release/compile_commands.json: run ./test or cmake --preset release first.")
        return 1
    commands = json.loads(database.read_text())
    for entry in commands:
        entry["command"] = without_precompiled_header(entry["command"])
    wanted = [str((root / name).resolve()) for name in files or changed_sources(root)]
    known = {entry["file"] for entry in commands}
    failed = 0
    with tempfile.TemporaryDirectory() as folder:
        (Path(folder) / "compile_commands.json").write_text(json.dumps(commands))
        for path in wanted:
            if path not in known:
                continue
            result = subprocess.run(
                ["nice", "-n", "19", CLANG_TIDY, "-p", folder, "--quiet", path],
                cwd=root, capture_output=True, text=True, check=False,
            )
            if result.returncode != 0 or "warning:" in result.stdout:
                print(result.stdout or result.stderr, flush=True)
                failed += 1
    print(f"{len(wanted)} sources, {failed} with findings")
    return failed
