"""The rules of the gate: each takes the root of a checkout and returns its findings, such as "path:line: reason"."""

import re
import subprocess
from collections import Counter
from pathlib import Path

from gate.sources import code_of, cpp_files, functions_of, public_functions_of

MAX_FILE_LINES = 400
MAX_FUNCTION_LINES = 60
CODE_FOLDERS = ("src", "tests", "bench", "fuzz")


def accepted(root, rule):
    """The entries under a rule's heading in accepted.txt: deliberate exceptions."""
    path = Path(root) / "packaging/gate/accepted.txt"
    names, heading = set(), None
    for line in path.read_text().splitlines() if path.exists() else []:
        line = line.partition("#")[0].strip()
        if line.startswith("["):
            heading = line.strip("[]")
        elif line and heading == rule:
            names.add(line)
    return names


def _without_accepted(root, rule, findings):
    """The findings of (subject, text) whose subject is not accepted, and the exceptions no longer needed."""
    exceptions = accepted(root, rule)
    found = [text for subject, text in findings if subject not in exceptions]
    stale = sorted(exceptions - {subject for subject, _ in findings})
    return found + [f"packaging/gate/accepted.txt:1: [{rule}] {subject} is no exception any more" for subject in stale]


def _run(root, command):
    return subprocess.run(command, cwd=root, capture_output=True, text=True, check=False)


def _relative(root, path):
    return path.relative_to(root).as_posix()


def check_format(root):
    """Every C++ file is as clang-format writes it."""
    files = [_relative(root, path) for path in cpp_files(root, *CODE_FOLDERS)]
    if not files:
        return []
    result = _run(root, ["clang-format", "--dry-run", *files])
    lines = [line for line in result.stderr.splitlines() if "clang-format-violations" in line]
    # One finding per file is enough.
    first_of_file = {line.split(":")[0]: line for line in reversed(lines)}
    findings = [f"{file}:{line.split(':')[1]}: not as clang-format writes it" for file, line in first_of_file.items()]
    if result.returncode != 0 and not findings:
        findings.append(f"clang-format: {result.stderr.strip()}")
    return sorted(findings)


def check_floors(root):
    """A file of src/ includes only from its own floor or from those below, according to src/floors.txt."""
    table = {}
    for line in (Path(root) / "src/floors.txt").read_text().splitlines():
        line = line.partition("#")[0].strip()
        if line:
            folder, _, below = line.partition(":")
            table[folder.split()[0]] = set(below.split())

    def floor_of(path):
        return max((folder for folder in table if path.startswith(folder + "/")), key=len, default=None)

    findings = []
    for path in cpp_files(root, "src"):
        own = floor_of(path.relative_to(Path(root) / "src").as_posix())
        if own is None:
            findings.append(f"{_relative(root, path)}:1: stands in no known folder")
            continue
        for number, line in enumerate(path.read_text().splitlines(), 1):
            include = re.match(r'\s*#\s*include\s*"([^"]+)"', line)
            target = floor_of(include.group(1)) if include else own
            if target is None:
                findings.append(f"{_relative(root, path)}:{number}: {include.group(1)} is not written as folder/File.h")
            elif target != own and target not in table[own]:
                findings.append(f"{_relative(root, path)}:{number}: {own} may not include from {target}")
    return findings


def check_file_sizes(root):
    """Files have at most 400 lines."""
    findings = []
    for path in cpp_files(root, *CODE_FOLDERS):
        count = len(path.read_text().splitlines())
        name = _relative(root, path)
        if count > MAX_FILE_LINES:
            findings.append((name, f"{name}:1: {count} lines, more than {MAX_FILE_LINES}"))
    return _without_accepted(root, "files", findings)


def check_function_sizes(root):
    """Functions of src/ have at most 60 lines."""
    findings = []
    for path in cpp_files(root, "src"):
        for function in functions_of(path.read_text()):
            if function.length > MAX_FUNCTION_LINES:
                reason = f"{function.name} has {function.length} lines, more than {MAX_FUNCTION_LINES}"
                place = _relative(root, path)
                findings.append((f"{place} {function.name}", f"{place}:{function.first_line}: {reason}"))
    return _without_accepted(root, "functions", findings)


def check_dead_functions(root):
    """What a header of src/ declares for others is used elsewhere in src/; for a one-line getter a test may be the only
    user."""
    named, defined, declared = Counter(), Counter(), {}
    for path in cpp_files(root, "src"):
        text = path.read_text()
        named.update(_names_in(text))
        if path.suffix == ".h":
            for declaration in public_functions_of(text):
                declared.setdefault(declaration.name, []).append((path, declaration))
        else:
            defined.update(function.name for function in functions_of(text))
    in_tests = {name for path in cpp_files(root, "tests", "bench") for name in _names_in(path.read_text())}
    findings = []
    for name, places in declared.items():
        if named[name] - len(places) - defined[name] > 0:
            continue
        for path, declaration in places:
            is_getter = declaration.is_defined and name in in_tests
            if not is_getter:
                place = _relative(root, path)
                findings.append((f"{place} {name}", f"{place}:{declaration.line}: nothing in src/ calls {name}"))
    return _without_accepted(root, "dead", sorted(findings))


def _names_in(text):
    return re.findall(r"~?\b[A-Za-z_]\w*", code_of(text))


def check_desktop_entry(root):
    """The desktop entry is valid."""
    findings = []
    for path in sorted((Path(root) / "packaging").glob("*.desktop")):
        result = _run(root, ["desktop-file-validate", _relative(root, path)])
        findings += [line for line in (result.stdout + result.stderr).splitlines() if line and ": hint: " not in line]
        if result.returncode != 0 and not findings:
            findings.append(f"{_relative(root, path)}: not valid")
    return findings


def check_spelling(root):
    """Comments, texts and documents are spelled right."""
    words = Path(root) / "packaging/gate/words.txt"
    places = [*CODE_FOLDERS, "docs", "packaging", "cmake", *(p.name for p in Path(root).glob("*.md"))]
    places = [place for place in places if (Path(root) / place).exists()]
    command = ["codespell", "--quiet-level=3", "--skip=*.png,*.svg,*/corpus/*,*.mindmap,*.dict"]
    if words.exists():
        command.append(f"--ignore-words={words}")
    return [line.removeprefix("./") for line in _run(root, [*command, *places]).stdout.splitlines()]


RULES = {
    "format": check_format,
    "floors": check_floors,
    "file sizes": check_file_sizes,
    "function sizes": check_function_sizes,
    "dead functions": check_dead_functions,
    "desktop entry": check_desktop_entry,
    "spelling": check_spelling,
}
