"""clang-tidy over single sources, with the commands of the release build."""

import json
import shlex
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


def compile_commands(build):
    """How the build compiles each source, by the source's path."""
    listed = subprocess.run(["ninja", "-C", build, "-t", "compdb"], capture_output=True, text=True, check=True)
    commands = {}
    for entry in json.loads(listed.stdout[listed.stdout.index("[") :]):
        path = (Path(entry["directory"]) / entry["file"]).resolve()
        if path.suffix == ".cpp":
            entry["command"] = for_clang(entry["command"])
            commands[str(path)] = entry
    return commands


def for_clang(command):
    """The compiler's arguments alone: without its launcher, and without precompiled headers, which are not clang's."""
    words = shlex.split(command)
    while not words[0].endswith(("c++", "g++")):
        words.pop(0)
    kept = []
    while words:
        word = words.pop(0)
        if word == "-include" and "cmake_pch" in words[0]:
            words.pop(0)
        elif word not in ("-Winvalid-pch", "-fpch-preprocess"):
            kept.append(word)
    return shlex.join(kept)


def run(root, files):
    """Prints what clang-tidy finds. Returns the number of sources with a finding."""
    build = root / "build/release"
    if not (build / "build.ninja").exists():
        print("There is no build/release/build.ninja: run ./test or cmake --preset release first.")
        return 1
    commands = compile_commands(build)
    wanted = [str((root / name).resolve()) for name in files or changed_sources(root)]
    failed = 0
    with tempfile.TemporaryDirectory() as folder:
        (Path(folder) / "compile_commands.json").write_text(json.dumps(list(commands.values())))
        for path in wanted:
            if path not in commands:
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
