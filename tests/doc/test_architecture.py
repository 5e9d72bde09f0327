# SPDX-License-Identifier: MIT
"""The house as doc/architecture.md draws it: who includes whom, how long files are, what is found."""

import pathlib
import re
import subprocess
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
PAGE = ROOT / "doc" / "architecture.md"

# What each folder may include from, beside itself.
LIBRARY = {
    "plugin": set(),
    "archive": {"plugin"},
    "catalog": {"plugin"},
    "cityindex": {"plugin"},
    "download": {"archive", "plugin"},
}
MAY_INCLUDE = {
    **LIBRARY,
    "host/shared": {*LIBRARY},
    "host/cli": {*LIBRARY, "host/shared"},
    "host/ui": {*LIBRARY, "host/shared"},
}
MOST_LINES = 500
CODE = {".cpp", ".h", ".qml", ".js"}


def files(folder, suffixes=frozenset((".cpp", ".h"))):
    return [file for file in sorted((ROOT / folder).rglob("*")) if file.suffix in suffixes]


def included_folders(text):
    """The folders of the files that are included from the root of the sources."""
    return {match.group(1) for match in re.finditer(r'^#include "(.+)/[^/"]+"', text, re.MULTILINE)}


class ArchitectureTest(unittest.TestCase):
    def test_every_folder_of_sources_has_its_place(self):
        # Else a new folder could include what it likes.
        folders = {file.relative_to(ROOT).parent.as_posix()
                   for name in ("host", *LIBRARY) for file in files(name)}

        self.assertEqual(folders, set(MAY_INCLUDE))

    def test_includes_go_one_way(self):
        count = 0
        for folder, allowed in MAY_INCLUDE.items():
            for file in files(folder):
                included = included_folders(file.read_text())
                count += len(included)
                with self.subTest(file=file.relative_to(ROOT).as_posix()):
                    self.assertEqual(included - allowed - {folder}, set())
        self.assertGreater(count, 200)

    def test_includes_of_any_form_are_seen(self):
        text = '#include "plugin/logger.h"\n#include <QObject>\n#include "host/shared/words.h"\n'

        self.assertEqual(included_folders(text), {"plugin", "host/shared"})

    def test_hosts_are_given_no_private_header(self):
        for folder in LIBRARY:
            for header in files(folder, {".h"}):
                text = header.read_text()
                with self.subTest(header=header.name):
                    if header.stem.endswith("_p"):
                        self.assertNotIn("VEXA_EXPORT", text)
                    else:
                        self.assertNotRegex(text, r'#include ".*_p\.h"')

    def test_no_source_has_become_two(self):
        lengths = {file.relative_to(ROOT).as_posix(): len(file.read_text().splitlines())
                   for name in ("host", *LIBRARY) for file in files(name, CODE)}

        self.assertGreater(max(lengths.values()), MOST_LINES / 2)
        self.assertEqual({name: lines for name, lines in lengths.items() if lines > MOST_LINES}, {})

    def test_the_searches_find_what_the_page_says(self):
        searches = re.findall(r"```console\n\$ (.*)\n([^`]*)```", PAGE.read_text())
        self.assertGreater(len(searches), 4)
        for command, found in searches:
            with self.subTest(command=command):
                run = subprocess.run(["bash", "-c", command], cwd=ROOT, check=True, text=True,
                                     stdout=subprocess.PIPE)
                self.assertEqual(sorted(run.stdout.splitlines()), found.splitlines())


if __name__ == "__main__":
    unittest.main()
