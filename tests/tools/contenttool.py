# SPDX-License-Identifier: MIT
"""What the tests of the content tool share: its modules, its programs and its data."""

import os
import subprocess
import sys
import tempfile
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent.parent
TOOLS = PROJECT / "tools" / "content"
DIGIT_CODES = PROJECT / "catalog" / "localizationtools.cpp"
PACKAGES = Path(os.environ.get("VEXA_PACKAGES_DIR", Path(tempfile.gettempdir()) / "vexa-packages"))

sys.path.insert(0, str(TOOLS))

import packages  # noqa: E402  only to be found after the line above


def package_folder(package, path, needed):
    return packages.Packages(PACKAGES).folder(package, path, needed)


def lists():
    return package_folder(packages.ISO_CODES, "usr/share/iso-codes/json", "iso_3166-2.json")


def locales():
    return package_folder(packages.ISO_CODES, "usr/share/locale", "*/LC_MESSAGES/iso_3166-2.mo")


def chart():
    return package_folder(packages.POLYGONS, "usr/share/gmt-dcw", "dcw-gmt.nc")


def shore_lines():
    return package_folder(packages.SHORE_LINES, "usr/share/gmt-gshhg", "binned_border_h.nc")


def make_content(output, *options):
    """Runs the tool; returns what it printed. Its failure is the test's."""
    command = [TOOLS / "make-content", "--output", output, "--packages-dir", PACKAGES, *options]
    environment = dict(os.environ, PYTHONDONTWRITEBYTECODE="1")
    done = subprocess.run(command, capture_output=True, text=True, env=environment)
    if done.returncode != 0:
        raise AssertionError(f"make-content failed: {done.stderr}")
    return done.stdout
