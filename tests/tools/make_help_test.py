#!/usr/bin/env python3
"""Tests of tools/make_help.py, each on a manual of its own in a temporary folder."""

import html.parser
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
SCRIPT = ROOT / "tools" / "make_help.py"
CONTENTS, RULES, KEYS = (f"zrtlog127Help{topic}.html" for topic in ("", "-100", "-101"))
VOID = {"meta", "img", "hr", "br"}


class Balance(html.parser.HTMLParser):
    """Reads a page: whether every tag is closed in its turn, its anchors and its links."""

    def __init__(self, text):
        super().__init__()
        self.open, self.anchors, self.links, self.wrong = [], [], [], []
        self.feed(text)
        self.close()
        self.wrong += self.open

    def handle_starttag(self, tag, attrs):
        attrs = dict(attrs)
        if tag not in VOID:
            self.open.append(tag)
        if "id" in attrs:
            self.anchors.append(attrs["id"])
        if tag == "a":
            self.links.append(attrs["href"])

    def handle_endtag(self, tag):
        if not self.open or self.open.pop() != tag:
            self.wrong.append("/" + tag)


class MakeHelp(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.manual = Path(folder.name) / "manual"
        self.out = Path(folder.name) / "out"
        self.manual.mkdir()
        for stem in ("contents", "contests", "keyboard"):
            self.put(stem, f"# The {stem}\n")

    def put(self, stem, text):
        (self.manual / f"{stem}.md").write_text(text, encoding="utf-8")

    def run_script(self, *arguments):
        run = subprocess.run(
            [sys.executable, str(SCRIPT), *map(str, arguments)],
            capture_output=True,
            text=True,
            check=False,
        )
        return run.returncode, run.stdout.splitlines(), run.stderr

    def page(self, name):
        return (self.out / name).read_text(encoding="utf-8")

    def body(self, text, findings=()):
        """What the text becomes, behind the line of links."""
        self.put("page", text)
        status, lines, _ = self.run_script(self.manual, self.out)
        self.assertEqual((status, lines), (0, list(findings)))
        whole = self.page("zrtlog127Help-page.html")
        self.assertEqual(Balance(whole).wrong, [])
        return whole.split("</nav>\n")[1].removesuffix("\n</body>\n</html>\n")

    def assert_findings(self, *findings):
        status, lines, _ = self.run_script("--check", self.manual)
        self.assertEqual((status, lines), (1 if findings else 0, list(findings)))

    # ---- pages

    def test_topics_have_their_names(self):
        self.run_script(self.manual, self.out)
        self.assertEqual(sorted(p.name for p in self.out.iterdir()), sorted([CONTENTS, RULES, KEYS]))
        for name, stem in ((CONTENTS, "contents"), (RULES, "contests"), (KEYS, "keyboard")):
            self.assertIn(f'<h1 id="the-{stem}">The {stem}</h1>', self.page(name))
            self.assertIn(f"<title>The {stem}</title>", self.page(name))

    def test_each_page_leads_to_the_topics(self):
        self.run_script(self.manual, self.out)
        self.assertEqual(Balance(self.page(RULES)).links, [CONTENTS, KEYS])

    def test_pages_that_are_no_more_are_removed_and_others_left(self):
        self.put("old", "# Old\n")
        self.run_script(self.manual, self.out)
        self.assertTrue((self.out / "zrtlog127Help-old.html").exists())
        (self.manual / "old.md").unlink()
        (self.out / "cty.dat").write_text("x")
        self.run_script(self.manual, self.out)
        self.assertFalse((self.out / "zrtlog127Help-old.html").exists())
        self.assertTrue((self.out / "cty.dat").exists())

    def test_a_page_without_change_is_not_written(self):
        self.run_script(self.manual, self.out)
        before = (self.out / KEYS).stat().st_mtime_ns
        self.run_script(self.manual, self.out)
        self.assertEqual((self.out / KEYS).stat().st_mtime_ns, before)
        self.put("keyboard", "# Other\n")
        self.run_script(self.manual, self.out)
        self.assertIn("Other", self.page(KEYS))

    def test_check_writes_nothing(self):
        self.assert_findings()
        self.assertFalse(self.out.exists())

    def test_arguments(self):
        self.assertEqual(self.run_script()[0], 2)
        self.assertEqual(self.run_script("--check", self.out)[0], 2)
        self.assertIn("no manual here", self.run_script(self.out, self.out)[2])

    def test_a_topic_without_a_page(self):
        (self.manual / "keyboard.md").unlink()
        self.assert_findings("keyboard.md: the Help menu opens this page")

    # ---- blocks

    def test_paragraphs_and_headings(self):
        self.assertEqual(
            self.body("# One `two`\nA line\nand on\n\nNext\n## Up & down\n"),
            '<h1 id="one-two">One <code>two</code></h1>\n<p>A line\nand on</p>\n<p>Next</p>\n'
            '<h2 id="up--down">Up &amp; down</h2>',
        )

    def test_table(self):
        self.assertEqual(
            self.body("Text\n\n| A | B |\n|---|:-:|\n| `x|y` | a\\|b |\n| one |  |\n\nAfter\n"),
            '<p>Text</p>\n<div class="wide"><table>\n<tr><th>A</th><th>B</th></tr>\n'
            "<tr><td><code>x|y</code></td><td>a|b</td></tr>\n<tr><td>one</td><td></td></tr>\n"
            "</table></div>\n<p>After</p>",
        )

    def test_table_with_a_wrong_row(self):
        body = self.body(
            "| A | B |\n|---|---|\n| 1 | 2 | 3 |\n", ["page.md:3: 3 cells in a table of 2 columns"]
        )
        self.assertIn("<td>3</td>", body)

    def test_lists(self):
        self.assertEqual(
            self.body("Text:\n- one\n  and on\n- two\n  - inner\n- three\n\nAfter\n"),
            "<p>Text:</p>\n<ul>\n<li>one\nand on</li>\n<li>two\n<ul>\n<li>inner</li>\n</ul></li>\n"
            "<li>three</li>\n</ul>\n<p>After</p>",
        )
        self.assertEqual(
            self.body("1. one\n2. two\n10. ten\n"),
            "<ol>\n<li>one</li>\n<li>two</li>\n<li>ten</li>\n</ol>",
        )

    def test_a_list_item_holds_blocks(self):
        self.assertEqual(
            self.body("- one\n\n  more\n\n  ```\n  code\n    in\n  ```\n- two\n"),
            "<ul>\n<li><p>one</p>\n<p>more</p>\n<pre><code>code\n  in</code></pre></li>\n"
            "<li>two</li>\n</ul>",
        )

    def test_a_number_at_the_front_of_a_line_is_no_list(self):
        self.assertEqual(self.body("It was in\n1989. And\n"), "<p>It was in\n1989. And</p>")

    def test_code_keeps_everything(self):
        self.assertEqual(
            self.body("```text\n# no *heading* <b>\n\n| a |\n[x](y.md)\n```\n"),
            "<pre><code># no *heading* &lt;b&gt;\n\n| a |\n[x](y.md)</code></pre>",
        )

    def test_code_without_an_end(self):
        self.body("# A\n```\nx\n", ["page.md:2: the code that begins here has no end"])

    def test_rule_and_quote(self):
        self.assertEqual(
            self.body("---\n> a\n> b\n"), "<hr>\n<blockquote>\n<p>a\nb</p>\n</blockquote>"
        )

    # ---- inside a line

    def test_emphasis(self):
        self.assertEqual(
            self.body("**Bold `c`** and *em*, 2 * 3 * 4, a_b_c, \\*no\\*\n"),
            "<p><strong>Bold <code>c</code></strong> and <em>em</em>, 2 * 3 * 4, a_b_c, *no*</p>",
        )

    def test_html_is_text(self):
        self.assertEqual(
            self.body('<script>x</script> & "q" `<b>`\n'),
            '<p>&lt;script&gt;x&lt;/script&gt; &amp; "q" <code>&lt;b&gt;</code></p>',
        )

    def test_marks_in_code_are_code(self):
        self.assertEqual(
            self.body("`*a*` `[x](y)` `\\` ``a`b``\n"),
            "<p><code>*a*</code> <code>[x](y)</code> <code>\\</code> <code>a`b</code></p>",
        )

    def test_links(self):
        self.assertEqual(
            self.body(
                "# Here\n[`K` keys](keyboard.md) [](x) [it](contests.md#the-contests) [up](#here)\n"
                "[out](https://example.org/?a=1&b=2)\n"
            ),
            f'<h1 id="here">Here</h1>\n<p><a href="{KEYS}"><code>K</code> keys</a> [](x) '
            f'<a href="{RULES}#the-contests">it</a> <a href="#here">up</a>\n'
            '<a href="https://example.org/?a=1&amp;b=2">out</a></p>',
        )

    def test_dead_links_are_told_and_become_text(self):
        body = self.body(
            "a\n\n[one](gone.md) [two](keyboard.md#no)\n[three](../README.md)\n",
            [
                "page.md:3: no page gone.md",
                "page.md:3: no heading #no in keyboard.md",
                "page.md:3: no page ../README.md",
            ],
        )
        self.assertEqual(body, f'<p>a</p>\n<p>one <a href="{KEYS}">two</a>\nthree</p>')
        self.assert_findings(
            "page.md:3: no page gone.md",
            "page.md:3: no heading #no in keyboard.md",
            "page.md:3: no page ../README.md",
        )

    def test_a_heading_that_comes_again_gets_a_number(self):
        text = "# A\n## B\n## B\n[x](#b-1)\n```\n# B\n```\n"
        self.assertIn('<h2 id="b-1">B</h2>\n<p><a href="#b-1">x</a></p>', self.body(text))

    def test_pictures_are_in_the_page(self):
        (self.manual / "dot.svg").write_text("<svg/>")
        self.assertEqual(
            self.body("![a dot](dot.svg)\n"),
            '<p><img alt="a dot" src="data:image/svg+xml;base64,PHN2Zy8+"></p>',
        )
        self.assertEqual(
            self.body("![a dot](no.svg)\n", ["page.md:1: no picture no.svg"]), "<p>a dot</p>"
        )

    # ---- the manual of the program

    def test_every_page_of_the_manual(self):
        manual = ROOT / "docs" / "manual"
        status, _, errors = self.run_script(manual, self.out)
        self.assertEqual((status, errors), (0, ""))
        pages = {path.name: Balance(self.page(path.name)) for path in self.out.iterdir()}
        self.assertEqual(len(pages), len(list(manual.glob("*.md"))))
        reached = {CONTENTS}
        for name, page in pages.items():
            self.assertEqual(page.wrong, [], name)
            self.assertEqual(len(page.anchors), len(set(page.anchors)), name)
            for link in page.links:
                target, _, anchor = link.partition("#")
                if "://" in target:
                    continue
                self.assertIn(target or name, pages, f"{name}: {link}")
                if anchor:
                    self.assertIn(anchor, pages[target or name].anchors, f"{name}: {link}")
                reached.add(target or name)
        self.assertEqual(set(pages) - reached, set(), "no page leads there")

    def test_the_contents_lead_to_every_page(self):
        manual = ROOT / "docs" / "manual"
        self.run_script(manual, self.out)
        links = {link.partition("#")[0] for link in Balance(self.page(CONTENTS)).links}
        self.assertEqual({path.name for path in self.out.iterdir()} - {CONTENTS} - links, set())


if __name__ == "__main__":
    unittest.main()
