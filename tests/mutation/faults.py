"""The faults that tests/mutation/run plants: where in a C++ source they can stand, and what stands there instead."""

import dataclasses
import hashlib
import re


@dataclasses.dataclass(frozen=True)
class Fault:
    file: str
    line: int
    column: int
    kind: str
    old: str
    new: str

    def key(self):
        return (self.file, str(self.line), str(self.column), self.kind, self.old, self.new)


# Comments, texts and lines of the preprocessor: nothing is planted there, but for the text of a constant.
_APART = re.compile(r'//[^\n]*|/\*.*?\*/|^[ \t]*#(?:[^\n\\]|\\.)*|L?"(?:[^"\\\n]|\\.)*"|\'(?:[^\'\\\n]|\\.)+\'',
                    re.DOTALL | re.MULTILINE)

# The formatter puts blanks around operators and none around the angles of templates.
_OPERATORS = {" == ": " != ", " != ": " == ", " < ": " <= ", " <= ": " < ", " > ": " >= ", " >= ": " > ",
              " && ": " || ", " || ": " && ", " + ": " - ", " - ": " + ", "++": "--", " += ": " -= "}
_OPERATOR = re.compile("|".join(re.escape(each) for each in sorted(_OPERATORS, key=len, reverse=True)))
_TRUTH = re.compile(r"\b(?:true|false)\b")
_NUMBER = re.compile(r"(?<![\w.])(?:0x[0-9A-Fa-f]+|\d+)(?=[uUlL]*(?![\w.]))")
_BRANCH = re.compile(r"\bif \(")
_CALL = re.compile(r"(?<=[;{}\n]) *([A-Za-z_][\w:.>-]*\([^;{}]*\));")
_STATEMENT = re.compile(r"(?<=[;{}\n]) *((?:break|continue|[A-Za-z_][\w.\[\]]*(?:->[\w.]+)* [-+|&]?= [^;{}]*));")
_NO_CALL = re.compile(r"(?:return|throw|if|for|while|switch|delete|static_assert|using)\b")


def _blanked(match):
    return re.sub(r"[^\n]", "\0", match.group(0))


def _closing(code, opening):
    depth = 0
    for place in range(opening, len(code)):
        depth += {"(": 1, ")": -1}.get(code[place], 0)
        if depth == 0:
            return place
    return None


def faults_of(file, text):
    """Every fault that can be planted in a source, in the order of their places."""
    code = _APART.sub(_blanked, text)
    found = []

    def add(begin, end, kind, new):
        line = text.count("\n", 0, begin) + 1
        column = begin - (text.rfind("\n", 0, begin) + 1) + 1
        found.append(Fault(file, line, column, kind, text[begin:end], new))

    for match in _OPERATOR.finditer(code):
        add(*match.span(), "operator", _OPERATORS[match.group(0)])
    for match in _TRUTH.finditer(code):
        add(*match.span(), "constant", "false" if match.group(0) == "true" else "true")
    for match in _NUMBER.finditer(code):
        add(*match.span(), "constant", str(int(match.group(0), 0) + 1))
    for match in _APART.finditer(text):
        if match.group(0).startswith(('"', 'L"')) and match.group(0) not in ('""', 'L""'):
            add(match.end() - 1, match.end(), "constant", '~"')
    for match in _BRANCH.finditer(code):
        end = _closing(code, match.end() - 1)
        if end is not None and ";" not in code[match.end():end]:
            add(match.end(), end, "branch", "!(" + text[match.end():end] + ")")
    for match in _CALL.finditer(code):
        if not _NO_CALL.match(match.group(1)):
            add(match.start(1), match.end(1), "call", "")
    for match in _STATEMENT.finditer(code):
        add(match.start(1), match.end(1), "statement", "")
    return sorted(set(found), key=lambda fault: (fault.line, fault.column, fault.kind, fault.new))


def planted(text, fault):
    """The source with the fault in it."""
    lines = text.splitlines(keepends=True)
    begin = sum(len(line) for line in lines[:fault.line - 1]) + fault.column - 1
    end = begin + len(fault.old)
    if text[begin:end] != fault.old:
        raise ValueError(f"{fault.file}:{fault.line} is not what it was")
    return text[:begin] + fault.new + text[end:]


def drawn(faults_by_folder, seed):
    """All faults in the order in which they are tried: one of each folder in turn, each folder's mixed by the seed.

    A fault's place among its folder's follows from itself, so that a change of one file leaves the others' order alone.
    """
    def mixed(fault):
        return hashlib.sha256(f"{seed} {fault}".encode()).digest()

    piles = [sorted(faults_by_folder[folder], key=mixed) for folder in sorted(faults_by_folder)]
    order = []
    while any(piles):
        order += [pile.pop() for pile in piles if pile]
    return order
