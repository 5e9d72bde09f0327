# SPDX-License-Identifier: MIT
"""Finds the files of the Debian packages that the content is made of.

A file that an installed package brought is used where it lies. Otherwise the package file is
downloaded with apt and unpacked into a cache folder, which needs no root. That also helps on
minimal system images: they drop translations when they install a package, so that iso-codes is
installed there without them.
"""

import os
import subprocess
from pathlib import Path

ISO_CODES = "iso-codes"
SHORE_LINES = "gmt-gshhg-high"
POLYGONS = "gmt-dcw"


class Packages:
    """Gives the paths of package files; unpacks packages into one cache folder when needed."""

    def __init__(self, cache, system=Path("/")):
        self._cache = Path(cache).absolute()
        self._system = Path(system)

    def folder(self, package, path, needed):
        """The folder `path` ("usr/share/gmt-dcw") of a package, where the file `needed` exists.

        `needed` is a pattern below the folder. Raises FileNotFoundError when neither the system
        nor the downloaded package has it.
        """
        for root in (self._system, self._cache / package):
            if any((root / path).glob(needed)):
                return root / path
        self._download(package)
        if not any((self._cache / package / path).glob(needed)):
            raise FileNotFoundError(f"package {package} has no {path}/{needed}")
        return self._cache / package / path

    def _download(self, package):
        print(f"Taking {package} from its package file", flush=True)
        downloads = self._cache / "downloads"
        downloads.mkdir(parents=True, exist_ok=True)
        for old in downloads.glob(f"{package}_*.deb"):
            old.unlink()
        # As root apt drops its rights for a download and warns when it cannot write here then.
        command = ["apt-get", "-q", "download", package]
        if os.geteuid() == 0:
            command[1:1] = ["-o", "APT::Sandbox::User=root"]
        subprocess.run(command, cwd=downloads, check=True, stdout=subprocess.DEVNULL)
        archive = next(downloads.glob(f"{package}_*.deb"))
        subprocess.run(["dpkg-deb", "-x", archive, self._cache / package], check=True)
