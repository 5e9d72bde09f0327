# SPDX-License-Identifier: MIT
"""Writes the text files of a content server: catalogue, region names, version and check sums."""

import hashlib
import os
import xml.etree.ElementTree as xml

import worldparts

# The region for which devices show a name of their own, whatever a file says.
NAMED_BY_DEVICES = "411"


def write_catalogue(file, version, regions, archives):
    """Writes the catalogue: nested "File" elements, each with a link and its archive's true size.

    `archives` maps region ids to archive files; links are relative to the server's base URI,
    which is the folder of the catalogue.
    """
    root = xml.Element("Catalog", {"Version": version})
    for region in regions:
        _append(root, region, archives, file.parent)
    _write_xml(file, root)


def _append(parent, region, archives, base):
    archive = archives[region.id]
    element = xml.SubElement(
        parent,
        "File",
        {
            "Id": region.id,
            "Description": region.name,
            "ZipFileSize": str(archive.stat().st_size),
            "Link": archive.relative_to(base).as_posix(),
        },
    )
    for child in region.children:
        _append(element, child, archives, base)


def write_region_names(file, regions, names, locale):
    """Writes the regions' names in the language of a locale.

    A region without a translation has no entry and keeps its name from the catalogue. A language
    without any translation still gets its file, since a catalogue without one counts as missing.
    """
    root = xml.Element("regions", {"language": locale})
    for top in regions:
        for region in top.everything():
            if region.code:
                name = names.translated(region.code, locale)
            else:
                name = worldparts.translated(region.id, locale)
            if name and region.id != NAMED_BY_DEVICES:
                xml.SubElement(root, "region", {"id": region.id, "name": name})
    _write_xml(file, root)


def write_version(file, version):
    """Writes the newest version, which clients ask for first: write it after everything else."""
    _write(file, f"{version}\n".encode())


def write_check_sums(folder):
    """Writes SHA256SUMS over all files in the folder, in the form that sha256sum -c reads."""
    target = folder / "SHA256SUMS"
    lines = []
    for file in sorted(path for path in folder.rglob("*") if path.is_file() and path != target):
        digest = hashlib.sha256(file.read_bytes()).hexdigest()
        lines.append(f"{digest}  {file.relative_to(folder).as_posix()}\n")
    _write(target, "".join(lines).encode())


def _write_xml(file, root):
    xml.indent(root, " ")
    _write(file, xml.tostring(root, encoding="utf-8", xml_declaration=True) + b"\n")


def _write(file, data):
    # Beside the target: a reader gets the old file or the new one, never half of it.
    beside = file.with_name(f".{file.name}.new")
    beside.write_bytes(data)
    os.replace(beside, file)
