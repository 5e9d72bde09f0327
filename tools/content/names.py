# SPDX-License-Identifier: MIT
"""Names of countries and their subdivisions in many languages, from iso-codes."""

import gettext
import json
import re
from pathlib import Path

# Languages whose translations lie under another name than the locale says; tried after the
# locale's own and its language's. Hong Kong and Taiwan share the traditional characters,
# and Moldavian is Romanian. Script variants (sr@latin) are never taken: no locale here asks
# for one, and "sr" is the script that Serbian regions are labelled in.
RELATED = {"no": ["nb"], "nb_NO": ["nb"], "nn_NO": ["nn", "nb"], "mo": ["ro"], "zh_HK": ["zh_TW"]}

COUNTRIES = "iso_3166-1"
SUBDIVISIONS = "iso_3166-2"

# A locale name and its three digits, close together as in {"pt_BR", "076"}.
DIGIT_CODE = re.compile(r'"([^"\s]+)"[^"]{1,40}?"(\d{3})"')


def read_digit_codes(source):
    """Reads the table of locale names and digit codes from the library's own source file.

    The library is the only place that holds it: a copy here could tell other codes than the
    devices ask for. As there, a later entry for a name replaces the earlier one. Returns
    {"fi": "009", ...}; raises ValueError when the file does not look like the table.
    """
    codes = dict(DIGIT_CODE.findall(Path(source).read_text(encoding="utf-8")))
    if codes.get("en_GB") != "001" or len(codes) < 90:
        raise ValueError(f"{source} does not hold the table of digit codes")
    return codes


def locale_of_codes(codes):
    """Turns the table around: {"009": "fi", ...}, the first locale of a shared code."""
    locales = {}
    for locale, code in codes.items():
        locales.setdefault(code, locale)
    return dict(sorted(locales.items()))


class Names:
    """English and translated names of everything that iso-codes lists, by its ISO code."""

    def __init__(self, json_folder, locale_folder):
        """Reads the lists; `locale_folder` is usr/share/locale of a complete package."""
        self._locale_folder = Path(locale_folder)
        self._translations = {}
        self.countries = _entries(json_folder, COUNTRIES, "alpha_2")
        self.subdivisions = _entries(json_folder, SUBDIVISIONS, "code")

    def english(self, code):
        """The English name of a country ("FI") or a subdivision ("DE-BY")."""
        # Subdivisions are listed by their local names, so that English is a translation there.
        domain, sources = self._sources(code)
        return self._translate(domain, sources, "en") or sources[0]

    def translated(self, code, locale):
        """The name in the language of a locale such as "pt_BR"; None where nobody translated it.

        Where the everyday name of a country is not translated, the formal one is taken.
        """
        if locale.split("_")[0] == "en":
            return self.english(code)
        return self._translate(*self._sources(code), locale)

    def _sources(self, code):
        if code in self.countries:
            entry = self.countries[code]
            known = [entry.get("common_name"), entry["name"]]
            return COUNTRIES, [name for name in known if name]
        return SUBDIVISIONS, [self.subdivisions[code]["name"]]

    def _translate(self, domain, sources, locale):
        if (domain, locale) not in self._translations:
            self._translations[domain, locale] = self._open(domain, locale)
        names = [self._translations[domain, locale].gettext(source) for source in sources]
        return next((name for name in names if name), None)

    def _open(self, domain, locale):
        """The translations for a locale, the closest first."""
        found = []
        languages = [locale, locale.split("_")[0]] + RELATED.get(locale, [])
        for language in dict.fromkeys(languages):
            file = self._locale_folder / language / "LC_MESSAGES" / f"{domain}.mo"
            if file.exists():
                with file.open("rb") as stream:
                    found.append(gettext.GNUTranslations(stream))
        # add_fallback() puts its argument at the end of the chain.
        first, *others = found + [NoTranslation()]
        for other in others:
            first.add_fallback(other)
        return first


class NoTranslation(gettext.NullTranslations):
    """Ends a chain of translations: tells a missing one from one that is spelled alike."""

    def gettext(self, message):
        return None


def _entries(folder, domain, key):
    text = (Path(folder) / f"{domain}.json").read_text(encoding="utf-8")
    return {entry[key]: entry for entry in json.loads(text)[domain.removeprefix("iso_")]}
