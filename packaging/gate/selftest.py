"""Shows for each rule that a file that breaks it fails the gate, and that a clean tree passes."""

import tempfile
from pathlib import Path

from gate.rules import RULES

FLOORS = "lower:\nupper: lower\n"
CLEAN = {
    "src/floors.txt": FLOORS,
    ".clang-format": "BasedOnStyle: Google\nColumnLimit: 120\n",
    "src/lower/Sum.h": "#pragma once\n\n// The sum of both.\nint sumOf(int a, int b);\n",
    "src/lower/Sum.cpp": '#include "lower/Sum.h"\n\nint sumOf(int a, int b) { return a + b; }\n',
    "src/upper/main.cpp": '#include "lower/Sum.h"\n\nint main() { return sumOf(1, -1); }\n',
    "packaging/a.desktop": "[Desktop Entry]\nType=Application\nName=A\nExec=a\n",
}


def _long_function(lines):
    body = "".join(f"  value += {i};\n" for i in range(lines - 4))
    return f"int grow() {{\n  int value = 0;\n{body}  return value;\n}}\n"


# By rule: a file that breaks it, and a part of the finding.
BROKEN = [
    ("format", "src/lower/A.cpp", "int  a;\n", "src/lower/A.cpp:1: not as clang-format writes it"),
    ("floors", "src/lower/A.cpp", '#include "upper/B.h"\n', "src/lower/A.cpp:1: lower may not include from upper"),
    ("floors", "src/lower/A.cpp", '#include "Sum.h"\n', "Sum.h is not written as folder/File.h"),
    ("floors", "src/cellar/A.cpp", "int a;\n", "src/cellar/A.cpp:1: stands in no known folder"),
    ("file sizes", "src/lower/A.cpp", "int a();\n" * 401, "src/lower/A.cpp:1: 401 lines"),
    ("function sizes", "src/lower/A.cpp", "\n" + _long_function(61), "src/lower/A.cpp:2: grow has 61 lines"),
    ("dead functions", "src/lower/A.h", "#pragma once\n\nint unused();\n", "src/lower/A.h:3: nothing in src/ calls"),
    ("dead functions", "src/lower/A.h", "class A {\n public:\n  int unused() { return 1; }\n};\n", "calls unused"),
    ("dead functions", "packaging/gate/accepted.txt", "[dead]\nsrc/lower/Sum.h sumOf\n", "is no exception any more"),
    ("desktop entry", "packaging/b.desktop", "[Desktop Entry]\nType=Application\nExec=b\n", "packaging/b.desktop"),
    ("spelling", "docs/a.md", "The " + "reciev" + "er.\n", "docs/a.md:1"),
]
# Cases just within a rule.
SOUND = [
    ("file sizes", "src/lower/A.cpp", "int a();\n" * 400),
    ("function sizes", "src/lower/A.cpp", _long_function(60)),
    ("dead functions", "src/lower/A.h", "class A {\n  int hidden() const { return 1; }\n};\n"),
    ("dead functions", "src/lower/Sum.h", "#pragma once\n\nint sumOf(int a, int b);\n"),
    ("dead functions", "src/lower/A.h", "class A : public B {\n public:\n  void paint() override;\n};\n"),
]


def _findings(rule, path=None, text=None):
    with tempfile.TemporaryDirectory() as folder:
        for name, content in {**CLEAN, **({path: text} if path else {})}.items():
            target = Path(folder) / name
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_text(content)
        return RULES[rule](Path(folder))


def run():
    """Prints a line for each case. Returns how many went wrong."""
    wrong = 0

    def tell(is_right, text):
        nonlocal wrong
        wrong += 0 if is_right else 1
        print(f"{'ok' if is_right else 'WRONG'}: {text}")

    for rule in RULES:
        found = _findings(rule)
        tell(not found, f"{rule}: a clean tree passes{'' if not found else f', but {found}'}")
    for rule, path, text, expected in BROKEN:
        found = _findings(rule, path, text)
        tell(any(expected in line for line in found), f"{rule}: {found[0] if found else 'nothing found in ' + path}")
    for rule, path, text in SOUND:
        found = _findings(rule, path, text)
        tell(not found, f"{rule}: what lies just within passes{'' if not found else f', but {found}'}")
    tell({rule for rule, *_ in BROKEN} == set(RULES), "every rule has a file that breaks it")
    return wrong
