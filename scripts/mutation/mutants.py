"""Where a source can be changed so that tests should notice, and the source with all these changes in it, asleep."""

import dataclasses
import json
import re

import clang.cindex
from clang.cindex import CursorKind, TypeKind

COMPARISONS = {"<": "lt", "<=": "le", ">": "gt", ">=": "ge", "==": "eq", "!=": "ne"}
ARITHMETIC = {"+": "add", "-": "sub", "*": "mul", "/": "div"}
OTHER = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==", "+": "-", "-": "+", "*": "+", "/": "*"}
# What only saves time or memory, so that no test can tell, and what sets a variable, so that the compiler tells.
HARMLESS = re.compile(
    r"\b(reserve|shrink_to_fit|shrinkToFit|assert|static_assert|notify_one|Q_UNUSED)\b|^\(void\)|memcpy\(&")

LITERAL = re.compile(r"'.'|\d+")  # calculations with these may have to be done by the compiler


@dataclasses.dataclass
class Mutant:
    file: str
    line: int
    text: str  # of the line, without spaces around it
    what: str
    edits: list  # of offset, characters that go, text that comes; the number is put for @


def flags_of(build):
    """The compiler's arguments by source."""
    flags = {}
    for entry in json.loads((build / "compile_commands.json").read_text()):
        words = entry["command"].split()
        flags[entry["file"]] = [word for word in words if re.match("-(I|D|std|isystem|f)", word)
                                or words[words.index(word) - 1] == "-isystem"]
    return flags


class Finder:
    def __init__(self, root, file, flags):
        self.file = file
        self.path = str(root / file)
        self.text = (root / file).read_bytes()
        self.lines = [line.strip() for line in self.text.decode().split("\n")]
        self.found = []
        unit = clang.cindex.Index.create().parse(self.path, args=flags)
        errors = [str(each) for each in unit.diagnostics if each.severity >= 3]
        if errors:
            raise RuntimeError(errors[0])
        for cursor in unit.cursor.get_children():
            if cursor.location.file and cursor.location.file.name == self.path:
                self.visit(cursor, None)

    def range(self, cursor):
        return cursor.extent.start.offset, cursor.extent.end.offset

    def shortened(self, cursor, most=60):
        begin, end = self.range(cursor)
        return " ".join(self.text[begin:end].decode(errors="replace").split())[:most]

    def add(self, cursor, what, *edits):
        line = cursor.extent.start.line
        self.found.append(Mutant(self.file, line, self.lines[line - 1], what, list(edits)))

    def visit(self, cursor, parent):
        if cursor.kind == CursorKind.VAR_DECL and "constexpr " in self.shortened(cursor, 30):
            return  # computed by the compiler, where no mutant can be woken
        children = list(cursor.get_children())
        if parent and parent.kind == CursorKind.COMPOUND_STMT:
            self.statement(cursor)
        if cursor.kind == CursorKind.BINARY_OPERATOR and len(children) == 2:
            self.binary(cursor, *children)
        elif cursor.kind == CursorKind.CALL_EXPR and len(children) == 3 and cursor.spelling.startswith("operator"):
            self.overloaded(cursor, children)
        elif cursor.kind in [CursorKind.IF_STMT, CursorKind.CONDITIONAL_OPERATOR]:
            self.condition(cursor, children[0])
        for child in children:
            self.visit(child, cursor)

    def operator_between(self, left, right):
        """The operator's place and text, or nothing where a macro or a bracket is in the way."""
        begin, end = self.range(left)[1], self.range(right)[0]
        between = self.text[begin:end].decode()
        sign = between.strip()
        return (begin + between.index(sign), sign) if sign and "(" not in sign and ")" not in sign else (0, "")

    def binary(self, cursor, left, right):
        place, sign = self.operator_between(left, right)
        begin, end = self.range(cursor)
        kinds = {side.type.get_canonical().kind for side in [left, right]}
        is_known = not kinds & {TypeKind.DEPENDENT, TypeKind.UNEXPOSED, TypeKind.VECTOR}
        is_constant = all(LITERAL.fullmatch(self.shortened(side)) for side in [left, right])
        is_number = is_known and not is_constant and not kinds & {TypeKind.POINTER, TypeKind.RECORD}
        if sign in COMPARISONS and is_known or sign in ARITHMETIC and is_number:
            name = (COMPARISONS | ARITHMETIC)[sign]
            self.add(cursor, f"{sign} becomes {OTHER[sign]} in {self.shortened(cursor)}", (begin, 0, f"mutant::{name}(@, "),
                     (place, len(sign), ","), (end, 0, ")"))
        elif sign in ["&&", "||"]:
            switch = "mutant::is(@) || " if sign == "&&" else "!mutant::is(@) && "
            for side in [left, right]:
                low, high = self.range(side)
                self.add(side, f"no {self.shortened(side)}", (low, 0, f"({switch}("), (high, 0, "))"))

    def overloaded(self, cursor, children):
        sign = cursor.spelling[len("operator"):]
        left, _, right = children
        place, found = self.operator_between(left, right)
        if sign == found and sign in ["==", "!="]:
            begin, end = self.range(cursor)
            self.add(cursor, f"{sign} becomes {OTHER[sign]} in {self.shortened(cursor)}", (begin, 0, "(mutant::is(@) != ("), (end, 0, "))"))

    def condition(self, cursor, condition):
        begin, end = self.range(condition)
        text = self.text[begin:end]
        is_plain = condition.kind.is_expression() and not re.search(rb"[<>=!]=|&&|\|\|| [<>] ", text)
        if is_plain and b"constexpr" not in self.text[cursor.extent.start.offset:begin]:
            self.add(cursor, f"turned round: {self.shortened(condition)}", (begin, 0, "(mutant::is(@) != static_cast<bool>("), (end, 0, "))"))

    def statement(self, cursor):
        begin, end = self.range(cursor)
        text = self.text[begin:end].decode(errors="replace")
        kinds = [CursorKind.CALL_EXPR, CursorKind.BINARY_OPERATOR, CursorKind.COMPOUND_ASSIGNMENT_OPERATOR,
                 CursorKind.UNARY_OPERATOR, CursorKind.UNEXPOSED_EXPR]
        if cursor.kind in kinds and self.text[end:end + 1] == b";" and not HARMLESS.search(text):
            self.add(cursor, f"without: {self.shortened(cursor)}", (begin, 0, "if (!mutant::is(@)) "))


def mutated(text, numbered):
    """The source with mutants in it, given as pairs of number and mutant in the order in which they were found."""
    edits = []
    for number, mutant in numbered:
        for offset, length, insert in mutant.edits:
            # At the same place, what ends goes before what begins, an outer beginning before an inner one, and an
            # inner end before an outer one. Outer ones were found first.
            rank = (0, -number) if insert.startswith(")") else (1, number)
            edits.append((offset, rank, length, insert.replace("@", str(number)).encode()))
    result, done = b"", 0
    for offset, _, length, insert in sorted(edits, key=lambda edit: edit[:2]):
        result += text[done:offset] + insert
        done = offset + length
    return result + text[done:]
