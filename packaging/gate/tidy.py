"""Runs clang-tidy on single sources, or on all of them, with the commands of a release build."""

import json
import os
import re
import shlex
import subprocess
import tempfile
from collections import defaultdict
from pathlib import Path

CLANG = "clang++-19"
CLANG_TIDY = "clang-tidy-19"
# Sources that are read as one. Most of the time goes into the toolkit's headers, which are then read only once.
GROUP = 60
# Without findings that come only from reading several sources as one: the includes themselves, and names that two of
# them share. The compiler looks for shadowed names in each source.
FOR_GROUPS = ["--checks=-bugprone-suspicious-include", "--extra-arg=-Wno-shadow"]


def changed_sources(root):
    """The sources that differ from the branch main, or from the last commit on main itself."""
    base = subprocess.run(["git", "merge-base", "main", "HEAD"], cwd=root, capture_output=True, text=True, check=False)
    start = base.stdout.strip() or "HEAD"
    listed = subprocess.run(
        ["git", "diff", "--name-only", "--diff-filter=d", start, "--", "src"],
        cwd=root, capture_output=True, text=True, check=True,
    )
    return [name for name in listed.stdout.split() if name.endswith(".cpp")]


def compile_commands(root, build):
    """How a release build compiles each source by itself, by the source's path."""
    settings = ["-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release", "-DQUILMORA_UNITY=OFF"]
    subprocess.run(["cmake", "-S", root, "-B", build, *settings], capture_output=True, check=True)
    listed = subprocess.run(["ninja", "-C", build, "-t", "compdb"], capture_output=True, text=True, check=True)
    commands = {}
    for entry in json.loads(listed.stdout[listed.stdout.index("[") :]):
        path = (Path(entry["directory"]) / entry["file"]).resolve()
        if path.suffix == ".cpp":
            entry["command"] = for_clang(entry["command"])
            commands[str(path)] = entry
    return commands


def for_clang(command):
    """Only the compiler's arguments: without its launcher, and without precompiled headers, which clang cannot use."""
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


def arguments(entry):
    """The compiler's arguments except the names of its files."""
    words = iter(shlex.split(entry["command"])[1:])
    kept = []
    for word in words:
        if word in ("-o", "-c", "-MF", "-MT"):
            next(words)
        elif word != "-MD":
            kept.append(word)
    return tuple(kept)


def groups(sources, options, folder, directory):
    """Divides the sources into groups that compile as one, because no name in them means two things. Yields the file
    that includes each group."""
    waiting = list(sources)
    count = 0
    while waiting:
        group, waiting = waiting[:GROUP], waiting[GROUP:]
        together = folder / f"group-{abs(hash(options))}-{count}.cpp"
        count += 1
        while True:
            together.write_text("".join(f'#include "{source}"\n' for source in group))
            tried = subprocess.run(
                [CLANG, *options, "-w", "-fsyntax-only", "-ferror-limit=0", str(together)],
                cwd=directory, capture_output=True, text=True, check=False,
            )
            places = re.findall(r"^(\S+?):\d+:\d+: (?:fatal )?error", tried.stderr, re.MULTILINE)
            wrong = {os.path.normpath(Path(directory) / place) for place in places}
            clashing = [source for source in group if source in wrong]
            if tried.returncode == 0 or not clashing or len(group) == 1:
                break
            group = [source for source in group if source not in clashing]
            waiting += clashing
        yield together


def grouped(commands, root, folder):
    """All sources of the product in groups, as an entry of commands for each group."""
    by_options = defaultdict(list)
    for path, entry in sorted(commands.items()):
        if path.startswith(str(root / "src") + os.sep):
            by_options[arguments(entry)].append(path)
    entries = {}
    for options, sources in by_options.items():
        directory = commands[sources[0]]["directory"]
        for together in groups(sources, options, folder, directory):
            command = shlex.join([CLANG, *options, "-c", str(together)])
            entries[str(together)] = {"directory": directory, "file": str(together), "command": command}
    return entries


def run(root, files):
    """Prints what clang-tidy finds in these sources, in all with "--all", in those that differ from main without any.
    Returns the number of sources, or groups of them, with a finding."""
    options = [f"--config-file={root / '.clang-tidy'}"]
    failed = 0
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        commands = compile_commands(root, folder / "build")
        if files == ["--all"]:
            commands = grouped(commands, root, folder)
            wanted = list(commands)
            options += FOR_GROUPS
        else:
            wanted = [str((root / name).resolve()) for name in files or changed_sources(root)]
        (folder / "compile_commands.json").write_text(json.dumps(list(commands.values())))
        for path in wanted:
            if path not in commands:
                continue
            result = subprocess.run(
                ["nice", "-n", "19", CLANG_TIDY, "-p", str(folder), "--quiet", *options, path],
                cwd=root, capture_output=True, text=True, check=False,
            )
            if result.returncode != 0 or "warning:" in result.stdout:
                print(result.stdout or result.stderr, flush=True)
                failed += 1
    print(f"{len(wanted)} {'groups' if files == ['--all'] else 'sources'}, {failed} with findings")
    return failed
