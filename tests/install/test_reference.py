# SPDX-License-Identifier: MIT
"""The reference: made from the installed headers, and nothing public in it without words."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree as ET

ROOT = pathlib.Path(__file__).resolve().parents[2]
HEADERS = pathlib.Path(os.environ["VEXA_HEADERS"])

# One public member of each kind without documentation, beside members that have it.
SAMPLE = """\
// SPDX-License-Identifier: MIT
/** A documented class. */
class Sample : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int bareProperty READ documented)
public:
    /** A documented enumeration. */
    enum Kind {
        DocumentedValue, ///< the first
        BareValue,
    };
    explicit Sample(int bareArgument);
    /** A documented member. */
    int documented() const;
    int bareFunction() const;
    int bareVariable;
public Q_SLOTS:
    void bareSlot();
Q_SIGNALS:
    void bareSignal();
private:
    int privateMember;
};
class BareClass
{
public:
    /** A documented member. */
    int inside();
};
enum BareEnum { };
int bareGlobal();
extern const int BARE_CONSTANT;
"""


def make_reference(headers, output):
    """Runs doc/build; returns its status and everything it said."""
    run = subprocess.run(
        [ROOT / "doc" / "build", "--output", output, headers],
        stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
    return run.returncode, run.stdout


def has_words(element):
    return any("".join(part.itertext()).strip()
               for name in ("briefdescription", "detaileddescription")
               for part in element.findall(name))


def undocumented(output):
    """Public members without words, with what doxygen passes over: values of enumerations."""
    found = []
    for file in sorted((output / "xml").glob("*.xml")):
        for compound in ET.parse(file).getroot().findall("compounddef"):
            if compound.get("prot") != "private":
                for member in compound.iter("memberdef"):
                    found += undocumented_of(member)
    return found


def undocumented_of(member):
    if member.get("prot") != "public":
        return []
    found = [value.findtext("name") for value in member.findall("enumvalue")
             if not has_words(value)]
    name = member.findtext("definition") or member.findtext("name")
    if "~" not in name and not is_trivial(member) and not has_words(member):
        found.append(name)
    return found


def is_trivial(member):
    """A constructor without arguments makes an empty object: its class says what that is."""
    owner = (member.findtext("definition") or "").split("::")
    return len(owner) > 1 and owner[-1] == owner[-2] and member.findtext("argsstring") in ("()", "()=default")


class ReferenceTest(unittest.TestCase):
    def setUp(self):
        self.work = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.work)

    def test_every_public_member_is_documented(self):
        status, said = make_reference(HEADERS, self.work / "reference")

        self.assertEqual(status, 0, said)
        self.assertEqual(said, f"{self.work}/reference/html/index.html\n")
        self.assertEqual(undocumented(self.work / "reference"), [])

    def test_there_is_a_page_for_each_installed_header(self):
        make_reference(HEADERS, self.work / "reference")

        headers = {file.name for file in HEADERS.glob("*.h")} - {"vexa_export.h"}
        self.assertIn("mapcatalog.h", headers)
        pages = self.work / "reference" / "html"
        missing = [name for name in headers
                   if not (pages / f"{name[:-2]}_8h.html").exists()]
        self.assertEqual(missing, [])
        self.assertTrue((pages / "classDownloadManagerIface.html").exists())
        # Without one of its own, an enumeration outside of classes would not be listed at all.
        self.assertIn("UncompressRequest", (pages / "request_8h.html").read_text())

    def test_the_source_tree_gives_the_same_reference_as_the_installed_headers(self):
        make_reference(HEADERS, self.work / "installed")
        run = subprocess.run([ROOT / "doc" / "build", "--output", self.work / "source"],
                             stdout=subprocess.PIPE, check=False)

        self.assertEqual(run.returncode, 0)
        names = [{file.name for file in (self.work / kind / "html").glob("class*.html")}
                 for kind in ("installed", "source")]
        self.assertEqual(names[0], names[1])

    def test_each_kind_of_undocumented_member_makes_it_fail(self):
        headers = self.work / "headers"
        headers.mkdir()
        (headers / "sample.h").write_text(SAMPLE)

        status, said = make_reference(headers, self.work / "reference")

        self.assertNotEqual(status, 0)
        for name in ("bareProperty", "bareFunction", "bareVariable", "bareSlot", "bareSignal",
                     "BareClass", "BareEnum", "bareGlobal", "BARE_CONSTANT"):
            self.assertRegex(said, rf"sample\.h:\d+: .*\b{name}\b.* is not documented")
        self.assertNotRegex(said, r"documented\(\)|privateMember")
        silent = undocumented(self.work / "reference")
        self.assertIn("BareValue", silent)
        self.assertIn("Sample::Sample", silent)
        self.assertNotIn("DocumentedValue", silent)


if __name__ == "__main__":
    unittest.main()
