# SPDX-License-Identifier: MIT
import hashlib
import os
import re
import shutil
import subprocess
import tempfile
import unittest
import unittest.mock
import xml.etree.ElementTree as xml
from pathlib import Path

import contenttool
import tiles

VERSION = "26.11.21.00"
NEXT_VERSION = "26.12.01.00"
COUNTRIES = "FI,EE,AX,AU,NF,TW"
SUFFIXES = {"zip", "7z", "tar.gz", "tar.xz", "tar.bz2", "tar.zst"}


def snapshot(folder):
    """{relative path: SHA-256} of all files in a folder."""
    return {
        file.relative_to(folder).as_posix(): hashlib.sha256(file.read_bytes()).hexdigest()
        for file in folder.rglob("*")
        if file.is_file()
    }


def unpack(archive, folder):
    if archive.suffix == ".7z":
        command = ["7z", "x", "-bd", "-bso0", "-bsp0", f"-o{folder}", archive]
    else:
        command = ["bsdtar", "-x", "-C", folder, "-f", archive]
    subprocess.run(command, check=True)


def entries(archive):
    done = subprocess.run(["bsdtar", "-tf", archive], capture_output=True, text=True, check=True)
    return done.stdout.splitlines()


class ContentTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.output = Path(folder.name)
        contenttool.make_content(cls.output, "--countries", COUNTRIES)
        cls.published = cls.output / "map5"
        cls.tiles = snapshot(cls.output / "tiles")
        cls.catalogue = xml.parse(cls.published / f"catalog-{VERSION}.xml").getroot()
        cls.files = {file.get("Id"): file for file in cls.catalogue.iter("File")}

    def archive(self, region):
        return self.published / self.files[region].get("Link")

    def tiles_of(self, region):
        return {entry for entry in entries(self.archive(region)) if not entry.endswith("/")}

    def region_names(self, code):
        root = xml.parse(self.published / f"regionname-lang-{code}.xml").getroot()
        return {region.get("id"): region.get("name") for region in root.iter("region")}

    # The catalogue

    def test_tells_the_newest_version_in_one_line(self):
        self.assertEqual((self.published / "version.txt").read_text(), f"{VERSION}\n")

    def test_lists_regions_with_exactly_the_four_attributes(self):
        for file in self.files.values():
            self.assertEqual(set(file.keys()), {"Id", "Description", "ZipFileSize", "Link"})

    def test_nests_subdivisions_in_their_country(self):
        country = self.catalogue.find("File[@Id='UN009']/File[@Id='AU']")

        below = {file.get("Description") for file in country.findall("File")}

        self.assertEqual(len(below), 8)
        self.assertIn("Tasmania", below)

    def test_lists_the_true_size_of_every_archive(self):
        for file in self.files.values():
            archive = self.published / file.get("Link")
            self.assertEqual(int(file.get("ZipFileSize")), archive.stat().st_size)

    def test_publishes_no_archive_that_the_catalogue_does_not_list(self):
        links = {file.get("Link") for file in self.files.values()}
        present = {
            file.relative_to(self.published).as_posix()
            for file in (self.published / "archives").rglob("*")
            if file.is_file()
        }

        self.assertEqual(present, links)

    # Names

    def test_names_regions_in_the_language_of_the_file(self):
        self.assertEqual(self.region_names("009")["FI"], "Suomi")
        self.assertEqual(self.region_names("006")["FI"], "Finland")
        self.assertEqual(self.region_names("032")["FI"], "フィンランド")
        self.assertEqual(self.region_names("016")["EE"], "Эстония")
        self.assertEqual(self.region_names("029")["AU-TAS"], "塔斯馬尼亞")

    def test_names_parts_of_the_world_in_the_language_of_the_file(self):
        self.assertEqual(self.region_names("009")["UN150"], "Eurooppa")
        self.assertEqual(self.region_names("032")["UN150"], "ヨーロッパ")
        self.assertNotIn("UN150", self.region_names("029"))

    def test_names_only_listed_regions(self):
        for file in self.published.glob("regionname-lang-*.xml"):
            code = re.search(r"(\d{3})\.xml$", file.name)[1]
            self.assertTrue(self.region_names(code).keys() <= self.files.keys())

    def test_leaves_out_names_that_nobody_translated(self):
        self.assertNotIn("AU-VIC", self.region_names("030"))

    def test_publishes_a_file_for_every_code_that_a_device_can_ask_for(self):
        published = {file.name[16:19] for file in self.published.glob("regionname-lang-*.xml")}

        # 96 assignments; three names were given a second code, and Norwegian has one for three.
        self.assertEqual(len(published), 91)
        self.assertTrue({"001", "046", "087", "099", "103"} <= published)
        self.assertFalse({"024", "039", "045", "060"} & published)

    def test_publishes_a_file_without_entries_for_an_unknown_language(self):
        self.assertEqual(self.region_names("089"), {})

    def test_leaves_out_the_name_that_devices_bring_along(self):
        self.assertIn("411", self.files)
        self.assertNotIn("411", self.region_names("001"))

    # Tiles and archives

    def test_keeps_tiles_in_hexadecimal_folders(self):
        for path in self.tiles:
            self.assertRegex(path, r"^[0-9a-f]/[0-9a-f]/[0-9a-z_]+\.cdt$")

    def test_gives_every_tile_a_base_name_of_its_own(self):
        names = [Path(path).name.split(".")[0] for path in self.tiles]

        self.assertEqual(len(set(names)), len(names))

    def test_writes_tiles_that_can_be_read(self):
        for path in self.tiles:
            bounds, lines = tiles.decode((self.output / "tiles" / path).read_bytes())
            self.assertEqual(bounds[2], bounds[0] + 1)
            self.assertTrue(lines or path in self.tiles_of("NF"), path)

    def test_packs_archives_that_unpack_to_the_tiles(self):
        for region in self.files:
            with self.subTest(region), tempfile.TemporaryDirectory() as folder:
                unpack(self.archive(region), folder)

                unpacked = snapshot(Path(folder))

                self.assertTrue(unpacked)
                self.assertEqual(unpacked, {path: self.tiles[path] for path in unpacked})

    def test_packs_every_tile_into_some_archive(self):
        packed = set().union(*map(self.tiles_of, self.files))

        self.assertEqual(packed, self.tiles.keys())

    def test_packs_with_every_format(self):
        suffixes = {self.archive(region).name.split(".", 1)[1] for region in self.files}

        self.assertEqual(suffixes, SUFFIXES)

    def test_gives_folders_their_own_entries_in_some_formats(self):
        for region in self.files:
            folders = [entry for entry in entries(self.archive(region)) if entry.endswith("/")]
            expected = not self.archive(region).name.endswith((".7z", ".tar.xz"))
            self.assertEqual(bool(folders), expected, self.archive(region).name)

    def test_packs_the_tiles_of_a_border_into_both_neighbours(self):
        shared = self.tiles_of("FI") & self.tiles_of("AX")

        self.assertTrue(shared)
        self.assertTrue(self.tiles_of("AX") - shared or self.tiles_of("FI") - shared)

    def test_packs_the_tiles_of_subdivisions_into_their_country(self):
        self.assertTrue(self.tiles_of("AU-TAS") < self.tiles_of("AU"))

    def test_packs_tiles_that_only_an_island_without_shores_has_into_what_is_around_it(self):
        self.assertTrue(self.tiles_of("NF") < self.tiles_of("UN009"))

    def test_lists_check_sums_that_fit(self):
        command = ["sha256sum", "--check", "--strict", "--quiet", "SHA256SUMS"]
        subprocess.run(command, cwd=self.published, check=True)

        listed = (self.published / "SHA256SUMS").read_text().splitlines()
        self.assertEqual(len(listed), len(snapshot(self.published)) - 1)

    if "VEXA_MAPS_PROGRAM" in os.environ:

        def test_holds_nothing_that_devices_would_not_read(self):
            done = subprocess.run([os.environ["VEXA_MAPS_PROGRAM"], "lint", self.published],
                                  capture_output=True, text=True)

            self.assertEqual((done.returncode, done.stderr), (0, ""), done.stdout)
            self.assertIn("Nothing found.", done.stdout)


class BuildTest(unittest.TestCase):
    """Every test begins with content that has been built once."""

    countries = ("--countries", "AX,EE,FI,LV")

    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.built = Path(folder.name)
        contenttool.make_content(cls.built, *cls.countries)

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.output = Path(folder.name)
        shutil.copytree(self.built, self.output, dirs_exist_ok=True)

    def make(self, *options):
        return contenttool.make_content(self.output, *self.countries, *options)

    def test_does_nothing_when_nothing_has_changed(self):
        before = {file: file.stat().st_mtime_ns for file in self.output.rglob("*")}

        printed = self.make()

        self.assertIn("up to date", printed)
        self.assertEqual({file: file.stat().st_mtime_ns for file in self.output.rglob("*")}, before)

    def test_gives_the_same_bytes_when_it_is_forced(self):
        before = snapshot(self.output)

        self.make("--force")

        self.assertEqual(snapshot(self.output), before)

    def test_does_not_depend_on_time_zone_language_and_file_mask(self):
        before = snapshot(self.output)

        mask = os.umask(0o077)
        self.addCleanup(os.umask, mask)
        with unittest.mock.patch.dict(os.environ, {"TZ": "Asia/Tokyo", "LC_ALL": "C"}):
            self.make("--force")

        self.assertEqual(snapshot(self.output), before)

    def test_builds_again_for_other_countries(self):
        contenttool.make_content(self.output, "--countries", "AX")

        self.assertEqual(
            {file.name for file in (self.output / "map5/archives" / VERSION).iterdir()},
            {"AX.zip", "UN150.7z"},
        )

    def test_makes_a_next_version_in_which_a_region_has_changed(self):
        before, old = snapshot(self.output / "tiles"), snapshot(self.output / "map5/archives")

        self.make("--version", NEXT_VERSION, "--changed", "FI")

        after = snapshot(self.output / "tiles")
        changed = {path for path in after if after[path] != before[path]}
        new = self.output / "map5/archives" / NEXT_VERSION
        self.assertTrue(changed)
        self.assertTrue(before.keys() - after.keys(), "no tile is gone")
        self.assertTrue(changed <= set(entries(next(new.glob("FI.*")))))
        # Latvia has no border with Finland.
        latvia = next(new.glob("LV.*")).name
        archives = snapshot(self.output / "map5/archives")
        self.assertEqual(archives[f"{NEXT_VERSION}/{latvia}"], old[f"{VERSION}/{latvia}"])
        self.assertEqual({path: archives[path] for path in old}, old)
        self.assertEqual((self.output / "map5/version.txt").read_text(), f"{NEXT_VERSION}\n")

    def test_refuses_countries_without_a_polygon(self):
        with self.assertRaisesRegex(AssertionError, "no polygon for XX"):
            contenttool.make_content(self.output, "--countries", "FI,XX")

    def test_refuses_a_change_of_a_region_that_is_not_there(self):
        with self.assertRaisesRegex(AssertionError, "no region SE-AB to change"):
            self.make("--changed", "SE-AB")

    def test_refuses_a_version_that_clients_would_write_differently(self):
        with self.assertRaisesRegex(AssertionError, "four parts of two digits"):
            self.make("--version", "26.1.2.3")
