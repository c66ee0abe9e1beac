#!/usr/bin/env python3
"""Makes the help pages of the program's folder from the manual. The build runs it.

    tools/make_help.py MANUAL OUT     writes a page into OUT for each MANUAL/*.md
    tools/make_help.py --check MANUAL writes nothing

Of Markdown it knows what the manual uses: headings, paragraphs, tables, lists, fenced code, quotes,
rules, and in a line code, emphasis, links and pictures. HTML is shown as it stands, never passed on.

Prints one line a finding (file:line: what is wrong). Exit 0: clean, 1: findings, 2: no manual. While
building, findings are told and the pages are written all the same: a dead link shows as plain text.
"""

import base64
import html
import re
import sys
from pathlib import Path

# The pages stand beside the help file and carry its name; the Help menu opens these by number.
BASE = "zrtlog127Help"
TOPICS = {"contents": "", "contests": "-100", "keyboard": "-101"}
# The line at the top of each page.
LINKS = [("contents", "Contents"), ("contests", "Contest rules"), ("keyboard", "Keyboard commands")]

PICTURES = {".png": "image/png", ".jpg": "image/jpeg", ".svg": "image/svg+xml"}

STYLE = """\
:root { color-scheme: light dark; --ink: #1c1e21; --paper: #fdfdfb; --faint: #5c636b;
  --line: #c9ced4; --shade: #eef0f2; --link: #0b57a4; }
@media (prefers-color-scheme: dark) { :root { --ink: #e3e6e9; --paper: #17191c; --faint: #a2abb4;
  --line: #434a52; --shade: #24282d; --link: #82b9f4; } }
body { margin: 0 auto; padding: 1rem 1.25rem 4rem; max-width: 52rem; color: var(--ink);
  background: var(--paper); font: 1rem/1.5 system-ui, "DejaVu Sans", sans-serif; }
nav { padding-bottom: .5rem; border-bottom: 1px solid var(--line); color: var(--faint); }
nav a, nav b { margin-right: 1.25rem; }
nav b { color: var(--ink); }
h1, h2, h3, h4 { line-height: 1.25; margin: 1.75em 0 .5em; }
h1 { margin-top: .8em; }
a { color: var(--link); }
code, pre { font: .92em/1.45 ui-monospace, "DejaVu Sans Mono", monospace; background: var(--shade);
  border-radius: 3px; }
code { padding: .1em .3em; }
pre { padding: .75rem 1rem; overflow-x: auto; }
pre code { padding: 0; font-size: 1em; background: none; }
.wide { overflow-x: auto; margin: 1rem 0; }
table { border-collapse: collapse; }
th, td { border: 1px solid var(--line); padding: .3rem .6rem; text-align: left;
  vertical-align: top; }
th { background: var(--shade); }
blockquote { margin: 1rem 0; padding-left: 1rem; border-left: 3px solid var(--line); }
img { max-width: 100%; }
@media print { nav { display: none; } body { max-width: none; } }
"""

HEADING = re.compile(r"(#{1,6})\s+(.*?)\s*#*\s*$")
ITEM = re.compile(r"(\s*)([-*]|\d+[.)])\s+(.*)")
RULE = re.compile(r"\s*([-*_])(\s*\1){2,}\s*$")
DIVIDER = re.compile(r"\s*\|?\s*:?-+:?\s*(\|\s*:?-+:?\s*)*\|?\s*$")
FENCE = re.compile(r"\s*(```+|~~~+)")
INLINE = re.compile(
    r"""
      \\(?P<escaped>[^\w\s])
    | (?P<ticks>`+)(?P<code>.+?)(?<!`)(?P=ticks)(?!`)
    | !\[(?P<alt>[^\]]*)\]\((?P<picture>[^()\s]+)\)
    | \[(?P<text>(?:`[^`]*`|\\.|[^\]])+)\]\((?P<target>[^()\s]+)\)
    | \*\*(?=\S)(?P<strong>.+?)(?<=\S)\*\*
    | (?<![*\w])\*(?=[^\s*])(?P<em>[^*]*?)(?<=\S)\*(?![*\w])
    """,
    re.VERBOSE | re.DOTALL,
)


def page_name(stem):
    return BASE + TOPICS.get(stem, "-" + stem) + ".html"


def plain(text):
    """The text of a line without its marks."""

    def bare(m):
        return next(
            (plain(m[name]) if name in ("strong", "em", "text") else m[name])
            for name in ("escaped", "code", "alt", "text", "strong", "em")
            if m[name] is not None
        )

    return INLINE.sub(bare, text)


def slug(title):
    words = re.sub(r"[^\w\s-]", "", plain(title).lower())
    return re.sub(r"\s", "-", words.strip())


def read_fenced(lines):
    """Pairs (number, line), with None for a line that stands in or at a fence."""
    fence = None
    for number, line in enumerate(lines, 1):
        mark = FENCE.match(line)
        if fence:
            fence = None if line.strip() == fence else fence
            yield number, None
        elif mark:
            fence = mark[1]
            yield number, None
        else:
            yield number, line


def anchors_of(lines):
    """The anchor of each heading by its line; a title that comes again gets a number."""
    found, used = {}, set()
    for number, line in read_fenced(lines):
        heading = line is not None and HEADING.match(line)
        if heading:
            name = first = slug(heading[2])
            again = 0
            while name in used:
                again += 1
                name = f"{first}-{again}"
            used.add(name)
            found[number] = name
    return found


class Page:
    def __init__(self, path):
        self.path = path
        self.lines = path.read_text(encoding="utf-8").split("\n")
        self.anchors = anchors_of(self.lines)
        titles = (HEADING.match(self.lines[number - 1])[2] for number in self.anchors)
        self.title = plain(next(titles, path.stem))


class Writer:
    """Turns one page into HTML. `pages` are all of the manual by stem."""

    def __init__(self, page, pages):
        self.page = page
        self.pages = pages
        self.findings = []
        self.number = 0  # of the line in hand

    def complain(self, what):
        finding = f"{self.page.path.name}:{self.number}: {what}"
        if finding not in self.findings:
            self.findings.append(finding)

    # ---- inside a line

    def address(self, target):
        """What a link's target becomes, or None if it leads nowhere."""
        if re.match(r"(https?|mailto):", target):
            return target
        name, _, anchor = target.partition("#")
        page = self.page if not name else None
        if name.endswith(".md") and "/" not in name:
            page = self.pages.get(name[:-3])
        if page is None:
            self.complain(f"no page {name}")
            return None
        if anchor and anchor not in page.anchors.values():
            self.complain(f"no heading #{anchor} in {page.path.name}")
            anchor = ""
        return (page_name(page.path.stem) if name else "") + ("#" + anchor if anchor else "")

    def picture(self, target, alt):
        path = self.page.path.parent / target
        kind = PICTURES.get(path.suffix.lower())
        if kind is None or not path.is_file():
            self.complain(f"no picture {target}")
            return html.escape(alt)
        data = base64.b64encode(path.read_bytes()).decode("ascii")
        return f'<img alt="{html.escape(alt)}" src="data:{kind};base64,{data}">'

    def inline(self, text):
        parts, end = [], 0
        for m in INLINE.finditer(text):
            parts.append(html.escape(text[end : m.start()], quote=False))
            parts.append(self.marked(m))
            end = m.end()
        parts.append(html.escape(text[end:], quote=False))
        return "".join(parts)

    def marked(self, m):
        if m["escaped"]:
            return html.escape(m["escaped"], quote=False)
        if m["code"]:
            return "<code>" + html.escape(m["code"].strip(), quote=False) + "</code>"
        if m["picture"]:
            return self.picture(m["picture"], m["alt"])
        if m["strong"]:
            return "<strong>" + self.inline(m["strong"]) + "</strong>"
        if m["em"]:
            return "<em>" + self.inline(m["em"]) + "</em>"
        address = self.address(m["target"])
        text = self.inline(m["text"])
        return f'<a href="{html.escape(address)}">{text}</a>' if address else text

    # ---- blocks: each takes lines from the front of `rest`, pairs (number, line)

    def blocks(self, rest):
        out = []
        while rest:
            self.number, line = rest[0]
            if not line.strip():
                rest.pop(0)
            elif FENCE.match(line):
                out.append(self.code(rest))
            elif HEADING.match(line):
                out.append(self.heading(rest))
            elif RULE.match(line):
                rest.pop(0)
                out.append("<hr>")
            elif line.lstrip().startswith(">"):
                out.append(self.quote(rest))
            elif self.table_begins(rest):
                out.append(self.table(rest))
            elif ITEM.match(line):
                out.append(self.list(rest))
            else:
                out.append(self.paragraph(rest))
        return "\n".join(out)

    def code(self, rest):
        _, first = rest.pop(0)
        fence = FENCE.match(first)[1]
        indent = len(first) - len(first.lstrip())
        lines = []
        while rest and rest[0][1].strip() != fence:
            line = rest.pop(0)[1]
            lines.append(line[min(indent, len(line) - len(line.lstrip())) :])
        if rest:
            rest.pop(0)
        else:
            self.complain("the code that begins here has no end")
        return "<pre><code>" + html.escape("\n".join(lines), quote=False) + "</code></pre>"

    def heading(self, rest):
        number, line = rest.pop(0)
        m = HEADING.match(line)
        level = len(m[1])
        anchor = html.escape(self.page.anchors.get(number, slug(m[2])))
        return f'<h{level} id="{anchor}">{self.inline(m[2])}</h{level}>'

    def quote(self, rest):
        lines = []
        while rest and rest[0][1].lstrip().startswith(">"):
            number, line = rest.pop(0)
            lines.append((number, re.sub(r"^\s*> ?", "", line)))
        return "<blockquote>\n" + self.blocks(lines) + "\n</blockquote>"

    @staticmethod
    def table_begins(rest):
        return "|" in rest[0][1] and len(rest) > 1 and bool(DIVIDER.match(rest[1][1]))

    @staticmethod
    def cells(line):
        """The cells of a row; a bar behind a backslash or in code is text."""
        line = line.strip()
        cells, cell, in_code = [], "", False
        for m in re.finditer(r"\\\||`|\||[^\\`|]+|\\", line.removeprefix("|")):
            if m[0] == "|" and not in_code:
                cells.append(cell.strip())
                cell = ""
                continue
            in_code ^= m[0] == "`"
            cell += "|" if m[0] == "\\|" else m[0]
        return cells + [cell.strip()] if cell.strip() else cells

    def table(self, rest):
        head = self.cells(rest.pop(0)[1])
        rest.pop(0)
        rows = [self.row("th", head, len(head))]
        while rest and "|" in rest[0][1]:
            self.number, line = rest.pop(0)
            cells = self.cells(line)
            if len(cells) != len(head):
                self.complain(f"{len(cells)} cells in a table of {len(head)} columns")
            rows.append(self.row("td", cells, len(head)))
        return '<div class="wide"><table>\n' + "\n".join(rows) + "\n</table></div>"

    def row(self, tag, cells, columns):
        cells = (cells + [""] * columns)[: max(columns, len(cells))]
        return "<tr>" + "".join(f"<{tag}>{self.inline(c)}</{tag}>" for c in cells) + "</tr>"

    def list(self, rest):
        first = ITEM.match(rest[0][1])
        indent, ordered = len(first[1]), first[2][0].isdigit()
        items = []
        while rest:
            m = ITEM.match(rest[0][1])
            if not m or len(m[1]) != indent or m[2][0].isdigit() != ordered:
                break
            items.append("<li>" + self.item(rest, m) + "</li>")
        tag = "ol" if ordered else "ul"
        return f"<{tag}>\n" + "\n".join(items) + f"\n</{tag}>"

    def item(self, rest, m):
        """One item: its line, and what is indented below it."""
        inner = m.start(3)
        lines = [(rest.pop(0)[0], m[3])]
        while rest:
            line = rest[0][1]
            depth = len(line) - len(line.lstrip())
            after_blank = not lines[-1][1].strip()
            ends = after_blank or ITEM.match(line) or self.begins_block(rest)
            if line.strip() and depth <= len(m[1]) and ends:
                break
            number, line = rest.pop(0)
            lines.append((number, line[min(inner, depth) :]))
        text = self.blocks(lines)
        # An item of one paragraph stands without its tags.
        single = re.fullmatch(r"<p>((?:(?!<p>).)*?)</p>(\n<[uo]l>.*)?", text, re.DOTALL)
        return single[1] + (single[2] or "") if single else text

    def begins_block(self, rest):
        """Whether the line ends a paragraph. "1989. Since then" at its front is no list."""
        line = rest[0][1]
        item = ITEM.match(line)
        return bool(
            (item and item[2] in ("-", "*", "1.", "1)"))
            or HEADING.match(line)
            or FENCE.match(line)
            or RULE.match(line)
            or line.lstrip().startswith(">")
            or self.table_begins(rest)
        )

    def paragraph(self, rest):
        lines = [rest.pop(0)[1].strip()]
        while rest and rest[0][1].strip() and not self.begins_block(rest):
            lines.append(rest.pop(0)[1].strip())
        return "<p>" + self.inline("\n".join(lines)) + "</p>"

    # ---- the whole

    def html(self):
        body = self.blocks(list(enumerate(self.page.lines, 1)))
        here = self.page.path.stem
        links = " ".join(
            f"<b>{text}</b>" if stem == here else f'<a href="{page_name(stem)}">{text}</a>'
            for stem, text in LINKS
            if stem in self.pages
        )
        title = html.escape(self.page.title)
        return (
            '<!DOCTYPE html>\n<html lang="en">\n<head>\n<meta charset="utf-8">\n'
            '<meta name="viewport" content="width=device-width">\n'
            f"<title>{title}</title>\n<style>\n{STYLE}</style>\n</head>\n<body>\n"
            f"<nav>{links}</nav>\n{body}\n</body>\n</html>\n"
        )


def make(manual):
    """The pages' texts by name, and the findings."""
    pages = {path.stem: Page(path) for path in sorted(manual.glob("*.md"))}
    findings = [f"{stem}.md: the Help menu opens this page" for stem in TOPICS if stem not in pages]
    texts = {}
    for stem, page in pages.items():
        writer = Writer(page, pages)
        texts[page_name(stem)] = writer.html()
        findings += writer.findings
    return texts, findings


def write(texts, out):
    """Writes what has changed, and removes the pages of a manual that was."""
    out.mkdir(parents=True, exist_ok=True)
    for old in out.glob(BASE + "*.html"):
        if old.name not in texts:
            old.unlink()
    for name, text in texts.items():
        page = out / name
        if not page.is_file() or page.read_text(encoding="utf-8") != text:
            page.write_text(text, encoding="utf-8")


def main(arguments):
    check = arguments[:1] == ["--check"]
    if len(arguments) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    manual = Path(arguments[1] if check else arguments[0])
    if not any(manual.glob("*.md")):
        print(f"{manual}: no manual here", file=sys.stderr)
        return 2
    texts, findings = make(manual)
    for finding in findings:
        print(finding)
    if check:
        return 1 if findings else 0
    write(texts, Path(arguments[1]))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
