# SPDX-License-Identifier: MIT
"""The tile format: the lines of one map cell. doc/content-server.md describes its bytes."""

import itertools
import struct

import numpy as np

import grid

MAGIC = b"VTIL"
VERSION = 1

# All numbers are little-endian. Degrees are signed: south, west, north, east.
HEADER = struct.Struct("<4sHHhhhh")
LAYER = struct.Struct("<BBHI")

# What a coarser drawing leaves out: small islands and short ends of rivers.
SHORTEST_COARSE_LINE = 12


def encode(cell, lines):
    """The bytes of a cell's tile. `lines` is [(kind, level, points)], kinds and levels ascending.

    The same lines always give the same bytes. No lines give a valid tile without layers.
    """
    layers = [
        (kind, level, [points for _, _, points in group])
        for (kind, level), group in itertools.groupby(lines, key=lambda line: line[:2])
    ]
    south, west = grid.corner(cell)
    parts = [HEADER.pack(MAGIC, VERSION, len(layers), south, west, south + 1, west + 1)]
    for kind, level, strings in layers:
        parts.append(LAYER.pack(kind, level, 0, len(strings)))
        for points in strings:
            parts.append(struct.pack("<I", len(points)))
            parts.append(points.astype("<u2").tobytes())
    return b"".join(parts)


def decode(data):
    """Reads a tile. Returns its (south, west, north, east) and its lines as encode() takes them.

    Raises ValueError for anything that is not a whole tile.
    """
    try:
        magic, version, layers, *bounds = HEADER.unpack_from(data)
        if magic != MAGIC or version != VERSION:
            raise ValueError("not a tile of this version")
        offset, lines = HEADER.size, []
        for _ in range(layers):
            kind, level, _, strings = LAYER.unpack_from(data, offset)
            offset += LAYER.size
            for _ in range(strings):
                (count,) = struct.unpack_from("<I", data, offset)
                points = np.frombuffer(data, "<u2", count * 2, offset + 4).reshape(-1, 2)
                lines.append((kind, level, points))
                offset += 4 + 4 * count
    except struct.error as error:
        raise ValueError("the tile is cut off") from error
    if offset != len(data):
        raise ValueError("bytes after the last line")
    return tuple(bounds), lines


def coarser(lines):
    """The same lines drawn more coarsely: every second point, without the shortest lines.

    Stands for a later edition of the map, so that an update has something to change.
    """
    kept = []
    for kind, level, points in lines:
        if len(points) >= SHORTEST_COARSE_LINE:
            chosen = np.concatenate([points[:-1:2], points[-1:]])
            kept.append((kind, level, chosen))
    return kept
