# SPDX-License-Identifier: MIT
"""The pages: every link leads somewhere, and doc/README.md leads to every page."""

import pathlib
import re
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
FENCE = re.compile(r"^```.*?^```$", re.MULTILINE | re.DOTALL)
CODE = re.compile(r"^```(cmake|cpp|qml)\n(.*?)^```$", re.MULTILINE | re.DOTALL)
EXAMPLES = ROOT / "examples"
LINK = re.compile(r"\]\(([^)\s]+)\)")


def pages():
    return [ROOT / "README.md", ROOT / "CONTRIBUTING.md", *sorted((ROOT / "doc").rglob("*.md")),
            *sorted((ROOT / "examples").rglob("*.md"))]


def links(page):
    """Pairs of the file a link leads to and the heading in it, which may be empty."""
    for target in LINK.findall(FENCE.sub("", page.read_text())):
        if "://" not in target:
            path, _, heading = target.partition("#")
            yield ((page.parent / path).resolve() if path else page), heading


def anchors(page):
    """The names of the headings as GitHub makes them."""
    found = []
    for heading in re.findall(r"^#+ (.*)$", FENCE.sub("", page.read_text()), re.MULTILINE):
        found.append(re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-"))
    return found


def plain(code):
    """Lines without what they are indented by; in an example the major version is a variable."""
    code = code.replace("VexaQt${QT_VERSION_MAJOR} 0.1", "VexaQt6").replace("install-region", "maps")
    return "\n".join(line.strip() for line in code.strip().splitlines())


class LinksTest(unittest.TestCase):
    def test_every_link_leads_to_a_file_and_a_heading(self):
        count = 0
        for page in pages():
            for target, heading in links(page):
                with self.subTest(page=page.name, target=target.name, heading=heading):
                    count += 1
                    self.assertTrue(target.exists())
                    if heading:
                        self.assertIn(heading, anchors(target))
        self.assertGreater(count, 40)

    def test_the_index_leads_to_every_page(self):
        index = ROOT / "doc" / "README.md"
        listed = {target for target, _ in links(index)}
        missing = [page.name for page in (ROOT / "doc").glob("*.md")
                   if page != index and page not in listed]
        self.assertEqual(missing, [])
        self.assertIn(index, {target for target, _ in links(ROOT / "README.md")})

    def test_drawings_and_listings_fit_a_terminal(self):
        for page in pages():
            for block in FENCE.findall(page.read_text()):
                # JSON is shown as it lies on the disk, in one line.
                if not block.startswith("```json"):
                    self.assertEqual([line for line in block.splitlines() if len(line) > 100], [],
                                     page.name)

    def test_the_code_in_the_readme_stands_in_the_examples(self):
        examples = {"cmake": EXAMPLES / "cpp" / "CMakeLists.txt", "cpp": EXAMPLES / "cpp" / "main.cpp",
                    "qml": EXAMPLES / "qml" / "Main.qml"}
        seen = set()
        for language, code in CODE.findall((ROOT / "README.md").read_text()):
            example = plain(examples[language].read_text())
            seen.add(language)
            for part in code.split("\n\n"):
                with self.subTest(part=part):
                    self.assertIn(plain(part), example)
        self.assertEqual(seen, set(examples))

    def test_code_is_compared_without_its_place_in_the_line(self):
        self.assertEqual(plain("if (a)\n    b;\n"), plain("    if (a)\n        b;"))
        self.assertNotEqual(plain("if (a)\n    b;\n"), plain("if (a)\n    c;\n"))


if __name__ == "__main__":
    unittest.main()
