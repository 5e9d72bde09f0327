# SPDX-License-Identifier: MIT
"""Packs the tiles of a region with the archivers that people use, each time to the same bytes."""

import os
import subprocess
import tempfile
from dataclasses import dataclass

# Owners, access times and compression times would differ from run to run; threads would split
# the compressed stream by the number of processors.
TAR = ["bsdtar", "-c", "-n", "--format", "ustar", "--uid", "0", "--gid", "0"]
TAR += ["--uname", "", "--gname", "", "-T", "-"]
SEVEN_ZIP = ["7z", "a", "-t7z", "-mmt=1", "-mtc=off", "-mta=off", "-bd", "-bso0", "-bsp0"]
ZIP = ["zip", "-q", "-X", "-9", "-@"]


@dataclass(frozen=True)
class Format:
    """A kind of archive: file suffix, command up to the archive's name, and its contents."""

    suffix: str
    command: tuple
    folders: bool  # whether the folders have entries of their own, as some tools write them


FORMATS = (
    Format("zip", (*ZIP,), folders=True),
    Format("7z", (*SEVEN_ZIP,), folders=False),
    Format("tar.gz", (*TAR, "--gzip", "--options", "gzip:!timestamp", "-f"), folders=True),
    Format("tar.xz", (*TAR, "--xz", "-f"), folders=False),
    Format("tar.bz2", (*TAR, "--bzip2", "-f"), folders=True),
    Format("tar.zst", (*TAR, "--zstd", "-f"), folders=True),
)


def pack(folder, paths, archive, kind):
    """Packs `paths` (relative to `folder`, "a/3/x.cdt") into the file `archive`.

    The tiles must all have the same time stamp. Raises CalledProcessError when the tool fails.
    """
    entries = _with_folders(paths) if kind.folders else sorted(paths)
    environment = dict(os.environ, LC_ALL="C.UTF-8", TZ="UTC")
    with tempfile.NamedTemporaryFile("w+") as listing:
        listing.writelines(f"{entry}\n" for entry in entries)
        listing.seek(0)
        command = [*kind.command, archive]
        if kind.suffix == "7z":
            command.append(f"@{listing.name}")  # it takes no list from a pipe
        subprocess.run(command, cwd=folder, stdin=listing, check=True, env=environment)


def _with_folders(paths):
    """The paths with all folders above them, each folder before what is in it."""
    entries = set(paths)
    for path in paths:
        parts = path.split("/")[:-1]
        entries.update("/".join(parts[: depth + 1]) for depth in range(len(parts)))
    return sorted(entries)
