"""Reads C++ sources as text: what is code, where functions are, and what headers declare."""

import re
from dataclasses import dataclass
from pathlib import Path

_LITERALS_AND_COMMENTS = re.compile(
    r"""//[^\n]*
      | /\*.*?\*/
      | R"(?P<mark>[^\s()\\]{0,16})\(.*?\)(?P=mark)"
      | "(?:\\.|[^"\\\n])*"
      | (?<![0-9A-Za-z_])'(?:\\.|[^'\\\n])+'""",
    re.DOTALL | re.VERBOSE,
)
_DIRECTIVE = re.compile(r"^[ \t]*#(?:[^\n\\]|\\.|\\\n)*", re.MULTILINE)
_NAME_BEFORE_PARENTHESIS = re.compile(r"(~?[A-Za-z_]\w*)\s*\(")
_TYPE_HEAD = re.compile(r"^(?:template\s*<.*>\s*)?(?:class|struct|union|enum|namespace|extern)\b", re.DOTALL)
_NOT_OFFERED = re.compile(r"\b(override|friend|using|typedef|default|delete)\b|~")
_CONTROL = re.compile(r"^(?:if|for|while|switch|do|else|try|catch|return|case|default)\b")
_ACCESS = re.compile(r"\b(public|private|protected|Q_SIGNALS|Q_OBJECT)\b\s*:?")


@dataclass(frozen=True)
class Function:
    """A function with its body; lines count from 1."""

    name: str
    first_line: int
    last_line: int

    @property
    def length(self):
        return self.last_line - self.first_line + 1


@dataclass(frozen=True)
class Declaration:
    """A function that a header offers to others."""

    name: str
    line: int
    is_defined: bool  # its body is here


def blank(match):
    return re.sub(r"[^\n]", " ", match.group())


def code_of(text):
    """The text with comments, literals and directives blanked; every character keeps its place."""
    return _DIRECTIVE.sub(blank, _LITERALS_AND_COMMENTS.sub(blank, text))


def _name_of(head):
    """The name of the function that a head such as "void A::b(int) const" declares, or nothing."""
    if _TYPE_HEAD.match(head) or _CONTROL.match(head) or "operator" in head:
        return None
    depth = 0
    for match in re.finditer(r"[<(]|[>)]|=", head):
        if match.group() == "=" and depth == 0:
            return None
        if match.group() == "(" and depth == 0:
            names = _NAME_BEFORE_PARENTHESIS.findall(head[: match.end()])
            return names[-1] if names else None
        depth += 1 if match.group() in "<(" else -1 if match.group() in ">)" else 0
    return None


def _pieces(code):
    """Walks the text outside functions: yields (kind, head, start, end) of a body, a scope or a semicolon."""
    scopes = []  # for each open brace, whether it contains declarations
    start = 0
    depth_in_parentheses = 0
    position = 0
    while position < len(code):
        character = code[position]
        if character in "([":
            depth_in_parentheses += 1
        elif character in ")]":
            depth_in_parentheses -= 1
        elif depth_in_parentheses > 0:
            pass
        elif character == "{":
            head = code[start:position]
            stripped = head.strip()
            end = _matching_brace(code, position)
            if _TYPE_HEAD.match(_without_access(stripped)) and "(" not in stripped.split("{")[0].split(" : ")[0]:
                yield "scope", head, start, position
                scopes.append("enum" not in _without_access(stripped).split()[:1])
                start = position + 1
            elif head[-1:].isspace() and "(" in head and not stripped.endswith("="):
                yield "body", head, start, end
                position = end
                start = end + 1
            else:
                position = end  # an initialiser
        elif character == "}":
            if scopes:
                scopes.pop()
            start = position + 1
        elif character == ";":
            yield "semicolon", code[start:position], start, position
            start = position + 1
        position += 1


def _matching_brace(code, opening):
    depth = 0
    for match in re.compile(r"[{}]").finditer(code, opening):
        depth += 1 if match.group() == "{" else -1
        if depth == 0:
            return match.start()
    return len(code) - 1


def _without_access(head):
    return _ACCESS.sub(" ", head).strip()


def _line_of(code, position):
    return code.count("\n", 0, position) + 1


def _first_line(code, start, head):
    text = _ACCESS.sub(blank, head)
    return _line_of(code, start + len(text) - len(text.lstrip()))


def functions_of(text):
    """The functions that are defined in a source, outermost ones only: a lambda belongs to the function around it."""
    code = code_of(text)
    found = []
    for kind, head, start, end in _pieces(code):
        name = _name_of(_without_access(head)) if kind == "body" else None
        if name:
            found.append(Function(name, _first_line(code, start, head), _line_of(code, end)))
    return found


def public_functions_of(text):
    """The functions that a header declares outside private and protected parts."""
    code = code_of(text)
    found = []
    open_types = []  # [end of the type, whether the part is public, the type's name]
    for kind, head, start, end in _pieces(code):
        while open_types and start > open_types[-1][0]:
            open_types.pop()
        for access in _ACCESS.finditer(head):
            if open_types and access.group(1) != "Q_OBJECT":
                open_types[-1][1] = access.group(1) in ("public", "Q_SIGNALS")
        bare = _without_access(head)
        if kind == "scope":
            if re.match(r"(?:template\s*<.*>\s*)?(class|struct)\b", bare, re.DOTALL):
                is_struct = re.search(r"\bstruct\b", bare) is not None
                inherited = not open_types or open_types[-1][1]
                names = re.findall(r"\b(?:class|struct)\s+(\w+)", bare)
                open_types.append([_matching_brace(code, end), is_struct and inherited, names[-1] if names else None])
            continue
        if open_types and not open_types[-1][1]:
            continue
        name = _name_of(bare)
        is_constructor = bool(open_types) and name == open_types[-1][2]
        if name and not is_constructor and not name.startswith("Q_") and not _NOT_OFFERED.search(bare):
            found.append(Declaration(name, _first_line(code, start, head), kind == "body"))
    return found


def cpp_files(root, *folders):
    return sorted(
        path
        for folder in folders
        for path in (Path(root) / folder).rglob("*")
        if path.suffix in (".h", ".cpp") and path.is_file()
    )
