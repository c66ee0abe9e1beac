"""Where a source can be broken, by clang's syntax tree, and the source with the changes in it.

Only bodies of functions are looked at, and there no constant expressions: the compiler needs those.
"""

import re
import sys
from typing import NamedTuple

SWAPPED = {"==": "!=", "!=": "==", "<": "<=", "<=": "<", ">": ">=", ">=": ">", "&&": "||", "||": "&&",
           "+": "-", "-": "+"}
LONGEST_SHOWN = 120
# Spaces between widgets, and the numbers that place them, are looked at in pictures; no test holds them.
SPACES = {"addSpacing", "addStretch", "setColumnStretch", "setContentsMargins", "setHorizontalSpacing",
          "setRowStretch", "setSpacing", "setVerticalSpacing", "Lines"}
PLACES = {"addWidget", "addLayout"}


class Failure(Exception):
    """Nothing can be measured, and why."""


class Site(NamedTuple):
    file: str      # below the root
    function: str
    line: int
    last_line: int
    start: int     # bytes of the file
    end: int
    mutated: str   # C++; empty: a statement left out
    shown: str     # for a reader: OLD -> NEW

    def key(self):
        return f"{self.file} {self.function}: {self.shown}"


def one_line(text):
    return " ".join(text.split())


def load_cindex():
    try:
        import clang.cindex as cindex
    except ImportError:  # Debian keeps it for its own Python
        sys.path.append("/usr/lib/python3/dist-packages")
        import clang.cindex as cindex
    return cindex


def extent(cursor):
    return cursor.extent.start.offset, cursor.extent.end.offset


class Finder:
    def __init__(self, root, name, unit, cindex):
        self.name, self.path = name, str(root / name)
        self.source = (root / name).read_bytes()
        self.k, self.types = cindex.CursorKind, cindex.TypeKind
        k = self.k
        self.functions = {k.FUNCTION_DECL, k.CXX_METHOD, k.CONSTRUCTOR, k.DESTRUCTOR,
                          k.FUNCTION_TEMPLATE, k.CONVERSION_FUNCTION}
        self.dropped = {k.CALL_EXPR, k.COMPOUND_ASSIGNMENT_OPERATOR, k.UNARY_OPERATOR,
                        k.CSTYLE_CAST_EXPR}
        self.bodies = {k.FOR_STMT, k.WHILE_STMT, k.CXX_FOR_RANGE_STMT, k.CASE_STMT, k.DEFAULT_STMT}
        self.sites = {}  # by their bytes
        for cursor in unit.cursor.get_children():
            file = cursor.location.file
            if file is not None and file.name == self.path:
                self.outside(cursor, "")

    def text(self, start, end):
        return self.source[start:end].decode()

    def outside(self, cursor, function):
        """Looks for bodies: of functions, and of lambdas in the tables of a file."""
        if cursor.kind in self.functions:
            if "constexpr" in self.text(*extent(cursor)).split("(")[0]:
                return
            function = cursor.spelling
        elif cursor.kind == self.k.VAR_DECL:
            function = cursor.spelling
        inside = cursor.kind == self.k.COMPOUND_STMT
        for index, child in enumerate(cursor.get_children()):
            if inside:
                self.inside(child, [cursor], index, function)
            else:
                self.outside(child, function)

    def inside(self, cursor, above, place, function):
        k = self.k
        start, end = extent(cursor)
        if cursor.kind == k.STATIC_ASSERT or (cursor.kind == k.DECL_STMT and
                                              "constexpr" in self.text(start, end).split("=")[0]):
            return
        if cursor.spelling in SPACES and cursor.kind in (k.CALL_EXPR, k.UNEXPOSED_EXPR):
            return
        mutated = self.mutation(cursor, above, place)
        if mutated is not None and not self.is_place(cursor, above):
            self.add(cursor, above, mutated, function)
        for index, child in enumerate(cursor.get_children()):
            if cursor.kind != k.CASE_STMT or index > 0:  # a label is constant
                self.inside(child, above + [cursor], index, function)

    def add(self, cursor, above, mutated, function):
        start, end = extent(cursor)
        original = self.text(start, end)
        if "\n" in original and ("//" in original or 'R"' in original):
            return  # the change has to go into one line
        if (start, end) in self.sites:
            return  # clang wraps an expression in what it converts it to
        around, behind = start, end
        if cursor.kind in (self.k.INTEGER_LITERAL, self.k.CXX_BOOL_LITERAL_EXPR):
            wider = next((extent(c) for c in reversed(above) if extent(c) != (start, end)), None)
            if wider and wider[1] - wider[0] <= LONGEST_SHOWN:
                around, behind = wider
        shown = one_line(self.text(around, behind)) + " -> " + one_line(
            self.text(around, start) + (mutated or "(left out)") + self.text(end, behind))
        first, last = cursor.extent.start.line, cursor.extent.end.line
        self.sites[start, end] = Site(self.name, function, first, last, start, end,
                                      one_line(mutated), shown)

    def is_place(self, cursor, above):
        """Whether this is a number of the place that a widget gets."""
        wider = next((c for c in reversed(above) if extent(c) != extent(cursor)), None)
        return cursor.kind == self.k.INTEGER_LITERAL and wider is not None and wider.spelling in PLACES

    def mutation(self, cursor, above, place):
        """The changed text of an expression, an empty one for a statement, None for nothing."""
        k = self.k
        children = list(cursor.get_children())
        start, end = extent(cursor)
        text = self.text(start, end)
        if self.is_dropped(cursor, above[-1], place, end):
            return ""
        if cursor.kind == k.INTEGER_LITERAL and re.fullmatch(r"[0-9][0-9A-Fa-fxX']*[uUlL]*", text):
            return None if self.is_constant(above[-1]) else f"({text} + 1)"
        if cursor.kind == k.CXX_BOOL_LITERAL_EXPR and text in ("true", "false"):
            return "false" if text == "true" else "true"
        if cursor.kind == k.UNARY_OPERATOR and text.startswith("!") and children and \
                extent(children[0])[0] == start + 1:
            return f"static_cast<bool>({text[1:]})"
        swapped = self.swapped(cursor, children)
        if swapped:
            (_, left), (right, _) = extent(children[0]), extent(children[-1])
            return self.text(start, left) + f" {swapped} " + self.text(right, end)
        return None

    def is_constant(self, parent):
        """Whether a number under this is the size of an array or an argument of a template."""
        return parent.kind in (self.k.DECL_REF_EXPR, self.k.MEMBER_REF_EXPR) or (
            parent.kind == self.k.VAR_DECL and parent.type.kind == self.types.CONSTANTARRAY)

    def swapped(self, cursor, children):
        """What the operator of an expression is changed to, or None."""
        built_in = cursor.kind == self.k.BINARY_OPERATOR and len(children) == 2
        call = cursor.kind == self.k.CALL_EXPR and len(children) == 3
        if not built_in and not (call and cursor.spelling.startswith("operator")):
            return None
        # A macro's text shows none: what clang says of its places is the macro's own.
        operator = self.text(extent(children[0])[1], extent(children[-1])[0]).strip()
        number = self.types.BOOL.value <= cursor.type.get_canonical().kind.value <= \
            self.types.LONGDOUBLE.value
        if operator in ("+", "-") and not (built_in and number):
            return None
        return SWAPPED.get(operator)

    def is_dropped(self, cursor, parent, place, end):
        """Whether this is a statement that may be left out."""
        k = self.k
        children = list(cursor.get_children())
        if cursor.kind == k.UNEXPOSED_EXPR and children:
            return self.is_dropped(children[0], parent, place, end)
        # Only an assignment is an operator and a statement of its own.
        if cursor.kind not in self.dropped and cursor.kind != k.BINARY_OPERATOR:
            return False
        last = parent.kind in self.bodies and place == len(list(parent.get_children())) - 1
        if parent.kind != k.COMPOUND_STMT and not last and not (parent.kind == k.IF_STMT and place):
            return False
        return self.source[end:end + 80].lstrip().startswith(b";")


def find_sites(root, name, arguments):
    """All sites of the source root/name, which is compiled with these arguments."""
    cindex = load_cindex()
    unit = cindex.Index.create().parse(str(root / name), args=arguments)
    bad = [str(d) for d in unit.diagnostics if d.severity >= cindex.Diagnostic.Error]
    if bad:
        raise Failure(f"clang can't read {name}: {bad[0]}")
    return list(Finder(root, name, unit, cindex).sites.values())


def rewrite(source, numbered):
    """The source with these sites switched by their numbers. `numbered` is [(number, site)]."""
    def render(start, end, inner):
        out, at = b"", start
        while inner:
            number, site = inner[0]
            within = [(n, s) for n, s in inner[1:] if s.start < site.end]
            inner = [(n, s) for n, s in inner[1:] if s.start >= site.end]
            original = render(site.start, site.end, within)
            out += source[at:site.start]
            if site.mutated:
                out += b"(Mutant(%d) ? %s : %s)" % (number, site.mutated.encode(), original)
            else:
                out += b"if (Mutant(%d)) {} else %s" % (number, original)
            at = site.end
        return out + source[at:end]

    return render(0, len(source), sorted(numbered, key=lambda item: (item[1].start, -item[1].end)))
