# SPDX-License-Identifier: MIT
"""What the shared library exports is what cmake/exported-symbols.txt lists, and nothing else."""

import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
LIBRARY = pathlib.Path(os.environ["VEXA_LIBRARY"])
MAJOR = re.search(r"vexa-qt(\d)", LIBRARY.name).group(1)
LIST = ROOT / "cmake" / "exported-symbols.txt"


def update_symbols(*options):
    run = subprocess.run([ROOT / "tools" / "update-symbols", *options, LIBRARY], check=False,
                         stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    return run.returncode, run.stdout


class SymbolsTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.list = pathlib.Path(folder.name) / "list"
        shutil.copy(LIST, self.list)

    def change_list(self, old, new):
        text = self.list.read_text()
        self.assertIn(old, text)
        self.list.write_text(text.replace(old, new, 1))

    def test_the_library_exports_what_is_listed(self):
        status, said = update_symbols("--check")

        self.assertEqual(status, 0, said)
        self.assertEqual(said, "")

    def test_the_name_that_programs_load_is_that_of_the_list(self):
        self.change_list(f"soname libvexa-qt{MAJOR}.so.0 [Qt {MAJOR}]\n",
                         f"soname libvexa-qt{MAJOR}.so.1 [Qt {MAJOR}]\n")

        status, said = update_symbols("--check", "--list", self.list)

        self.assertNotEqual(status, 0)
        self.assertIn(f"- soname libvexa-qt{MAJOR}.so.1 [Qt {MAJOR}]\n"
                      f"+ soname libvexa-qt{MAJOR}.so.0 [Qt {MAJOR}]\n", said)

    def test_a_new_symbol_is_named(self):
        self.change_list("MapCatalog::updateCatalog()\n", "")

        status, said = update_symbols("--check", "--list", self.list)

        self.assertNotEqual(status, 0)
        self.assertIn(f"+ MapCatalog::updateCatalog() [Qt {MAJOR}]\n", said)
        self.assertIn(f"renew it with: tools/update-symbols {LIBRARY}\n", said)

    def test_a_lost_symbol_is_named(self):
        self.change_list("Worker::stop()\n", "Worker::stop()\nWorker::stopAtOnce()\n")

        status, said = update_symbols("--check", "--list", self.list)

        self.assertNotEqual(status, 0)
        self.assertIn(f"- Worker::stopAtOnce() [Qt {MAJOR}]\n", said)

    def test_renewing_an_up_to_date_list_changes_no_byte(self):
        status, said = update_symbols("--list", self.list)

        self.assertEqual(status, 0, said)
        self.assertEqual(self.list.read_bytes(), LIST.read_bytes())

    def test_renewing_with_one_qt_keeps_what_the_other_has(self):
        other = {"5": "6", "6": "5"}[MAJOR]
        self.change_list("Worker::stop()\n", f"Worker::old()\nWorker::stop() [Qt {other}]\n")

        update_symbols("--list", self.list)

        self.assertIn(f"Worker::old() [Qt {other}]\n", self.list.read_text())
        self.assertIn("Worker::stop()\n", self.list.read_text())
        self.assertEqual(update_symbols("--check", "--list", self.list)[0], 0)

    def test_nothing_that_is_private_to_the_library_is_listed(self):
        inner = {re.sub(r"_p$", "", header.stem) for header in ROOT.glob("*/*_p.h")
                 if header.parent.name != "host"}
        self.assertIn("savefile", inner)
        classes = {line.split("::")[0].lower() for line in LIST.read_text().splitlines()}

        self.assertEqual(classes & (inner - {"downloadmanager"}), set())


if __name__ == "__main__":
    unittest.main()
