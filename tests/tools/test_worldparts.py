# SPDX-License-Identifier: MIT
import re
import unittest

import contenttool
import regions
import worldparts

APP_LANGUAGES = {
    file.stem.removeprefix("vexa_") for file in (contenttool.PROJECT / "i18n").glob("vexa_*.ts")
}


class WorldPartsTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        parts = regions.read_world_parts(contenttool.chart() / "dcw-collections.txt")
        cls.tags = {tag for tag, name, members in parts}

    def test_has_the_languages_of_the_app(self):
        self.assertEqual(worldparts.NAMES.keys() | {"en"}, APP_LANGUAGES)

    def test_names_every_part_of_the_world_in_every_language(self):
        self.assertEqual(len(self.tags), 30)
        for language, names in worldparts.NAMES.items():
            self.assertEqual(names.keys(), self.tags, language)

    def test_gives_no_name_to_two_parts(self):
        for language, names in worldparts.NAMES.items():
            self.assertEqual(len(set(names.values())), len(names), language)

    def test_is_written_in_the_letters_of_the_language(self):
        letters = {
            "ru": r"[\u0400-\u04ff -]+",
            "ar": r"[\u0600-\u06ff ]+",
            "ja": r"[\u3040-\u30ff\u4e00-\u9fff]+",
            "zh_CN": r"[\u4e00-\u9fff]+",
        }
        for language, names in worldparts.NAMES.items():
            form = re.compile(letters.get(language, r"[A-Za-z\u00c0-\u00ff -]+"))
            for name in names.values():
                self.assertTrue(form.fullmatch(name), f"{language}: {name}")

    def test_uses_the_language_of_a_locale_that_has_no_names_of_its_own(self):
        self.assertEqual(worldparts.translated("UN150", "de_AT"), "Europa")
        self.assertEqual(worldparts.translated("UN030", "zh_CN"), "东亚")

    def test_leaves_english_and_other_languages_to_the_catalogue(self):
        for locale in ("en_GB", "zh_TW", "sv", "??"):
            self.assertIsNone(worldparts.translated("UN150", locale))
