# SPDX-License-Identifier: MIT
import os
import subprocess
import tempfile
import unittest
from pathlib import Path
from unittest import mock

import contenttool  # noqa: F401  finds the tool's modules
import packages

APT_GET = """#!/bin/sh
echo "$@" >>"$DOWNLOADS/calls"
for package; do :; done
cp "$DOWNLOADS/$package"_*.deb .
"""


class PackagesTest(unittest.TestCase):
    """Packages are found on a system of the test's own; apt-get is a stand-in without network."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        self.calls = self.root / "downloads" / "calls"
        self.make_package()
        command = self.root / "bin" / "apt-get"
        command.parent.mkdir()
        command.write_text(APT_GET)
        command.chmod(0o755)
        environment = {
            "PATH": f"{command.parent}:{os.environ['PATH']}",
            "DOWNLOADS": str(self.calls.parent),
        }
        patch = mock.patch.dict(os.environ, environment)
        patch.start()
        self.addCleanup(patch.stop)
        self.packages = packages.Packages(self.root / "cache", self.root / "system")

    def make_package(self):
        """Builds downloads/maps_1.0_all.deb, which holds usr/share/maps/north.nc."""
        tree = self.root / "tree"
        (tree / "DEBIAN").mkdir(parents=True)
        (tree / "DEBIAN" / "control").write_text(
            "Package: maps\nVersion: 1.0\nArchitecture: all\nMaintainer: A <a@b>\nDescription: d\n"
        )
        (tree / "usr/share/maps").mkdir(parents=True)
        (tree / "usr/share/maps/north.nc").write_text("from the package file")
        self.calls.parent.mkdir()
        subprocess.run(
            ["dpkg-deb", "-b", tree, self.calls.parent / "maps_1.0_all.deb"],
            check=True,
            stdout=subprocess.DEVNULL,
        )

    def install(self, name):
        file = self.root / "system/usr/share/maps" / name
        file.parent.mkdir(parents=True)
        file.write_text("installed")

    def read(self):
        return (self.packages.folder("maps", "usr/share/maps", "*.nc") / "north.nc").read_text()

    def test_uses_an_installed_package_where_it_lies(self):
        self.install("north.nc")

        self.assertEqual(self.read(), "installed")
        self.assertFalse(self.calls.exists())

    def test_downloads_a_package_that_is_not_installed(self):
        self.assertEqual(self.read(), "from the package file")

    def test_downloads_a_package_that_was_installed_without_the_file(self):
        self.install("readme")

        self.assertEqual(self.read(), "from the package file")

    def test_downloads_a_package_once(self):
        self.read()
        self.read()

        self.assertEqual(len(self.calls.read_text().splitlines()), 1)

    def test_reports_a_file_that_the_package_does_not_have(self):
        with self.assertRaisesRegex(FileNotFoundError, "package maps has no usr/share/maps/x"):
            self.packages.folder("maps", "usr/share/maps", "x")
