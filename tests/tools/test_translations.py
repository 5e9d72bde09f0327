# SPDX-License-Identifier: MIT
"""The app's texts in all its languages: nothing left out, and nothing that shows as broken."""

import collections
import os
import re
import shutil
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent.parent
FILES = sorted((PROJECT / "i18n").glob("*.ts"))
PLURAL_FORMS = {
    "ar": 6, "de": 2, "en": 2, "es": 2, "fi": 2, "fr": 2, "ja": 1, "ru": 3, "zh_CN": 1,
}
# QString::arg() takes two digits where it finds them: "%10" is no "%1" before a nought.
PLACEHOLDER = re.compile(r"%L?(?:\d\d?|n)")
# A text ends in these if its source does, and only then. Chinese and Japanese colons are wide.
ENDS = (
    (re.compile(r"^\s"), "blank in front"),
    (re.compile(r"\s$"), "blank behind"),
    (re.compile(r"[:：]$"), "colon"),
    (re.compile(r"(?:\.\.\.|…)$"), "ellipsis"),
)
# Digits do not: the first letter of a text decides the direction of all of it.
LEFT_TO_RIGHT = re.compile(r"[^\w\u200f]*[A-Za-z]")
ARABIC = re.compile(r"[\u0600-\u06ff]")


def messages(root):
    """Each message of a file with the key that is the same in all languages."""
    for context in root.iter("context"):
        for message in context.iter("message"):
            yield (context.findtext("name"), message.findtext("source"),
                   message.findtext("comment", "")), message


def placeholders(text, plain=()):
    """How often each stands in a text. "%L1", in the language's own digits, may stand for a plain
    "%1"."""
    names = PLACEHOLDER.findall(text)
    return collections.Counter(digits if (digits := name.replace("L", "")) in plain else name
                               for name in names)


def text_faults(source, text, plural=False):
    """What is wrong with one text. A plural form may name its number in words: "one file"."""
    if not text.strip():
        return ["empty"]
    faults = []
    expected = placeholders(source)
    found = placeholders(text, expected)
    if plural and "%n" not in found:
        expected.pop("%n", None)
    if found != expected:
        faults.append("placeholders")
    faults += [name for pattern, name in ENDS
               if bool(pattern.search(text)) != bool(pattern.search(source))]
    if "Wi-Fi" in text:
        faults.append("Wi-Fi with a hyphen (not U+2011) that ends lines")
    if LEFT_TO_RIGHT.match(PLACEHOLDER.sub("", text)) and ARABIC.search(text):
        faults.append("laid out from the left (no U+200F in front)")
    return faults


def message_faults(source, message, language):
    translation = message.find("translation")
    if translation is None:
        return ["empty"]
    if message.get("numerus") == "yes":
        forms = [form.text or "" for form in translation.findall("numerusform")]
        faults = [] if len(forms) == PLURAL_FORMS[language] else [f"{len(forms)} plural forms"]
        for form in forms:
            faults += text_faults(source, form, plural=True)
    elif language == "en" and not translation.text:
        return []  # Qt shows the source text.
    else:
        faults = text_faults(source, translation.text or "")
    state = translation.get("type")
    return faults if state is None else [state, *faults]


def faults(root):
    """The faults of a file, each "context: source: fault"."""
    language = root.get("language")
    return [f"{key[0]}: {key[1]}: {fault}" for key, message in messages(root)
            for fault in message_faults(key[1], message, language)]


class TranslationsTest(unittest.TestCase):
    def test_are_there_in_all_languages(self):
        self.assertEqual([file.stem for file in FILES],
                         sorted(f"vexa_{language}" for language in PLURAL_FORMS))

    def test_are_complete_and_sound(self):
        for file in FILES:
            with self.subTest(file.name):
                root = ElementTree.parse(file).getroot()

                self.assertEqual(f"vexa_{root.get('language')}", file.stem)
                self.assertEqual(faults(root), [])

    def test_have_the_same_texts_in_all_languages_and_each_once(self):
        keys = {file.name: sorted(key for key, _ in messages(ElementTree.parse(file).getroot()))
                for file in FILES}
        english = keys["vexa_en.ts"]

        self.assertTrue(english)
        self.assertEqual(len(english), len(set(english)))
        for name in keys:
            with self.subTest(name):
                self.assertEqual(keys[name], english)

    def test_have_the_texts_of_the_sources_and_no_others(self):
        english = PROJECT / "i18n/vexa_en.ts"
        with tempfile.TemporaryDirectory() as folder:
            fresh = shutil.copy(english, folder)
            update = subprocess.run(
                [os.environ["VEXA_LUPDATE"], "-silent", "-no-obsolete", "-locations", "none",
                 "-I", PROJECT, PROJECT / "host/ui", PROJECT / "host/shared", "-ts", fresh],
                stderr=subprocess.PIPE, text=True, check=True)
            expected = [key for key, _ in messages(ElementTree.parse(fresh).getroot())]

        # Where it warns, it has left texts out.
        self.assertEqual(update.stderr, "")
        known = [key for key, _ in messages(ElementTree.parse(english).getroot())]
        self.assertEqual(sorted(known), sorted(expected),
                         "build the target update_translations, then translate")


class FaultsTest(unittest.TestCase):
    """What the checks above find, shown on texts that have it."""

    def of(self, source, translation, language="de", numerus=""):
        return [fault.split(": ")[-1] for fault in faults(ElementTree.fromstring(
            f'<TS language="{language}"><context><name>Page</name><message{numerus}>'
            f"<source>{source}</source>{translation}</message></context></TS>"))]

    def text(self, source, text, language="de"):
        return self.of(source, f"<translation>{text}</translation>", language)

    def forms(self, *forms, language="de"):
        inner = "".join(f"<numerusform>{form}</numerusform>" for form in forms)
        return self.of("%n of %1", f"<translation>{inner}</translation>", language,
                       ' numerus="yes"')

    def test_find_nothing_in_a_good_text(self):
        self.assertEqual(self.text("%1 of %2", "Von %2: %1"), [])
        self.assertEqual(self.forms("eine von %1", "%n von %1"), [])
        self.assertEqual(self.text("Size:", "大小：", "zh_CN"), [])

    def test_take_numbers_in_the_digits_of_the_language(self):
        self.assertEqual(self.text("%1 of %2", "%L1 من %L2", "ar"), [])
        self.assertEqual(self.forms("%n (%1)", *["%Ln (%1)"] * 5, language="ar"), [])
        self.assertEqual(self.text("%1 of %2", "%L1 من %L1", "ar"), ["placeholders"])

    def test_find_texts_that_are_not_done(self):
        self.assertEqual(self.text("Back", ""), ["empty"])
        self.assertEqual(self.text("Back", " "), ["empty"])
        self.assertEqual(self.of("Back", ""), ["empty"])
        for state in ("unfinished", "obsolete", "vanished"):
            self.assertEqual(
                self.of("Back", f'<translation type="{state}">Zurück</translation>'), [state])

    def test_take_an_empty_english_text_but_no_empty_plural(self):
        self.assertEqual(self.of("Back", '<translation type="unfinished"/>', "en"), [])
        self.assertEqual(self.forms("", "%n of %1", language="en"), ["empty"])

    def test_find_placeholders_that_differ(self):
        self.assertEqual(self.text("%1 of %2", "%1 von %1"), ["placeholders"])
        self.assertEqual(self.text("%1", "%10"), ["placeholders"])
        self.assertEqual(self.text("%L1", "%1"), ["placeholders"])
        self.assertEqual(self.forms("eine", "%n von %1"), ["placeholders"])

    def test_find_a_wrong_number_of_plural_forms(self):
        self.assertEqual(self.forms("%n von %1"), ["1 plural forms"])
        self.assertEqual(self.forms("%n/%1", "%n/%1", language="ru"), ["2 plural forms"])

    def test_find_ends_that_differ(self):
        self.assertEqual(self.text("Back", "Zurück "), ["blank behind"])
        self.assertEqual(self.text("Back", "\u00a0Zurück"), ["blank in front"])
        self.assertEqual(self.text("Size:", "Größe"), ["colon"])
        self.assertEqual(self.text("Size", "大小：", "zh_CN"), ["colon"])
        self.assertEqual(self.text("Wait…", "Warten"), ["ellipsis"])
        self.assertEqual(self.text("Wait", "Warten..."), ["ellipsis"])

    def test_find_a_hyphen_at_which_a_name_would_be_torn_apart(self):
        self.assertEqual(len(self.text("No Wi-Fi", "Pas de Wi-Fi", "fr")), 1)
        self.assertEqual(self.text("No Wi-Fi", "Pas de Wi\u2011Fi", "fr"), [])

    def test_find_arabic_that_would_be_laid_out_from_the_left(self):
        self.assertEqual(len(self.text("Cable", "TCP أو كابل", "ar")), 1)
        self.assertEqual(self.text("Cable", "\u200fTCP أو كابل", "ar"), [])
        self.assertEqual(self.text("Cable", "كابل TCP", "ar"), [])
