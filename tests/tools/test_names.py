# SPDX-License-Identifier: MIT
import gettext
import tempfile
import unittest
from pathlib import Path

import contenttool
import names


class DigitCodesTest(unittest.TestCase):
    def test_reads_the_table_of_the_library(self):
        codes = names.read_digit_codes(contenttool.DIGIT_CODES)

        self.assertEqual(len(codes), 93)
        self.assertEqual(codes["fi"], "009")
        self.assertEqual(codes["pt_BR"], "076")
        self.assertEqual(codes["??"], "099")

    def test_takes_the_later_code_of_a_name_that_has_two(self):
        codes = names.read_digit_codes(contenttool.DIGIT_CODES)

        self.assertEqual((codes["ht"], codes["ta"], codes["ga"]), ("046", "087", "103"))

    def test_refuses_a_file_without_the_table(self):
        with tempfile.TemporaryDirectory() as folder:
            file = Path(folder) / "other.cpp"
            file.write_text('{"fi", "009"}, {"en_GB", "001"}')

            with self.assertRaises(ValueError):
                names.read_digit_codes(file)

    def test_names_one_locale_for_a_shared_code(self):
        locales = names.locale_of_codes({"no": "008", "nb_NO": "008", "fi": "009"})

        self.assertEqual(locales, {"008": "no", "009": "fi"})


class NamesTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.locales = contenttool.locales()
        cls.names = names.Names(contenttool.lists(), cls.locales)

    def assertTranslated(self, code, locale, name):
        self.assertEqual(self.names.translated(code, locale), name)

    def test_translates_countries(self):
        self.assertTranslated("FI", "fi", "Suomi")
        self.assertTranslated("FI", "de", "Finnland")
        self.assertTranslated("FI", "ja", "フィンランド")
        self.assertTranslated("AX", "sv", "Åland")
        self.assertTranslated("SE", "ru", "Швеция")

    def test_equals_the_translations_of_the_package(self):
        for language in ("fi", "sv", "de", "fr", "ru", "ar", "pt_BR", "zh_CN"):
            package = gettext.translation("iso_3166-1", self.locales, [language])
            for code, english in (("NO", "Norway"), ("EE", "Estonia"), ("AU", "Australia")):
                self.assertTranslated(code, language, package.gettext(english))

    def test_translates_subdivisions(self):
        self.assertTranslated("DE-BY", "fr", "Bavière")
        self.assertTranslated("AU-TAS", "zh_TW", "塔斯馬尼亞")

    def test_gives_subdivisions_with_local_names_their_english_one(self):
        self.assertEqual(self.names.subdivisions["DE-BY"]["name"], "Bayern")
        self.assertEqual(self.names.english("DE-BY"), "Bavaria")

    def test_prefers_the_everyday_name_of_a_country(self):
        self.assertEqual(self.names.english("BO"), "Bolivia")
        self.assertTranslated("BO", "fi", "Bolivia")

    def test_uses_the_language_where_the_country_has_no_translation_of_its_own(self):
        self.assertTranslated("FI", "de_AT", "Finnland")
        self.assertTranslated("FI", "es_MX", "Finlandia")

    def test_gives_english_locales_the_english_names(self):
        for locale in ("en_GB", "en_US", "en_NZ"):
            self.assertTranslated("FI", locale, "Finland")

    def test_takes_related_languages(self):
        self.assertTranslated("DE", "no", "Tyskland")
        self.assertTranslated("AU-TAS", "zh_HK", "塔斯馬尼亞")

    def test_keeps_serbian_in_its_first_script(self):
        self.assertTranslated("FI", "sr", "Финска")

    def test_tells_a_name_that_is_spelled_alike_from_one_that_is_missing(self):
        self.assertTranslated("AU", "fi", "Australia")
        self.assertTranslated("AU-VIC", "zh_HK", None)

    def test_has_nothing_in_a_language_that_nobody_translated(self):
        self.assertTranslated("FI", "bo", None)
        self.assertTranslated("FI", "??", None)
