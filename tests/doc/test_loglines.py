# SPDX-License-Identifier: MIT
"""doc/troubleshooting.md: each line that the library logs above traces stands there, and no other."""

import pathlib
import re
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
PAGE = ROOT / "doc" / "troubleshooting.md"
FOLDERS = ("plugin", "archive", "catalog", "cityindex", "download", "host/shared")

CALL = re.compile(r"(?:L::og\(\)|\bd)->(error|warning|info|trace)\(|(?<=\s)log\((?=\")")
LITERAL = re.compile(r'"((?:[^"\\]|\\.)*)"')
# Calls whose text comes out of a variable, and where its literals stand in the same file.
ELSEWHERE = {
    "decision.logLine": re.compile(r'"(Will (?:not )?resume - [\w ]+)"'),
}


def arguments(text, start):
    """The first argument of a call whose opening parenthesis is in front of start."""
    depth, i = 1, start
    while depth:
        if text[i] == '"':
            i = LITERAL.match(text, i).end()
            continue
        depth += {"(": 1, "{": 1, ")": -1, "}": -1}.get(text[i], 0)
        if depth == 1 and text[i] == ",":
            break
        i += 1
    return text[start:i if depth else i - 1]


def shape(argument):
    """The text as the page has it: literals as they stand, … for everything in between."""
    argument = re.sub(r'"\s*"', "", argument)  # literals side by side are one
    parts, end = [], 0
    for literal in LITERAL.finditer(argument):
        between = argument[end:literal.start()]
        if re.sub(r"Q(Latin1String|StringLiteral|Latin1Char)|[()\s+]", "", between):
            parts.append("…")
        parts.append(re.sub(r"\\(.)", r"\1", literal.group(1)))
        end = literal.end()
    if re.sub(r"[()\s+]", "", argument[end:]):
        parts.append("…")
    return re.sub("…+", "…", "".join(parts))


def log_lines():
    """Every logged text by level: {"error": {text: "file:line"}, ...}."""
    found = {"error": {}, "warning": {}, "info": {}, "trace": {}}
    for folder in FOLDERS:
        for file in sorted((ROOT / folder).glob("*.[ch]*")):
            text = file.read_text()
            for call in CALL.finditer(text):
                place = f"{file.relative_to(ROOT)}:{text.count(chr(10), 0, call.start()) + 1}"
                argument = arguments(text, call.end())
                shapes = [shape(argument)]
                if '"' not in argument:
                    shapes = texts_elsewhere(argument, text)
                for one in shapes:
                    found[call.group(1) or "trace"].setdefault(one, place)
    return found


def texts_elsewhere(argument, text):
    for mark, literals in ELSEWHERE.items():
        if mark in argument:
            return literals.findall(text)
    if argument in ("text", "QString::fromLatin1(text)"):
        return []  # helpers that pass on what their callers give
    raise AssertionError(f"where does the text of this line come from: {argument}")


def extractor_messages():
    text = (ROOT / "archive/vexaarchive.cpp").read_text()
    found = set()
    for call in re.finditer(r"\b(fail|failByLibrary)\((?=\w+Error,)", text):
        code = arguments(text, call.end())
        message = arguments(text, call.end() + len(code) + 1)
        own = shape(message)
        if call.group(1) == "failByLibrary":
            own = own.rstrip("…") + "…"  # libarchive's words
        found.add(own)
    return found - {"…"}


def is_signature(text):
    return re.match(r"[\w<>,&* ]*::~?\w+[(<]", text) or "::" in text.split("(")[0]


def sections(page):
    """The texts between backquotes of the headings and first columns, by heading."""
    found = {}
    for part in re.split(r"^## ", page, flags=re.MULTILINE)[1:]:
        title, _, body = part.partition("\n")
        texts = set()
        for line in body.splitlines():
            if line.startswith("### "):
                texts.update(re.findall(r"`([^`]*)`", line))
            elif line.startswith("| "):
                cells = line.split("|")
                texts.update(re.findall(r"`([^`]*)`", cells[2 if cells[1].strip().isdigit() else 1]))
        found[title] = texts
    return found


class LogLinesTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.lines = log_lines()
        cls.page = sections(PAGE.read_text())

    def assert_same(self, logged, section):
        self.assertEqual({text: place for text, place in logged.items()
                          if text not in self.page[section]}, {}, f"missing below {section}")
        self.assertEqual(self.page[section] - set(logged), set(), f"not logged: {section}")

    def test_the_library_logs_on_every_level(self):
        # Else the patterns above find nothing, and everything else passes.
        self.assertGreaterEqual(len(self.lines["error"]), 20)
        self.assertGreaterEqual(len(self.lines["warning"]), 9)
        self.assertGreaterEqual(len(self.lines["info"]), 30)
        self.assertGreaterEqual(len(self.lines["trace"]), 50)
        self.assertIn("Enqueing an Item ...", self.lines["trace"])
        self.assertIn("Couldn't create directory: …", self.lines["warning"])

    def test_every_error_is_explained(self):
        self.assert_same(self.lines["error"], "Errors")

    def test_every_warning_is_explained(self):
        self.assert_same(self.lines["warning"], "Warnings")

    def test_every_information_is_explained(self):
        self.assert_same(self.lines["info"], "Informations")

    def test_every_trace_but_signatures_is_explained(self):
        self.assert_same({text: place for text, place in self.lines["trace"].items()
                          if not is_signature(text)}, "Traces")

    def test_every_message_of_the_extractor_is_explained(self):
        messages = extractor_messages()
        self.assertIn("Unpacking was cancelled", messages)
        self.assert_same({text: "archive/vexaarchive.cpp" for text in messages},
                         "The messages of the extractor")

    def test_every_error_and_warning_says_what_to_do(self):
        text = PAGE.read_text()
        for entry in re.split(r"^##", text, flags=re.MULTILINE):
            if entry.startswith("# `"):
                self.assertIn("**Do:**", entry)


if __name__ == "__main__":
    unittest.main()
