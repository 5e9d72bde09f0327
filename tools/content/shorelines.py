# SPDX-License-Identifier: MIT
"""Reads the shore, river and border lines of gmt-gshhg-high and cuts them by map cell.

The files are "binned": the world is divided into bins of two degrees, numbered from the
north-west corner at Greenwich eastwards, row after row. Each bin has a run of segments, each
segment a run of points, and a point is a pair of unsigned 16-bit offsets (declared as signed)
from the bin's south-west corner, 65535 being the far side.

One bin holds two by two cells. With offsets doubled, the line between the cells is at 65535 and
no point of the file lies on it (doubled offsets are even), so a point's cell is never in doubt,
and an offset within a cell fits 16 bits again without any loss.
"""

from pathlib import Path

import netCDF4
import numpy as np

import grid

SHORE, RIVER, BORDER = 1, 2, 3
BIN_DEGREES = 2
EDGE = 65535
# The line where Antarctic ice shelves leave the ground: hidden under the ice, not a shore.
GROUNDING_LEVEL = 6


def read_cells(folder):
    """Reads all three files. Returns {cell number: [(kind, level, points)]}.

    `points` is an array of (x, y) pairs, 0 to 65535 from the cell's south-west corner. The order
    of a cell's lines is that of the files, kinds and levels ascending.
    """
    cells = {}
    for kind, file in (
        (SHORE, "binned_GSHHS_h.nc"),
        (RIVER, "binned_river_h.nc"),
        (BORDER, "binned_border_h.nc"),
    ):
        with netCDF4.Dataset(Path(folder) / file) as data:
            data.set_auto_maskandscale(False)
            _collect(cells, kind, *_cut(*_read(data, kind)))
    return cells


def _read(data, kind):
    """The segments of a file: for each its bin, level and number of points, and all points."""
    value = data.variables
    per_bin = value["N_segments_in_a_bin"][:]
    bins = np.repeat(np.arange(len(per_bin)), per_bin)
    if kind == SHORE:
        # One number holds the points (23 bits), the level and the two sides of the bin.
        packed = value["Embedded_npts_levels_exit_entry_for_a_segment"][:].view(np.uint32)
        counts, levels = (packed >> 9).astype(int), (packed >> 6) & 7
    else:
        counts = value["N_points_for_a_segment"][:].astype(int)
        levels = value["Hierarchial_level_of_a_segment"][:]
    points = np.column_stack(
        [
            value["Relative_longitude_from_SW_corner_of_bin"][:].view(np.uint16),
            value["Relative_latitude_from_SW_corner_of_bin"][:].view(np.uint16),
        ]
    ).astype(np.int64)
    if kind == SHORE:
        kept = levels != GROUNDING_LEVEL
        points = points[np.repeat(kept, counts)]
        bins, levels, counts = bins[kept], levels[kept], counts[kept]
    return bins, levels, counts, points


def _cut(bins, levels, counts, points):
    """Cuts segments at the lines between the cells of a bin.

    Returns for each piece its cell number, its level and the place of its first point, and all
    points as offsets in their cell.
    """
    line = _Line(np.repeat(np.arange(len(counts)), counts), points * 2)
    line.split(0)
    line.split(1)
    line.drop_repeated_points()

    first = np.flatnonzero(line.starts)
    segments, halves = line.segments[first], line.halves[first]
    bin_row, bin_column = np.divmod(bins[segments], grid.COLUMNS // BIN_DEGREES)
    rows = grid.ROWS - BIN_DEGREES * (bin_row + 1) + halves[:, 1]
    columns = BIN_DEGREES * bin_column + halves[:, 0]
    return grid.number(rows, columns), levels[segments], first, line.points - EDGE * line.halves


class _Line:
    """All points of a file in one row, with the marks where a new piece starts."""

    def __init__(self, segments, points):
        self.segments = segments
        self.points = points
        self.starts = np.diff(segments, prepend=-1) != 0
        # Which of the two cells a point is in, per axis. A cut point is there once for each.
        self.halves = (points > EDGE).astype(np.int64)

    def split(self, axis):
        """Ends a piece where it crosses the line between the cells, and starts the next one."""
        half = self.halves[:, axis]
        before = np.flatnonzero(~self.starts[1:] & (half[1:] != half[:-1]))
        begin, end = self.points[before], self.points[before + 1]
        share = (EDGE - begin[:, axis]) / (end[:, axis] - begin[:, axis])
        cut = np.rint(begin + share[:, None] * (end - begin)).astype(np.int64)
        cut[:, axis] = EDGE

        near, far = self.halves[before].copy(), self.halves[before].copy()
        far[:, axis] = half[before + 1]
        if axis == 0:
            near[:, 1] = far[:, 1] = cut[:, 1] > EDGE
        place = np.repeat(before + 1, 2)
        self.segments = np.insert(self.segments, place, np.repeat(self.segments[before], 2))
        self.starts = np.insert(self.starts, place, np.tile([False, True], len(before)))
        self.points = np.insert(self.points, place, np.repeat(cut, 2, axis=0), axis=0)
        both = np.stack([near, far], axis=1).reshape(-1, 2)
        self.halves = np.insert(self.halves, place, both, axis=0)

    def drop_repeated_points(self):
        """Leaves out points that are equal to the one before them in their piece."""
        new = np.ones(len(self.points), bool)
        new[1:] = self.starts[1:] | (self.points[1:] != self.points[:-1]).any(axis=1)
        for field in ("segments", "starts", "points", "halves"):
            setattr(self, field, getattr(self, field)[new])


def _collect(cells, kind, numbers, levels, first, points):
    """Adds the pieces to their cells, by level; a piece of a single point is no line."""
    last = np.append(first[1:], len(points))
    for piece in np.lexsort((first, levels)):
        if last[piece] - first[piece] > 1:
            line = (kind, int(levels[piece]), points[first[piece] : last[piece]])
            cells.setdefault(int(numbers[piece]), []).append(line)
