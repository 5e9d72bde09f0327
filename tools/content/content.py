# SPDX-License-Identifier: MIT
"""Builds the whole folder of a content server from the packages' data."""

import json
import os
import shutil
from concurrent.futures import ThreadPoolExecutor

import archives
import catalogue
import geometry
import grid
import names
import packages
import regions
import shorelines
import tiles

# The day of the shore-line data. Archives hold their files' times, so tiles need a fixed one.
TILE_TIME = 1497484800


class Sources:
    """Where the data of the packages and the library's table of digit codes lie."""

    def __init__(self, found, digit_codes):
        lists = found.folder(packages.ISO_CODES, "usr/share/iso-codes/json", "iso_3166-2.json")
        locales = found.folder(
            packages.ISO_CODES, "usr/share/locale", "*/LC_MESSAGES/iso_3166-2.mo"
        )
        chart = found.folder(packages.POLYGONS, "usr/share/gmt-dcw", "dcw-gmt.nc")
        self.lines = found.folder(
            packages.SHORE_LINES, "usr/share/gmt-gshhg", "binned_border_h.nc"
        )
        self.digit_codes = names.read_digit_codes(digit_codes)
        self.names = names.Names(lists, locales)
        # What the result depends on; translations come and go with the lists.
        self.files = [lists / "iso_3166-2.json", chart / "dcw-gmt.nc", *self.lines.glob("*.nc")]
        world_parts = regions.read_world_parts(chart / "dcw-collections.txt")
        polygons = geometry.Polygons(chart / "dcw-gmt.nc")
        self.tree = regions.TreeBuilder(self.names, polygons, world_parts)


class Content:
    """One version of the content in the folder `output`.

    Archives of versions that were built before stay beside the new ones, as on a server whose
    clients may be in the middle of a download; tiles/, the names and version.txt are those of
    the version built last.
    """

    def __init__(self, output, version):
        self._version = version
        self._tiles = output / "tiles"
        self._published = output / "map5"
        self._archives = self._published / "archives" / version

    def build(self, sources, countries, changed):
        """Builds everything for these countries; `changed` is a region to draw more coarsely."""
        top = sources.tree.build(countries)
        every = [region for part in top for region in part.everything()]
        by_id = {region.id: region for region in every}
        if changed and changed not in by_id:
            raise ValueError(f"there is no region {changed} to change")

        coarse = by_id[changed].cells if changed else set()
        packed = self._write_tiles(sources.lines, every, coarse)
        files = self._write_archives(every, packed)
        self._publish(sources, top, files)
        print(f"{len(every)} regions, {len(set().union(*packed.values()))} tiles", flush=True)

    def _write_tiles(self, folder, every, coarse):
        """Writes the tiles of all regions. Returns {region id: paths of its tiles}."""
        lines = shorelines.read_cells(folder)
        for cell in coarse & lines.keys():
            lines[cell] = tiles.coarser(lines[cell])
        # Cells without any line are left out, except where nothing would be left of a region.
        filled = {cell for cell, content in lines.items() if content}
        # Those stay in the regions around it, too.
        filled.update(*(region.cells for region in every if not region.cells & filled))
        cells = {region.id: region.cells & filled for region in every}

        shutil.rmtree(self._tiles, ignore_errors=True)
        for cell in sorted(set().union(*cells.values())):
            file = self._tiles / grid.path(cell)
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_bytes(tiles.encode(cell, lines.get(cell, [])))
            os.utime(file, (TILE_TIME, TILE_TIME))
        for folder in self._tiles.glob("**/"):
            os.utime(folder, (TILE_TIME, TILE_TIME))
        return {region: {grid.path(cell) for cell in own} for region, own in cells.items()}

    def _write_archives(self, every, packed):
        """Packs each region, the kinds of archives taking turns. Returns {region id: file}."""
        shutil.rmtree(self._archives, ignore_errors=True)
        self._archives.mkdir(parents=True)
        files, jobs = {}, []
        with ThreadPoolExecutor(os.cpu_count()) as pool:
            for place, region in enumerate(sorted(every, key=lambda region: region.id)):
                kind = archives.FORMATS[place % len(archives.FORMATS)]
                file = self._archives / f"{region.id}.{kind.suffix}"
                files[region.id] = file
                jobs.append(pool.submit(archives.pack, self._tiles, packed[region.id], file, kind))
        for job in jobs:
            job.result()
        return files

    def _publish(self, sources, top, files):
        catalogue.write_catalogue(
            self._published / f"catalog-{self._version}.xml", self._version, top, files
        )
        for code, locale in names.locale_of_codes(sources.digit_codes).items():
            catalogue.write_region_names(
                self._published / f"regionname-lang-{code}.xml", top, sources.names, locale
            )
        # After all that it tells of.
        catalogue.write_version(self._published / "version.txt", self._version)
        catalogue.write_check_sums(self._published)


class Stamp:
    """Remembers what the output was built from last, so that nothing is built twice."""

    def __init__(self, output, inputs, files):
        """`inputs` are the options, `files` all files that the result depends on."""
        self._file = output / ".content.stamp"
        self._result = output / "map5" / "SHA256SUMS"
        states = {str(file): _state(file) for file in sorted(files)}
        self._text = json.dumps({"inputs": inputs, "files": states}, sort_keys=True)

    def fits(self):
        """Whether the output has been built to its end from exactly this, and is still there."""
        known = self._file.exists() and self._file.read_text(encoding="utf-8") == self._text
        return known and self._result.exists()

    def clear(self):
        """Before building: what is cut short is built again."""
        self._file.unlink(missing_ok=True)

    def set(self):
        """After building."""
        self._file.write_text(self._text, encoding="utf-8")


def _state(file):
    status = file.stat()
    return [status.st_size, status.st_mtime_ns]
