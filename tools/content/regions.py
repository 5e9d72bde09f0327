# SPDX-License-Identifier: MIT
"""The tree of regions: parts of the world, countries, and subdivisions with their own polygons."""

import re
import unicodedata
from dataclasses import dataclass, field

# The only region that clients know by a number: they choose its name themselves.
FIXED_IDS = {"TW": "411"}

# Listed both as a country and as a subdivision. They are shown as countries, with the polygon
# that the chart keeps under the subdivision when the country has none.
SUBDIVISIONS_SHOWN_AS_COUNTRIES = {"CN-HK": "HK", "CN-MO": "MO", "CN-TW": "TW"}

# Misspelled in the package.
CORRECTED_NAMES = {"Australia and New Zealanda": "Australia and New Zealand"}

WORLD_PART = re.compile(r"tag:\s+(UN\d{3})\s+(?:UN )?(.+)")


@dataclass
class Region:
    """One region that can be downloaded.

    `code` is the ISO code that its names are found by, None for a part of the world.
    `cells` are the numbers of the map cells that it covers, those of its children included.
    """

    id: str
    name: str
    code: str | None = None
    cells: set = field(default_factory=set)
    children: list = field(default_factory=list)

    def everything(self):
        """The region and all below it, parents first."""
        yield self
        for child in self.children:
            yield from child.everything()


def read_world_parts(file):
    """Reads the geographic regions of the United Nations: [(tag, name, set of country codes)].

    The file holds other collections, too (seas, cultural regions); those overlap and make no tree.
    """
    parts, tag = [], None
    for line in file.read_text(encoding="utf-8").splitlines():
        if line.startswith("tag:"):
            tag = WORLD_PART.match(line)
        elif line.startswith("list:") and tag:
            members = set(line.removeprefix("list:").replace(" ", "").split(","))
            name = tag[2].strip()
            parts.append((tag[1], CORRECTED_NAMES.get(name, name), members))
    return parts


class TreeBuilder:
    """Builds the regions from iso-codes' lists, the polygons and the parts of the world."""

    def __init__(self, names, polygons, world_parts):
        self._names = names
        self._polygons = polygons
        self._world_parts = world_parts

    def available(self):
        """The codes of all countries that have a polygon."""
        return {code for code in self._names.countries if self._polygon_of_country(code)}

    def build(self, codes):
        """The top-level regions of a catalogue with these countries, ordered by name."""
        countries = {code: self._country(code) for code in codes}
        return _sorted(self._grouped(countries))

    def _polygon_of_country(self, code):
        keys = [code]
        for sub, country in SUBDIVISIONS_SHOWN_AS_COUNTRIES.items():
            if country == code:
                keys.append(sub.replace("-", ""))
        return next((key for key in keys if self._polygons.has(key)), None)

    def _country(self, code):
        cells = self._polygons.cells(self._polygon_of_country(code))
        region = Region(FIXED_IDS.get(code, code), self._names.english(code), code, cells)
        below = {}
        for sub in self._names.subdivisions:
            if sub.startswith(f"{code}-") and self._is_listed(sub):
                cells = self._polygons.cells(sub.replace("-", ""))
                below[sub] = Region(sub, self._names.english(sub), sub, cells)
        for sub, child in below.items():
            below.get(self._parent_of(sub, below), region).children.append(child)
        return _closed(region)

    def _is_listed(self, sub):
        return sub not in SUBDIVISIONS_SHOWN_AS_COUNTRIES and self._polygons.has(
            sub.replace("-", "")
        )

    def _parent_of(self, sub, listed):
        """The nearest subdivision above `sub` that is listed; None when the country is next."""
        parent = self._names.subdivisions[sub].get("parent")
        while parent in self._names.subdivisions and parent not in listed:
            parent = self._names.subdivisions[parent].get("parent")
        return parent if parent in listed else None

    def _grouped(self, countries):
        """Puts the countries into the smallest parts of the world that hold them."""
        groups = []
        for tag, name, members in sorted(self._world_parts, key=lambda part: -len(part[2])):
            present = members & countries.keys()
            # One that holds the same countries as a larger part would only be a second name for
            # it, and one that is a single country anyway (Antarctica) a second name for that.
            if present and len(members) > 1 and present not in [group[1] for group in groups]:
                groups.append((Region(tag, name), present))

        top = []
        for place, (region, present) in enumerate(groups):
            above = [group for group, members in groups[:place] if present < members]
            (above[-1].children if above else top).append(region)
        for code, region in countries.items():
            above = [group for group, members in groups if code in members]
            (above[-1].children if above else top).append(region)
        return [_closed(region) for region in top]


def _closed(region):
    """Gives a region the cells of all below it, and orders its children by name."""
    region.children = _sorted(_closed(child) for child in region.children)
    region.cells = region.cells.union(*(child.cells for child in region.children))
    return region


def _sorted(regions):
    return sorted(regions, key=lambda region: (_plain(region.name), region.id))


def _plain(name):
    """The name without accents, so that Åland does not come after Zimbabwe."""
    letters = unicodedata.normalize("NFKD", name)
    return "".join(letter for letter in letters if not unicodedata.combining(letter))
